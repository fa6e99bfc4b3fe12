#pragma once

namespace verlis {

class MenuBar1;

// Which commands are usable, from the panel page that shows: five on every
// page, the view and turning commands on the reading page only.
void EnableMenuItems(MenuBar1 &bar, int panelValue);

// The Edit items offer what a read-only field does: copy and select all on
// the reading page; the others never.
void enableEditItems(MenuBar1 &bar, int panelValue);

} // namespace verlis
