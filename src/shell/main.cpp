#include "shell/app.h"
#include "window/mainwindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Verlis"));
    verlis::App app(verlis::Environment::system());
    app.Event_Open();
    app.window().show();
    return application.exec();
}
