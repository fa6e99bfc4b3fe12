#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace verlis {

// Where a window whose frame is `frame` stands once it is kept on the
// screens whose available areas are `areas`. A frame that lies inside one
// of them is kept to the pixel. Any other goes onto the area it overlaps
// most (or, overlapping none, the nearest one), shrunk to that area where
// it is larger but never below `minimum`, and moved only as far as needed.
QRect placeFrameOnScreens(const QRect &frame, const QList<QRect> &areas, const QSize &minimum);

} // namespace verlis
