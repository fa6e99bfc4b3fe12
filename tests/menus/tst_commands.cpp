#include "menus/commands.h"
#include "menus/menubar1.h"
#include "testapp.h"

#include <QApplication>
#include <QClipboard>
#include <QRegularExpression>
#include <QTest>

using namespace verlis;
using Pages = QList<int>;

class TestCommands : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
    std::unique_ptr<TestApp> m_t;
    App *app = nullptr;
    mainWindow *w = nullptr;

    // As a user would: the item must be usable, then it runs.
    void trigger(const char *name, int index = 0)
    {
        QAction *item = app->menuBar().item(QString::fromUtf8(name), index);
        QVERIFY2(item && item->isEnabled(), name);
        item->trigger();
    }
    Pages pages() const { return {w->selection().pages().begin(), w->selection().pages().end()}; }
    bool onImportPage() const { return w->PagePanel1()->Value() == mainWindow::ImportPage; }

private slots:
    void initTestCase()
    {
        QVERIFY((m_t = TestApp::started(m_dir, numberedBook())) != nullptr);
        app = m_t->app.get();
        w = &app->window();
        QVERIFY(QTest::qWaitForWindowExposed(w));
        trigger("menuReset");
    }

    void generateCommands_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("index");
        QTest::addColumn<Pages>("after"); // none: anything but the start
        const auto row = [](const char *fault, const char *item, int index, Pages after) {
            QTest::newRow(fault) << QString::fromUtf8(item) << index << after;
        };
        row("next all", "menuNextAllLine", 0, {0, 4, 1, 6, 0, 2, 3, 4, 5, 6, 7, 8, 9, 0});
        row("previous all", "menuPrevAllLine", 0, {8, 2, 9, 4, 8, 0, 1, 2, 3, 4, 5, 6, 7, 8});
        row("next line 14 wraps", "menuNextLine", 13, {9, 3, 0, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 0});
        row("previous line 3 wraps", "menuPrevLine", 2, {9, 3, 9, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9});
        row("reset on line 1's page", "menuReset", 0, Pages(14, 9));
        row("shuffle", "menuShuffle", 0, {});
    }
    void generateCommands()
    {
        QFETCH(QString, item);
        QFETCH(int, index);
        QFETCH(Pages, after);
        const Pages before{9, 3, 0, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9};
        for (int i = 0; i < 14; ++i)
            w->selection().setWhatPage(i, qint8(before[i]));
        trigger(item.toUtf8(), index);
        if (after.isEmpty())
            after = pages() == before ? Pages(14, -1) : pages();
        QStringList shown = w->TextField1()->Text().split(QChar(13)), expected;
        for (int i = 0; i < 14; ++i)
            expected << QStringLiteral("%1-%2").arg(after[i] + 1).arg(i + 1);
        shown.removeAll(QString());
        QCOMPARE(shown, expected);
    }

    void appearanceCommands()
    {
        Preferences &p = app->prefs;
        for (const auto &[name, on] : {std::pair{"fontBold", &p.mainBold},
                                       {"fontItalic", &p.mainItalic},
                                       {"fontUnderline", &p.mainUnderline},
                                       {"menuShowNumber", &p.BshowNumber}}) {
            for (const bool now : {!*on, *on}) {
                trigger(name);
                QVERIFY2(*on == now && app->menuBar().item(name)->isChecked() == now, name);
            }
        }
        p.ColorText = 0xAA3300;
        m_t->dialogs->nextColors = {std::nullopt, Color(0x203040)};
        trigger("fontColor"); // cancelled
        trigger("menuBackColor");
        QCOMPARE(p.ColorText, Color(0xAA3300));
        QCOMPARE(w->BackColor(), Color(0x203040));
        QCOMPARE(w->noField()->BackColor(), Color(0x203040));
        trigger("fontName", 1);
        QCOMPARE(w->pageLabel(0)->textStyle().TextFont, QStringLiteral("Beta"));
        // One larger from 64, one smaller from 7 and from 3.
        for (const auto &[from, larger, to] :
             {std::tuple{64, true, 64}, {7, false, 7}, {3, false, 7}}) {
            p.mainSize = quint8(from);
            larger ? app->commands()._fontLarger_Action() : app->commands()._fontSmaller_Action();
            QCOMPARE(int(p.mainSize), to);
        }
    }

    void theTreeAndItsKeys()
    {
        QStringList titles, lines, keys;
        for (const QMenu *menu : app->menuBar().findChildren<QMenu *>()) {
            titles << menu->title();
            for (const QAction *item : menu->actions()) {
                keys << item->shortcut().toString(QKeySequence::PortableText);
                lines << item->objectName() + ' ' + MenuBar1::Text(item) + ' ' + keys.last();
            }
        }
        QCOMPARE(titles, (QStringList{"ファイル", "編集", "表示", "フォント", "生成", "前のページ",
                                      "次のページ"}));
        keys.removeAll(QString());
        QCOMPARE(keys.size(), 3 + 4 + 3 + 2 + 2 + 28);
        QCOMPARE(keys.removeDuplicates(), 0);
        // The font list ends its submenu, after the designed items.
        const qsizetype font = lines.indexOf("fontColor 色... ") + 2;
        QCOMPARE(lines.mid(font, 4), (QStringList{"fontName Alpha ", "fontName Beta ",
                                                  "fontName Gamma ", "menuReset 初期状態 Ctrl+R"}));
        const QString k = "1234567890UIOP";
        const qsizetype prev = lines.indexOf("menuNextAllLine すべての行 Ctrl+]") - 14;
        for (int i = 0; i < 14; ++i) {
            const QString line = QStringLiteral("Line %1行目 Ctrl+%3+%2").arg(i + 1).arg(k[i]);
            QCOMPARE(lines.value(prev + i), "menuPrev" + line.arg("Alt"));
            QCOMPARE(lines.value(lines.size() - 14 + i), "menuNext" + line.arg("Shift"));
            QCOMPARE(MenuBar1::Index(app->menuBar().item("menuNextLine", i)), i);
        }
    }

    void fileCommands()
    {
        trigger("aboutMenu");
        const QString about = m_t->dialogs->messages.value(0);
        const QRegularExpression text("^Verlis 0\\.3\\.0\r© 2026 - 20(2[6-9]|[3-9]\\d) Verlis$");
        QVERIFY2(text.match(about).hasMatch(), qPrintable(about));
        // Import ends on the import page, also when cancelled, and composes nothing yet.
        trigger("menuNextAllLine");
        const QString poem = w->TextField1()->Text();
        m_t->dialogs->nextFiles = {std::nullopt, m_dir.filePath("other.txt")};
        trigger("menuInportText");
        QVERIFY(onImportPage() && writeBook(m_dir.filePath("other.txt"), {"一", "二", "三"}));
        trigger("menuInportText");
        QVERIFY(onImportPage());
        QCOMPARE(w->DefaultListbox()->ListCount(), 3);
        QCOMPARE(w->TextField1()->Text(), poem);
    }

    void theImportPageStopsTurningAndCopying()
    {
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w));
        const auto ctrl = Qt::ControlModifier;
        // Shuffle and reset work on the import page, and give the poem the keyboard.
        w->PagePanel1()->setValue(mainWindow::ImportPage);
        QTest::keyClick(w, Qt::Key_R, ctrl | Qt::ShiftModifier);
        QVERIFY(!onImportPage());
        const int first = pages()[0];
        w->PagePanel1()->setValue(mainWindow::ImportPage);
        w->DefaultListbox()->setFocus();
        QTest::keyClick(w, Qt::Key_R, ctrl);
        QCOMPARE(pages(), Pages(14, first));
        QTRY_COMPARE(QApplication::focusWidget(), w->TextField1());
        QApplication::clipboard()->clear();
        trigger("EditSelectAll");
        trigger("EditCopy");
        QCOMPARE(QApplication::clipboard()->text().size(), w->TextField1()->Text().size());
        // The turning keys work on the reading page only; Paste never, Copy not there.
        QTest::keyClick(w, Qt::Key_BracketRight, ctrl);
        w->PagePanel1()->setValue(mainWindow::ImportPage);
        QTest::keyClick(w, Qt::Key_BracketRight, ctrl);
        QTest::keyClick(w, Qt::Key_1, ctrl | Qt::ShiftModifier);
        QCOMPARE(pages(), Pages(14, (first + 1) % 10));
        QVERIFY(!app->menuBar().item("EditCopy")->isEnabled());
        QVERIFY(!app->menuBar().item("EditPaste")->isEnabled());
    }
};

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
