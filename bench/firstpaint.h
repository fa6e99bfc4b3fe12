#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <sys/resource.h>

#include <cstdio>

// Ends the event loop once the watched widget has painted for the first
// time, and prints the peak resident memory of the process at exit.
class ExitAtFirstPaint : public QObject {
public:
    explicit ExitAtFirstPaint(QObject *watched) : QObject(watched)
    {
        watched->installEventFilter(this);
    }

    static void reportPeakMemory()
    {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::printf("peak_rss_kib=%ld\n", usage.ru_maxrss);
    }

private:
    bool m_painted = false;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        // Queued, so that a paint that comes before the event loop runs still
        // ends it; the paint and its flush happen first.
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit,
                                      Qt::QueuedConnection);
        }
        return false;
    }
};
