#include "linekeys.h"

#include "menubar1.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>

namespace verlis {

namespace {

// The keycodes of the top row's keys 1 to 9 and 0, the same on every layout
// (the X server's and the Wayland compositor's: the kernel's codes plus 8).
constexpr quint32 TopRowFirst = 10;
constexpr quint32 TopRowLast = 19;

} // namespace

LineKeys::LineKeys(MenuBar1 &bar, QWidget &window) : QObject(&window), m_bar(bar), m_window(window)
{
    // On the application: the key reaches it before the toolkit looks for a
    // shortcut, whichever control of the window has the keyboard.
    qApp->installEventFilter(this);
}

std::optional<LineKeys::Item> LineKeys::lineItem(const QKeyEvent &event)
{
    const quint32 code = event.nativeScanCode();
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    const Qt::KeyboardModifiers others =
        Qt::MetaModifier | Qt::GroupSwitchModifier | Qt::KeypadModifier; // AltGr is no Alt
    if (code < TopRowFirst || code > TopRowLast || !(modifiers & Qt::ControlModifier)
        || (modifiers & others))
        return std::nullopt;
    const bool back = modifiers & Qt::AltModifier;
    if (!back && !(modifiers & Qt::ShiftModifier))
        return std::nullopt;
    // The digit the key types at this level, where it types one; else the
    // one its place on the top row stands for.
    const int key = event.key();
    const int digit =
        key >= Qt::Key_0 && key <= Qt::Key_9 ? key - Qt::Key_0 : int(code - TopRowFirst + 1) % 10;
    return Item{back ? "menuPrevLine" : "menuNextLine", (digit + 9) % 10};
}

bool LineKeys::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::ShortcutOverride && type != QEvent::KeyPress)
        return false;
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget || widget->window() != &m_window)
        return false;
    const auto item = lineItem(*static_cast<QKeyEvent *>(event));
    if (!item)
        return false;
    // The toolkit asks before it looks for a shortcut: the item runs once,
    // if its menu's enabling allows, and the press that follows goes nowhere.
    if (type == QEvent::ShortcutOverride) {
        event->accept();
        if (QAction *action = m_bar.item(QString::fromLatin1(item->name), item->index))
            action->trigger();
    }
    return true;
}

} // namespace verlis
