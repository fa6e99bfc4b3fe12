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
    // In 200 draws a line misses a page with a chance far below one in a million.
    std::array<std::array<bool, 10>, Selection::Lines> seen{};
    Selection s;
    std::array<qint8, Selection::Lines> previous{};
    int repeats = 0;
    for (int draw = 0; draw < 200; ++draw) {
        s.shuffleSelection();
        for (int i = 0; i < Selection::Lines; ++i) {
            QVERIFY(s.whatPage(i) >= 0 && s.whatPage(i) <= 9);
            seen[size_t(i)][size_t(s.whatPage(i))] = true;
        }
        repeats += s.pages() == previous;
        previous = s.pages();
    }
    for (const auto &line : seen)
        QCOMPARE(std::count(line.begin(), line.end(), true), 10);
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
