#pragma once

namespace verlis {

class MenuBar1;

// Which commands are usable, from the panel page that shows and nothing
// else: what the menu table marks as usable always, on the reading page
// only, or never.
void EnableMenuItems(MenuBar1 &bar, int panelValue);

} // namespace verlis
