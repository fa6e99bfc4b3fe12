#pragma once

#include "color.h"

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
    // True and the chosen colour in `color` when the user confirms.
    virtual bool selectColor(QWidget *parent, Color &color, const QString &prompt) = 0;
    // A message with one button; rows are separated by Chr(13).
    virtual void msgBox(QWidget *parent, const QString &text) = 0;
};

// The real dialogs of the toolkit.
class QtDialogs final : public Dialogs {
public:
    std::optional<QString> openFile(QWidget *parent, const OpenFileRequest &request) override;
    bool selectColor(QWidget *parent, Color &color, const QString &prompt) override;
    void msgBox(QWidget *parent, const QString &text) override;

private:
    QString m_lastFolder; // where the last book was chosen, for this run
};

} // namespace verlis
