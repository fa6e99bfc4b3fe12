#include "poem/selection.h"

#include <QTest>

using verlis::Direction;
using verlis::Selection;

class TestSelection : public QObject {
    Q_OBJECT
private slots:
    void turnLineWrapsAloneOnTheSignedValue_data();
    void turnLineWrapsAloneOnTheSignedValue();
    void turnAllLinesWrapsEachLineByItself();
    void resetAlignsOnLineZerosPage();
    void shuffleReachesEveryPageAndNeverRepeatsASource();
    void shuffleLineTouchesOneLine();
};

void TestSelection::turnLineWrapsAloneOnTheSignedValue_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("forwards");
    QTest::addColumn<int>("to");
    QTest::newRow("back from 0") << 5 << 0 << false << 9;
    QTest::newRow("forward from 9") << 13 << 9 << true << 0;
    QTest::newRow("forward in range") << 0 << 4 << true << 5;
    QTest::newRow("back in range") << 7 << 1 << false << 0;
}

void TestSelection::turnLineWrapsAloneOnTheSignedValue()
{
    QFETCH(int, line);
    QFETCH(int, from);
    QFETCH(bool, forwards);
    QFETCH(int, to);
    Selection s;
    for (int i = 0; i < Selection::Lines; ++i)
        s.setWhatPage(i, qint8(i % 10));
    s.setWhatPage(line, qint8(from));
    s.turnLine(line, forwards ? Direction::Forwards : Direction::Backwards);
    QCOMPARE(s.whatPage(line), qint8(to));
    for (int i = 0; i < Selection::Lines; ++i)
        if (i != line)
            QCOMPARE(s.whatPage(i), qint8(i % 10));
}

void TestSelection::turnAllLinesWrapsEachLineByItself()
{
    Selection s;
    s.setWhatPage(0, 9);
    s.setWhatPage(1, 3);
    s.turnAllLines(Direction::Forwards);
    QCOMPARE(s.whatPage(0), qint8(0));
    QCOMPARE(s.whatPage(1), qint8(4));
    QCOMPARE(s.whatPage(13), qint8(1));

    Selection zeros;
    zeros.turnAllLines(Direction::Backwards);
    for (qint8 page : zeros.pages())
        QCOMPARE(page, qint8(9));
}

void TestSelection::resetAlignsOnLineZerosPage()
{
    Selection s;
    for (int i = 0; i < Selection::Lines; ++i)
        s.setWhatPage(i, qint8((i * 3) % 10));
    s.setWhatPage(0, 4);
    s.resetSelection();
    for (qint8 page : s.pages())
        QCOMPARE(page, qint8(4));
    const auto once = s.pages();
    s.resetSelection();
    QCOMPARE(s.pages(), once);
}

void TestSelection::shuffleReachesEveryPageAndNeverRepeatsASource()
{
    // Pages 0 and 9 must be reachable on a line; 200 draws of 14 lines miss
    // a page with a chance far below one in a billion.
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
        if (s.pages() == previous)
            ++repeats;
        previous = s.pages();
    }
    for (bool pageSeen : seen)
        QVERIFY(pageSeen);
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
        for (int i = 0; i < Selection::Lines; ++i)
            if (i != 6)
                QCOMPARE(s.whatPage(i), qint8(5));
    }
    QVERIFY(seen[0] && seen[9]);
}

QTEST_GUILESS_MAIN(TestSelection)
#include "tst_selection.moc"
