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
    void geometryDefaultsOnlyWhenAllFourAreZero();
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

void TestPreferences::boundsAreInclusive_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("loaded");
    QTest::newRow("size 0") << "size" << 0 << 11;
    QTest::newRow("size 1") << "size" << 1 << 1;
    QTest::newRow("size 64") << "size" << 64 << 64;
    QTest::newRow("size 65") << "size" << 65 << 11;
    QTest::newRow("size 255") << "size" << 255 << 11;
    QTest::newRow("left -100") << "left" << -100 << -100;
    QTest::newRow("left -101") << "left" << -101 << 100;
    QTest::newRow("left 3000") << "left" << 3000 << 3000;
    QTest::newRow("left 3001") << "left" << 3001 << 100;
    QTest::newRow("top -101") << "top" << -101 << 100;
    QTest::newRow("top 3000") << "top" << 3000 << 3000;
    QTest::newRow("top 3001") << "top" << 3001 << 100;
    QTest::newRow("width 479") << "width" << 479 << 552;
    QTest::newRow("width 480") << "width" << 480 << 480;
    QTest::newRow("width 32000") << "width" << 32000 << 32000;
    QTest::newRow("width 32001") << "width" << 32001 << 552;
    QTest::newRow("height 479") << "height" << 479 << 516;
    QTest::newRow("height 480") << "height" << 480 << 480;
    QTest::newRow("height 32000") << "height" << 32000 << 32000;
    QTest::newRow("height -5") << "height" << -5 << 516;
}

void TestPreferences::boundsAreInclusive()
{
    QFETCH(QString, field);
    QFETCH(int, stored);
    QFETCH(int, loaded);
    Preferences p;
    p.mainSize = 20;
    p.MWLeft = 50;
    p.MWTop = 60;
    p.MWWidth = 700;
    p.MWHeight = 600;
    if (field == "size")
        p.mainSize = quint8(stored);
    if (field == "left")
        p.MWLeft = qint16(stored);
    if (field == "top")
        p.MWTop = qint16(stored);
    if (field == "width")
        p.MWWidth = qint16(stored);
    if (field == "height")
        p.MWHeight = qint16(stored);

    const Preferences n = normalised(decodePreferences(encodePreferences(p)));
    const auto read = [&](const QString &f) -> int {
        if (f == "size")
            return n.mainSize;
        if (f == "left")
            return n.MWLeft;
        if (f == "top")
            return n.MWTop;
        if (f == "width")
            return n.MWWidth;
        return n.MWHeight;
    };
    QCOMPARE(read(field), loaded);
    // Each field is mended on its own: the others keep their values.
    const std::map<QString, int> others{
        {"size", 20}, {"left", 50}, {"top", 60}, {"width", 700}, {"height", 600}};
    for (const auto &[other, expected] : others)
        if (other != field)
            QCOMPARE(read(other), expected);
}

void TestPreferences::geometryDefaultsOnlyWhenAllFourAreZero()
{
    Preferences p;
    p.MWWidth = 600;
    p = normalised(p);
    QCOMPARE(p.MWLeft, qint16(0));
    QCOMPARE(p.MWTop, qint16(0));
    QCOMPARE(p.MWWidth, qint16(600));
    QCOMPARE(p.MWHeight, qint16(516)); // 0 is below the window's limit
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
    QCOMPARE(encodePreferences(normalised(decodePreferences(encodePreferences(empty)))).size(),
             68);
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
    // Random bytes, too, load into a usable state.
    QByteArray noise(300, '\0');
    for (int i = 0; i < noise.size(); ++i)
        noise[i] = char((i * 7919 + 13) % 251);
    const Preferences p = normalised(decodePreferences(noise));
    QVERIFY(p.mainSize >= 1 && p.mainSize <= 64);
    QVERIFY(p.MWWidth >= 480 && p.MWWidth <= 32000);
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
