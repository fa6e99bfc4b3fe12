#include "signals.h"

#include "app.h"
#include "window/mainwindow.h"

#include <QGuiApplication>
#include <QPointer>
#include <QSessionManager>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/socket.h>
#include <unistd.h>

namespace verlis {

namespace {

int signalSocket[2] = {-1, -1}; // the handler writes to [0], the event loop reads [1]
QPointer<App> runningApp;

// All a signal handler may safely do: one byte into the socket.
void onSignal(int)
{
    const int savedErrno = errno;
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalSocket[0], &byte, 1);
    errno = savedErrno;
}

// The toolkit ends the process with exit() when the display connection
// breaks; the settings of the run are saved on the way out.
void onExit()
{
    if (runningApp)
        runningApp->Quit(1);
}

} // namespace

void quitOnSystemRequests(App &app)
{
    runningApp = &app;
    std::atexit(onExit);

#if QT_CONFIG(sessionmanager)
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &app,
                     [&app](QSessionManager &) { app.savePrefs(); });
#endif

    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, signalSocket) != 0)
        return; // the signals then end the program as they would anyway
    auto *notifier = new QSocketNotifier(signalSocket[1], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [&app] {
        char bytes[16];
        while (::read(signalSocket[1], bytes, sizeof bytes) > 0) {
        }
        app.window().close(); // as the close box: the settings are saved once, status 0
    });

    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    // A signal ignored from the start stays ignored: so nohup keeps the
    // program through a closed terminal, and a shell's background job Ctrl+C.
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        struct sigaction inherited = {};
        if (sigaction(signal, nullptr, &inherited) == 0 && inherited.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
}

} // namespace verlis
