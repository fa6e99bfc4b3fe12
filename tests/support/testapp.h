#pragma once

#include "bookfile.h"
#include "fakedialogs.h"
#include "shell/app.h"
#include "window/mainwindow.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// An App on its own temporary preferences folder, with fake dialogs and a
// quit that only counts.
struct TestApp {
    QTemporaryDir home;
    std::shared_ptr<FakeDialogs> dialogs = std::make_shared<FakeDialogs>();
    QList<int> quits;
    std::unique_ptr<verlis::App> app;

    explicit TestApp(const QString &defaultBook = QString(),
                     const QStringList &fonts = {QStringLiteral("Alpha"), QStringLiteral("Beta"),
                                                 QStringLiteral("Gamma")})
    {
        verlis::Environment env{home.filePath(QStringLiteral("config")), defaultBook, fonts,
                                dialogs, [this](int status) { quits.append(status); }};
        app = std::make_unique<verlis::App>(std::move(env));
    }

    QString prefsPath() const { return app->preferencesPath(); }

    // Started on a book written into `dir`, its window on screen.
    static std::unique_ptr<TestApp> started(const QTemporaryDir &dir, const QStringList &book);
};

// A book of ten pages whose line i of page p reads "p-i" (counted from 1).
inline QStringList numberedBook(int lines = 140)
{
    QStringList book;
    for (int n = 0; n < lines; ++n)
        book << QStringLiteral("%1-%2").arg(n / 14 + 1).arg(n % 14 + 1);
    return book;
}

inline std::unique_ptr<TestApp> TestApp::started(const QTemporaryDir &dir, const QStringList &book)
{
    const QString path = dir.filePath(QStringLiteral("Verlis.txt"));
    if (!writeBook(path, book))
        return nullptr;
    auto t = std::make_unique<TestApp>(path);
    t->app->Event_Open();
    t->app->window().show();
    return t;
}
