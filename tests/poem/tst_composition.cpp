#include "poem/composition.h"

#include <QTest>

using namespace verlis;

class TestComposition : public QObject {
    Q_OBJECT
private slots:
    void emptyBookGivesSeventeenEmptyRowsAndPageNumbers();
    void linesStandOnTheirRowsWithStanzaGaps();
    void pageNineShowsTen();
};

void TestComposition::emptyBookGivesSeventeenEmptyRowsAndPageNumbers()
{
    const PoemBook book;
    const Selection selection;
    const ComposedPoem poem = composePoem(book, selection);
    QCOMPARE(poem.text, QString(16, RowBreak));
    const QString cr(RowBreak);
    const QString expected = "1" + cr + "1" + cr + "1" + cr + "1" + cr + cr + "1" + cr + "1" +
                             cr + "1" + cr + "1" + cr + cr + "1" + cr + "1" + cr + "1" + cr + cr +
                             "1" + cr + "1" + cr + "1";
    QCOMPARE(poem.numbers, expected);
    QVERIFY(!poem.text.contains('\n'));
}

void TestComposition::linesStandOnTheirRowsWithStanzaGaps()
{
    PoemBook book;
    Selection selection;
    for (int page = 0; page < PoemBook::Pages; ++page)
        for (int line = 0; line < PoemBook::Lines; ++line)
            book.setLine(page, line, QStringLiteral("p%1l%2").arg(page).arg(line));
    for (int line = 0; line < Selection::Lines; ++line)
        selection.setWhatPage(line, qint8((line * 7) % 10));

    const ComposedPoem poem = composePoem(book, selection);
    const QStringList rows = poem.text.split(RowBreak);
    const QStringList numbers = poem.numbers.split(RowBreak);
    QCOMPARE(rows.size(), 17);
    QCOMPARE(numbers.size(), 17);
    const int rowOf[] = {0, 1, 2, 3, 5, 6, 7, 8, 10, 11, 12, 14, 15, 16};
    for (int line = 0; line < Selection::Lines; ++line) {
        const int page = selection.whatPage(line);
        QCOMPARE(rows[rowOf[line]], QStringLiteral("p%1l%2").arg(page).arg(line));
        QCOMPARE(numbers[rowOf[line]], QString::number(page + 1));
        QCOMPARE(poem.lineTexts[line], book.Line(page, line));
        QCOMPARE(poem.pageNumbers[line], QString::number(page + 1));
    }
    for (int gap : {4, 9, 13}) {
        QVERIFY(rows[gap].isEmpty());
        QVERIFY(numbers[gap].isEmpty());
    }
}

void TestComposition::pageNineShowsTen()
{
    PoemBook book;
    Selection selection;
    selection.setWhatPage(13, 9);
    const ComposedPoem poem = composePoem(book, selection);
    QCOMPARE(poem.pageNumbers[13], QStringLiteral("10"));
    QVERIFY(poem.numbers.endsWith(QStringLiteral("10")));
}

QTEST_GUILESS_MAIN(TestComposition)
#include "tst_composition.moc"
