#pragma once

#include "poem/bookshape.h"

#include <QRect>

#include <array>

namespace verlis {

// Where the four labels of one line stand on the label page, in the
// window's client coordinates.
struct RowGeometry {
    QRect page;
    QRect text;
    QRect leftArrow;
    QRect rightArrow;
};

// The rows of the label page for a client area of width x height: fourteen
// lines and three stanza gaps divide the height, less a margin of 48 above
// and below, into PoemRows equal rows.
std::array<RowGeometry, LineCount> labelRowGeometry(qint64 width, qint64 height);

} // namespace verlis
