#pragma once

#include <QStringList>

namespace verlis {

class MenuBar1;

// The font list: one item of the "fontName" array for each family, in the
// platform's order. An empty list leaves the one declared item as it is.
void makeFontMenu(MenuBar1 &bar, const QStringList &families);

// The items of lines 2 to 14 in both turning menus, with their keys.
void makePageMenu(MenuBar1 &bar);

} // namespace verlis
