#include "window/screenfit.h"
#include "windowtest.h"

#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QTextBlock>

using namespace verlis;

// Each row of the text as the field lays it out and scrolls it: first baseline (in
// the window), left of its first and second visual row, right, bottom (in the
// viewport), and how many visual rows it takes.
struct ShownRow {
    qreal baseline, left, turnedLeft, right, bottom;
    int rows;
};
static QList<ShownRow> shownRows(const TextField *field, const QWidget *window)
{
    QList<ShownRow> rows;
    const qreal scroll = field->verticalScrollBar()->value();
    const qreal top = field->viewport()->mapTo(window, QPoint(0, 0)).y() - scroll;
    for (QTextBlock block = field->document()->begin(); block.isValid(); block = block.next()) {
        const QTextLayout *layout = block.layout();
        const QRectF rect = field->document()->documentLayout()->blockBoundingRect(block);
        const QTextLine first = layout->lineAt(0), turned = layout->lineAt(layout->lineCount() - 1);
        qreal right = 0;
        for (int i = 0; i < layout->lineCount(); ++i)
            right = qMax(right, layout->lineAt(i).x() + layout->lineAt(i).naturalTextWidth());
        rows.append({top + rect.top() + first.y() + first.ascent(), rect.left() + first.x(),
                     rect.left() + turned.x(), rect.left() + right, rect.bottom() - scroll,
                     layout->lineCount()});
    }
    return rows;
}

class TestMainWindow : public WindowTest {
    Q_OBJECT

    // The label page in front, line i on page i % 10.
    void showLabelPage()
    {
        for (int i = 0; i < 14; ++i)
            w->selection().setWhatPage(i, qint8(i % 10));
        w->PagePanel1()->setValue(mainWindow::LabelPage);
        w->makePoetry();
    }

private slots:
    void layoutPassFollowsTheWindow_data()
    {
        QTest::addColumn<QSize>("asked");
        QTest::addColumn<int>("row");
        QTest::newRow("below the minimum stops at 480") << QSize(300, 300) << 22;
        QTest::newRow("407 / 17 truncated, not rounded") << QSize(900, 503) << 23;
    }

    void layoutPassFollowsTheWindow()
    {
        QFETCH(QSize, asked);
        QFETCH(int, row);
        resize(asked);
        const int W = qMax(asked.width(), 480), H = qMax(asked.height(), 480);
        const int offsets[] = {0, 1, 2, 3, 5, 6, 7, 8, 10, 11, 12, 14, 15, 16}; // stanza gaps
        for (int i = 0; i < 14; ++i) {
            const int top = 48 + offsets[i] * row;
            QCOMPARE(w->controlRect(w->pageLabel(i)), QRect(48, top, 32, row));
            QCOMPARE(w->controlRect(w->textLabel(i)), QRect(84, top, W - 168, row));
            QCOMPARE(w->controlRect(w->LeftArrowLabel(i)), QRect(W - 84, top, 20, row));
            QCOMPARE(w->controlRect(w->rightArrowLabel(i)), QRect(W - 64, top, 20, row));
        }
        QCOMPARE(w->controlRect(w->PagePanel1()), QRect(12, 10, W - 24, H - 20));
        QCOMPARE(w->controlRect(w->TextField1()), QRect(79, 34, W - 110, H - 68));
        QCOMPARE(w->controlRect(w->noField()), QRect(20, 34, 40, H - 68));
        QCOMPARE(w->controlRect(w->DefaultListbox()), QRect(46, 37, W - 92, H - 109));
        // The reading text follows its field's height, whatever mainSize says.
        QCOMPARE(w->TextField1()->TextSize(), float(H - 68) / 26.0f);
    }

    void moveRecordsOnlyAndResizeRunsThePasses()
    {
        app->prefs.mainItalic = true; // not yet applied: a move must not apply it
        w->move(150, 160);
        QTRY_COMPARE(QPoint(app->prefs.MWLeft, app->prefs.MWTop), QPoint(w->Left(), w->Top()));
        QVERIFY(!w->TextField1()->textStyle().Italic);
        resize(QSize(640, 500));
        QVERIFY(w->TextField1()->textStyle().Italic);
        w->grab();
        resize(QSize(640, 700)); // the same poem and face, drawn at the new height's size
        w->grab();
        QCOMPARE(float(w->TextField1()->drawnSize()), (700 - 68) / 26.0f);
    }

    void makePoetryAndReadTextKeepTheReadingPage()
    {
        for (int i = 0; i < 14; ++i)
            w->selection().setWhatPage(i, qint8((i + 3) % 10));
        w->PagePanel1()->setValue(mainWindow::ImportPage);
        w->makePoetry();
        QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ReadingPage));
        const QString poem = w->TextField1()->Text();
        QCOMPARE(poem.section(QChar(13), 3, 6), QString("7-4\r\r8-5\r9-6")); // a stanza's gap
        QCOMPARE(w->noField()->Text(), QString("4\r5\r6\r7\r\r8\r9\r10\r1\r\r2\r3\r4\r\r5\r6\r7"));
        // A new book sends the selection home but leaves the poem on screen.
        w->readText(m_dir.filePath("Verlis.txt"));
        QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ReadingPage));
        QCOMPARE(w->TextField1()->Text(), poem);
        QCOMPARE(w->whatPage(0), qint8(0));
        // A file that can't be read leaves no book, and nothing to compose.
        w->readText(m_dir.filePath("missing.txt"));
        QCOMPARE(w->DefaultListbox()->ListCount(), 0);
        QVERIFY(!w->makePBtn()->isEnabled());
        // The third heading, blank on screen, is named for a screen reader (child 0: the corner).
        QCOMPARE(w->DefaultListbox()->horizontalHeaderItem(2)->text(), QString(" "));
        QAccessibleInterface *table = QAccessible::queryAccessibleInterface(w->DefaultListbox());
        QVERIFY(table && table->child(3));
        QCOMPARE(table->child(3)->text(QAccessible::Name), QString("本文"));
    }

    void appearanceReachesEveryLineAndTheFocus()
    {
        app->prefs.BshowNumber = true;
        app->prefs.mainSize = 30;
        app->prefs.mainBold = app->prefs.mainItalic = app->prefs.mainUnderline = true;
        w->PagePanel1()->setFocus();
        app->setAppearance();
        QCOMPARE(QApplication::focusWidget(), w->TextField1());
        QTest::keyClick(w->TextField1(), Qt::Key_Tab); // the numbers come next by Tab
        QCOMPARE(QApplication::focusWidget(), w->noField());
        for (int i = 0; i < 28; ++i) { // text and page number of each line
            const QFont f = (i < 14 ? w->textLabel(i) : w->pageLabel(i - 14))->font();
            QVERIFY2(f.bold() && f.italic() && f.underline() && QFontInfo(f).pixelSize() == 30,
                     qPrintable(QString::number(i)));
        }
    }

    void readingRowsStandLevelAndWhole_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("page");
        QTest::addColumn<double>("least"); // the poem's size, up to TextSize; the numbers' but "10"
        QTest::addColumn<int>("turns");    // the visual rows of the fourth line, at least
        QTest::addColumn<bool>("scrolls");
        QTest::newRow("pixels, not points") << QSize(552, 640) << 0 << 572 / 26.0 << 1 << false;
        QTest::newRow("10 not wrapped") << QSize(1200, 900) << 9 << 832 / 26.0 << 1 << false;
        QTest::newRow("10 not clipped") << QSize(1500, 1100) << 9 << 1032 / 26.0 << 1 << false;
        QTest::newRow("row-breaking characters")
            << QSize(552, 516) << 1 << 448 / 26.0 << 1 << false;
        QTest::newRow("a 92-character line turns over near TextSize, all 14 numbers shown")
            << QSize(552, 516) << 3 << 15.0 << 2 << false;
        QTest::newRow("a 4,096-character line scrolls at the floor")
            << QSize(552, 516) << 4 << 11.0 << 2 << true;
    }

    void readingRowsStandLevelAndWhole()
    {
        QFETCH(QSize, size);
        QFETCH(int, page);
        QFETCH(double, least);
        QFETCH(int, turns);
        QFETCH(bool, scrolls);
        QStringList book(140, QStringLiteral("春の野にすみれ摘みにと来し我ぞ野を"));
        std::fill(book.begin() + 14, book.begin() + 28,
                  QStringLiteral("春の野に\u2028す\u2029み\u0085れ\v摘\f\x01み"));
        book[45] = QStringLiteral("See COMMAND EXECUTION ENVIRONMENT for a description of "
                                  "subshells and a subshell environment."); // bash(1)
        book[59] = book[0].repeated(241).left(4096);
        QVERIFY(writeBook(m_dir.filePath("long.txt"), book));
        w->readText(m_dir.filePath("long.txt"));
        for (int i = 0; i < 14; ++i)
            w->selection().setWhatPage(i, qint8(page));
        w->makePoetry();
        app->prefs.BshowNumber = true;
        resize(size);
        app->setAppearance(); // the numbers shown at any size
        w->grab();            // paints, and so lays out, what a reader would see
        TextField *poem = w->TextField1(), *numbers = w->noField();
        poem->verticalScrollBar()->setValue(poem->verticalScrollBar()->maximum());
        const auto text = shownRows(poem, w), number = shownRows(numbers, w);
        QVERIFY(text.size() == 17 && number.size() == 17);
        for (int row = 0; row < 17; ++row) {
            QVERIFY2(qAbs(text[row].baseline - number[row].baseline) < 1,
                     qPrintable(QString::number(row)));
            QCOMPARE(text[row].rows > 1, row == 3 && turns > 1);
            QVERIFY(number[row].left >= 0 && number[row].right <= numbers->viewport()->width());
            QVERIFY(text[row].right <= poem->viewport()->width());
        }
        QVERIFY(text[3].rows >= turns && (turns == 1 || text[3].turnedLeft > text[3].left));
        QVERIFY(text[16].bottom <= poem->viewport()->height());
        QCOMPARE(poem->verticalScrollBar()->isVisible(), scrolls);
        poem->selectAll(); // a line turned over is still one line of the book
        poem->copy();
        QCOMPARE(QApplication::clipboard()->text().count('\n'), 16);
        QVERIFY2(poem->drawnSize() > least - 0.01 && poem->drawnSize() < poem->TextSize() + 0.01,
                 qPrintable(QString::number(poem->drawnSize())));
        QVERIFY(page == 9 ? numbers->drawnSize() < poem->drawnSize()
                          : qAbs(numbers->drawnSize() - poem->drawnSize()) < 0.01);
    }

    void storedGeometryIsUsedWhileItCanBeReached()
    {
        // Two screens side by side, the second lower.
        const QList<QRect> areas{QRect(0, 0, 1600, 1200), QRect(1600, 0, 1920, 1080)};
        const QRect cases[][2] = {
            {QRect(-452, 100, 552, 600), QRect(-452, 100, 552, 600)},  // 100 px of title left
            {QRect(-453, 100, 552, 600), QRect(0, 100, 552, 600)},     // 99 px: moved in
            {QRect(3420, 100, 552, 600), QRect(3420, 100, 552, 600)},  // overhang right
            {QRect(300, -1, 552, 600), QRect(300, 0, 552, 600)},       // title above the top
            {QRect(300, 1179, 552, 600), QRect(300, 1179, 552, 600)},  // overhang bottom
            {QRect(3000, 1080, 552, 600), QRect(2968, 480, 552, 600)}, // below the second
            {QRect(100, 100, 552, 1300), QRect(100, 0, 552, 1200)},    // taller than its screen
            {QRect(-975, -1451, 25772, 26894), QRect(1600, 0, 1920, 1080)}}; // larger, off
        for (const auto &[stored, placed] : cases)
            QCOMPARE(placeFrameOnScreens(stored, areas, QSize(480, 480)), placed);
        // Never smaller than the smallest window, even on a lower screen.
        QCOMPARE(fitFrameInside(cases[7][0], areas, QSize(480, 1100)), QRect(1600, 0, 1920, 1100));
    }

    void labelPageWhichIsNeverShownAnswersThePointer()
    {
        for (int k = 0; k < 8; ++k) { // left or right, lines 0 and 9 (both wrap), Shift: all
            showLabelPage();
            const int step = k & 1 ? 1 : -1, line = k & 2 ? 9 : 0;
            Label *arrow = step > 0 ? w->rightArrowLabel(line) : w->LeftArrowLabel(line);
            QTest::mouseClick(arrow, Qt::LeftButton, k & 4 ? Qt::ShiftModifier : Qt::NoModifier);
            for (int i = 0; i < 14; ++i)
                QCOMPARE(w->pageLabel(i)->Text(),
                         QString::number((i + (i == line || k & 4 ? step : 0) + 10) % 10 + 1));
            QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::LabelPage));
        }
        showLabelPage(); // a page number draws its own line only
        for (int n = 0; n < 20; ++n)
            QTest::mouseClick(w->pageLabel(12), Qt::LeftButton);
        QCOMPARE(w->textLabel(12)->Text(), QStringLiteral("%1-13").arg(w->whatPage(12) + 1));
        for (int i = 0; i < 14; ++i)
            QVERIFY(i == 12 || w->whatPage(i) == i % 10);
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
