#include "settings/preferences.h"

#include <QTest>

#include <algorithm>

using namespace verlis;

namespace {

// Width and height limits differ, so that one can't stand in for the other.
constexpr SizeLimits Limits{480, 32000, 360, 24000};

// Size, width, height, left, top, text and background colour.
using Numbers = QList<int>;

} // namespace

class TestPreferences : public QObject {
    Q_OBJECT
private slots:
    void normalisesWhatItLoads_data()
    {
        QTest::addColumn<Numbers>("stored");
        QTest::addColumn<Numbers>("loaded");
        const Numbers lowest{1, 480, 360, -100, -100, 0x808080, 0x808081};
        const Numbers highest{64, 32000, 24000, 3000, 3000, 0xFFFFFF, 0};
        const Numbers defaults{11, 552, 516, 100, 100, 0, 0xFFFFFF};
        QTest::newRow("every lowest bound kept") << lowest << lowest;
        QTest::newRow("every highest bound kept") << highest << highest;
        QTest::newRow("one below, equal colours")
            << Numbers{0, 479, 359, -101, -101, 0x3366CC, 0x3366CC} << defaults;
        QTest::newRow("one above")
            << Numbers{65, 32001, 24001, 3001, 3001, 0, 0xFFFFFF} << defaults;
        QTest::newRow("no width") << Numbers{20, 0, 500, 30, 40, 0, 1}
                                  << Numbers{20, 552, 500, 30, 40, 0, 1};
    }

    void normalisesWhatItLoads()
    {
        QFETCH(Numbers, stored);
        QFETCH(Numbers, loaded);
        Preferences n = decodePreferences(
            encodePreferences({QByteArray(), quint8(stored[0]), qint16(stored[1]),
                               qint16(stored[2]), qint16(stored[3]), qint16(stored[4]), false,
                               false, false, false, Color(stored[5]), Color(stored[6])}));
        normalisePreferences(n, Limits);
        QCOMPARE((Numbers{n.mainSize, n.MWWidth, n.MWHeight, n.MWLeft, n.MWTop, int(n.ColorText),
                          int(n.ColorBack)}),
                 loaded);
    }

    void recordLayoutIsExactToTheByteAndReadsWhenCut()
    {
        // Magenta text is hue 5/6, saturation 1, value 1; the white background 0, 0, 1.
        QByteArray bytes = encodePreferences(
            {"system", 11, 552, 516, -100, 100, true, false, false, false, 0xFF00FF, 0xFFFFFF});
        QCOMPARE(bytes.toHex(), "0b06" + QByteArray("system").toHex() + "ff9c006402280204" +
                                    "01000000" + "3feaaaaaaaaaaaab" + "3ff0000000000000" +
                                    "3ff0000000000000" + "0000000000000000" + "0000000000000000" +
                                    "3ff0000000000000");
        QCOMPARE(encodePreferences(decodePreferences(bytes)), bytes);
        // Where each field ends: a field the file holds only part of reads as zero, and
        // a name cut short as no name.
        const QList<int> ends{0, 1, 8, 10, 12, 14, 16, 17, 18, 19, 20, 28, 36, 44, 52, 60, 68};
        for (int length = 0; length <= bytes.size(); ++length) {
            const int whole = *std::prev(std::upper_bound(ends.begin(), ends.end(), length));
            QCOMPARE(decodePreferences(bytes.left(length)),
                     decodePreferences(bytes.left(whole) + QByteArray(bytes.size() - whole, 0)));
        }
        // Only the byte 1 is true.
        const Preferences q =
            decodePreferences(bytes.replace(16, 4, QByteArray::fromHex("02ff0181")));
        QCOMPARE((QList<bool>{q.mainBold, q.mainItalic, q.mainUnderline, q.BshowNumber}),
                 (QList<bool>{false, false, true, false}));
    }

    void longFontNamesAreCutAtACharacter_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("loaded");
        const QChar mei(0x660E); // three bytes in UTF-8
        QTest::newRow("cut inside a character")
            << "a" + QString(100, mei) << "a" + QString(84, mei);
        QTest::newRow("cut at a character's end") << QString(100, mei) << QString(85, mei);
    }

    void longFontNamesAreCutAtACharacter()
    {
        QFETCH(QString, name);
        QFETCH(QString, loaded);
        QCOMPARE(fontNameText(fontNameBytes(name)), loaded);
    }

    void coloursSurviveTheRoundTrip()
    {
        int failures = 0; // every 13th colour: each hue, grey and bright alike, in a blink
        for (Color c = 0; c < 0x1000000; c += 13)
            failures += HSV(readColorHue(c), readColorSaturation(c), readColorValue(c), 0) != c;
        QCOMPARE(failures, 0);
    }
};

QTEST_GUILESS_MAIN(TestPreferences)
#include "tst_preferences.moc"
