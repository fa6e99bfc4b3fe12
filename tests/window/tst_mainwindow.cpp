#include "bookfile.h"
#include "menus/menubar1.h"
#include "testapp.h"
#include "poem/composition.h"
#include "window/layoutpass.h"
#include "window/mainwindow.h"
#include "window/screenfit.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QScrollBar>
#include <QTextBlock>
#include <QPushButton>
#include <QTest>

using namespace verlis;

class TestMainWindow : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void layoutPassNumbers_data();
    void layoutPassNumbers();
    void lockedControlsFollowTheWindowToItsMinimum();
    void makePoetryFillsLabelsAndFieldsAndShowsTheReadingPage();
    void readTextReplacesTheBookButNotThePoemOnScreen();
    void aFileThatCanNotBeReadEmptiesTheBook();
    void appearanceFollowsSettingsAndHeight();
    void moveRecordsOnlyAndResizeRunsThePasses();
    void readingRowsStandLevelAndWhole_data();
    void storedGeometryIsKeptOnScreen_data();
    void storedGeometryIsKeptOnScreen();
    // The label page, which the program never shows, driven by the pointer.
    void arrowsTurnOneLineOrWithShiftAll_data();
    void arrowsTurnOneLineOrWithShiftAll();
    void hoverBlackensAndAPressGreys();
    void wordLabelsAndPageNumbers();
    void readingRowsStandLevelAndWhole();

private:
    QTemporaryDir m_dir;
    std::unique_ptr<TestApp> m_t;
    mainWindow *w = nullptr;
    App *app = nullptr;
};

void TestMainWindow::initTestCase()
{
    m_t = TestApp::started(m_dir, numberedBook());
    QVERIFY(m_t);
    app = m_t->app.get();
    w = &app->window();
    QVERIFY(QTest::qWaitForWindowExposed(w));
}

void TestMainWindow::init()
{
    app->prefs = Preferences{};
    normalisePreferences(app->prefs, mainWindow::Limits);
    w->setClientGeometry(100, 100, 552, 516);
    QTRY_COMPARE(w->Height(), 516);
    w->readText(m_dir.filePath("Verlis.txt"));
    w->makePBtn()->click();
}

void TestMainWindow::layoutPassNumbers_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("textWidth");
    QTest::newRow("default 552 x 516") << 552 << 516 << 24 << 384;
    QTest::newRow("minimum 480 x 480") << 480 << 480 << 22 << 312;
    QTest::newRow("wide and tall") << 900 << 700 << 35 << 732;
    QTest::newRow("407 / 17 truncated, not rounded") << 552 << 503 << 23 << 384;
}

void TestMainWindow::layoutPassNumbers()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, row);
    QFETCH(int, textWidth);
    w->setClientGeometry(100, 100, width, height);
    QTRY_COMPARE(w->Width(), width);
    QTRY_COMPARE(w->Height(), height);
    const int offsets[] = {0, 1, 2, 3, 5, 6, 7, 8, 10, 11, 12, 14, 15, 16};
    for (int i = 0; i < 14; ++i) {
        const int top = 48 + offsets[i] * row;
        QCOMPARE(w->controlRect(w->pageLabel(i)), QRect(48, top, 32, row));
        QCOMPARE(w->controlRect(w->textLabel(i)), QRect(84, top, textWidth, row));
        QCOMPARE(w->controlRect(w->LeftArrowLabel(i)), QRect(width - 84, top, 20, row));
        QCOMPARE(w->controlRect(w->rightArrowLabel(i)), QRect(width - 64, top, 20, row));
        QCOMPARE(w->LeftArrowLabel(i)->Text(), QStringLiteral("←"));
        QCOMPARE(w->rightArrowLabel(i)->Text(), QStringLiteral("→"));
    }
    // The word labels keep their distance to the right edge.
    QCOMPARE(w->controlRect(w->resetBtn()), QRect(width - 66, 16, 54, 20));
    QCOMPARE(w->controlRect(w->numberBtn()), QRect(width - 246, 16, 54, 20));
}

void TestMainWindow::lockedControlsFollowTheWindowToItsMinimum()
{
    w->setClientGeometry(100, 100, 300, 300); // below the minimum
    QTRY_COMPARE(w->Width(), 480);
    QTRY_COMPARE(w->Height(), 480);
    QCOMPARE(w->controlRect(w->PagePanel1()), QRect(12, 10, 456, 460));
    QCOMPARE(w->controlRect(w->TextField1()), QRect(79, 34, 370, 412));
    QCOMPARE(w->controlRect(w->noField()), QRect(20, 34, 40, 412));
    QCOMPARE(w->controlRect(w->DefaultListbox()), QRect(46, 37, 388, 371));
    w->PagePanel1()->setValue(mainWindow::ImportPage);
    const int tenth = w->DefaultListbox()->viewport()->width() / 10;
    QTRY_COMPARE(w->DefaultListbox()->columnWidth(0), tenth);
    QCOMPARE(w->DefaultListbox()->columnWidth(1), tenth);
}

void TestMainWindow::makePoetryFillsLabelsAndFieldsAndShowsTheReadingPage()
{
    Selection &s = w->selection();
    for (int i = 0; i < 14; ++i)
        s.setWhatPage(i, qint8((i + 3) % 10));
    w->PagePanel1()->setValue(mainWindow::ImportPage);
    w->makePoetry();
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ReadingPage));
    const QStringList rows = w->TextField1()->Text().split(QChar(13));
    const QStringList numbers = w->noField()->Text().split(QChar(13));
    QCOMPARE(rows.size(), 17);
    for (int i = 0, row = 0; i < 14; row += endsStanza(i) ? 2 : 1, ++i) {
        const int page = (i + 3) % 10;
        const QString line = QStringLiteral("%1-%2").arg(page + 1).arg(i + 1);
        QCOMPARE(w->textLabel(i)->Text(), line);
        QCOMPARE(w->pageLabel(i)->Text(), QString::number(page + 1));
        QCOMPARE(rows[row], line);
        QCOMPARE(numbers[row], QString::number(page + 1));
    }
    // From the label page the panel stays where it is.
    w->PagePanel1()->setValue(mainWindow::LabelPage);
    w->makePoetry();
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::LabelPage));
}

void TestMainWindow::readTextReplacesTheBookButNotThePoemOnScreen()
{
    w->selection().turnAllLines(Direction::Forwards);
    w->makePoetry();
    const QString onScreen = w->TextField1()->Text();
    const QString other = m_dir.filePath("other.txt");
    QVERIFY(writeBook(other, {"", "甲", "", "乙", "   ", "丙", "丁", "戊", "己", "庚", "辛", "壬",
                              "癸", "子", "丑", "寅", "卯"}));
    w->readText(other);
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ReadingPage));
    for (int i = 0; i < 14; ++i)
        QCOMPARE(w->whatPage(i), qint8(0));
    QCOMPARE(w->TextField1()->Text(), onScreen);
    QCOMPARE(w->Line(0, 0), QStringLiteral("甲"));
    QCOMPARE(w->Line(0, 2), QStringLiteral("   "));
    QCOMPARE(w->Line(0, 13), QStringLiteral("寅"));
    QCOMPARE(w->Line(1, 0), QStringLiteral("卯"));
    QCOMPARE(w->Line(9, 13), QString());
    Listbox *table = w->DefaultListbox();
    QCOMPARE(table->ListCount(), 15);
    QCOMPARE(table->Cell(14, 0), QStringLiteral("2"));
    QCOMPARE(table->Cell(14, 1), QStringLiteral("1"));
    QCOMPARE(table->item(14, 2)->textAlignment() & Qt::AlignHorizontal_Mask, int(Qt::AlignLeft));
    QCOMPARE(table->item(14, 0)->textAlignment() & Qt::AlignHorizontal_Mask, int(Qt::AlignHCenter));
    QVERIFY(w->makePBtn()->isEnabled());

    // No file at all: only the selection goes back to the first page.
    w->selection().turnLine(4, Direction::Forwards);
    w->readText(std::nullopt);
    QCOMPARE(w->whatPage(4), qint8(0));
    QCOMPARE(table->ListCount(), 15);
}

void TestMainWindow::aFileThatCanNotBeReadEmptiesTheBook()
{
    for (const QString &bad : {m_dir.filePath("missing.txt"), m_dir.path()}) {
        w->readText(m_dir.filePath("Verlis.txt"));
        w->readText(bad);
        QCOMPARE(w->DefaultListbox()->ListCount(), 0);
        QVERIFY(!w->makePBtn()->isEnabled());
        QCOMPARE(w->Line(0, 0), QString());
    }
    // The reading page can still be reached: 17 empty rows and the numbers.
    w->selection().setWhatPage(13, 9);
    w->makePoetry();
    QCOMPARE(w->TextField1()->Text(), QString(16, QChar(13)));
    QCOMPARE(w->noField()->Text(), QStringLiteral("1\r1\r1\r1\r\r1\r1\r1\r1\r\r1\r1\r1\r\r1\r1\r10"));
}

void TestMainWindow::appearanceFollowsSettingsAndHeight()
{
    app->setAppearance();
    QCOMPARE(w->TextField1()->height(), 448);
    QCOMPARE(w->TextField1()->TextSize(), 448.0f / 26.0f);
    QCOMPARE(w->noField()->TextSize(), w->TextField1()->TextSize());
    QVERIFY(w->noField()->isHidden());
    QVERIFY(w->pageLabel(3)->isHidden());
    QCOMPARE(QApplication::focusWidget(), w->TextField1());

    app->prefs.BshowNumber = true;
    app->prefs.mainSize = 30;
    app->prefs.mainBold = app->prefs.mainItalic = app->prefs.mainUnderline = true;
    app->prefs.ColorText = 0x0000FF;
    app->prefs.ColorBack = 0x102030;
    app->setAppearance();
    QVERIFY(!w->noField()->isHidden());
    QVERIFY(!w->pageLabel(3)->isHidden());
    QVERIFY(app->menuBar().item("menuShowNumber")->isChecked());
    QVERIFY(app->menuBar().item("fontBold")->isChecked());
    for (int i = 0; i < 14; ++i) {
        for (const Label *label : {w->textLabel(i), w->pageLabel(i)}) {
            const QFont font = label->font();
            QVERIFY2(font.bold() && font.italic() && font.underline(), qPrintable(label->Text()));
            QCOMPARE(QFontInfo(font).pixelSize(), 30);
        }
    }
    QVERIFY(w->TextField1()->textStyle().Bold);
    // mainSize reaches the labels only; colours reach the fields and window only.
    QCOMPARE(w->TextField1()->TextSize(), 448.0f / 26.0f);
    QCOMPARE(w->TextField1()->TextColor(), Color(0x0000FF));
    QCOMPARE(w->noField()->BackColor(), Color(0x102030));
    QCOMPARE(w->BackColor(), Color(0x102030));
    QCOMPARE(w->textLabel(0)->TextColor(), Color(0x000000));
    QCOMPARE(w->pageLabel(0)->TextColor(), Color(0xBFBFBF));
    QTest::keyClick(w->TextField1(), Qt::Key_Tab); // the numbers come next by Tab
    QCOMPARE(QApplication::focusWidget(), w->noField());

    // Width alone leaves the size; height changes it.
    w->setClientGeometry(100, 100, 700, 516);
    QTRY_COMPARE(w->Width(), 700);
    QCOMPARE(w->TextField1()->TextSize(), 448.0f / 26.0f);
    w->setClientGeometry(100, 100, 700, 600);
    QTRY_COMPARE(w->Height(), 600);
    QCOMPARE(w->TextField1()->TextSize(), 532.0f / 26.0f);
    QCOMPARE(QApplication::focusWidget(), w->TextField1());
}

void TestMainWindow::moveRecordsOnlyAndResizeRunsThePasses()
{
    app->prefs.mainItalic = true; // not yet applied: a move must not apply it
    w->move(150, 160);
    QTRY_COMPARE(app->prefs.MWLeft, qint16(w->Left()));
    QCOMPARE(app->prefs.MWTop, qint16(w->Top()));
    QVERIFY(!w->TextField1()->textStyle().Italic);

    w->setClientGeometry(150, 160, 640, 500);
    QTRY_COMPARE(app->prefs.MWWidth, qint16(640));
    QCOMPARE(app->prefs.MWHeight, qint16(500));
    QVERIFY(w->TextField1()->textStyle().Italic);
    QCOMPARE(w->controlRect(w->textLabel(0)).width(), 640 - 168);
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"

namespace {

struct ShownRow {
    qreal baseline; // in the window's coordinates
    qreal left, right; // of the text, in the field's viewport
    qreal bottom;
};

// The rows as the field lays them out; empty where a row took two lines.
QList<ShownRow> shownRows(const TextField *field, const QWidget *window)
{
    QList<ShownRow> rows;
    const QAbstractTextDocumentLayout *layout = field->document()->documentLayout();
    const qreal top = field->viewport()->mapTo(window, QPoint(0, 0)).y();
    for (QTextBlock block = field->document()->begin(); block.isValid(); block = block.next()) {
        if (block.layout()->lineCount() != 1)
            return {};
        const QTextLine line = block.layout()->lineAt(0);
        const QRectF rect = layout->blockBoundingRect(block);
        const qreal left = rect.left() + line.x();
        rows.append({top + rect.top() + line.y() + line.ascent(), left,
                     left + line.naturalTextWidth(), rect.bottom()});
    }
    return rows;
}

} // namespace

void TestMainWindow::readingRowsStandLevelAndWhole_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("page");
    QTest::newRow("smallest window") << 480 << 480 << 0;
    QTest::newRow("17 full-width characters wrap at 552x640") << 552 << 640 << 0;
    QTest::newRow("10 wraps in the number field at 1200x900") << 1200 << 900 << 9;
    QTest::newRow("10 is clipped at 1500x1100") << 1500 << 1100 << 9;
    QTest::newRow("row-breaking characters take a second row") << 552 << 516 << 1;
}

void TestMainWindow::readingRowsStandLevelAndWhole()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, page);
    const QString full = QStringLiteral("春の野にすみれ摘みにと来し我ぞ野を");
    const QString breaking = QStringLiteral("春の野に\u2028す\u2029み\u0085れ\v摘\f\x01み");
    QStringList book;
    for (int n = 0; n < 140; ++n)
        book << (n / 14 == 1 ? breaking : full);
    QVERIFY(writeBook(m_dir.filePath("long.txt"), book));
    w->readText(m_dir.filePath("long.txt"));
    for (int i = 0; i < 14; ++i)
        w->selection().setWhatPage(i, qint8(page));
    w->makePoetry();
    app->prefs.BshowNumber = true;
    app->setAppearance();
    w->setClientGeometry(40, 40, width, height);
    QTRY_COMPARE(w->Height(), height);
    QCOMPARE(w->Width(), width);
    w->grab(); // paints, and so lays out, what a reader would see

    const QList<ShownRow> text = shownRows(w->TextField1(), w);
    const QList<ShownRow> numbers = shownRows(w->noField(), w);
    QCOMPARE(text.size(), 17);
    QCOMPARE(numbers.size(), 17);
    const int fieldWidth = w->noField()->viewport()->width();
    for (int row = 0; row < 17; ++row) {
        QVERIFY2(qAbs(text[row].baseline - numbers[row].baseline) < 1, qPrintable(QString::number(row)));
        QVERIFY(numbers[row].left >= 0 && numbers[row].right <= fieldWidth);
        QVERIFY(text[row].right <= w->TextField1()->viewport()->width());
    }
    QVERIFY(text[16].bottom <= w->TextField1()->viewport()->height());
    QCOMPARE(w->TextField1()->Text().split(QChar(13))[0], book[page * 14]);
    // Where the line fits at its size, the text is drawn at that many pixels.
    if (width == 552 && height == 640)
        QCOMPARE(QFontInfo(w->TextField1()->font()).pixelSize(), qRound(w->TextField1()->TextSize()));
}

void TestMainWindow::storedGeometryIsKeptOnScreen_data()
{
    QTest::addColumn<QRect>("stored");
    QTest::addColumn<QList<QRect>>("areas");
    QTest::addColumn<QRect>("kept");
    const QRect screen(0, 0, 1600, 1200);
    const QRect right(1600, 0, 1920, 1080);
    QTest::newRow("a window that fits is moved") << QRect(300, 200, 700, 600) << QList{screen}
                                               << QRect(300, 200, 700, 600);
    QTest::newRow("a window on the second screen is moved")
        << QRect(1700, 100, 800, 600) << QList{screen, right} << QRect(1700, 100, 800, 600);
    QTest::newRow("random bytes make a window of 25772x26894")
        << QRect(-975, -1451, 25772, 26894) << QList{screen} << screen;
    QTest::newRow("55 pixels left on screen") << QRect(3000, 2500, 552, 600) << QList{screen}
                                              << QRect(1048, 600, 552, 600);
    QTest::newRow("the screen it stood on is gone") << QRect(2000, 100, 552, 600) << QList{screen}
                                                    << QRect(1048, 100, 552, 600);
    QTest::newRow("straddling goes to the screen it overlaps most")
        << QRect(1400, 100, 552, 600) << QList{screen, right} << QRect(1600, 100, 552, 600);
    QTest::newRow("a screen smaller than the smallest window")
        << QRect(10, 10, 552, 600) << QList{QRect(0, 0, 400, 300)} << QRect(0, 0, 480, 480);
}

void TestMainWindow::storedGeometryIsKeptOnScreen()
{
    QFETCH(QRect, stored);
    QFETCH(QList<QRect>, areas);
    QFETCH(QRect, kept);
    QCOMPARE(keptOnScreens(stored, areas, QSize(480, 480)), kept);
}

namespace {

void press(Label *label, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::mouseClick(label, Qt::LeftButton, modifiers, label->rect().center());
}

void hover(Label *label) { QTest::mouseMove(label, label->rect().center()); }

// The label page in front with its page numbers, line i on page i % 10,
// the pointer away.
void showLabelPage(App *app, mainWindow *w)
{
    app->prefs.BshowNumber = true;
    app->setAppearance();
    for (int i = 0; i < 14; ++i)
        w->selection().setWhatPage(i, qint8(i % 10));
    w->PagePanel1()->setValue(mainWindow::LabelPage);
    w->makePoetry();
    QTest::mouseMove(w, QPoint(1, 1));
}

} // namespace

void TestMainWindow::arrowsTurnOneLineOrWithShiftAll_data()
{
    QTest::addColumn<bool>("right");
    QTest::addColumn<bool>("shift");
    QTest::newRow("left") << false << false;
    QTest::newRow("right") << true << false;
    QTest::newRow("shift left turns all") << false << true;
    QTest::newRow("shift right turns all") << true << true;
}

void TestMainWindow::arrowsTurnOneLineOrWithShiftAll()
{
    QFETCH(bool, right);
    QFETCH(bool, shift);
    // Line 9 stands on page 9 and line 0 on page 0: both wrap.
    for (int line : {0, 9}) {
        showLabelPage(app, w);
        press(right ? w->rightArrowLabel(line) : w->LeftArrowLabel(line),
              shift ? Qt::ShiftModifier : Qt::NoModifier);
        const int step = right ? 1 : -1;
        for (int i = 0; i < 14; ++i) {
            const int expected = (i % 10 + (shift || i == line ? step : 0) + 10) % 10;
            QCOMPARE(w->whatPage(i), qint8(expected));
            QCOMPARE(w->pageLabel(i)->Text(), QString::number(expected + 1));
        }
    }
}

void TestMainWindow::hoverBlackensAndAPressGreys()
{
    showLabelPage(app, w);
    for (Label *label : {w->rightArrowLabel(5), w->resetBtn(), w->shuffleBtn()}) {
        QCOMPARE(label->TextColor(), Color(0xBFBFBF));
        hover(label);
        QTRY_COMPARE(label->TextColor(), Color(0x000000));
        press(label);
        QCOMPARE(label->TextColor(), Color(0xBFBFBF));
        QTest::mouseMove(w, QPoint(1, 1));
    }
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::LabelPage));
}

void TestMainWindow::wordLabelsAndPageNumbers()
{
    showLabelPage(app, w);
    w->selection().setWhatPage(0, 6);
    press(w->resetBtn(), Qt::ShiftModifier); // Shift changes nothing here
    for (int i = 0; i < 14; ++i)
        QCOMPARE(w->whatPage(i), qint8(6));

    // A page number draws its own line only.
    showLabelPage(app, w);
    std::array<bool, 10> seen{};
    for (int n = 0; n < 200; ++n) {
        press(w->pageLabel(12));
        seen[size_t(w->whatPage(12))] = true;
        QCOMPARE(w->textLabel(12)->Text(), QStringLiteral("%1-13").arg(w->whatPage(12) + 1));
        QCOMPARE(w->whatPage(11), qint8(1));
    }
    QVERIFY(seen[0] && seen[9]);

    press(w->numberBtn());
    QVERIFY(!app->prefs.BshowNumber);
    QVERIFY(w->pageLabel(0)->isHidden());
    const auto before = w->selection().pages();
    press(w->loadBtn());
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ImportPage));
    QCOMPARE(w->selection().pages(), before);
    QVERIFY(m_t->dialogs->fileRequests.isEmpty());
}
