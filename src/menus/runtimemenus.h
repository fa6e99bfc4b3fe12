#pragma once

#include <QStringList>

namespace verlis {

class MenuBar1;

// The font list: one item of the "fontName" array for each family name, in
// the platform's order, once however many foundries make it. An empty list
// leaves the one declared item as it is.
void makeFontMenu(MenuBar1 &bar, const QStringList &fontFamilies);

// Lays the font list out once, unseen: the toolkit measures every item of
// a menu when it first opens, some microseconds an item, and a list of
// thousands of families would otherwise make its first opening stall.
// For after the first paint, so that the window shows no later for it.
void measureFontMenu(MenuBar1 &bar);

// The items of lines 2 to 14 in both turning menus, with their keys.
void makePageMenu(MenuBar1 &bar);

} // namespace verlis
