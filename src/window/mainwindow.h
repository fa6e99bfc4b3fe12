#pragma once

#include "label.h"
#include "listbox.h"
#include "pagepanel.h"
#include "poem/book.h"
#include "poem/selection.h"
#include "settings/preferences.h"
#include "textfield.h"

#include <QMainWindow>

#include <array>
#include <optional>
#include <vector>

class QMenuBar;
class QPushButton;

namespace verlis {

class Dialogs;

// The one window: three panel pages (import, label, reading), the Poem book
// and the selection, and the two passes that put the poem on screen.
class mainWindow : public QMainWindow {
    Q_OBJECT
public:
    using enum PanelPage;

    // The window works on the settings it is handed, and says when they
    // should reach the screen and when the user asks it to close.
    mainWindow(Preferences &prefs, QMenuBar *menuBar, Dialogs &dialogs);

    // The selection.
    qint8 whatPage(int line) const { return m_selection.whatPage(line); }
    Selection &selection() { return m_selection; }

    // Controls, by the names the rest of the program knows them by.
    PagePanel *PagePanel1() const { return m_pagePanel; }
    Listbox *DefaultListbox() const { return m_listbox; }
    QPushButton *ReadTextBtn() const { return m_readTextBtn; }
    QPushButton *makePBtn() const { return m_makePBtn; }
    Label *textLabel(int index) const { return member(m_textLabel, index); }
    Label *LeftArrowLabel(int index) const { return member(m_leftArrow, index); }
    Label *rightArrowLabel(int index) const { return member(m_rightArrow, index); }
    Label *pageLabel(int index) const { return member(m_pageLabel, index); }
    Label *resetBtn() const { return m_resetBtn; }
    Label *shuffleBtn() const { return m_shuffleBtn; }
    Label *numberBtn() const { return m_numberBtn; }
    Label *loadBtn() const { return m_loadBtn; }
    TextField *TextField1() const { return m_textField; }
    TextField *noField() const { return m_noField; }

    // The window's geometry: the position of its frame on the screen and
    // the size of the part below the menu bar. Saving and restoring use the
    // same notion of position, so a window put back stands where it stood.
    int Left() const { return frameGeometry().left(); }
    int Top() const { return frameGeometry().top(); }
    int Width() const;
    int Height() const;
    void setClientGeometry(int left, int top, int width, int height);
    Color BackColor() const;
    void setBackColor(Color color);
    // A control's rectangle in the coordinates of the area below the menu bar.
    QRect controlRect(const QWidget *control) const;

    // The poem chain.
    void SetControls();
    void makePoetry();
    // Reads a book; nothing as the file clears the selection only.
    void readText(const std::optional<QString> &file);
    std::optional<QString> SelectFile();
    // The poem takes the keyboard whenever its page shows, so that select all
    // and copy reach it without a click; elsewhere the keyboard stays put.
    void focusPoem();

    // Window events. A geometry the user chose keeps its place while it can
    // be reached; a default one goes wholly onto the screen.
    void Event_Open(bool geometryStored);
    void Event_Resized();
    void Event_Moved();

    // Control events.
    void DefaultListbox_Open();
    void ReadTextBtn_Action();
    void makePBtn_Action();
    bool LeftArrowLabel_MouseDown(Label *label, Qt::KeyboardModifiers modifiers);
    bool rightArrowLabel_MouseDown(Label *label, Qt::KeyboardModifiers modifiers);
    bool resetBtn_MouseDown(Label *label);
    bool shuffleBtn_MouseDown(Label *label);
    bool pageLabel_MouseDown(Label *label);
    bool numberBtn_MouseDown(Label *label);
    bool loadBtn_MouseDown(Label *label);
    void hoverLabel_MouseEnter(Label *label);
    void hoverLabel_MouseExit(Label *label);

signals:
    void panelPageChanged(int value);
    // A setting changed, or the window's size: the appearance pass is due.
    void appearanceWanted();
    // The window was closed: the program ends.
    void closeAsked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    // The arrows and page numbers of the label page when the pointer is elsewhere.
    static constexpr Color IdleGrey = 0xBFBFBF;

    struct Placed {
        QWidget *control;
        QRect declared; // in client coordinates at the design size
        int locks;
    };

    void Layout(QMenuBar *menuBar);
    void CreateControls();
    void createImportPage(QWidget *page);
    void createLabelPage(QWidget *page);
    void createReadingPage(QWidget *page);
    Label *createWordLabel(QWidget *page, const QString &text, const QRect &declared);
    void place(QWidget *control, const QRect &declared, int locks);
    void applyLocks();
    void setControlRect(QWidget *control, const QRect &rect);
    void recordGeometry();
    using FramePlacement = QRect (*)(const QRect &, const QList<QRect> &, const QSize &);
    QRect placeClientOnScreens(const QRect &client, FramePlacement placement) const;
    bool turnFromArrow(Label *label, Qt::KeyboardModifiers modifiers, Direction direction);

    static Label *member(const std::array<Label *, LineCount> &array, int index)
    {
        return index >= 0 && index < LineCount ? array[index] : nullptr;
    }

    Preferences &m_prefs;
    Dialogs &m_dialogs;
    PoemBook m_book;
    Selection m_selection;

    QWidget *m_client = nullptr;
    PagePanel *m_pagePanel = nullptr;
    Listbox *m_listbox = nullptr;
    QPushButton *m_readTextBtn = nullptr;
    QPushButton *m_makePBtn = nullptr;
    std::array<Label *, LineCount> m_textLabel{};
    std::array<Label *, LineCount> m_leftArrow{};
    std::array<Label *, LineCount> m_rightArrow{};
    std::array<Label *, LineCount> m_pageLabel{};
    Label *m_resetBtn = nullptr;
    Label *m_shuffleBtn = nullptr;
    Label *m_numberBtn = nullptr;
    Label *m_loadBtn = nullptr;
    TextField *m_textField = nullptr;
    TextField *m_noField = nullptr;
    std::vector<Placed> m_placed;
    // What the first look at the window manager's frame does to the window.
    enum class FrameCheck { Done, Reachable, Inside } m_frameCheck = FrameCheck::Done;
};

} // namespace verlis
