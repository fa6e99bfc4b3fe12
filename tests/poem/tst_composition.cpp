#include "poem/composition.h"

#include <QTest>

using namespace verlis;

// Row placement is tested through the window; here, the exact text form.
class TestComposition : public QObject {
    Q_OBJECT
private slots:
    void emptyBookGivesSeventeenEmptyRowsAndPageNumbers();
};

void TestComposition::emptyBookGivesSeventeenEmptyRowsAndPageNumbers()
{
    Selection selection;
    selection.setWhatPage(13, 9);
    const ComposedPoem poem = composePoem(PoemBook(), selection);
    QCOMPARE(poem.text, QString(16, RowBreak));
    const QString expected = QStringLiteral("1\r1\r1\r1\r\r1\r1\r1\r1\r\r1\r1\r1\r\r1\r1\r10");
    QCOMPARE(poem.numbers, expected);
    QCOMPARE(poem.pageNumbers[13], QStringLiteral("10"));
}

QTEST_GUILESS_MAIN(TestComposition)
#include "tst_composition.moc"
