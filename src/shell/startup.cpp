#include "startup.h"

#include "menus/runtimemenus.h"
#include "menus/version.h"
#include "signals.h"
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

// What the first sight of the poem need not wait for, done once the window
// has first been drawn: the window icon (looking it up in the desktop's
// theme reads the icon folders, and drawing it for the window manager
// renders it at several sizes) and the font list's first layout.
class AfterFirstPaint final : public QObject {
public:
    explicit AfterFirstPaint(App &app) : QObject(&app), m_app(app) {}

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose) {
            watched->removeEventFilter(this);
            // Queued: the expose is drawn first.
            QMetaObject::invokeMethod(
                this, [this] { run(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void run()
    {
        // The installed theme's icon where there is one; the bundled one
        // otherwise, so that a program started from its build folder has it too.
        QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral(VERLIS_APP_ID),
                                                     QIcon(QStringLiteral(":/icons/verlis.svg"))));
        measureFontMenu(m_app.menuBar());
        deleteLater();
    }

    App &m_app;
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
    window.windowHandle()->installEventFilter(new AfterFirstPaint(*app));
    quitOnSystemRequests(*app);
    return app;
}

} // namespace verlis
