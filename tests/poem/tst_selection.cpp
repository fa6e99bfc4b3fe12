#include "poem/selection.h"

#include <QTest>

#include <algorithm>

using verlis::LineCount;
using verlis::Selection;

// What only the random draws can get wrong; turning is tested through the menu commands,
// and that a drawn line leaves the others alone through the page labels.
class TestSelection : public QObject {
    Q_OBJECT
private slots:
    void shufflesReachEveryPageAndNeverRepeatAPoem()
    {
        // By chance, a line misses a page in 200 draws below 1e-6; a poem repeats at 1e-14.
        std::array<std::array<bool, 10>, LineCount + 1> seen{}; // the last for shuffleLine
        Selection whole; // drawn apart, so that one line's draws cover for no other's
        Selection one;
        for (int draw = 0; draw < 200; ++draw) {
            const auto previous = whole.pages();
            whole.shuffleSelection();
            QVERIFY(whole.pages() != previous);
            for (int i = 0; i < LineCount; ++i)
                seen.at(size_t(i)).at(size_t(whole.whatPage(i))) = true; // throws when out of range
            one.shuffleLine(13);
            seen.back().at(size_t(one.whatPage(13))) = true;
        }
        for (const auto &line : seen)
            QCOMPARE(std::count(line.begin(), line.end(), true), 10);
    }
};

QTEST_GUILESS_MAIN(TestSelection)
#include "tst_selection.moc"
