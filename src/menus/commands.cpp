#include "commands.h"

#include "menubar1.h"
#include "window/dialogs.h"
#include "window/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>

#include <variant>

namespace verlis {

namespace {

using Plain = bool (MenuCommands::*)();
using Indexed = bool (MenuCommands::*)(int);

struct Binding {
    const char *name;
    std::variant<Plain, Indexed> handler;
};

// Names with no item (fontLarger, fontSmaller) are bound all the same.
const Binding Bindings[] = {
    {"aboutMenu", &MenuCommands::_aboutMenu_Action},
    {"fontName", &MenuCommands::_fontName_Action},
    {"fontLarger", &MenuCommands::_fontLarger_Action},
    {"fontSmaller", &MenuCommands::_fontSmaller_Action},
    {"fontBold", &MenuCommands::_fontBold_Action},
    {"fontItalic", &MenuCommands::_fontItalic_Action},
    {"fontUnderline", &MenuCommands::_fontUnderline_Action},
    {"fontColor", &MenuCommands::_fontColor_Action},
    {"menuBackColor", &MenuCommands::_menuBackColor_Action},
    {"menuShuffle", &MenuCommands::_menuShuffle_Action},
    {"menuReset", &MenuCommands::_menuReset_Action},
    {"menuNextAllLine", &MenuCommands::_menuNextAllLine_Action},
    {"menuNextLine", &MenuCommands::_menuNextLine_Action},
    {"menuPrevAllLine", &MenuCommands::_menuPrevAllLine_Action},
    {"menuPrevLine", &MenuCommands::_menuPrevLine_Action},
    {"menuShowNumber", &MenuCommands::_menuShowNumber_Action},
    {"menuInportText", &MenuCommands::_menuInportText_Action},
    {"EditCopy", &MenuCommands::_EditCopy_Action},
    {"EditSelectAll", &MenuCommands::_EditSelectAll_Action},
};

// The field of the reading page that has the focus, or else the poem.
TextField *readingField(mainWindow &window)
{
    if (window.PagePanel1()->Value() != mainWindow::ReadingPage)
        return nullptr;
    if (QApplication::focusWidget() == window.noField())
        return window.noField();
    return window.TextField1();
}

} // namespace

MenuCommands::MenuCommands(Preferences &prefs, const VersionData &version, mainWindow &window,
                           MenuBar1 &bar, Dialogs &dialogs)
    : QObject(&window), m_prefs(prefs), m_version(version), m_window(window), m_bar(bar),
      m_dialogs(dialogs)
{
}

void MenuCommands::AddMenuHandlers()
{
    for (const Binding &binding : Bindings) {
        MenuBar1::Handler handler = std::visit(
            [this](auto member) -> MenuBar1::Handler {
                if constexpr (std::is_same_v<decltype(member), Indexed>)
                    return [this, member](int index) { return (this->*member)(index); };
                else
                    return [this, member](int) { return (this->*member)(); };
            },
            binding.handler);
        m_bar.addMenuHandler(QString::fromLatin1(binding.name), handler);
    }
}

bool MenuCommands::_fontName_Action(int index)
{
    if (const QAction *item = m_bar.item(QStringLiteral("fontName"), index)) {
        m_prefs.mainfont = fontNameBytes(MenuBar1::Text(item));
        emit appearanceWanted();
    }
    return true;
}

bool MenuCommands::_fontLarger_Action()
{
    quint8 &size = m_prefs.mainSize;
    size = quint8(size + 1);
    if (size > LargestTextSize)
        size = LargestTextSize;
    emit appearanceWanted();
    return true;
}

bool MenuCommands::_fontSmaller_Action()
{
    quint8 &size = m_prefs.mainSize;
    size = quint8(size - 1);
    if (size < SmallestChosenTextSize)
        size = SmallestChosenTextSize;
    emit appearanceWanted();
    return true;
}

bool MenuCommands::toggle(bool &setting)
{
    setting = !setting;
    emit appearanceWanted();
    return true;
}

bool MenuCommands::_fontBold_Action() { return toggle(m_prefs.mainBold); }
bool MenuCommands::_fontItalic_Action() { return toggle(m_prefs.mainItalic); }
bool MenuCommands::_fontUnderline_Action() { return toggle(m_prefs.mainUnderline); }
bool MenuCommands::_menuShowNumber_Action() { return toggle(m_prefs.BshowNumber); }

bool MenuCommands::chooseColor(quint32 &setting, const QString &prompt)
{
    if (const auto chosen = m_dialogs.selectColor(&m_window, setting, prompt)) {
        setting = *chosen;
        emit appearanceWanted();
    }
    return true;
}

bool MenuCommands::_fontColor_Action()
{
    return chooseColor(m_prefs.ColorText, QStringLiteral("文字の色を選択してください。"));
}

bool MenuCommands::_menuBackColor_Action()
{
    return chooseColor(m_prefs.ColorBack, QStringLiteral("背景の色を選択してください。"));
}

template <typename Change>
bool MenuCommands::changeSelection(Change change)
{
    change(m_window.selection());
    m_window.makePoetry(); // once, also when every line changed
    return true;
}

bool MenuCommands::_menuShuffle_Action()
{
    return changeSelection([](Selection &s) { s.shuffleSelection(); });
}

bool MenuCommands::_menuReset_Action()
{
    return changeSelection([](Selection &s) { s.resetSelection(); });
}

bool MenuCommands::_menuNextAllLine_Action()
{
    return changeSelection([](Selection &s) { s.turnAllLines(Direction::Forwards); });
}

bool MenuCommands::_menuNextLine_Action(int index)
{
    return changeSelection([index](Selection &s) { s.turnLine(index, Direction::Forwards); });
}

bool MenuCommands::_menuPrevAllLine_Action()
{
    return changeSelection([](Selection &s) { s.turnAllLines(Direction::Backwards); });
}

bool MenuCommands::_menuPrevLine_Action(int index)
{
    return changeSelection([index](Selection &s) { s.turnLine(index, Direction::Backwards); });
}

bool MenuCommands::_menuInportText_Action()
{
    m_window.ReadTextBtn()->click();
    m_window.PagePanel1()->setValue(mainWindow::ImportPage);
    return true;
}

QString MenuCommands::aboutText() const
{
    return QStringLiteral("Verlis ") + m_version.ShortVersion + QChar(13) +
           QStringLiteral("© 2026 - ") + QString::number(m_version.buildYear) + QLatin1Char(' ') +
           m_version.LongVersion;
}

bool MenuCommands::_aboutMenu_Action()
{
    m_dialogs.msgBox(&m_window, aboutText());
    return true;
}

bool MenuCommands::_EditCopy_Action()
{
    if (TextField *field = readingField(m_window))
        field->copy();
    return true;
}

bool MenuCommands::_EditSelectAll_Action()
{
    if (TextField *field = readingField(m_window))
        field->selectAll();
    return true;
}

} // namespace verlis
