#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace verlis {

// How much of a title bar must lie on a screen for the pointer to take it.
inline constexpr int ReachableTitleWidth = 100;

// Whether a window whose frame is `frame` can be reached on the screens whose
// available areas are `areas`: its top edge lies inside one of them, not
// above it, with at least ReachableTitleWidth pixels of the title bar
// across (or the whole frame, if narrower).
bool isReachable(const QRect &frame, const QList<QRect> &areas);

// The frame wholly inside the area it overlaps most (or, overlapping none,
// the nearest one): shrunk only where it is larger than that area, but never
// below `minimum`, and moved only as far as needed.
QRect fitFrameInside(const QRect &frame, const QList<QRect> &areas, const QSize &minimum);

// Where that window stands: kept to the pixel where it can be reached and
// is no larger than its screen, fitted inside otherwise.
QRect placeFrameOnScreens(const QRect &frame, const QList<QRect> &areas, const QSize &minimum);

} // namespace verlis
