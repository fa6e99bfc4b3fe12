// The program's real start, ending at the first paint of the reading page.
#include "firstpaint.h"
#include "shell/startup.h"
#include "window/mainwindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const auto app = verlis::startVerlis(application);
    new ExitAtFirstPaint(app->window().TextField1()->viewport());
    const int status = application.exec();
    ExitAtFirstPaint::reportPeakMemory();
    return status;
}
