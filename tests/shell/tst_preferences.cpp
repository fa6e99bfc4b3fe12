#include "shell/preferences.h"

#include <QTest>
#include <QtEndian>

using namespace verlis;

namespace {

constexpr SizeLimits Limits{480, 32000, 480, 32000};

Preferences normalised(Preferences p)
{
    normalisePreferences(p, Limits);
    return p;
}

Preferences defaults() { return normalised(Preferences{}); }

} // namespace

class TestPreferences : public QObject {
    Q_OBJECT
private slots:
    void noFileGivesTheDefaults();
    void boundsAreInclusive_data();
    void boundsAreInclusive();
    void equalColoursBecomeBlackOnWhite();
    void recordLayoutIsExactToTheByte();
    void onlyTheByteOneIsTrue();
    void everyCutOfAFileStillLoads();
    void fontNamesSurviveAndLongOnesAreCutAtACharacter();
    void everyColourSurvivesTheRoundTrip();
};

void TestPreferences::noFileGivesTheDefaults()
{
    const Preferences p = defaults();
    QCOMPARE(p.mainfont, QStringLiteral("system"));
    QCOMPARE(p.mainSize, quint8(11));
    QCOMPARE(p.MWLeft, qint16(100));
    QCOMPARE(p.MWTop, qint16(100));
    QCOMPARE(p.MWWidth, qint16(552));
    QCOMPARE(p.MWHeight, qint16(516));
    QCOMPARE(p.ColorText, Color(0x000000));
    QCOMPARE(p.ColorBack, Color(0xFFFFFF));
    QVERIFY(!p.mainBold && !p.mainItalic && !p.mainUnderline && !p.BshowNumber);
    // The passes may run any number of times with the same result.
    QCOMPARE(normalised(p), p);
}

// Size, left, top, width and height as stored, and as loaded.
using Numbers = QList<int>;

void TestPreferences::boundsAreInclusive_data()
{
    QTest::addColumn<Numbers>("stored");
    QTest::addColumn<Numbers>("loaded");
    QTest::newRow("size 0") << Numbers{0, 50, 60, 700, 600} << Numbers{11, 50, 60, 700, 600};
    QTest::newRow("size 64") << Numbers{64, 50, 60, 700, 600} << Numbers{64, 50, 60, 700, 600};
    QTest::newRow("size 65") << Numbers{65, 50, 60, 700, 600} << Numbers{11, 50, 60, 700, 600};
    QTest::newRow("left -100, top 3000")
        << Numbers{20, -100, 3000, 700, 600} << Numbers{20, -100, 3000, 700, 600};
    QTest::newRow("left -101") << Numbers{20, -101, 60, 700, 600} << Numbers{20, 100, 60, 700, 600};
    QTest::newRow("left 3001") << Numbers{20, 3001, 60, 700, 600} << Numbers{20, 100, 60, 700, 600};
    QTest::newRow("top -101") << Numbers{20, 50, -101, 700, 600} << Numbers{20, 50, 100, 700, 600};
    QTest::newRow("width 479") << Numbers{20, 50, 60, 479, 600} << Numbers{20, 50, 60, 552, 600};
    QTest::newRow("width and height 480")
        << Numbers{20, 50, 60, 480, 480} << Numbers{20, 50, 60, 480, 480};
    QTest::newRow("width and height 32000")
        << Numbers{20, 50, 60, 32000, 32000} << Numbers{20, 50, 60, 32000, 32000};
    QTest::newRow("width 32001") << Numbers{20, 50, 60, 32001, 600}
                                 << Numbers{20, 50, 60, 552, 600};
    QTest::newRow("height 479") << Numbers{20, 50, 60, 700, 479} << Numbers{20, 50, 60, 700, 516};
    QTest::newRow("only the width set") << Numbers{20, 0, 0, 600, 0} << Numbers{20, 0, 0, 600, 516};
}

void TestPreferences::boundsAreInclusive()
{
    QFETCH(Numbers, stored);
    QFETCH(Numbers, loaded);
    Preferences p;
    p.mainSize = quint8(stored[0]);
    p.MWLeft = qint16(stored[1]);
    p.MWTop = qint16(stored[2]);
    p.MWWidth = qint16(stored[3]);
    p.MWHeight = qint16(stored[4]);
    const Preferences n = normalised(decodePreferences(encodePreferences(p)));
    QCOMPARE((Numbers{n.mainSize, n.MWLeft, n.MWTop, n.MWWidth, n.MWHeight}), loaded);
}

void TestPreferences::equalColoursBecomeBlackOnWhite()
{
    Preferences p;
    p.ColorText = p.ColorBack = 0x3366CC;
    p = normalised(p);
    QCOMPARE(p.ColorText, Color(0x000000));
    QCOMPARE(p.ColorBack, Color(0xFFFFFF));

    Preferences near;
    near.ColorText = 0x808080;
    near.ColorBack = 0x808081;
    near = normalised(near);
    QCOMPARE(near.ColorText, Color(0x808080));
    QCOMPARE(near.ColorBack, Color(0x808081));
}

void TestPreferences::recordLayoutIsExactToTheByte()
{
    Preferences p = defaults();
    p.mainBold = true;
    p.BshowNumber = true;
    p.MWLeft = -100;
    p.ColorText = 0xFF0000;
    const QByteArray bytes = encodePreferences(p);
    QCOMPARE(bytes.size(), 68);
    QCOMPARE(quint8(bytes[0]), quint8(11));
    QCOMPARE(quint8(bytes[1]), quint8(6));
    QCOMPARE(bytes.mid(2, 6), QByteArray("system"));
    QCOMPARE(bytes.mid(8, 8), QByteArray::fromHex("ff9c006402280204")); // big-endian
    QCOMPARE(bytes.mid(16, 4), QByteArray::fromHex("01000001"));
    // Text red: hue 0, saturation 1, value 1; background white: 0, 0, 1.
    const auto dbl = [&](int at) { return qFromBigEndian<double>(bytes.constData() + at); };
    QCOMPARE(dbl(20), 0.0);
    QCOMPARE(dbl(28), 1.0);
    QCOMPARE(dbl(36), 1.0);
    QCOMPARE(dbl(44), 0.0);
    QCOMPARE(dbl(52), 0.0);
    QCOMPARE(dbl(60), 1.0);

    Preferences empty = p;
    empty.mainfont.clear();
    QCOMPARE(encodePreferences(empty).size(), 62);
    // An empty name reads back as "system", and the next write is 68 bytes.
    QCOMPARE(encodePreferences(normalised(decodePreferences(encodePreferences(empty)))).size(), 68);
    QCOMPARE(decodePreferences(bytes), p);
}

void TestPreferences::onlyTheByteOneIsTrue()
{
    QByteArray bytes = encodePreferences(defaults());
    bytes[16] = char(2);
    bytes[17] = char(0xFF);
    bytes[18] = char(1);
    bytes[19] = char(0x81);
    const Preferences p = decodePreferences(bytes);
    QVERIFY(!p.mainBold);
    QVERIFY(!p.mainItalic);
    QVERIFY(p.mainUnderline);
    QVERIFY(!p.BshowNumber);
    QCOMPARE(encodePreferences(p).mid(16, 4), QByteArray::fromHex("00000100"));
}

void TestPreferences::everyCutOfAFileStillLoads()
{
    Preferences full = defaults();
    full.mainSize = 30;
    full.MWLeft = 10;
    full.MWTop = 20;
    full.MWWidth = 900;
    full.MWHeight = 700;
    full.mainItalic = true;
    full.ColorText = 0x112233;
    full.ColorBack = 0xEEDDCC;
    const QByteArray bytes = encodePreferences(full);
    for (int length = 0; length <= bytes.size(); ++length) {
        const Preferences p = normalised(decodePreferences(bytes.left(length)));
        QCOMPARE(p.mainSize, quint8(length >= 1 ? 30 : 11));
        QCOMPARE(p.mainfont, QStringLiteral("system")); // cut or whole, it ends as "system"
        QVERIFY(p.MWWidth >= 480 && p.MWHeight >= 480);
        QVERIFY(p.ColorText != p.ColorBack);
        if (length == bytes.size())
            QCOMPARE(p, full);
    }
}

void TestPreferences::fontNamesSurviveAndLongOnesAreCutAtACharacter()
{
    Preferences p = defaults();
    p.mainfont = QStringLiteral("ヒラギノ明朝 ProN");
    QCOMPARE(decodePreferences(encodePreferences(p)).mainfont, p.mainfont);

    p.mainfont = QString(100, QChar(0x660E)); // 300 bytes in UTF-8
    const QByteArray bytes = encodePreferences(p);
    QCOMPARE(quint8(bytes[1]), quint8(255));
    QCOMPARE(bytes.size(), 62 + 255);
    const Preferences back = decodePreferences(bytes);
    QCOMPARE(back.mainfont, QString(85, QChar(0x660E)));
    QCOMPARE(back.MWWidth, p.MWWidth);
    QCOMPARE(back.ColorBack, p.ColorBack);
}

void TestPreferences::everyColourSurvivesTheRoundTrip()
{
    int failures = 0;
    Color first = 0;
    for (Color c = 0; c < 0x1000000; ++c) {
        if (HSV(readColorHue(c), readColorSaturation(c), readColorValue(c), 0) != c) {
            if (failures++ == 0)
                first = c;
        }
    }
    QVERIFY2(failures == 0, qPrintable(QStringLiteral("%1 colours differ, the first %2")
                                           .arg(failures)
                                           .arg(first, 6, 16, QLatin1Char('0'))));
    QCOMPARE(readColorHue(0x808080), 0.0); // a grey has hue 0, never -1
    QCOMPARE(HSV(0, 0, 0, 0), Color(0x000000));
    QCOMPARE(HSV(0, 0, 1.0, 0), Color(0xFFFFFF));
}

QTEST_GUILESS_MAIN(TestPreferences)
#include "tst_preferences.moc"
