#pragma once

#include <QObject>

#include <optional>

class QKeyEvent;
class QWidget;

namespace verlis {

class MenuBar1;

// The keys that turn one line, matched by the key pressed rather than by
// the character it types. Where the top row types other characters and
// needs Shift for its digits (French, Belgian, Czech layouts...), Ctrl+Shift
// with the key that carries a digit turns that line forward, and Ctrl+Alt
// with it, with Shift or without, turns it back, as on a US keyboard. The
// toolkit's own matching keeps every other key, U, I, O and P included.
class LineKeys : public QObject {
    Q_OBJECT
public:
    // The menu item a key stands for: its array and Index.
    struct Item {
        const char *name;
        int index;
        bool operator==(const Item &) const = default;
    };

    // Watches the keys of `window` and triggers the items of `bar`.
    LineKeys(MenuBar1 &bar, QWidget &window);

    // The line item of a key that carries a digit, nothing for any other key.
    static std::optional<Item> lineItem(const QKeyEvent &event);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    MenuBar1 &m_bar;
    QWidget &m_window;
};

} // namespace verlis
