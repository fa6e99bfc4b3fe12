// The events that tie the window's geometry to the settings.
#include "mainwindow.h"

#include "screenfit.h"

#include <QCloseEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

namespace verlis {

void mainWindow::Event_Open(bool geometryStored)
{
    const QRect stored = storedGeometry(m_prefs);
    const QRect client =
        placeClientOnScreens(stored, geometryStored ? placeFrameOnScreens : fitFrameInside);
    setClientGeometry(client.left(), client.top(), client.width(), client.height());
    m_frameCheck = geometryStored && client == stored ? FrameCheck::Reachable : FrameCheck::Inside;
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

// A stored geometry from a damaged file or a larger screen is brought where
// the user can reach it; one that can be reached stays to the pixel.
QRect mainWindow::placeClientOnScreens(const QRect &client, FramePlacement placement) const
{
    QList<QRect> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas.append(screen->availableGeometry());
    // Menu bar and, once known, the window manager's frame around the client area.
    const QSize extra = frameGeometry().size() - m_client->size();
    const QRect frame = placement(QRect(client.topLeft(), client.size() + extra), areas,
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
    // frame included, after the frame's own move has been recorded. A window
    // that had to be brought onto the screen goes wholly inside it.
    if (m_frameCheck != FrameCheck::Done && isVisible() && frameGeometry() != geometry()) {
        const auto placement =
            m_frameCheck == FrameCheck::Inside ? fitFrameInside : placeFrameOnScreens;
        m_frameCheck = FrameCheck::Done;
        QTimer::singleShot(0, this, [this, placement] {
            const QRect client(frameGeometry().topLeft(), QSize(Width(), Height()));
            const QRect placed = placeClientOnScreens(client, placement);
            if (placed != client)
                setClientGeometry(placed.left(), placed.top(), placed.width(), placed.height());
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
