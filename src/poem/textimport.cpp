#include "textimport.h"

#include "encodingguess.h"
#include "linedecoder.h"
#include "unreadable.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

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

const QChar *find(const QChar *from, const QChar *end, char c)
{
    const qsizetype at = QStringView(from, end).indexOf(QLatin1Char(c));
    return at < 0 ? end : from + at;
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
// `maxLength` units. Only the units kept spend the budget: line ends and
// the cut-off tail of a long line are passed over.
template <typename Text>
class LineCollector {
public:
    struct Line {
        Text text;
        bool cut = false;
    };

    LineCollector(qsizetype maxLength, qsizetype budget) : m_maxLength(maxLength), m_budget(budget)
    {
    }

    // Returns true once nothing more is needed: MaxBookLines lines held, or
    // the budget spent.
    bool feed(const Text &chunk)
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
            if (m_budget <= 0)
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

private:
    bool full() const { return m_lines.size() >= MaxBookLines; }

    void keep(const Text &chunk, qsizetype from, qsizetype length)
    {
        const qsizetype room = m_maxLength - m_partial.text.size();
        m_partial.cut = m_partial.cut || length > room;
        const qsizetype kept = std::clamp(length, qsizetype(0), room);
        m_partial.text += chunk.mid(from, kept);
        m_budget -= kept;
    }

    bool take()
    {
        if (!m_partial.text.isEmpty())
            m_lines.append(std::exchange(m_partial, Line()));
        return full();
    }

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
        else if (c.isSurrogate() || isUnreadable(c.unicode()) || c.unicode() == 0x1A)
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

using ByteLines = QList<LineCollector<QByteArray>::Line>;

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

// Reads chunks of the device into the collector until it has what it
// needs, the device ends or MaxReadBytes have been read.
template <typename Text, typename Decode>
void collect(LineCollector<Text> &collector, QIODevice &device, QByteArray chunk, Decode decode)
{
    qsizetype read = chunk.size();
    while (!chunk.isEmpty() && !collector.feed(decode(chunk)) && read < MaxReadBytes) {
        chunk = readChunk(device, std::min(LaterChunkSize, MaxReadBytes - read));
        read += chunk.size();
    }
    collector.finish();
}

QStringList readWide(QStringConverter::Encoding encoding, QIODevice &device, QByteArray chunk)
{
    QStringDecoder decoder(encoding); // skips the byte-order mark itself
    const qsizetype unitBytes = encoding == QStringConverter::Utf16 ||
                                        encoding == QStringConverter::Utf16LE ||
                                        encoding == QStringConverter::Utf16BE
                                    ? 2
                                    : 4;
    // One more than kept, so that a cut never leaves half a surrogate pair.
    LineCollector<QString> collector(MaxLineLength + 1, ReadBudget / unitBytes);
    collect(collector, device, std::move(chunk),
            [&](const QByteArray &bytes) { return decoder.decode(bytes); });
    QStringList lines;
    for (const auto &line : collector.lines())
        lines.append(cleaned(shortened(line.text)));
    return lines;
}

QStringList readBytes(QIODevice &device, QByteArray chunk)
{
    static const QByteArray utf8Mark("\xEF\xBB\xBF");
    if (chunk.startsWith(utf8Mark))
        chunk.remove(0, utf8Mark.size());
    LineCollector<QByteArray> collector(MaxLineBytes, ReadBudget);
    collect(collector, device, std::move(chunk), [](const QByteArray &bytes) { return bytes; });
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
        return readWide(*wide, device, std::move(first));
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
