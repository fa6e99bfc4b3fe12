#pragma once

#include "dialogs.h"

namespace verlis {

// The real dialogs of the toolkit.
class QtDialogs final : public Dialogs {
public:
    std::optional<QString> openFile(QWidget *parent, const OpenFileRequest &request) override;
    std::optional<Color> selectColor(QWidget *parent, Color initial,
                                     const QString &prompt) override;
    void msgBox(QWidget *parent, const QString &text) override;

private:
    QString m_lastFolder; // where the last book was chosen, for this run
};

} // namespace verlis
