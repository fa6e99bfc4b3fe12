#pragma once

#include <QAction>

namespace verlis {

// An item of the menu tree: a command with its Index in its array (0 for
// items outside one).
class MenuItem : public QAction {
    Q_OBJECT
public:
    using QAction::QAction;
    int index = 0;
};

} // namespace verlis
