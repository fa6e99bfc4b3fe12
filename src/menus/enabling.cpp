#include "enabling.h"

#include "menubar1.h"
#include "menutable.h"
#include "window/pagepanel.h"

#include <QAction>

namespace verlis {

void EnableMenuItems(MenuBar1 &bar, int panelValue)
{
    const bool reading = panelValue == ReadingPage;
    for (const MenuEntry &entry : menuTree()) {
        if (entry.kind != ItemKind::Item && entry.kind != ItemKind::ArrayItem)
            continue;
        const bool enabled =
            entry.usable == Usable::Always || (entry.usable == Usable::Reading && reading);
        for (QAction *item : bar.array(QString::fromUtf8(entry.name)))
            item->setEnabled(enabled);
    }
}

} // namespace verlis
