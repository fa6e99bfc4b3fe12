#pragma once

#include <QKeySequence>
#include <QString>

namespace verlis {

// Turns a key equivalent as the menus write it, "Cmd+Shift+1" or
// "command-option-0", into a key sequence: Cmd becomes Ctrl, Control Meta,
// Option Alt, Shift stays Shift. An empty string gives no sequence.
QKeySequence keySequenceFor(const QString &shortcut);

} // namespace verlis
