#include "selection.h"

#include <random>

namespace verlis {

namespace {

// A fresh source for every command, seeded anew, so that two draws in a row
// never replay one sequence.
std::mt19937 newRandom()
{
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device()};
    return std::mt19937(seed);
}

int inRange(std::mt19937 &random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

} // namespace

void Selection::turnLine(int line, Direction direction)
{
    qint8 &page = m_pages[line];
    if (direction == Direction::Backwards) {
        page = qint8(page - 1);
        if (page < 0)
            page = 9;
    } else {
        page = qint8(page + 1);
        if (page > 9)
            page = 0;
    }
}

void Selection::turnAllLines(Direction direction)
{
    for (int line = 0; line < Lines; ++line)
        turnLine(line, direction);
}

void Selection::resetSelection()
{
    // Line 0 is read anew at every pass; it keeps its own value.
    for (int line = 0; line < Lines; ++line)
        m_pages[line] = m_pages[0];
}

void Selection::shuffleSelection()
{
    auto random = newRandom();
    for (auto &page : m_pages)
        page = qint8(inRange(random, 0, 9));
}

void Selection::shuffleLine(int line)
{
    auto random = newRandom();
    m_pages[line] = qint8(inRange(random, 0, 9));
}

} // namespace verlis
