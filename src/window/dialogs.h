#pragma once

#include "settings/color.h"

#include <QString>

#include <optional>

class QWidget;

namespace verlis {

struct OpenFileRequest {
    QString title;
    QString filter;
    QString prompt;
};

// Every modal dialog of the program goes through here, so that tests can
// answer them without a window on screen.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    // The chosen file, or nothing when the user cancels.
    virtual std::optional<QString> openFile(QWidget *parent, const OpenFileRequest &request) = 0;
    // The chosen colour, or nothing when the user cancels.
    virtual std::optional<Color> selectColor(QWidget *parent, Color initial,
                                             const QString &prompt) = 0;
    // A message with one button; rows are separated by Chr(13).
    virtual void msgBox(QWidget *parent, const QString &text) = 0;
};

} // namespace verlis
