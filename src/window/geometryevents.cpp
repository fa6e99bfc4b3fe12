// The events that tie the window's geometry to the settings.
#include "mainwindow.h"

#include "screenfit.h"

#include <QCloseEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

namespace verlis {

void mainWindow::Event_Open()
{
    const QRect client =
        placeClientOnScreens(QRect(m_prefs.MWLeft, m_prefs.MWTop, m_prefs.MWWidth, m_prefs.MWHeight));
    setClientGeometry(client.left(), client.top(), client.width(), client.height());
    m_frameCheckPending = true;
    emit appearanceWanted();
    for (Label *label : m_textLabel)
        label->setText(QString());
}

void mainWindow::Event_Resized()
{
    SetControls();
    recordGeometry();
    emit appearanceWanted();
    update();
}

// A stored geometry from a damaged file or a larger screen is pulled onto
// the screens there are now; one that fits stays to the pixel.
QRect mainWindow::placeClientOnScreens(const QRect &client) const
{
    QList<QRect> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas.append(screen->availableGeometry());
    // Menu bar and, once known, the window manager's frame around the client area.
    const QSize extra = frameGeometry().size() - m_client->size();
    const QRect frame = placeFrameOnScreens(QRect(client.topLeft(), client.size() + extra), areas,
                                      QSize(WindowLimits.minWidth, WindowLimits.minHeight) + extra);
    return QRect(frame.topLeft(), frame.size() - extra);
}

void mainWindow::Event_Moved() { recordGeometry(); }

void mainWindow::recordGeometry()
{
    m_prefs.MWLeft = qint16(Left());
    m_prefs.MWTop = qint16(Top());
    m_prefs.MWWidth = qint16(Width());
    m_prefs.MWHeight = qint16(Height());
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
    // The window manager's frame is known only once it has framed the window:
    // the geometry put on the window at its opening is checked again then,
    // frame included, after the frame's own move has been recorded.
    if (m_frameCheckPending && isVisible() && frameGeometry() != geometry()) {
        m_frameCheckPending = false;
        QTimer::singleShot(0, this, [this] {
            const QRect client(frameGeometry().topLeft(), QSize(Width(), Height()));
            const QRect kept = placeClientOnScreens(client);
            if (kept != client)
                setClientGeometry(kept.left(), kept.top(), kept.width(), kept.height());
        });
    }
    Event_Moved();
}

void mainWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    emit closeAsked();
}

} // namespace verlis
