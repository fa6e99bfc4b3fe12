#include "startup.h"

#include "window/mainwindow.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace verlis {

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
