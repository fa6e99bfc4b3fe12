#pragma once

#include "book.h"
#include "selection.h"

#include <QString>

#include <array>

namespace verlis {

// The row separator of the reading fields.
inline constexpr QChar RowBreak = QChar(13);

// What the window shows of one selection: a page number and a text for each
// line, and the two texts of the reading page, grouped 4, 4, 3, 3.
struct ComposedPoem {
    std::array<QString, LineCount> pageNumbers;
    std::array<QString, LineCount> lineTexts;
    QString text;    // PoemRows rows separated by RowBreak, no trailing one
    QString numbers; // the page number of each line on the same rows
};

// True after the lines that close a stanza: an empty row follows them.
constexpr bool endsStanza(int line) { return line == 3 || line == 7 || line == 10; }

// The rows of the reading page: the lines and the empty row after each
// stanza but the last.
inline constexpr int PoemRows = [] {
    int rows = LineCount;
    for (int line = 0; line < LineCount - 1; ++line)
        rows += endsStanza(line) ? 1 : 0;
    return rows;
}();

ComposedPoem composePoem(const PoemBook &book, const Selection &selection);

} // namespace verlis
