#include "bookfile.h"
#include "testapp.h"
#include "window/mainwindow.h"

#include <QTest>

using namespace verlis;

// The label page is never shown by the program; these tests show it and
// drive its labels with real pointer events.
class TestPointer : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void arrowsTurnOneLineOrWithShiftAll_data();
    void arrowsTurnOneLineOrWithShiftAll();
    void hoverColoursAndThePressThatGreys();
    void resetAndShuffleWords();
    void pageLabelDrawsOneLine();
    void numberAndTextWords();

private:
    void press(Label *label, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void hover(Label *label);

    QTemporaryDir m_dir;
    std::unique_ptr<TestApp> m_t;
    mainWindow *w = nullptr;
};

void TestPointer::initTestCase()
{
    m_t = TestApp::started(m_dir, numberedBook());
    QVERIFY(m_t);
    w = &m_t->app->window();
    m_t->app->prefs.BshowNumber = true;
    m_t->app->setAppearance();
    QVERIFY(QTest::qWaitForWindowExposed(w));
}

void TestPointer::init()
{
    for (int i = 0; i < 14; ++i)
        w->selection().setWhatPage(i, qint8(i % 10));
    w->PagePanel1()->setValue(mainWindow::LabelPage);
    w->makePoetry();
    QTest::mouseMove(w, QPoint(1, 1)); // away from every label
}

void TestPointer::press(Label *label, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(label, Qt::LeftButton, modifiers, label->rect().center());
}

void TestPointer::hover(Label *label) { QTest::mouseMove(label, label->rect().center()); }

void TestPointer::arrowsTurnOneLineOrWithShiftAll_data()
{
    QTest::addColumn<bool>("right");
    QTest::addColumn<bool>("shift");
    QTest::newRow("left") << false << false;
    QTest::newRow("right") << true << false;
    QTest::newRow("shift left") << false << true;
    QTest::newRow("shift right") << true << true;
}

void TestPointer::arrowsTurnOneLineOrWithShiftAll()
{
    QFETCH(bool, right);
    QFETCH(bool, shift);
    // Line 9 stands on page 9 and line 0 on page 0: both wrap.
    for (int line : {0, 9}) {
        init();
        Label *arrow = right ? w->rightArrowLabel(line) : w->LeftArrowLabel(line);
        press(arrow, shift ? Qt::ShiftModifier : Qt::NoModifier);
        const int step = right ? 1 : -1;
        for (int i = 0; i < 14; ++i) {
            const bool turned = shift || i == line;
            const int expected = ((i % 10) + (turned ? step : 0) + 10) % 10;
            QCOMPARE(w->whatPage(i), qint8(expected));
            QCOMPARE(w->pageLabel(i)->Text(), QString::number(expected + 1));
        }
    }
}

void TestPointer::hoverColoursAndThePressThatGreys()
{
    Label *arrow = w->rightArrowLabel(5);
    QCOMPARE(arrow->TextColor(), Color(0xBFBFBF));
    hover(arrow);
    QTRY_COMPARE(arrow->TextColor(), Color(0x000000));
    // A press greys the arrow under the pointer; a second turns the line again.
    press(arrow);
    QCOMPARE(arrow->TextColor(), Color(0xBFBFBF));
    press(arrow);
    QCOMPARE(arrow->TextColor(), Color(0xBFBFBF));
    QCOMPARE(w->whatPage(5), qint8(7));
    QTest::mouseMove(w, QPoint(1, 1));
    QTRY_COMPARE(arrow->TextColor(), Color(0xBFBFBF));
    hover(arrow);
    QTRY_COMPARE(arrow->TextColor(), Color(0x000000));
}

void TestPointer::resetAndShuffleWords()
{
    w->selection().setWhatPage(0, 6);
    hover(w->resetBtn());
    QTRY_COMPARE(w->resetBtn()->TextColor(), Color(0x000000));
    press(w->resetBtn(), Qt::ShiftModifier); // Shift changes nothing here
    QCOMPARE(w->resetBtn()->TextColor(), Color(0xBFBFBF));
    for (int i = 0; i < 14; ++i)
        QCOMPARE(w->whatPage(i), qint8(6));

    QString before = w->TextField1()->Text();
    int changed = 0;
    for (int n = 0; n < 5; ++n) {
        press(w->shuffleBtn());
        changed += w->TextField1()->Text() != before;
        before = w->TextField1()->Text();
    }
    QVERIFY(changed >= 4);
    QCOMPARE(w->shuffleBtn()->TextColor(), Color(0xBFBFBF));
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::LabelPage));
}

void TestPointer::pageLabelDrawsOneLine()
{
    std::array<bool, 10> seen{};
    for (int n = 0; n < 200; ++n) {
        press(w->pageLabel(12));
        seen[size_t(w->whatPage(12))] = true;
        QCOMPARE(w->textLabel(12)->Text(), QStringLiteral("%1-13").arg(w->whatPage(12) + 1));
        for (int i = 0; i < 12; ++i)
            QCOMPARE(w->whatPage(i), qint8(i % 10));
    }
    QVERIFY(seen[0] && seen[9]);
    QCOMPARE(w->pageLabel(12)->TextColor(), Color(0xBFBFBF));
}

void TestPointer::numberAndTextWords()
{
    App &app = *m_t->app;
    hover(w->numberBtn());
    QTRY_COMPARE(w->numberBtn()->TextColor(), Color(0x000000));
    press(w->numberBtn());
    QVERIFY(!app.prefs.BshowNumber);
    QVERIFY(w->pageLabel(0)->isHidden());
    press(w->numberBtn());
    QVERIFY(app.prefs.BshowNumber);
    QVERIFY(!w->pageLabel(0)->isHidden());
    QCOMPARE(w->numberBtn()->TextColor(), Color(0x000000)); // stays black

    const auto before = w->selection().pages();
    hover(w->loadBtn());
    press(w->loadBtn());
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ImportPage));
    QCOMPARE(w->selection().pages(), before);
    QVERIFY(m_t->dialogs->fileRequests.isEmpty());
}

QTEST_MAIN(TestPointer)
#include "tst_pointer.moc"
