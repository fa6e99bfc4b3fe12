// The events that tie the window's geometry to the settings.
#include "mainwindow.h"

#include "shell/app.h"

#include <QCloseEvent>
#include <QEvent>

namespace verlis {

void mainWindow::Event_Open()
{
    const Preferences &prefs = m_app.prefs;
    setClientGeometry(prefs.MWLeft, prefs.MWTop, prefs.MWWidth, prefs.MWHeight);
    m_app.setAppearance();
    for (Label *label : m_textLabel)
        label->setText(QString());
}

void mainWindow::Event_Resized()
{
    SetControls();
    recordGeometry();
    m_app.setAppearance();
    update();
}

void mainWindow::Event_Moved() { recordGeometry(); }

void mainWindow::recordGeometry()
{
    Preferences &prefs = m_app.prefs;
    prefs.MWLeft = qint16(Left());
    prefs.MWTop = qint16(Top());
    prefs.MWWidth = qint16(Width());
    prefs.MWHeight = qint16(Height());
}

bool mainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_client && event->type() == QEvent::Resize) {
        applyLocks();
        Event_Resized();
    }
    return QMainWindow::eventFilter(watched, event);
}

void mainWindow::moveEvent(QMoveEvent *event)
{
    QMainWindow::moveEvent(event);
    Event_Moved();
}

void mainWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    m_app.Quit(0);
}

} // namespace verlis
