#include "app.h"

#include "dialogs.h"
#include "menus/commands.h"
#include "menus/enabling.h"
#include "menus/menubar1.h"
#include "menus/runtimemenus.h"
#include "window/mainwindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardPaths>

namespace verlis {

namespace {

constexpr qint64 MaxPreferencesBytes = PreferencesFixedBytes + MaxFontNameBytes;

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

App::App(Environment environment) : m_env(std::move(environment))
{
    if (!m_env.dialogs)
        m_env.dialogs = std::make_shared<QtDialogs>();
    m_menuBar = new MenuBar1;
    m_menuBar->addMenuHandler(QStringLiteral("MClose"), [this](int) { return _MClose_Action(); });
    connect(m_menuBar->item(QStringLiteral("FileQuit")), &QAction::triggered, this,
            [this] { window().close(); });
    connect(m_menuBar, &MenuBar1::menuAboutToShow, this, &App::updateEnabling);
}

App::~App()
{
    m_window.reset(); // takes the menu bar with it
    delete m_menuBar.data();
}

MenuBar1 &App::menuBar() const { return *m_menuBar; }

mainWindow &App::window()
{
    if (!m_window) {
        m_window = std::make_unique<mainWindow>(prefs, m_menuBar.data(), *m_env.dialogs);
        m_commands =
            new MenuCommands(prefs, versionData(), *m_window, *m_menuBar, *m_env.dialogs);
        m_commands->AddMenuHandlers();
        connect(m_window.get(), &mainWindow::panelPageChanged, this, &App::updateEnabling);
        connect(m_window.get(), &mainWindow::appearanceWanted, this, &App::setAppearance);
        connect(m_commands, &MenuCommands::appearanceWanted, this, &App::setAppearance);
        connect(m_window.get(), &mainWindow::closeAsked, this, [this] { Quit(0); });
        updateEnabling();
    }
    return *m_window;
}

MenuCommands &App::commands()
{
    window();
    return *m_commands;
}

void App::updateEnabling()
{
    if (!m_window)
        return;
    const int page = m_window->PagePanel1()->Value();
    EnableMenuItems(*m_menuBar, page);
}

void App::Event_Open()
{
    loadPrefs();
    window().Event_Open();
    makeFontMenu();
    makePageMenu();
    if (!m_env.defaultBook.isEmpty() && QFileInfo::exists(m_env.defaultBook)) {
        window().readText(m_env.defaultBook);
        window().makePBtn()->click();
    }
}

void App::Event_Close() { savePrefs(); }

void App::makeFontMenu() { verlis::makeFontMenu(menuBar(), m_env.fontFamilies); }

void App::makePageMenu() { verlis::makePageMenu(menuBar()); }

bool App::_MClose_Action()
{
    if (m_window)
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

QString App::preferencesPath() const
{
    if (m_env.preferencesFolder.isEmpty())
        return {};
    return QDir(m_env.preferencesFolder).filePath(QString::fromLatin1(PreferencesFileName));
}

void App::loadPrefs()
{
    const QString path = preferencesPath();
    if (!path.isEmpty() && QFileInfo(path).isFile()) {
        QFile file(path);
        // A file that can't be opened counts as none.
        if (file.open(QIODevice::ReadOnly))
            prefs = decodePreferences(file.read(MaxPreferencesBytes));
    }
    window(); // the window comes into being here: its size limits take part in the checks
    normalisePreferences(prefs, mainWindow::Limits);
}

void App::savePrefs()
{
    const QString path = preferencesPath();
    if (path.isEmpty() || !QDir().mkpath(m_env.preferencesFolder))
        return;
    // Something else in the record's place (a folder, a pipe that would block
    // the write, a file too long to be a record) is left as it is: the
    // settings go unsaved. A link is judged by what it leads to.
    const QFileInfo existing(path);
    if (existing.exists() && (!existing.isFile() || existing.size() > MaxPreferencesBytes))
        return;
    // The new record goes to a temporary file beside the old one and replaces
    // it by a rename once it is on disk, so a kill or a full disk at any
    // moment leaves the old record or the new one, never a cut one. A link
    // stays a link: the record it leads to is the one replaced.
    QSaveFile file(existing.exists() ? existing.canonicalFilePath() : path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    // commit() misses an error of the flush it does itself and would put a
    // cut record in place: flushed here, a failure leaves the temporary file
    // to be discarded.
    const QByteArray record = encodePreferences(prefs);
    if (!(file.write(record) == record.size() && file.flush() && file.commit()))
        return;
    ++m_preferencesWrites;
    // A save killed between naming its temporary file and the rename leaves
    // that file behind, named after the record: gone with the next save.
    const QFileInfo saved(file.fileName());
    for (const QFileInfo &stray : saved.dir().entryInfoList(
             {saved.fileName() + QStringLiteral(".??????")}, QDir::Files | QDir::Hidden))
        QFile::remove(stray.filePath());
}

} // namespace verlis
