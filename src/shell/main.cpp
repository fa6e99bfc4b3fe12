#include "shell/startup.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const auto app = verlis::startVerlis(application);
    return application.exec();
}
