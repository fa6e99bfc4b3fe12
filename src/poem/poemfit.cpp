#include "poemfit.h"

#include <algorithm>
#include <cmath>

namespace verlis {

namespace {

// Halvings of the range of sizes: well under a hundredth of a pixel.
constexpr int SizeSteps = 24;

// The visual rows of `row` at `size` in rows `width` wide, the first as the
// toolkit lays them out: words while they fit, a word wider than a whole row
// broken where it reaches the edge.
int visualRows(const MeasuredRow &row, double size, double width)
{
    const double indent = size; // an em, as verse is printed
    int rows = 1;
    double x = 0, room = width;
    const auto turnOver = [&] {
        ++rows;
        x = 0;
        room = width - indent;
    };
    for (qsizetype i = 0; i < row.size();) {
        qsizetype end = i;
        double inked = 0, whole = 0; // the word without and with its trailing spaces
        for (;; ++end) {
            whole += row[end].width;
            if (!row[end].space)
                inked = whole;
            if (row[end].breakAfter || end + 1 == row.size())
                break;
        }
        if (x + inked * size <= room) {
            x += whole * size;
            i = end + 1;
        } else if (x > 0) {
            turnOver();
        } else {
            for (; i <= end; ++i) {
                const double piece = row[i].width * size;
                if (x > 0 && x + piece > room && !row[i].space)
                    turnOver();
                x += piece;
            }
        }
    }
    return rows;
}

} // namespace

PoemFit fitPoem(const QList<MeasuredRow> &rows, QSizeF room, double textSize, int rowHeight)
{
    const auto spacing = [&](double size) {
        return size >= textSize ? rowHeight : std::max(1, int(rowHeight * size / textSize));
    };
    // Whether every row fits at `size`; stops counting once they are too many.
    const auto fits = [&](double size) {
        const qint64 capacity = qint64(room.height()) / spacing(size);
        qint64 taken = 0;
        for (const MeasuredRow &row : rows) {
            taken += visualRows(row, size, room.width());
            if (taken > capacity)
                return false;
        }
        return true;
    };
    PoemFit fit{textSize, rowHeight, {}};
    if (textSize > 0 && rowHeight > 0 && room.width() > 0 && !fits(textSize)) {
        double low = std::min(textSize, LegibleFloor), high = textSize;
        if (fits(low)) {
            for (int step = 0; step < SizeSteps; ++step) {
                const double middle = (low + high) / 2;
                (fits(middle) ? low : high) = middle;
            }
        }
        fit.size = low;
        fit.rowHeight = spacing(low);
    }
    fit.visualRows.reserve(rows.size());
    for (const MeasuredRow &row : rows)
        fit.visualRows.append(room.width() > 0 ? visualRows(row, fit.size, room.width()) : 1);
    return fit;
}

} // namespace verlis
