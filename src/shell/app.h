#pragma once

#include "preferences.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include "menus/menubar1.h"

#include <functional>
#include <memory>

namespace verlis {

class Dialogs;
class MenuCommands;
class mainWindow;

// What the program takes from the machine it runs on. Tests hand in their own.
struct Environment {
    QString preferencesFolder; // where "Verlis Preferences" lives; empty: nowhere
    QString defaultBook;       // the book read at start; empty: none
    QStringList fontFamilies;  // the platform's font families, in its order
    std::shared_ptr<Dialogs> dialogs;
    std::function<void(int status)> quit; // ends the event loop

    static Environment system();
};

// The application: the settings, the version data, the menu tree and the
// one window, and the order of things at start and stop.
class App : public QObject {
    Q_OBJECT
public:
    static constexpr int MajorVersion = 0;
    static constexpr int MinorVersion = 3;
    static constexpr int BugVersion = 0;
    static constexpr int NonReleaseVersion = 0;
    static constexpr int StageCode = 3;
    static constexpr const char *PreferencesFileName = "Verlis Preferences";

    explicit App(Environment environment);
    ~App() override;

    Preferences prefs;

    QString Version() const { return QStringLiteral(VERLIS_VERSION); }
    QString Copyright() const { return QStringLiteral("Verlis"); }
    int buildYear() const;

    MenuBar1 &menuBar() const { return *m_menuBar; }
    // The window, made at the first call.
    mainWindow &window();
    MenuCommands &commands();
    Dialogs &dialogs() const { return *m_env.dialogs; }

    void Event_Open();
    void Event_Close();
    bool _MClose_Action();
    void makeFontMenu();
    void setAppearance();
    void loadPrefs();
    void savePrefs();
    void makePageMenu();
    // Ends the run: the settings are saved once, whichever way it ends.
    void Quit(int status);

    QString preferencesPath() const;
    int preferencesWrites() const { return m_preferencesWrites; }

private:
    void updateEnabling();

    Environment m_env;
    QPointer<MenuBar1> m_menuBar;
    std::unique_ptr<mainWindow> m_window;
    MenuCommands *m_commands = nullptr;
    bool m_closed = false;
    int m_preferencesWrites = 0;
};

} // namespace verlis
