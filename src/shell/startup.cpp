#include "startup.h"

#include "version.h"
#include "window/mainwindow.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace verlis {

void setApplicationIdentity()
{
    QApplication::setApplicationName(QStringLiteral("Verlis"));
    QApplication::setApplicationVersion(versionData().ShortVersion);
    QGuiApplication::setDesktopFileName(QStringLiteral(VERLIS_APP_ID));
    // The installed theme's icon where there is one; the bundled one otherwise,
    // so that a program started from its build folder has it too.
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral(VERLIS_APP_ID),
                                                 QIcon(QStringLiteral(":/icons/verlis.svg"))));
}

void installToolkitTranslations(QApplication &application)
{
    auto *translator = new QTranslator(&application);
    if (translator->load(QLocale(QLocale::Japanese), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

std::unique_ptr<App> startVerlis(Environment environment)
{
    auto app = std::make_unique<App>(std::move(environment));
    app->Event_Open();
    app->window().show();
    return app;
}

} // namespace verlis
