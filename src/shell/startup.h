#pragma once

#include "app.h"

#include <memory>

class QApplication;

namespace verlis {

// The program's name, its desktop entry and its icon, for the window manager
// and the desktop.
void setApplicationIdentity();

// The interface is Japanese whatever the locale: so are the toolkit's dialogs.
void installToolkitTranslations(QApplication &application);

// The program's start: App, its settings, menus and default book, and the
// window on screen. The event loop is the caller's.
std::unique_ptr<App> startVerlis(Environment environment);

} // namespace verlis
