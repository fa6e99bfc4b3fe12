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

// The area a frame belongs to: the one it overlaps most, or the nearest.
const QRect &homeArea(const QRect &frame, const QList<QRect> &areas)
{
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
    return *best;
}

} // namespace

bool isReachable(const QRect &frame, const QList<QRect> &areas)
{
    const int needed = std::min(ReachableTitleWidth, frame.width());
    return std::any_of(areas.begin(), areas.end(), [&](const QRect &area) {
        const int across =
            std::min(frame.right(), area.right()) - std::max(frame.left(), area.left()) + 1;
        return frame.top() >= area.top() && frame.top() <= area.bottom() && across >= needed;
    });
}

QRect placeFrameOnScreens(const QRect &frame, const QList<QRect> &areas, const QSize &minimum)
{
    if (areas.isEmpty())
        return frame;
    const QSize room = homeArea(frame, areas).size();
    const bool fits = frame.width() <= room.width() && frame.height() <= room.height();
    return fits && isReachable(frame, areas) ? frame : fitFrameInside(frame, areas, minimum);
}

QRect fitFrameInside(const QRect &frame, const QList<QRect> &areas, const QSize &minimum)
{
    if (areas.isEmpty())
        return frame;
    const QRect &area = homeArea(frame, areas);
    const QSize size = frame.size().boundedTo(area.size()).expandedTo(minimum);
    return QRect(pulledInto(frame.left(), size.width(), area.left(), area.width()),
                 pulledInto(frame.top(), size.height(), area.top(), area.height()), size.width(),
                 size.height());
}

} // namespace verlis
