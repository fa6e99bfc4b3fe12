#pragma once

#include <QList>
#include <QSizeF>

namespace verlis {

// The smallest size the reading page draws its poem at; below it, the page
// scrolls instead.
inline constexpr double LegibleFloor = 11.0;

// One piece of a row: a character as the reader sees it, as wide as it is
// drawn at a font of 1 pixel.
struct RowPiece {
    double width = 0;
    bool breakAfter = false; // the row may turn over after it: it ends a word
    bool space = false;      // white space, which takes no room at the end of a visual row
};
using MeasuredRow = QList<RowPiece>;

// How the poem stands on the page: the size it is drawn at, the row spacing,
// and the visual rows of each row.
struct PoemFit {
    double size = 0;
    int rowHeight = 0;
    QList<int> visualRows; // taller than the room only at the floor
};

// The largest size, at most `textSize` and at least the floor, at which the
// rows fit `room` (the width a row may take, the height all rows may take):
// a row wider than the room turns over at a word's end (a word wider than
// the room anywhere) onto visual rows indented an em, and the row spacing,
// `rowHeight` at `textSize`, shrinks with the size. Drawing every row
// smaller and turning a few over are weighed alike: whichever draws larger.
PoemFit fitPoem(const QList<MeasuredRow> &rows, QSizeF room, double textSize, int rowHeight);

} // namespace verlis
