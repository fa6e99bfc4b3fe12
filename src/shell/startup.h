#pragma once

#include "app.h"

#include <memory>

class QApplication;

namespace verlis {

// The program's whole start in a running application: its name, desktop
// entry and icon for the desktop; the toolkit's dialogs in Japanese, like
// the interface, whatever the locale; App with its settings, menus and default
// book, the window on screen; and the system's requests to end taken as the
// user's quit. The event loop is the caller's.
std::unique_ptr<App> startVerlis(QApplication &application);

} // namespace verlis
