#pragma once

#include "settings/preferences.h"
#include "version.h"

#include <QObject>

namespace verlis {

class Dialogs;
class MenuBar1;
class mainWindow;

// The commands behind the menu items, bound to the items' names.
class MenuCommands : public QObject {
    Q_OBJECT
public:
    MenuCommands(Preferences &prefs, const VersionData &version, mainWindow &window, MenuBar1 &bar,
                 Dialogs &dialogs);

    // Binds every handler below to its item name.
    void AddMenuHandlers();

    // View
    bool _fontName_Action(int index);
    bool _fontLarger_Action();
    bool _fontSmaller_Action();
    bool _fontBold_Action();
    bool _fontItalic_Action();
    bool _fontUnderline_Action();
    bool _fontColor_Action();
    bool _menuBackColor_Action();
    bool _menuShowNumber_Action();
    // Generate
    bool _menuShuffle_Action();
    bool _menuReset_Action();
    bool _menuNextAllLine_Action();
    bool _menuNextLine_Action(int index);
    bool _menuPrevAllLine_Action();
    bool _menuPrevLine_Action(int index);
    // File and About
    bool _menuInportText_Action();
    bool _aboutMenu_Action();
    // Edit: what the focused field of the reading page offers.
    bool _EditCopy_Action();
    bool _EditSelectAll_Action();

    // The About message, rows separated by Chr(13).
    QString aboutText() const;

signals:
    // A setting changed: the appearance pass is due.
    void appearanceWanted();

private:
    template <typename Change>
    bool changeSelection(Change change);
    bool toggle(bool &setting);
    bool chooseColor(quint32 &setting, const QString &prompt);

    Preferences &m_prefs;
    const VersionData &m_version;
    mainWindow &m_window;
    MenuBar1 &m_bar;
    Dialogs &m_dialogs;
};

} // namespace verlis
