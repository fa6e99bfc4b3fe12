#pragma once

#include <QAction>
#include <QHash>
#include <QMenuBar>

#include <functional>

class QMenu;

namespace verlis {

struct MenuEntry;

// The one menu tree, built from the table of menus. Items are found by
// name, and members of the three item arrays by name and Index. Commands
// are bound to names, so a member added later finds its handler too.
class MenuBar1 : public QMenuBar {
    Q_OBJECT
public:
    using Handler = std::function<bool(int index)>;

    explicit MenuBar1(QWidget *parent = nullptr);

    // The item of that name; for an array, its member of Index 0.
    QAction *item(const QString &name) const { return item(name, 0); }
    QAction *item(const QString &name, int index) const;
    QList<QAction *> array(const QString &name) const { return m_items.value(name); }
    QMenu *menu(const QString &name) const { return m_menus.value(name); }

    // A new member behind the last of the array `name`, with the next Index
    // and the defaults of its class.
    QAction *installClone(const QString &name);

    void addMenuHandler(const QString &name, const Handler &handler);
    QStringList handlerNames() const { return m_handlers.keys(); }

    static int Index(const QAction *item);
    static QString Text(const QAction *item);
    static void setText(QAction *item, const QString &text);
    static void setKeyboardShortcut(QAction *item, const QString &shortcut);

signals:
    // Before any of the menus opens.
    void menuAboutToShow();

private:
    QAction *createItem(QMenu *parent, const MenuEntry &entry, int index);
    void dispatch(QAction *item);

    QHash<QString, QList<QAction *>> m_items;
    QHash<QString, QMenu *> m_menus;
    QHash<QString, Handler> m_handlers;
};

} // namespace verlis
