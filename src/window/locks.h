#pragma once

#include <QRect>
#include <QSize>

namespace verlis {

enum Lock : int { LockLeft = 1, LockTop = 2, LockRight = 4, LockBottom = 8 };

// A control's rectangle for a client area of `client`, given where it was
// declared for `design`: locked to an edge it keeps its distance to that
// edge, locked to two opposite edges it stretches.
constexpr QRect lockedRect(const QRect &declared, int locks, const QSize &design,
                           const QSize &client)
{
    const int dx = client.width() - design.width();
    const int dy = client.height() - design.height();
    int left = declared.left(), width = declared.width();
    int top = declared.top(), height = declared.height();
    if ((locks & LockLeft) && (locks & LockRight))
        width += dx;
    else if (locks & LockRight)
        left += dx;
    if ((locks & LockTop) && (locks & LockBottom))
        height += dy;
    else if (locks & LockBottom)
        top += dy;
    return QRect(left, top, width, height);
}

} // namespace verlis
