#include "poem/selection.h"

#include <QTest>

#include <algorithm>

using verlis::Selection;

// Turning and aligning are tested through the menu commands; here, what
// only the random draws can get wrong.
class TestSelection : public QObject {
    Q_OBJECT
private slots:
    void shuffleReachesEveryPageAndNeverRepeatsASource();
    void shuffleLineTouchesOneLine();
};

void TestSelection::shuffleReachesEveryPageAndNeverRepeatsASource()
{
    // 200 draws of 14 lines miss a page with a chance far below one in a billion.
    std::array<bool, 10> seen{};
    Selection s;
    std::array<qint8, Selection::Lines> previous{};
    int repeats = 0;
    for (int draw = 0; draw < 200; ++draw) {
        s.shuffleSelection();
        for (qint8 page : s.pages()) {
            QVERIFY(page >= 0 && page <= 9);
            seen[size_t(page)] = true;
        }
        repeats += s.pages() == previous;
        previous = s.pages();
    }
    QCOMPARE(seen,
             (std::array<bool, 10>{true, true, true, true, true, true, true, true, true, true}));
    // A source that replayed its sequence would give the same poem each time.
    QCOMPARE(repeats, 0);
}

void TestSelection::shuffleLineTouchesOneLine()
{
    Selection s;
    for (int i = 0; i < Selection::Lines; ++i)
        s.setWhatPage(i, 5);
    std::array<bool, 10> seen{};
    for (int draw = 0; draw < 300; ++draw) {
        s.shuffleLine(6);
        seen[size_t(s.whatPage(6))] = true;
        s.setWhatPage(6, 5); // every other line must have stayed on 5
        QCOMPARE(std::count(s.pages().begin(), s.pages().end(), qint8(5)), 14);
    }
    QVERIFY(seen[0] && seen[9]);
}

QTEST_GUILESS_MAIN(TestSelection)
#include "tst_selection.moc"
