#include "bookfile.h"
#include "menus/commands.h"
#include "menus/menubar1.h"
#include "testapp.h"
#include "window/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
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


class TestCommands : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void generateCommands_data();
    void generateCommands();
    void importEndsOnTheImportPageAlsoAfterACancel();
    void aboutMessage();
    void styleTogglesAndTheirCheckMarks();
    void colourDialogs();
    void fontChoiceAndSizeBounds();
    void editCommandsActOnTheFocusedField();
    void theTreeInItsOrder();
    void noTwoItemsShareAKey();
    void keyEquivalentsObeyTheEnabling();

private:
    void trigger(const QString &name, int index = 0);

    QTemporaryDir m_dir;
    std::unique_ptr<TestApp> m_t;
    App *app = nullptr;
    mainWindow *w = nullptr;
    FakeDialogs *dialogs = nullptr;
};

void TestCommands::initTestCase()
{
    m_t = TestApp::started(m_dir, numberedBook());
    QVERIFY(m_t);
    app = m_t->app.get();
    dialogs = m_t->dialogs.get();
    w = &app->window();
    QVERIFY(QTest::qWaitForWindowExposed(w));
}

void TestCommands::init()
{
    w->readText(m_dir.filePath("Verlis.txt"));
    w->makePBtn()->click();
    *dialogs = FakeDialogs();
}

// As a user would: the item must be usable, then it runs.
void TestCommands::trigger(const QString &name, int index)
{
    QAction *item = app->menuBar().item(name, index);
    QVERIFY2(item, qPrintable(name));
    QVERIFY2(item->isEnabled(), qPrintable(name + " is not enabled"));
    item->trigger();
}

void TestCommands::generateCommands_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<int>("index");
    QTest::addColumn<QList<int>>("before");
    QTest::addColumn<QList<int>>("after");
    const QList<int> mixed{9, 3, 0, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    QTest::newRow("next all") << "menuNextAllLine" << 0 << mixed
                              << QList<int>{0, 4, 1, 6, 0, 2, 3, 4, 5, 6, 7, 8, 9, 0};
    QTest::newRow("previous all") << "menuPrevAllLine" << 0 << mixed
                                  << QList<int>{8, 2, 9, 4, 8, 0, 1, 2, 3, 4, 5, 6, 7, 8};
    QTest::newRow("next line 14 wraps")
        << "menuNextLine" << 13 << mixed << QList<int>{9, 3, 0, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 0};
    QTest::newRow("previous line 3 wraps")
        << "menuPrevLine" << 2 << mixed << QList<int>{9, 3, 9, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    QTest::newRow("reset on line 1's page") << "menuReset" << 0 << mixed << QList<int>(14, 9);
}

void TestCommands::generateCommands()
{
    QFETCH(QString, item);
    QFETCH(int, index);
    QFETCH(QList<int>, before);
    QFETCH(QList<int>, after);
    for (int i = 0; i < 14; ++i)
        w->selection().setWhatPage(i, qint8(before[i]));
    trigger(item, index);
    QStringList expected;
    for (int i = 0; i < 14; ++i) {
        QCOMPARE(w->whatPage(i), qint8(after[i]));
        expected << QStringLiteral("%1-%2").arg(after[i] + 1).arg(i + 1);
    }
    const QStringList rows = w->TextField1()->Text().split(QChar(13));
    QCOMPARE(rows.mid(0, 4), expected.mid(0, 4));
    QCOMPARE(rows.mid(14, 3), expected.mid(11, 3));
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ReadingPage));
}

void TestCommands::importEndsOnTheImportPageAlsoAfterACancel()
{
    trigger("menuNextAllLine");
    const QString poem = w->TextField1()->Text();
    dialogs->nextFiles.push_back(std::nullopt);
    trigger("menuInportText");
    QCOMPARE(dialogs->fileRequests.size(), 1);
    const OpenFileRequest request = dialogs->fileRequests.first();
    QCOMPARE(request.title, QStringLiteral("ファイル選択"));
    QCOMPARE(request.prompt, QStringLiteral("読み込むファイルを選択してください。"));
    QVERIFY(request.filter.startsWith(QStringLiteral("text/plain (")));
    QVERIFY(request.filter.contains(QStringLiteral("*.txt")));
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ImportPage));
    QCOMPARE(w->whatPage(0), qint8(1)); // the selection stays
    QCOMPARE(w->DefaultListbox()->ListCount(), 140);

    const QString other = m_dir.filePath("other.txt");
    QVERIFY(writeBook(other, {"一", "二", "三"}));
    dialogs->nextFiles.push_back(other);
    trigger("menuInportText");
    QCOMPARE(w->PagePanel1()->Value(), int(mainWindow::ImportPage));
    QCOMPARE(w->DefaultListbox()->ListCount(), 3);
    QCOMPARE(w->whatPage(0), qint8(0));
    QCOMPARE(w->TextField1()->Text(), poem); // not composed until a command runs
    trigger("menuReset");
    QVERIFY(w->TextField1()->Text().startsWith(QStringLiteral("一\r二\r三\r\r\r")));
}

void TestCommands::aboutMessage()
{
    trigger("aboutMenu");
    QCOMPARE(dialogs->messages.size(), 1);
    const QRegularExpression expected(QStringLiteral("^Verlis 0\\.3\\.0\r© 2026 - (\\d{4}) Verlis$"));
    const QRegularExpressionMatch match = expected.match(dialogs->messages.first());
    QVERIFY2(match.hasMatch(), qPrintable(dialogs->messages.first()));
    QVERIFY(match.captured(1).toInt() >= 2026);
}

void TestCommands::styleTogglesAndTheirCheckMarks()
{
    const struct {
        const char *item;
        bool Preferences::*setting;
    } toggles[] = {{"fontBold", &Preferences::mainBold},
                   {"fontItalic", &Preferences::mainItalic},
                   {"fontUnderline", &Preferences::mainUnderline},
                   {"menuShowNumber", &Preferences::BshowNumber}};
    for (const auto &toggle : toggles) {
        const bool start = app->prefs.*toggle.setting;
        trigger(toggle.item);
        QCOMPARE(app->prefs.*toggle.setting, !start);
        QCOMPARE(app->menuBar().item(toggle.item)->isChecked(), !start);
        trigger(toggle.item);
        QCOMPARE(app->prefs.*toggle.setting, start);
        QCOMPARE(app->menuBar().item(toggle.item)->isChecked(), start);
    }
    QCOMPARE(app->preferencesWrites(), 0); // saved only at the end
}

void TestCommands::colourDialogs()
{
    app->prefs.ColorText = 0x000000;
    dialogs->nextColors.push_back(std::nullopt);
    trigger("fontColor");
    QCOMPARE(dialogs->colorPrompts.last(), QStringLiteral("文字の色を選択してください。"));
    QCOMPARE(app->prefs.ColorText, Color(0x000000));

    dialogs->nextColors.push_back(Color(0xAA3300));
    trigger("fontColor");
    QCOMPARE(app->prefs.ColorText, Color(0xAA3300));
    QCOMPARE(w->TextField1()->TextColor(), Color(0xAA3300));

    // Confirming without a change still applies the settings.
    app->prefs.mainItalic = true;
    dialogs->nextColors.push_back(app->prefs.ColorBack);
    trigger("menuBackColor");
    QCOMPARE(dialogs->colorPrompts.last(), QStringLiteral("背景の色を選択してください。"));
    QVERIFY(w->TextField1()->textStyle().Italic);
    dialogs->nextColors.push_back(Color(0x203040));
    trigger("menuBackColor");
    QCOMPARE(w->BackColor(), Color(0x203040));
    QCOMPARE(w->noField()->BackColor(), Color(0x203040));
}

void TestCommands::fontChoiceAndSizeBounds()
{
    trigger("fontName", 1);
    QCOMPARE(app->prefs.mainfont, QStringLiteral("Beta"));
    QCOMPARE(w->TextField1()->textStyle().TextFont, QStringLiteral("Beta"));
    QCOMPARE(w->pageLabel(0)->textStyle().TextFont, QStringLiteral("Beta"));

    MenuCommands &commands = app->commands();
    app->prefs.mainSize = 64;
    commands._fontLarger_Action();
    QCOMPARE(app->prefs.mainSize, quint8(64));
    app->prefs.mainSize = 7;
    commands._fontSmaller_Action();
    QCOMPARE(app->prefs.mainSize, quint8(7));
    app->prefs.mainSize = 3;
    commands._fontSmaller_Action();
    QCOMPARE(app->prefs.mainSize, quint8(7));
    commands._fontLarger_Action();
    QCOMPARE(app->prefs.mainSize, quint8(8));
    QCOMPARE(QFontInfo(w->textLabel(0)->font()).pixelSize(), 8);
}

void TestCommands::editCommandsActOnTheFocusedField()
{
    // Back from the import page the poem has the keyboard: no click needed.
    w->PagePanel1()->setValue(mainWindow::ImportPage);
    w->DefaultListbox()->setFocus();
    trigger("menuReset");
    QTRY_COMPARE(QApplication::focusWidget(), w->TextField1());
    trigger("EditSelectAll");
    QCOMPARE(w->TextField1()->textCursor().selectedText().size(), w->TextField1()->Text().size());
    trigger("EditCopy");
    QVERIFY(!app->menuBar().item("EditPaste")->isEnabled());
    w->PagePanel1()->setValue(mainWindow::ImportPage);
    QVERIFY(!app->menuBar().item("EditCopy")->isEnabled());
}

void TestCommands::theTreeInItsOrder()
{
    const MenuBar1 *bar = &app->menuBar();
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
}

void TestCommands::noTwoItemsShareAKey()
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

void TestCommands::keyEquivalentsObeyTheEnabling()
{
    w->activateWindow();
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

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
