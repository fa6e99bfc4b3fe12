#include "poem/composition.h"
#include "poem/poemfit.h"

#include <QTest>

#include <algorithm>
#include <numeric>

using namespace verlis;

// A line of `letters` pieces: letters half the size wide with a space after
// every `word` of them, or with `word` 0 ideographs as wide as the size.
static MeasuredRow line(int letters, int word)
{
    MeasuredRow row;
    for (int i = 0; i < letters; ++i) {
        const bool space = word > 0 && i % (word + 1) == word;
        row.append({word == 0 ? 1.0 : space ? 0.25 : 0.5, word == 0 || space, space});
    }
    return row;
}

class TestPoemFit : public QObject {
    Q_OBJECT
private slots:
    void wholePoemAsLargeAsItFits_data()
    {
        QTest::addColumn<int>("letters"); // of each line
        QTest::addColumn<int>("first");   // of the first line
        QTest::addColumn<int>("word");
        QTest::addColumn<QSize>("window");
        QTest::addColumn<double>("least");
        QTest::addColumn<double>("most");
        QTest::addColumn<int>("turned"); // lines that take more than one visual row
        QTest::addColumn<bool>("scrolls");
        const double full = 448 / 26.0;
        QTest::newRow("all fit: exactly TextSize")
            << 40 << 40 << 5 << QSize(552, 516) << full << full << 0 << false;
        QTest::newRow("every line a little too wide: smaller, none turns")
            << 60 << 60 << 5 << QSize(552, 516) << 15.9 << 16.1 << 0 << false;
        QTest::newRow("one line far too wide: turns over near TextSize")
            << 40 << 100 << 5 << QSize(552, 516) << 16.0 << full - 0.5 << 1 << false;
        QTest::newRow("a Japanese line turns anywhere, twice rather than smaller")
            << 15 << 60 << 0 << QSize(552, 516) << 15.7 << 16.0 << 1 << false;
        QTest::newRow("many long words in a small window: the floor, and it scrolls")
            << 300 << 300 << 300 << QSize(480, 480) << 11.0 << 11.0 << 14 << true;
    }

    void wholePoemAsLargeAsItFits()
    {
        QFETCH(int, letters);
        QFETCH(int, first);
        QFETCH(int, word);
        QFETCH(QSize, window);
        QFETCH(double, least);
        QFETCH(double, most);
        QFETCH(int, turned);
        QFETCH(bool, scrolls);
        QList<MeasuredRow> rows; // the reading page's rows, stanza gaps and all
        for (int i = 0; i < LineCount; ++i) {
            rows.append(line(i == 0 ? first : letters, word));
            if (endsStanza(i))
                rows.append(MeasuredRow());
        }
        // The reading field of that window, less its margins.
        const QSizeF room(window.width() - 115, window.height() - 72);
        const double textSize = (window.height() - 68) / 26.0;
        const int rowHeight = (window.height() - 72) / PoemRows;
        const PoemFit fit = fitPoem(rows, room, textSize, rowHeight);
        QVERIFY2(fit.size >= least && fit.size <= most, qPrintable(QString::number(fit.size)));
        QVERIFY(qAbs(fit.rowHeight - rowHeight * fit.size / textSize) < 1); // set as at TextSize
        QCOMPARE(std::ranges::count_if(fit.visualRows, [](int n) { return n > 1; }), turned);
        const int taken = std::accumulate(fit.visualRows.cbegin(), fit.visualRows.cend(), 0);
        QCOMPARE(taken * fit.rowHeight > room.height(), scrolls); // only at the floor
    }
};

QTEST_GUILESS_MAIN(TestPoemFit)
#include "tst_poemfit.moc"
