#include "bookfile.h"
#include "menus/menubar1.h"
#include "menus/shortcut.h"
#include "testapp.h"
#include "window/mainwindow.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QSet>
#include <QTest>

using namespace verlis;

namespace {

// One line per item: its menu, name, caption and key sequence as Qt reads it.
QStringList describe(const QMenu *menu)
{
    QStringList lines;
    for (QAction *item : menu->actions()) {
        lines << QStringLiteral("%1 %2 %3 %4")
                     .arg(menu->objectName(), item->objectName(),
                          item->isSeparator() ? QStringLiteral("-") : MenuBar1::Text(item),
                          item->shortcut().toString(QKeySequence::PortableText));
        if (item->menu())
            lines << describe(item->menu());
    }
    return lines;
}

} // namespace

class TestMenuBar : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void shortcutNotations_data();
    void shortcutNotations();
    void theTreeInItsOrder();
    void noTwoItemsShareAKey();
    void enablingFollowsThePanelPage_data();
    void enablingFollowsThePanelPage();
    void keyEquivalentsObeyTheEnabling();

private:
    QTemporaryDir m_dir;
    std::unique_ptr<TestApp> m_t;
    mainWindow *w = nullptr;
    MenuBar1 *bar = nullptr;
};

void TestMenuBar::initTestCase()
{
    m_t = TestApp::started(m_dir, numberedBook());
    QVERIFY(m_t);
    w = &m_t->app->window();
    bar = &m_t->app->menuBar();
    QVERIFY(QTest::qWaitForWindowActive(w));
}

void TestMenuBar::init()
{
    w->readText(m_dir.filePath("Verlis.txt"));
    w->makePBtn()->click();
    w->activateWindow();
}

void TestMenuBar::shortcutNotations_data()
{
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<QKeySequence>("sequence");
    QTest::newRow("design") << "Cmd+Shift+1" << QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_1);
    QTest::newRow("option") << "Cmd+Option+1" << QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_1);
    QTest::newRow("control") << "Cmd+Control+B" << QKeySequence(Qt::CTRL | Qt::META | Qt::Key_B);
    QTest::newRow("lower key") << "Cmd+Shift+r" << QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R);
    QTest::newRow("bracket") << "Cmd+]" << QKeySequence(Qt::CTRL | Qt::Key_BracketRight);
    QTest::newRow("run-time") << "command-shift-0"
                              << QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_0);
    QTest::newRow("run-time option")
        << "command-option-u" << QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_U);
    QTest::newRow("none") << "" << QKeySequence();
}

void TestMenuBar::shortcutNotations()
{
    QFETCH(QString, shortcut);
    QFETCH(QKeySequence, sequence);
    QCOMPARE(keySequenceFor(shortcut), sequence);
}

void TestMenuBar::theTreeInItsOrder()
{
    QStringList titles;
    QStringList lines;
    for (QAction *top : bar->actions()) {
        titles << top->text();
        lines << describe(top->menu());
    }
    QCOMPARE(titles, (QStringList{"ファイル", "編集", "表示", "生成", "前のページ", "次のページ"}));
    QCOMPARE(lines.first(), QStringLiteral("FileMenu FileQuit 終了 Ctrl+Q"));
    QCOMPARE(bar->item("FileQuit")->menuRole(), QAction::QuitRole);
    QCOMPARE(bar->item("aboutMenu")->menuRole(), QAction::AboutRole);
    // The font list ends its submenu, after the designed items, in the
    // platform's order; the submenu is followed by the rest of "表示".
    const qsizetype font = lines.indexOf(QStringLiteral("hyoujiFont UntitledSeparator - "));
    QVERIFY(font > 0);
    QCOMPARE(lines.mid(font + 1, 4),
             (QStringList{"hyoujiFont fontName Alpha ", "hyoujiFont fontName Beta ",
                          "hyoujiFont fontName Gamma ", "hyoujiMenu menuBackColor 背景色... "}));
    QCOMPARE(lines[lines.indexOf("hyoujiFont fontBold ボールド Meta+Ctrl+B") - 1],
             QStringLiteral("hyoujiMenu hyoujiFont フォント "));
    // The line items, designed and made at start, with their keys.
    const QString keys = "1234567890UIOP";
    const qsizetype prev = lines.indexOf(QStringLiteral("pageMenu UntitledSeparator1 - ")) + 1;
    const qsizetype next =
        lines.indexOf(QStringLiteral("次のページMenu UntitledSeparator2 - ")) + 1;
    QCOMPARE(lines.size(), next + 14);
    for (int i = 0; i < 14; ++i) {
        QCOMPARE(
            lines[prev + i],
            QStringLiteral("pageMenu menuPrevLine %1行目 Ctrl+Alt+%2").arg(i + 1).arg(keys[i]));
        QCOMPARE(lines[next + i], QStringLiteral("次のページMenu menuNextLine %1行目 Ctrl+Shift+%2")
                                      .arg(i + 1)
                                      .arg(keys[i]));
        QCOMPARE(MenuBar1::Index(bar->item("menuNextLine", i)), i);
    }
    QCOMPARE(bar->item("menuNextLine", 14), nullptr);
    // Both notations are kept as written.
    QCOMPARE(MenuBar1::KeyboardShortcut(bar->item("menuNextLine", 0)),
             QStringLiteral("Cmd+Shift+1"));
    QCOMPARE(MenuBar1::KeyboardShortcut(bar->item("menuNextLine", 9)),
             QStringLiteral("command-shift-0"));
    // Handlers bound to names that have no item.
    QCOMPARE(bar->item("fontLarger"), nullptr);
    // Every item is found by name among the window's children, once.
    for (const char *name : {"menuReset", "UntitledSeparator3", "次のページMenu", "hyoujiFont"})
        QCOMPARE(w->findChildren<QAction *>(QString::fromUtf8(name)).size(), 1);
}

void TestMenuBar::noTwoItemsShareAKey()
{
    QHash<QKeySequence, QString> owners;
    int withKeys = 0;
    for (QAction *item : w->findChildren<QAction *>()) {
        for (const QKeySequence &key : item->shortcuts()) {
            QVERIFY2(!owners.contains(key), qPrintable(key.toString() + " is on " + owners[key] +
                                                       " and " + item->objectName()));
            owners.insert(key, item->objectName());
            ++withKeys;
        }
        QVERIFY(item->shortcuts().size() <= 1); // no second sequence for one key
    }
    QCOMPARE(withKeys, 3 + 4 + 3 + 2 + 2 + 28);
}

void TestMenuBar::enablingFollowsThePanelPage_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("import page") << int(mainWindow::ImportPage);
    QTest::newRow("label page") << int(mainWindow::LabelPage);
    QTest::newRow("reading page") << int(mainWindow::ReadingPage);
}

void TestMenuBar::enablingFollowsThePanelPage()
{
    QFETCH(int, page);
    w->PagePanel1()->setValue(page);
    const bool reading = page == mainWindow::ReadingPage;
    for (const char *name :
         {"aboutMenu", "menuInportText", "menuReset", "menuShuffle", "MClose", "FileQuit"})
        QVERIFY2(bar->item(name)->isEnabled(), name);
    for (const char *name :
         {"fontBold", "fontItalic", "fontUnderline", "fontColor", "menuBackColor", "menuShowNumber",
          "menuNextAllLine", "menuPrevAllLine"})
        QCOMPARE(bar->item(name)->isEnabled(), reading);
    for (const char *name : {"fontName", "menuNextLine", "menuPrevLine"})
        for (QAction *member : bar->array(QString::fromLatin1(name)))
            QCOMPARE(member->isEnabled(), reading);
    for (const char *name : {"EditUndo", "EditCut", "EditPaste", "EditClear"})
        QVERIFY(!bar->item(name)->isEnabled());
}

void TestMenuBar::keyEquivalentsObeyTheEnabling()
{
    QVERIFY(QTest::qWaitForWindowActive(w));
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ReadingPage));
    QTest::keyClick(w, Qt::Key_BracketRight, Qt::ControlModifier);
    for (int i = 0; i < 14; ++i)
        QCOMPARE(w->whatPage(i), qint8(1));
    QTest::keyClick(w, Qt::Key_P, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(w->whatPage(13), qint8(0));
    QTest::keyClick(w, Qt::Key_0, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(w->whatPage(9), qint8(2));

    // On the import page the turning keys do nothing; reset and shuffle work.
    w->PagePanel1()->setValue(mainWindow::ImportPage);
    const auto before = w->selection().pages();
    QTest::keyClick(w, Qt::Key_BracketRight, Qt::ControlModifier);
    QTest::keyClick(w, Qt::Key_1, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(w->selection().pages(), before);
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ImportPage));
    QTest::keyClick(w, Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ReadingPage));
    for (int i = 0; i < 14; ++i)
        QCOMPARE(w->whatPage(i), before[0]);
}

QTEST_MAIN(TestMenuBar)
#include "tst_menubar.moc"
