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
        return next(nextFiles);
    }

    std::optional<verlis::Color> selectColor(QWidget *, verlis::Color,
                                             const QString &prompt) override
    {
        colorPrompts.append(prompt);
        return next(nextColors);
    }

    void msgBox(QWidget *, const QString &text) override { messages.append(text); }

private:
    template <typename T>
    static std::optional<T> next(std::deque<std::optional<T>> &answers)
    {
        if (answers.empty())
            return std::nullopt;
        // Taken apart rather than copied whole: GCC 12 warns falsely on a
        // copied std::optional<QString>.
        const bool given = answers.front().has_value();
        T value = given ? *answers.front() : T{};
        answers.pop_front();
        return given ? std::optional<T>(std::move(value)) : std::nullopt;
    }
};
