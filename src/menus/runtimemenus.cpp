// The menus made at start: the font list and the items of lines 2 to 14.
#include "runtimemenus.h"

#include "menubar1.h"
#include "poem/bookshape.h"

#include <QAction>
#include <QMenu>

namespace verlis {

namespace {

// The toolkit tells apart the makers of one family with a tag, "C059 [urw]",
// that no font dialog shows; the family's name alone finds it.
QStringList familyNames(const QStringList &families)
{
    QStringList names;
    for (const QString &family : families) {
        const qsizetype tag = family.endsWith(u']') ? family.lastIndexOf(u" [") : -1;
        names.append(tag > 0 ? family.left(tag) : family);
    }
    names.removeDuplicates(); // the first of each stays, in the platform's order
    return names;
}

} // namespace

void makeFontMenu(MenuBar1 &bar, const QStringList &fontFamilies)
{
    const QStringList families = familyNames(fontFamilies);
    if (families.isEmpty())
        return;
    QAction *first = bar.item(QStringLiteral("fontName"), 0);
    // One update of the menu for the whole list, not one per family.
    auto *menu = qobject_cast<QWidget *>(first->parent());
    const bool updates = menu && menu->updatesEnabled();
    if (menu)
        menu->setUpdatesEnabled(false);
    MenuBar1::setText(first, families.constFirst());
    for (qsizetype i = 1; i < families.size(); ++i)
        MenuBar1::setText(bar.installClone(QStringLiteral("fontName")), families[i]);
    if (menu)
        menu->setUpdatesEnabled(updates);
}

void measureFontMenu(MenuBar1 &bar)
{
    QMenu *menu = bar.menu(QStringLiteral("hyoujiFont"));
    if (!menu || menu->isVisible())
        return;
    // Opened and closed at once, never drawn: the item sizes it keeps are
    // those of a real opening, screen and all.
    menu->setAttribute(Qt::WA_DontShowOnScreen);
    menu->popup(bar.mapToGlobal(QPoint(0, bar.height())));
    menu->hide();
    menu->setAttribute(Qt::WA_DontShowOnScreen, false);
}

void makePageMenu(MenuBar1 &bar)
{
    static const char *const Keys[] = {"",  "2", "3", "4", "5", "6", "7",
                                       "8", "9", "0", "u", "i", "o", "p"};
    for (int i = 1; i < LineCount; ++i) {
        QAction *next = bar.installClone(QStringLiteral("menuNextLine"));
        QAction *prev = bar.installClone(QStringLiteral("menuPrevLine"));
        const QString text = QString::number(i + 1) + QStringLiteral("行目");
        MenuBar1::setText(next, text);
        MenuBar1::setText(prev, text);
        const QString key = QString::fromLatin1(Keys[i]);
        MenuBar1::setKeyboardShortcut(next, QStringLiteral("command-shift-") + key);
        MenuBar1::setKeyboardShortcut(prev, QStringLiteral("command-option-") + key);
    }
}

} // namespace verlis
