#include "menubar1.h"

#include "menuitem.h"
#include "menutable.h"
#include "shortcut.h"

#include <QMenu>
#include <QProxyStyle>

namespace verlis {

namespace {

// A list of thousands of fonts scrolls rather than spreading into columns.
class ScrollableMenuStyle final : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override
    {
        if (hint == SH_Menu_Scrollable)
            return 1;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

QString escapeMnemonic(QString text)
{
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

MenuBar1::MenuBar1(QWidget *parent) : QMenuBar(parent)
{
    setObjectName(QStringLiteral("MenuBar1"));
    for (const MenuEntry &entry : menuTree()) {
        const QString name = QString::fromUtf8(entry.name);
        QMenu *parentMenu = entry.parent ? m_menus.value(QString::fromUtf8(entry.parent)) : nullptr;
        if (entry.kind == ItemKind::Menu) {
            auto *menu = parentMenu ? parentMenu->addMenu(QString::fromUtf8(entry.text))
                                    : addMenu(QString::fromUtf8(entry.text));
            menu->setObjectName(name);
            menu->menuAction()->setObjectName(name);
            menu->menuAction()->setMenuRole(QAction::NoRole);
            if (!parentMenu)
                connect(menu, &QMenu::aboutToShow, this, &MenuBar1::menuAboutToShow);
            m_menus.insert(name, menu);
            m_items[name].append(menu->menuAction());
            continue;
        }
        createItem(parentMenu, entry, 0);
    }
    auto *style = new ScrollableMenuStyle;
    style->setParent(m_menus.value(QStringLiteral("hyoujiFont")));
    m_menus.value(QStringLiteral("hyoujiFont"))->setStyle(style);
}

QAction *MenuBar1::createItem(QMenu *parent, const MenuEntry &entry, int index)
{
    // Set up before it joins the menu: the menu then hears of it once.
    auto *action = new MenuItem(parent);
    action->setObjectName(QString::fromUtf8(entry.name));
    action->setMenuRole(entry.role == ItemRole::Quit    ? QAction::QuitRole
                        : entry.role == ItemRole::About ? QAction::AboutRole
                                                        : QAction::NoRole);
    action->index = index;
    if (entry.kind == ItemKind::Separator) {
        action->setSeparator(true);
    } else {
        setText(action, QString::fromUtf8(entry.text));
        setKeyboardShortcut(action, QString::fromUtf8(entry.shortcut));
        action->setCheckable(entry.role == ItemRole::Checkable);
        connect(action, &QAction::triggered, this, [this, action] { dispatch(action); });
    }
    parent->addAction(action);
    m_items[action->objectName()].append(action);
    return action;
}

QAction *MenuBar1::item(const QString &name, int index) const
{
    const QList<QAction *> &members = m_items[name];
    return index >= 0 && index < members.size() ? members[index] : nullptr;
}

QAction *MenuBar1::installClone(const QString &name)
{
    const QList<QAction *> &members = m_items[name];
    if (members.isEmpty())
        return nullptr;
    auto *parent = qobject_cast<QMenu *>(members.constFirst()->parent());
    for (const MenuEntry &entry : menuTree()) {
        if (entry.kind == ItemKind::ArrayItem && name == QString::fromUtf8(entry.name)) {
            QAction *first = members.constFirst();
            QAction *clone = createItem(parent, entry, int(members.size()));
            // A new member is enabled as its array is, so that its key
            // equivalent obeys the page showing from the moment it exists.
            clone->setEnabled(first->isEnabled());
            return clone;
        }
    }
    return nullptr;
}

void MenuBar1::addMenuHandler(const QString &name, const Handler &handler)
{
    m_handlers.insert(name, handler);
}

void MenuBar1::dispatch(QAction *item)
{
    if (const Handler handler = m_handlers.value(item->objectName()))
        handler(Index(item));
}

int MenuBar1::Index(const QAction *item)
{
    const auto *menuItem = qobject_cast<const MenuItem *>(item);
    return menuItem ? menuItem->index : 0;
}

QString MenuBar1::Text(const QAction *item)
{
    return item->text().replace(QStringLiteral("&&"), QStringLiteral("&"));
}

void MenuBar1::setText(QAction *item, const QString &text) { item->setText(escapeMnemonic(text)); }

void MenuBar1::setKeyboardShortcut(QAction *item, const QString &shortcut)
{
    if (!shortcut.isEmpty() || !item->shortcut().isEmpty())
        item->setShortcut(keySequenceFor(shortcut));
}

} // namespace verlis
