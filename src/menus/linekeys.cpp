#include "linekeys.h"

#include "menubar1.h"

#include <QAction>
#include <QApplication>
#include <QGuiApplication>
#include <QKeyEvent>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace verlis {

namespace {

// The keycodes of the top row's keys 1 to 9 and 0 on every layout. The
// toolkit reports X keycodes under X11 and under Wayland alike: the kernel's
// codes plus 8. A platform that reports no code (0) leaves every key to the
// toolkit's own matching.
constexpr quint32 TopRowFirst = 10;
constexpr quint32 TopRowLast = 19;

// The digit that the key carries, typed with Shift or without, in the X
// server's keyboard map for the event's group; nothing where it carries none
// (the keypad's digits are symbols of their own, left to the toolkit) or no
// X server is there to ask. Asked at each press, so that a layout
// changed while the program runs counts at once.
std::optional<int> digitOnKey(const QKeyEvent &event)
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t *connection = x11 ? x11->connection() : nullptr; // none off screen
    const quint32 code = event.nativeScanCode();
    if (!connection || code < 8 || code > 255)
        return std::nullopt;
    const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&free)> map(
        xcb_get_keyboard_mapping_reply(
            connection, xcb_get_keyboard_mapping(connection, xcb_keycode_t(code), 1), nullptr),
        &free);
    if (!map)
        return std::nullopt;
    // The core map lists two levels of the first group, then two of the second;
    // the event's state holds the group in use in its bits 13 and 14.
    constexpr int GroupShift = 13;
    const int group = int(event.nativeModifiers() >> GroupShift & 3);
    const int first = 2 * std::min(group, 1);
    const int count = xcb_get_keyboard_mapping_keysyms_length(map.get());
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int i = first; i < std::min(first + 2, count); ++i)
        if (symbols[i] >= '0' && symbols[i] <= '9')
            return int(symbols[i] - '0');
    return std::nullopt;
}

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
        Qt::MetaModifier | Qt::GroupSwitchModifier; // AltGr is no Alt
    if (!(modifiers & Qt::ControlModifier) || (modifiers & others))
        return std::nullopt;
    const bool back = modifiers & Qt::AltModifier;
    if (!back && !(modifiers & Qt::ShiftModifier))
        return std::nullopt;
    // The digit the key carries in the keyboard map (Programmer Dvorak puts
    // 7 on the 2 key and 8 beyond the 0 key); without a map, the digit the
    // key types at this level, else the one its place on the top row stands for.
    std::optional<int> digit = digitOnKey(event);
    const int key = event.key();
    if (!digit && code >= TopRowFirst && code <= TopRowLast)
        digit = key >= Qt::Key_0 && key <= Qt::Key_9 ? key - Qt::Key_0
                                                     : int(code - TopRowFirst + 1) % 10;
    if (!digit)
        return std::nullopt;
    return Item{back ? "menuPrevLine" : "menuNextLine", (*digit + 9) % 10};
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
