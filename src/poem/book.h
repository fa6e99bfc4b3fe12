#pragma once

#include "bookshape.h"

#include <QString>

#include <array>

namespace verlis {

// A Poem book: ten pages of fourteen lines. Any cell may be empty.
class PoemBook {
public:
    const QString &Line(int page, int line) const { return m_cells[page][line]; }
    void setLine(int page, int line, const QString &text) { m_cells[page][line] = text; }
    void clear()
    {
        for (auto &page : m_cells)
            page.fill(QString());
    }

private:
    std::array<std::array<QString, LineCount>, PageCount> m_cells{};
};

} // namespace verlis
