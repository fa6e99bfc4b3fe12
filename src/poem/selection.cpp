#include "selection.h"

#include <QRandomGenerator>

#include <random>

namespace verlis {

namespace {

// A fresh source for every command, seeded anew from the system, so that two
// draws in a row never replay one sequence. SplitMix64: small state, cheap
// to seed, and plenty for drawing one of ten pages.
class FreshRandom {
public:
    using result_type = quint64;
    static constexpr result_type min() { return 0; }
    static constexpr result_type max() { return ~result_type(0); }

    FreshRandom() : m_state(QRandomGenerator::system()->generate64()) {}

    result_type operator()()
    {
        quint64 z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

private:
    quint64 m_state;
};

int inRange(FreshRandom &random, int low, int high)
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
            page = PageCount - 1;
    } else {
        page = qint8(page + 1);
        if (page > PageCount - 1)
            page = 0;
    }
}

void Selection::turnAllLines(Direction direction)
{
    for (int line = 0; line < LineCount; ++line)
        turnLine(line, direction);
}

void Selection::resetSelection()
{
    // Line 0 is read anew at every pass; it keeps its own value.
    for (int line = 0; line < LineCount; ++line)
        m_pages[line] = m_pages[0];
}

void Selection::shuffleSelection()
{
    FreshRandom random;
    for (auto &page : m_pages)
        page = qint8(inRange(random, 0, PageCount - 1));
}

void Selection::shuffleLine(int line)
{
    FreshRandom random;
    m_pages[line] = qint8(inRange(random, 0, PageCount - 1));
}

} // namespace verlis
