#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <sys/resource.h>

#include <cstdio>
#include <ctime>

// Notes the moment the watched widget's first paint has been drawn and
// flushed, prints it as first_paint_ns (the realtime clock, which the
// harness also reads before it starts the program), ends the event loop,
// and prints the peak resident memory of the process at exit. Work queued
// for after the first sight and the teardown are not the start's.
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
    static constexpr QEvent::Type Painted = QEvent::User;
    bool m_painted = false;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        // Posted, so that the paint and its flush happen first; ahead of
        // what else is queued, so that nothing queued before it is counted.
        if (event->type() == QEvent::Paint && !m_painted) {
            m_painted = true;
            QCoreApplication::postEvent(this, new QEvent(Painted), Qt::HighEventPriority);
        }
        return false;
    }

    bool event(QEvent *event) override
    {
        if (event->type() != Painted)
            return QObject::event(event);
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        std::printf("first_paint_ns=%lld\n", now.tv_sec * 1000000000LL + now.tv_nsec);
        QCoreApplication::quit();
        return true;
    }
};
