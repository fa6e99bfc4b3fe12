#pragma once

#include "shell/app.h"
#include "window/dialogs.h"
#include "window/mainwindow.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <deque>
#include <memory>

// Answers the program's dialogs from queued "next answers" and records what
// was asked, so that no test ever waits on a real dialog.
class FakeDialogs final : public verlis::Dialogs {
public:
    std::deque<std::optional<QString>> nextFiles;
    std::deque<std::optional<verlis::Color>> nextColors; // nothing: the user cancels
    QStringList messages;

    std::optional<QString> openFile(QWidget *, const verlis::OpenFileRequest &) override
    {
        return next(nextFiles);
    }
    std::optional<verlis::Color> selectColor(QWidget *, verlis::Color, const QString &) override
    {
        return next(nextColors);
    }
    void msgBox(QWidget *, const QString &text) override { messages.append(text); }

private:
    template <typename T>
    static std::optional<T> next(std::deque<std::optional<T>> &answers)
    {
        if (answers.empty())
            return std::nullopt;
        const std::optional<T> answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

// Writes the lines, each ended by a line feed; true when all of it was written.
inline bool writeBook(const QString &path, const QStringList &lines)
{
    QFile file(path);
    const QByteArray bytes = lines.isEmpty() ? QByteArray() : (lines.join('\n') + '\n').toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A book of ten pages whose line i of page p reads "p-i" (counted from 1).
inline QStringList numberedBook()
{
    QStringList book;
    for (int n = 0; n < 140; ++n)
        book << QStringLiteral("%1-%2").arg(n / 14 + 1).arg(n % 14 + 1);
    return book;
}

// An App on its own temporary preferences folder, with fake dialogs and a
// quit that only counts.
struct TestApp {
    QTemporaryDir home;
    std::shared_ptr<FakeDialogs> dialogs = std::make_shared<FakeDialogs>();
    QList<int> quits;
    std::unique_ptr<verlis::App> app;

    explicit TestApp(const QString &defaultBook = QString())
    {
        // As the toolkit lists a family that two foundries make.
        const QStringList fonts{"Alpha", "Beta [urw]", "Beta [UKWN]", "Gamma"};
        verlis::Environment env{folder(), defaultBook, fonts, dialogs,
                                [this](int status) { quits.append(status); }};
        app = std::make_unique<verlis::App>(std::move(env));
    }

    QString folder() const { return home.filePath(QStringLiteral("config")); }

    // Started on a book written into `dir`, its window on screen.
    static std::unique_ptr<TestApp> started(const QTemporaryDir &dir, const QStringList &book)
    {
        const QString path = dir.filePath(QStringLiteral("Verlis.txt"));
        if (!writeBook(path, book))
            return nullptr;
        auto t = std::make_unique<TestApp>(path);
        t->app->Event_Open();
        t->app->window().show();
        return t;
    }
};
