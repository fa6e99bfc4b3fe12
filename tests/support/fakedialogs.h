#pragma once

#include "shell/dialogs.h"

#include <QList>
#include <QStringList>

#include <deque>

// Answers the program's dialogs from queued "next answers" and records what
// was asked, so that no test ever waits on a real dialog.
class FakeDialogs final : public verlis::Dialogs {
public:
    std::deque<std::optional<QString>> nextFiles;
    std::deque<std::optional<verlis::Color>> nextColors; // nothing: the user cancels
    QList<verlis::OpenFileRequest> fileRequests;
    QStringList colorPrompts;
    QStringList messages;

    std::optional<QString> openFile(QWidget *, const verlis::OpenFileRequest &request) override
    {
        fileRequests.append(request);
        if (nextFiles.empty())
            return std::nullopt;
        auto answer = nextFiles.front();
        nextFiles.pop_front();
        return answer;
    }

    bool selectColor(QWidget *, verlis::Color &color, const QString &prompt) override
    {
        colorPrompts.append(prompt);
        if (nextColors.empty() || !nextColors.front()) {
            if (!nextColors.empty())
                nextColors.pop_front();
            color = 0x123456; // what the user moved to before cancelling
            return false;
        }
        color = *nextColors.front();
        nextColors.pop_front();
        return true;
    }

    void msgBox(QWidget *, const QString &text) override { messages.append(text); }
};
