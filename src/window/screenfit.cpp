#include "screenfit.h"

#include <algorithm>
#include <limits>

namespace verlis {

namespace {

qint64 overlap(const QRect &a, const QRect &b)
{
    const QRect common = a.intersected(b);
    return common.isEmpty() ? 0 : qint64(common.width()) * common.height();
}

qint64 distance(const QRect &a, const QRect &b)
{
    const QPoint d = a.center() - b.center();
    return qint64(d.x()) * d.x() + qint64(d.y()) * d.y();
}

// The start of a span of `length` moved into [low, low + room).
int pulledInto(int start, int length, int low, int room)
{
    if (length >= room)
        return low;
    return std::clamp(start, low, low + room - length);
}

} // namespace

QRect placeFrameOnScreens(const QRect &frame, const QList<QRect> &areas, const QSize &minimum)
{
    if (areas.isEmpty())
        return frame;
    for (const QRect &area : areas)
        if (area.contains(frame))
            return frame;

    const QRect *best = &areas.constFirst();
    qint64 bestOverlap = -1;
    qint64 bestDistance = std::numeric_limits<qint64>::max();
    for (const QRect &area : areas) {
        const qint64 o = overlap(frame, area);
        const qint64 d = distance(frame, area);
        if (o > bestOverlap || (o == 0 && bestOverlap == 0 && d < bestDistance)) {
            best = &area;
            bestOverlap = o;
            bestDistance = d;
        }
    }
    const QSize size = frame.size().boundedTo(best->size()).expandedTo(minimum);
    return QRect(pulledInto(frame.left(), size.width(), best->left(), best->width()),
                 pulledInto(frame.top(), size.height(), best->top(), best->height()), size.width(),
                 size.height());
}

} // namespace verlis
