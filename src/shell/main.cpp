#include "shell/startup.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    verlis::setApplicationIdentity();
    verlis::installToolkitTranslations(application);
    const auto app = verlis::startVerlis(verlis::Environment::system());
    return application.exec();
}
