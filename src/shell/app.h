#pragma once

#include "settings/preferences.h"
#include "settings/preferencesfile.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

namespace verlis {

class Dialogs;
class MenuBar1;
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

// The application: the settings, the menu tree, the one window and the
// commands, and the order of things at start and stop.
class App : public QObject {
    Q_OBJECT
public:
    explicit App(Environment environment);
    ~App() override;

    Preferences prefs;

    MenuBar1 &menuBar() const { return *m_menuBar; }
    mainWindow &window() const { return *m_window; }
    MenuCommands &commands() const { return *m_commands; }

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

    int preferencesWrites() const { return m_preferencesWrites; }

private:
    void updateEnabling();

    Environment m_env;
    PreferencesFile m_preferencesFile;
    MenuBar1 *m_menuBar; // owned by the window once it is set on it
    std::unique_ptr<mainWindow> m_window;
    MenuCommands *m_commands; // owned by the window
    // Whether the window's geometry is the record's own, not a default put
    // in for none or for a value out of range.
    bool m_geometryStored = false;
    bool m_closed = false;
    int m_preferencesWrites = 0;
};

} // namespace verlis
