#include "shell/signals.h"
#include "shell/startup.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    verlis::setApplicationIdentity();
    verlis::installToolkitTranslations(application);
    const auto app = verlis::startVerlis(verlis::Environment::system());
    verlis::quitOnSystemRequests(*app);
    return application.exec();
}
