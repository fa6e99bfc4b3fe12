#include "poem/selection.h"

#include <QTest>

#include <algorithm>

using verlis::LineCount;
using verlis::Selection;

// What only the random draws can get wrong; turning is tested through the menu commands.
class TestSelection : public QObject {
    Q_OBJECT
private slots:
    void shuffleReachesEveryPageAndNeverRepeatsAPoem()
    {
        // By chance, a line misses a page in 200 draws below 1e-6; a poem repeats at 1e-14.
        std::array<std::array<bool, 10>, LineCount> seen{};
        Selection s;
        for (int draw = 0; draw < 200; ++draw) {
            const auto previous = s.pages();
            s.shuffleSelection();
            QVERIFY(s.pages() != previous);
            for (int i = 0; i < LineCount; ++i)
                seen.at(size_t(i)).at(size_t(s.whatPage(i))) = true; // throws when out of range
        }
        for (const auto &line : seen)
            QCOMPARE(std::count(line.begin(), line.end(), true), 10);
    }

    void shuffleLineTouchesOneLine()
    {
        Selection s;
        std::array<bool, 10> seen{};
        for (int draw = 0; draw < 300; ++draw) {
            s.shuffleLine(13);
            seen.at(size_t(s.whatPage(13))) = true;
            s.setWhatPage(13, 0); // every other line must have stayed on 0
            QCOMPARE(std::count(s.pages().begin(), s.pages().end(), qint8(0)), LineCount);
        }
        QCOMPARE(std::count(seen.begin(), seen.end(), true), 10);
    }
};

QTEST_GUILESS_MAIN(TestSelection)
#include "tst_selection.moc"
