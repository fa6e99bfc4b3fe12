#include "startup.h"

#include "signals.h"
#include "menus/version.h"
#include "window/mainwindow.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QWindow>

namespace verlis {

namespace {

void setApplicationIdentity()
{
    QApplication::setApplicationName(QStringLiteral("Verlis"));
    QApplication::setApplicationVersion(versionData().ShortVersion);
    QGuiApplication::setDesktopFileName(QStringLiteral(VERLIS_APP_ID));
}

void installToolkitTranslations(QApplication &application)
{
    auto *translator = new QTranslator(&application);
    if (translator->load(QLocale(QLocale::Japanese), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

// Gives the program its window icon once the window has first been drawn:
// looking the icon up in the desktop's theme reads the icon folders, and
// drawing it for the window manager renders it at several sizes, neither
// of which the first sight of the poem needs to wait for.
class IconAfterFirstExpose final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose) {
            watched->removeEventFilter(this);
            // Queued: the expose is drawn before the icon is looked up.
            QMetaObject::invokeMethod(this, [this] { setIcon(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void setIcon()
    {
        // The installed theme's icon where there is one; the bundled one
        // otherwise, so that a program started from its build folder has it too.
        QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral(VERLIS_APP_ID),
                                                     QIcon(QStringLiteral(":/icons/verlis.svg"))));
        deleteLater();
    }
};

} // namespace

std::unique_ptr<App> startVerlis(QApplication &application)
{
    setApplicationIdentity();
    installToolkitTranslations(application);
    auto app = std::make_unique<App>(Environment::system());
    app->Event_Open();
    mainWindow &window = app->window();
    window.show();
    window.windowHandle()->installEventFilter(new IconAfterFirstExpose(app.get()));
    quitOnSystemRequests(*app);
    return app;
}

} // namespace verlis
