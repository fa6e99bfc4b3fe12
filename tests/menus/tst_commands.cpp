#include "menus/commands.h"
#include "menus/menutable.h"
#include "windowtest.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QRegularExpression>

using namespace verlis;
using Pages = QList<int>;

class TestCommands : public WindowTest {
    Q_OBJECT
    Pages pages() const { return {w->selection().pages().begin(), w->selection().pages().end()}; }
    bool onImportPage() const { return w->PagePanel1()->Value() == mainWindow::ImportPage; }

private slots:
    // A name typed wrong in the table or in a binding leaves an item dead.
    void everyItemWithACommandHasItsHandler()
    {
        QStringList items{"fontLarger", "fontSmaller"}; // commands with no item
        for (const MenuEntry &entry : menuTree()) {
            const bool command = entry.kind == ItemKind::Item || entry.kind == ItemKind::ArrayItem;
            if (command && entry.usable != Usable::Never)
                items << QString::fromUtf8(entry.name);
        }
        QStringList bound = bar().handlerNames();
        items.sort();
        bound.sort();
        QCOMPARE(bound, items);
    }

    void generateCommands_data()
    {
        QTest::addColumn<QString>("item"); // and the index of an item of an array
        QTest::addColumn<Pages>("after");
        const auto row = [](const char *fault, const char *item, Pages after) {
            QTest::newRow(fault) << QString::fromUtf8(item) << after;
        };
        row("next all", "menuNextAllLine", {5, 4, 1, 6, 0, 2, 3, 4, 5, 6, 7, 8, 9, 0});
        row("previous all", "menuPrevAllLine", {3, 2, 9, 4, 8, 0, 1, 2, 3, 4, 5, 6, 7, 8});
        row("next line 14 wraps", "menuNextLine 13", {4, 3, 0, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 0});
        row("previous line 3 wraps", "menuPrevLine 2", {4, 3, 9, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9});
        row("reset on line 1's page", "menuReset", Pages(14, 4));
    }
    void generateCommands()
    {
        QFETCH(QString, item);
        QFETCH(Pages, after);
        for (int i = 0; const int page : {4, 3, 0, 5, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9})
            w->selection().setWhatPage(i++, qint8(page));
        trigger(item.section(' ', 0, 0).toUtf8(), item.section(' ', 1).toInt());
        QCOMPARE(pages(), after);
        QVERIFY(w->TextField1()->Text().endsWith(QStringLiteral("\r%1-14").arg(after[13] + 1)));
    }

    void lineKeysByTheKeyPressed_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>(
            "code"); // the key's place, 10 to 19 the top row; no X keyboard map here
        QTest::addColumn<int>("line"); // turned by `step`, or -1: none
        QTest::addColumn<int>("step");
        const int ctrl = Qt::ControlModifier, shift = Qt::ShiftModifier, alt = Qt::AltModifier;
        QTest::newRow("AZERTY & back") << int(Qt::Key_Ampersand) << ctrl + alt << 10 << 0 << -1;
        QTest::newRow("AZERTY 0 back with Shift")
            << int(Qt::Key_0) << ctrl + alt + shift << 19 << 9 << -1;
        QTest::newRow("a digit by its symbol") << int(Qt::Key_7) << ctrl + shift << 10 << 6 << 1;
        QTest::newRow("AltGr is no Alt")
            << int(Qt::Key_BraceLeft) << ctrl + shift + int(Qt::GroupSwitchModifier) << 14 << -1
            << 0;
        QTest::newRow("Ctrl alone") << int(Qt::Key_1) << ctrl << 10 << -1 << 0;
    }
    void lineKeysByTheKeyPressed()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(int, code);
        QFETCH(int, line);
        QFETCH(int, step);
        const auto press = [&] { // as the window system asks before it looks for a shortcut
            QKeyEvent ask(QEvent::ShortcutOverride, key, Qt::KeyboardModifiers(modifiers),
                          quint32(code), 0, 0);
            ask.ignore();
            QApplication::sendEvent(w->TextField1(), &ask);
            QCOMPARE(ask.isAccepted(), line >= 0); // a line key is no shortcut's
        };
        press();
        Pages after(14, 0);
        if (line >= 0)
            after[line] = (10 + step) % 10;
        QCOMPARE(pages(), after);
        w->PagePanel1()->setValue(mainWindow::ImportPage); // where the line items are off
        press();
        QCOMPARE(pages(), after);
    }

    void theViewMenuAndTheTree()
    {
        Preferences &p = app->prefs;
        const char *names[] = {"fontBold", "fontItalic", "fontUnderline", "menuShowNumber"};
        bool *on[] = {&p.mainBold, &p.mainItalic, &p.mainUnderline, &p.BshowNumber};
        for (int i = 0; i < 4; ++i) {
            for (const bool now : {!*on[i], *on[i]}) {
                trigger(names[i]);
                QVERIFY2(*on[i] == now && bar().item(names[i])->isChecked() == now, names[i]);
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
        MenuCommands &c = app->commands();
        for (const auto &[from, to] : {std::pair{64, 64}, {7, 7}, {3, 7}}) {
            p.mainSize = quint8(from);
            from == 64 ? c._fontLarger_Action() : c._fontSmaller_Action();
            QCOMPARE(int(p.mainSize), to);
        }

        QStringList titles, lines, keys;
        for (const QMenu *menu : bar().findChildren<QMenu *>()) {
            titles << menu->title();
            for (const QAction *item : menu->actions()) {
                keys << item->shortcut().toString(QKeySequence::PortableText);
                lines << item->objectName() + ' ' + MenuBar1::Text(item) + ' ' + keys.last();
            }
        }
        QCOMPARE(titles.join(' '), "ファイル 編集 表示 フォント 生成 前のページ 次のページ");
        QCOMPARE(QSet<QString>(keys.begin(), keys.end()).size(), 1 + 3 + 4 + 3 + 2 + 2 + 28);
        // The font list ends its submenu, after the designed items.
        const qsizetype font = lines.indexOf("fontColor 色... ") + 2;
        QCOMPARE(lines.mid(font, 4), (QStringList{"fontName Alpha ", "fontName Beta ",
                                                  "fontName Gamma ", "menuReset 初期状態 Ctrl+R"}));
        const qsizetype prev = lines.indexOf("menuNextAllLine すべての行 Ctrl+]") - 14;
        for (int i = 0; i < 14; ++i) {
            const auto line = QString("Line %1行目 Ctrl+%3+%2").arg(i + 1).arg("1234567890UIOP"[i]);
            QCOMPARE(lines.value(prev + i), "menuPrev" + line.arg("Alt"));
            QCOMPARE(lines.value(lines.size() - 14 + i), "menuNext" + line.arg("Shift"));
        }
    }

    void fileCommandsAndTheImportPage()
    {
        trigger("aboutMenu");
        QVERIFY(QRegularExpression("^Verlis 0\\.3\\.0\r© 2026 - 20(2[6-9]|[3-9]\\d) Verlis$")
                    .match(m_t->dialogs->messages.value(0))
                    .hasMatch());
        // Import ends on the import page, also when cancelled, and composes nothing yet.
        trigger("menuNextAllLine");
        const QString poem = w->TextField1()->Text();
        m_t->dialogs->nextFiles = {std::nullopt, m_dir.filePath("other.txt")};
        trigger("menuInportText");
        QVERIFY(onImportPage() && writeBook(m_dir.filePath("other.txt"), {"一", "二", "三"}));
        trigger("menuInportText");
        QVERIFY(onImportPage() && w->DefaultListbox()->ListCount() == 3);
        QCOMPARE(w->TextField1()->Text(), poem);
        // Shuffle and reset work on the import page, and give the poem the keyboard.
        QTest::keyClick(w, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(!onImportPage() && pages() != Pages(14, pages()[0]));
        const int first = pages()[0];
        w->PagePanel1()->setValue(mainWindow::ImportPage);
        w->DefaultListbox()->setFocus();
        QTest::keyClick(w, Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(pages(), Pages(14, first));
        QTRY_COMPARE(QApplication::focusWidget(), w->TextField1());
        trigger("EditSelectAll");
        trigger("EditCopy");
        QCOMPARE(QApplication::clipboard()->text().size(), w->TextField1()->Text().size());
        QVERIFY(!bar().item("EditPaste")->isEnabled());
        // The turning keys and Copy work on the reading page only.
        QTest::keyClick(w, Qt::Key_BracketRight, Qt::ControlModifier);
        w->PagePanel1()->setValue(mainWindow::ImportPage);
        QTest::keyClick(w, Qt::Key_BracketRight, Qt::ControlModifier);
        QTest::keyClick(w, Qt::Key_1, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(pages(), Pages(14, (first + 1) % 10));
        QVERIFY(!bar().item("EditCopy")->isEnabled());
    }
};

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
