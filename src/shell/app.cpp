#include "app.h"

#include "menus/commands.h"
#include "menus/enabling.h"
#include "menus/linekeys.h"
#include "menus/menubar1.h"
#include "menus/runtimemenus.h"
#include "menus/version.h"
#include "window/mainwindow.h"
#include "window/qtdialogs.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QPushButton>
#include <QStandardPaths>

namespace verlis {

namespace {

// The book beside the program, else the one installed with it in the same
// prefix, wherever that prefix is, else one in the user's or system's data
// folders.
QString findDefaultBook()
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    for (const QString &path :
         {programFolder.filePath(QStringLiteral("Verlis.txt")),
          programFolder.filePath(QStringLiteral("../share/verlis/Verlis.txt"))})
        if (QFileInfo(path).isFile())
            return QDir::cleanPath(path);
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                  QStringLiteral("verlis/Verlis.txt"));
}

} // namespace

Environment Environment::system()
{
    return {QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
            findDefaultBook(), QFontDatabase::families(), std::make_shared<QtDialogs>(),
            [](int status) { QCoreApplication::exit(status); }};
}

App::App(Environment environment)
    : m_env(std::move(environment)), m_preferencesFile(m_env.preferencesFolder)
{
    if (!m_env.dialogs)
        m_env.dialogs = std::make_shared<QtDialogs>();
    m_menuBar = new MenuBar1;
    m_window = std::make_unique<mainWindow>(prefs, m_menuBar, *m_env.dialogs);
    m_commands = new MenuCommands(prefs, versionData(), *m_window, *m_menuBar, *m_env.dialogs);
    m_commands->AddMenuHandlers();
    m_menuBar->addMenuHandler(QStringLiteral("MClose"), [this](int) { return _MClose_Action(); });
    // The window's close ends the run, so quitting is closing it.
    m_menuBar->addMenuHandler(QStringLiteral("FileQuit"), [this](int) { return _MClose_Action(); });
    new LineKeys(*m_menuBar, *m_window);

    connect(m_menuBar, &MenuBar1::menuAboutToShow, this, &App::updateEnabling);
    connect(m_window.get(), &mainWindow::panelPageChanged, this, &App::updateEnabling);
    connect(m_window.get(), &mainWindow::appearanceWanted, this, &App::setAppearance);
    connect(m_commands, &MenuCommands::appearanceWanted, this, &App::setAppearance);
    connect(m_window.get(), &mainWindow::closeAsked, this, [this] { Quit(0); });
    updateEnabling();
}

App::~App() = default; // the window takes the menu bar and the commands with it

void App::updateEnabling() { EnableMenuItems(*m_menuBar, m_window->PagePanel1()->Value()); }

void App::Event_Open()
{
    loadPrefs();
    m_window->Event_Open(m_geometryStored);
    makeFontMenu();
    makePageMenu();
    if (!m_env.defaultBook.isEmpty() && QFileInfo::exists(m_env.defaultBook)) {
        m_window->readText(m_env.defaultBook);
        m_window->makePBtn()->click();
    }
}

void App::Event_Close() { savePrefs(); }

void App::makeFontMenu() { verlis::makeFontMenu(*m_menuBar, m_env.fontFamilies); }

void App::makePageMenu() { verlis::makePageMenu(*m_menuBar); }

bool App::_MClose_Action()
{
    m_window->close();
    return true;
}

void App::Quit(int status)
{
    if (!m_closed) {
        m_closed = true;
        Event_Close();
    }
    if (m_env.quit)
        m_env.quit(status);
}

void App::loadPrefs()
{
    prefs = m_preferencesFile.read();
    const QRect stored = storedGeometry(prefs);
    normalisePreferences(prefs, WindowLimits);
    m_geometryStored = storedGeometry(prefs) == stored;
}

void App::savePrefs()
{
    if (m_preferencesFile.write(prefs))
        ++m_preferencesWrites;
}

} // namespace verlis
