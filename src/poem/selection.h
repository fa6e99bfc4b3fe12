#pragma once

#include "bookshape.h"

#include <QtGlobal>

#include <array>

namespace verlis {

enum class Direction { Backwards, Forwards };

// The selection: for each of the fourteen line positions, the page it shows.
// Between operations every value lies from 0 to 9.
class Selection {
public:
    qint8 whatPage(int line) const { return m_pages[line]; }
    void setWhatPage(int line, qint8 page) { m_pages[line] = page; }
    const std::array<qint8, LineCount> &pages() const { return m_pages; }

    void turnLine(int line, Direction direction);
    void turnAllLines(Direction direction);
    void resetSelection();
    void shuffleSelection();
    void shuffleLine(int line);
    void clear() { m_pages.fill(0); }

private:
    std::array<qint8, LineCount> m_pages{};
};

} // namespace verlis
