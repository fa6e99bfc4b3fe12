#include "textimport.h"

#include "encodingguess.h"
#include "linedecoder.h"
#include "unreadable.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace verlis {

namespace {

// After the first read: a file that goes on past a book is read in fewer,
// larger reads.
constexpr qsizetype LaterChunkSize = qsizetype(1024) * 1024;
// What of a cut line tells its encoding where every line was cut.
constexpr qsizetype CutHead = 1024;
// The bytes of one line kept before decoding: more than MaxLineLength
// characters in any of the encodings read, so that the cut of the decoded
// line is the only one that shows; and few enough that a book of 140 lines,
// each of them cut, fits in the budget.
constexpr qsizetype MaxLineBytes = qsizetype(7) * MaxLineLength;
static_assert(MaxBookLines * MaxLineBytes <= ReadBudget);

template <typename Unit>
bool isLineEnd(Unit c)
{
    return c == u'\n' || c == u'\r';
}

// The first unit at or after `from` that is no line end. Whole blocks are
// tested first without a branch a unit, so that the compiler can take many
// units at once: a file of line ends is skipped at memory speed.
template <typename Unit>
const Unit *skipLineEnds(const Unit *from, const Unit *end)
{
    constexpr qsizetype Block = 64;
    while (end - from >= Block) {
        unsigned other = 0;
        for (qsizetype i = 0; i < Block; ++i)
            other |= unsigned(from[i] != u'\n') & unsigned(from[i] != u'\r');
        if (other != 0)
            break;
        from += Block;
    }
    while (from < end && isLineEnd(*from))
        ++from;
    return from;
}

const char *find(const char *from, const char *end, char c)
{
    const void *found = std::memchr(from, c, size_t(end - from));
    return found ? static_cast<const char *>(found) : end;
}

// Finds the line ends of one chunk with the library's vectorised searches,
// one for LF and one for CR. Where one is found past the other it is kept
// for later, so that each unit is searched once however the two are mixed:
// a cut line's tail is passed over at the speed of memchr.
template <typename Unit>
class LineEndFinder {
public:
    explicit LineEndFinder(const Unit *end) : m_end(end) {}

    // The first line end at or after `from`, or the chunk's end.
    const Unit *next(const Unit *from)
    {
        if (!m_lineFeed || m_lineFeed < from)
            m_lineFeed = find(from, m_end, '\n');
        if (!m_return || m_return < from)
            m_return = find(from, m_end, '\r');
        return std::min(m_lineFeed, m_return);
    }

private:
    const Unit *const m_end;
    const Unit *m_lineFeed = nullptr;
    const Unit *m_return = nullptr;
};

// Splits a stream of chunks into its non-empty lines, each kept to
// `maxLength` bytes. Only the bytes kept spend the budget: line ends and
// the cut-off tail of a long line are passed over.
class LineCollector {
public:
    struct Line {
        QByteArray text;
        bool cut = false;
    };

    LineCollector(qsizetype maxLength, qsizetype budget) : m_maxLength(maxLength), m_budget(budget)
    {
    }

    // Returns true once nothing more is needed: MaxBookLines lines held, or
    // the budget spent.
    bool feed(const QByteArray &chunk)
    {
        const auto *data = chunk.constData();
        const auto *end = data + chunk.size();
        LineEndFinder finder(end);
        const auto *at = data;
        while (at < end) {
            if (isLineEnd(*at)) {
                if (take())
                    return true;
                at = skipLineEnds(at, end);
                continue;
            }
            const auto *lineEnd = finder.next(at);
            keep(chunk, at - data, lineEnd - at);
            at = lineEnd;
            if (spent())
                return true;
        }
        return false;
    }

    // The last line may have no line end.
    void finish()
    {
        if (!full())
            take();
    }

    const QList<Line> &lines() const { return m_lines; }

    bool spent() const { return m_budget <= 0; }

    // Adds bytes of the chunk to the line being read.
    void keep(const QByteArray &chunk, qsizetype from, qsizetype length)
    {
        const qsizetype room = m_maxLength - m_partial.text.size();
        m_partial.cut = m_partial.cut || length > room;
        const qsizetype kept = std::clamp(length, qsizetype(0), room);
        m_partial.text += chunk.mid(from, kept);
        m_budget -= kept;
    }

    // Ends the line being read; returns true once MaxBookLines are held.
    bool take()
    {
        if (!m_partial.text.isEmpty())
            m_lines.append(std::exchange(m_partial, Line()));
        return full();
    }

private:
    bool full() const { return m_lines.size() >= MaxBookLines; }

    const qsizetype m_maxLength;
    qsizetype m_budget;
    Line m_partial;
    QList<Line> m_lines;
};

// At most MaxLineLength characters of a line, never half a surrogate pair.
QString shortened(QString line)
{
    if (line.size() > MaxLineLength) {
        const qsizetype cut =
            line.at(MaxLineLength - 1).isHighSurrogate() ? MaxLineLength - 1 : MaxLineLength;
        line.truncate(cut);
    }
    return line;
}

// What a line shows: U+FFFD for what read as nothing, for a control
// character and for half a surrogate pair.
QString cleaned(QString line)
{
    for (qsizetype i = 0; i < line.size(); ++i) {
        QChar &c = line[i];
        if (c.isHighSurrogate() && i + 1 < line.size() && line.at(i + 1).isLowSurrogate())
            ++i;
        else if (c.isSurrogate() || isUnreadable(c.unicode()))
            c = QChar::ReplacementCharacter;
    }
    return line;
}

// What of a cut line judges its encoding: its start, without a UTF-8
// character that the cut left incomplete, so that a UTF-8 line still reads
// as UTF-8.
QByteArray headOf(const QByteArray &line)
{
    QByteArray head = line.left(CutHead);
    const qsizetype last = std::min<qsizetype>(3, head.size());
    for (qsizetype back = 1; back <= last; ++back) {
        const auto byte = uchar(head.at(head.size() - back));
        if (byte < 0x80)
            break;
        if (byte >= 0xC0) { // the lead byte: are all the bytes it needs there?
            if ((byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2) > back)
                head.chop(back);
            break;
        }
    }
    return head;
}

using ByteLines = QList<LineCollector::Line>;

// Each line decoded on its own in the encoding it was told to be in. A cut
// line takes no part in telling the book's encoding, so that adding one
// never changes how the others read; where every line was cut, their heads
// do, without the last bytes, which may hold half a character.
QStringList decodeLines(const ByteLines &lines)
{
    QList<QByteArray> uncut, heads;
    QList<qsizetype> judged(lines.size(), -1); // each line's index among those judged
    for (qsizetype i = 0; i < lines.size(); ++i) {
        heads.append(headOf(lines[i].text));
        if (!lines[i].cut) {
            judged[i] = uncut.size();
            uncut.append(lines[i].text);
        }
    }
    const bool allCut = uncut.isEmpty();
    const EncodingGuess guess(allCut ? heads : uncut);
    std::vector<LineDecoder> decoders; // one an encoding, a few at most
    QStringList decoded;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray encoding = allCut           ? guess.encodingOf(i)
                                    : judged[i] >= 0 ? guess.encodingOf(judged[i])
                                                     : guess.encodingOf(heads[i]);
        auto decoder = std::find_if(decoders.begin(), decoders.end(),
                                    [&](const LineDecoder &d) { return d.encoding() == encoding; });
        if (decoder == decoders.end()) {
            decoders.emplace_back(encoding);
            decoder = std::prev(decoders.end());
        }
        QString text = lines[i].cut ? decoder->decodeStart(lines[i].text, MaxLineLength + 1)
                                    : decoder->decode(lines[i].text);
        if (!text.isEmpty()) // bytes that read as no text at all, an escape sequence alone
            decoded.append(cleaned(shortened(std::move(text))));
    }
    return decoded;
}

// Up to `limit` bytes of the device. A file's read asks for no more than it
// holds: a buffer of the whole chunk for the last few bytes costs more than
// reading them.
QByteArray readChunk(QIODevice &device, qsizetype limit)
{
    if (!device.isSequential())
        limit = qsizetype(std::min<qint64>(limit, device.bytesAvailable()));
    return limit > 0 ? device.read(limit) : QByteArray();
}

// Reads chunks of the device into `feed`, the first without the byte-order
// mark, until it has what it needs, the device ends or MaxReadBytes have
// been read.
template <typename Feed>
void collect(QIODevice &device, QByteArray chunk, const QByteArray &mark, Feed feed)
{
    qsizetype read = chunk.size();
    if (chunk.startsWith(mark))
        chunk.remove(0, mark.size());
    while (!chunk.isEmpty() && !feed(chunk) && read < MaxReadBytes) {
        chunk = readChunk(device, std::min(LaterChunkSize, MaxReadBytes - read));
        read += chunk.size();
    }
}

// Splits a book in UTF-16 or UTF-32 (`Unit` the size of its code units)
// into the bytes of its lines. A byte more or less moves every unit after it
// off its place, so line ends are looked for at every byte: one at the
// units' place is taken; one off it only where the next line end is at its
// place in turn, or none follows, and the units are read from there on. So
// only the line with the stray byte reads wrong: a line end that the bytes
// of two characters make by chance (U+0A4D U+4E00 in UTF-16LE) ends
// nothing, as the lines after it end at the old place.
template <typename Unit>
class WideLineSplitter {
public:
    WideLineSplitter(QStringConverter::Encoding encoding, LineCollector &collector)
        : m_lineFeed(unit(encoding, u'\n')), m_return(unit(encoding, u'\r')),
          // where in a unit the byte of a line end stands
          m_lineEndByte(encoding == QStringConverter::Utf16BE ||
                                encoding == QStringConverter::Utf32BE
                            ? qsizetype(sizeof(Unit)) - 1
                            : 0),
          m_collector(collector)
    {
    }

    // Returns true once nothing more is needed. Each chunk is read on from
    // the bytes that the last one ended with, which start at a unit's place.
    bool feed(const QByteArray &chunk)
    {
        const QByteArray bytes = m_carry.isEmpty() ? chunk : m_carry + chunk;
        const char *const data = bytes.constData();
        const char *const end = data + bytes.size();
        LineEndFinder<char> finder(end);
        const char *at = data;
        while (end - at >= Size) {
            if (isLineEnd(at)) {
                if (m_collector.take())
                    return true;
                at = skipLineEnds(at, end);
                continue;
            }
            const char *const lineEnd = nextLineEnd(finder, at, end);
            if (!lineEnd)
                break;
            m_collector.keep(bytes, at - data, lineEnd - at);
            at = lineEnd;
            if (m_collector.spent())
                return true;
        }
        // Kept but for the last bytes, where a line end may begin: the next
        // chunk starts at a unit's place.
        const qsizetype kept = std::max<qsizetype>(0, end - at - (Size - 1)) / Size * Size;
        m_collector.keep(bytes, at - data, kept);
        m_carry = QByteArray(at + kept, end - at - kept);
        return m_collector.spent();
    }

    // The last bytes may be half a unit.
    void finish()
    {
        m_collector.keep(m_carry, 0, m_carry.size());
        m_collector.finish();
    }

private:
    static constexpr qsizetype Size = sizeof(Unit);

    static Unit unit(QStringConverter::Encoding encoding, char16_t c)
    {
        const QByteArray bytes = QStringEncoder(encoding).encode(QStringView(&c, 1));
        Unit u = 0;
        std::memcpy(&u, bytes.constData(), std::min<size_t>(sizeof u, size_t(bytes.size())));
        return u;
    }

    bool isLineEnd(const char *at) const
    {
        Unit u;
        std::memcpy(&u, at, sizeof u);
        return u == m_lineFeed || u == m_return;
    }

    // The first unit at or after `from` that is no line end, whole blocks
    // tested first as for bytes.
    const char *skipLineEnds(const char *from, const char *end) const
    {
        constexpr qsizetype Block = 64;
        const Unit lineFeed = m_lineFeed, carriageReturn = m_return;
        while (end - from >= Block * Size) {
            unsigned other = 0;
            for (qsizetype i = 0; i < Block; ++i) {
                Unit u;
                std::memcpy(&u, from + i * Size, sizeof u);
                other |= unsigned(u != lineFeed) & unsigned(u != carriageReturn);
            }
            if (other != 0)
                break;
            from += Block * Size;
        }
        while (end - from >= Size && isLineEnd(from))
            from += Size;
        return from;
    }

    // The start of the first line end at or after `from`, which is at a
    // unit's place; null where none is whole before `end`.
    const char *nextLineEnd(LineEndFinder<char> &finder, const char *from, const char *end) const
    {
        for (const char *found = finder.next(from + m_lineEndByte); found < end;
             found = finder.next(found + 1)) {
            const char *const start = found - m_lineEndByte;
            if (end - start < Size)
                return nullptr;
            if (!isLineEnd(start))
                continue;
            if ((start - from) % Size == 0 || endsAtItsPlace(start, end))
                return start;
        }
        return nullptr;
    }

    // Whether the next line end after the one at `start`, at any byte, is at
    // the place of its units.
    bool endsAtItsPlace(const char *start, const char *end) const
    {
        const char *const after = start + Size;
        if (end - after < Size)
            return true;
        LineEndFinder<char> finder(end);
        for (const char *found = finder.next(after + m_lineEndByte); found < end;
             found = finder.next(found + 1)) {
            const char *const next = found - m_lineEndByte;
            if (end - next >= Size && isLineEnd(next))
                return (next - start) % Size == 0;
        }
        return true;
    }

    const Unit m_lineFeed;
    const Unit m_return;
    const qsizetype m_lineEndByte;
    LineCollector &m_collector;
    QByteArray m_carry;
};

// Each line decoded on its own, so that one whose bytes are no whole
// number of units reads wrong alone, its last bytes as U+FFFD.
template <typename Unit>
QStringList readWide(QStringConverter::Encoding encoding, QIODevice &device, QByteArray chunk)
{
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless |
                                         QStringConverter::Flag::ConvertInitialBom);
    // One unit more than kept, so that a cut never leaves half a surrogate pair.
    LineCollector collector((MaxLineLength + 1) * qsizetype(sizeof(Unit)), ReadBudget);
    WideLineSplitter<Unit> splitter(encoding, collector);
    collect(device, std::move(chunk),
            QStringEncoder(encoding).encode(QString(QChar::ByteOrderMark)),
            [&](const QByteArray &bytes) { return splitter.feed(bytes); });
    splitter.finish();
    QStringList lines;
    for (const auto &line : collector.lines()) {
        const qsizetype whole =
            line.text.size() / qsizetype(sizeof(Unit)) * qsizetype(sizeof(Unit));
        QString text = decoder.decode(QByteArrayView(line.text).first(whole));
        if (whole < line.text.size())
            text += QChar::ReplacementCharacter;
        lines.append(cleaned(shortened(std::move(text))));
    }
    return lines;
}

QStringList readBytes(QIODevice &device, QByteArray chunk)
{
    LineCollector collector(MaxLineBytes, ReadBudget);
    collect(device, std::move(chunk), QByteArrayLiteral("\xEF\xBB\xBF"),
            [&](const QByteArray &bytes) { return collector.feed(bytes); });
    collector.finish();
    return decodeLines(collector.lines());
}

} // namespace

QStringList readBook(QIODevice &device)
{
    QByteArray first = readChunk(device, FirstReadBytes);
    // A byte-order mark needs up to four bytes; a tiny first read is topped up.
    while (first.size() < 4) {
        const QByteArray more = readChunk(device, FirstReadBytes);
        if (more.isEmpty())
            break;
        first += more;
    }
    if (const auto wide = EncodingGuess::wideEncoding(first))
        return *wide == QStringConverter::Utf32LE || *wide == QStringConverter::Utf32BE
                   ? readWide<quint32>(*wide, device, std::move(first))
                   : readWide<quint16>(*wide, device, std::move(first));
    return readBytes(device, std::move(first));
}

QStringList readBookFile(const QString &path)
{
    // A folder, a device or a pipe is no book; reading one could block.
    if (!QFileInfo(path).isFile())
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return readBook(file);
}

QStringList decodeBookBytes(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readBook(buffer);
}

} // namespace verlis
