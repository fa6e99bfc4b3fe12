#include "textimport.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <uchardet.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace verlis {

namespace {

constexpr qsizetype ChunkSize = qsizetype(64) * 1024;
// The bytes of one line kept before decoding: more than MaxLineLength
// characters in any of the encodings read, so that the cut of the decoded
// line is the only one that shows.
constexpr qsizetype MaxLineBytes = qsizetype(8) * MaxLineLength;
// Where a line was cut, its last bytes may hold half a character.
constexpr qsizetype CutTail = 8;
// What the system's decoders put where a byte reads as nothing.
constexpr QChar IcuSubstitute = QChar(0x1A);

template <typename Unit>
bool isLineEnd(Unit c)
{
    return c == '\n' || c == '\r';
}

// Splits a stream of chunks into its non-empty lines, each kept to
// `maxLength` units. A run of line ends is skipped at memory speed and
// costs nothing of the budget, which only the lines' own units spend.
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
        const qsizetype size = chunk.size();
        qsizetype at = 0;
        while (at < size) {
            if (isLineEnd(data[at])) {
                if (take())
                    return true;
                while (at < size && isLineEnd(data[at]))
                    ++at;
                continue;
            }
            const auto *end = std::find_if(data + at, data + size,
                                           isLineEnd<std::remove_cvref_t<decltype(*data)>>);
            const qsizetype length = end - (data + at);
            keep(chunk, at, length);
            at += length;
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

    qsizetype budgetLeft() const { return m_budget; }
    const QList<Line> &lines() const { return m_lines; }

private:
    bool full() const { return m_lines.size() >= MaxBookLines; }

    void keep(const Text &chunk, qsizetype from, qsizetype length)
    {
        m_budget -= length;
        const qsizetype room = m_maxLength - m_partial.text.size();
        m_partial.cut = m_partial.cut || length > room;
        if (room > 0)
            m_partial.text += chunk.mid(from, std::min(length, room));
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

// Where a book starts with a byte-order mark of UTF-16 or UTF-32, the
// encoding it names. A UTF-8 mark is handled with the byte path.
std::optional<QStringConverter::Encoding> wideEncoding(const QByteArray &start)
{
    const auto found = QStringConverter::encodingForData(start);
    if (found && *found != QStringConverter::Utf8)
        return found;
    return std::nullopt;
}

QString detectedEncodingName(const QByteArray &sample)
{
    std::unique_ptr<std::remove_pointer_t<uchardet_t>, void (*)(uchardet_t)> detector(
        uchardet_new(), uchardet_delete);
    if (!detector)
        return {};
    if (uchardet_handle_data(detector.get(), sample.constData(), size_t(sample.size())) != 0)
        return {};
    uchardet_data_end(detector.get());
    return QString::fromLatin1(uchardet_get_charset(detector.get()));
}

// The encoding a detector's name stands for: books written on Windows
// say Shift_JIS and mean its superset CP932.
QByteArray decoderName(const QString &detected)
{
    if (detected.compare(QLatin1String("SHIFT_JIS"), Qt::CaseInsensitive) == 0)
        return "windows-31j";
    return detected.toLatin1();
}

// What stands where bytes read as nothing (the decoders' U+FFFD and U+001A),
// and the control characters that have no place in a line.
bool isFault(char16_t c)
{
    return c == 0xFFFD || c == IcuSubstitute.unicode() || (c < 0x20 && c != '\t' && c != '\n') ||
           c == 0x7F;
}

bool isKanji(char16_t c)
{
    return (c >= 0x3400 && c <= 0x4DBF) || (c >= 0x4E00 && c <= 0x9FFF) ||
           (c >= 0xF900 && c <= 0xFAFF);
}

bool isKana(char16_t c) // with the Japanese punctuation and full-width forms
{
    return (c >= 0x3000 && c <= 0x30FF) || (c >= 0xFF01 && c <= 0xFF60);
}

bool isHalfWidthKana(char16_t c) { return c >= 0xFF61 && c <= 0xFF9F; }

// How well some bytes read in one encoding.
struct Reading {
    qsizetype faults = 0;  // bytes that read as nothing, and control characters
    qsizetype good = 0;    // characters beyond ASCII
    qsizetype visible = 0; // characters that are neither faults nor spaces
    qsizetype japanese = 0;

    // The share of all it read that reads as Japanese: a fault counts
    // against a reading, without ruling it out.
    double quality() const
    {
        const qsizetype all = visible + faults;
        return all == 0 ? 0.0 : double(japanese) / double(all);
    }
};

// Half-width katakana count as Japanese only in a reading without kanji:
// EUC-JP read as CP932 becomes a jumble of both, while a book written in
// half-width katakana has no kanji.
Reading readAs(const char *encoding, const QByteArray &bytes)
{
    Reading reading;
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless);
    const QString text = decoder.decode(bytes);
    qsizetype kanji = 0, kana = 0, halfWidth = 0;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (isFault(u)) {
            ++reading.faults;
        } else if (!c.isSpace()) {
            ++reading.visible;
            reading.good += u >= 0x80 && !c.isLowSurrogate();
            kanji += isKanji(u);
            kana += isKana(u);
            halfWidth += isHalfWidthKana(u);
        }
    }
    reading.japanese = kanji + kana + (kanji == 0 ? halfWidth : 0);
    return reading;
}

// A Japanese reading wins where at least this share of it reads as
// Japanese, damage counted against it; a Western text read as CP932 stays
// far below.
constexpr double JapaneseShareNeeded = 0.25;

// The encoding the whole book reads best in. Valid UTF-8 stands as it is, and
// so does UTF-8 with a few damaged bytes: EUC-JP and Shift_JIS read as UTF-8
// come nowhere near four good characters to a bad one. Else the Japanese
// reading of the best quality, where it reads as Japanese at all; else what
// the detector names; else UTF-8, with U+FFFD for what it can't read. The
// detector has least to go on where a book is most likely, in short lines of
// a few kanji: it calls them UTF-8, GB18030 or a Western code page.
QByteArray chooseEncoding(const QByteArray &sample)
{
    // ISO-2022-JP is valid UTF-8 byte for byte; its escape sequences give it away.
    const bool escapes = sample.contains('\x1B');
    Reading utf8 = readAs("UTF-8", sample);
    const qsizetype written = sample.count("\xEF\xBF\xBD"); // U+FFFD in the file is no fault
    utf8.faults -= written;
    utf8.good += written;
    if (!escapes && utf8.good >= 4 * utf8.faults)
        return "UTF-8";
    QByteArray best;
    double bestQuality = JapaneseShareNeeded;
    for (const char *candidate : {"windows-31j", "EUC-JP", "ISO-2022-JP"}) {
        const double quality = readAs(candidate, sample).quality();
        if (quality > bestQuality || (best.isEmpty() && quality == bestQuality)) {
            best = candidate;
            bestQuality = quality;
        }
    }
    if (!best.isEmpty())
        return best;
    if (utf8.faults == 0)
        return "UTF-8";
    const QByteArray detected = decoderName(detectedEncodingName(sample));
    if (!detected.isEmpty() && detected.compare("UTF-8", Qt::CaseInsensitive) != 0 &&
        QStringDecoder(detected.constData()).isValid())
        return detected;
    return "UTF-8";
}

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
        else if (c.isSurrogate() || isFault(c.unicode()))
            c = QChar::ReplacementCharacter;
    }
    return line;
}

using ByteLines = QList<LineCollector<QByteArray>::Line>;

// Each line decoded on its own with its line end, so that a fault stays in
// its line: a character cut at the end shows as U+FFFD there, and a line that
// leaves the decoder shifted (ISO-2022-JP) gets a new decoder after it.
QStringList decodeLines(const ByteLines &lines)
{
    // A cut line takes no part in the choice, so that adding one never
    // changes how the others read; where every line was cut, their heads do.
    QByteArray sample;
    for (const auto &line : lines)
        if (!line.cut)
            sample += line.text + '\n';
    if (sample.isEmpty())
        for (const auto &line : lines)
            sample += line.text.chopped(CutTail) + '\n';
    const QByteArray encoding = chooseEncoding(sample);
    QStringList decoded;
    std::optional<QStringDecoder> decoder;
    for (const auto &line : lines) {
        if (!decoder)
            decoder.emplace(encoding.constData(), QStringConverter::Flag::Stateless);
        QString text = decoder->decode(line.text + '\n');
        if (text.endsWith(QLatin1Char('\n')))
            text.chop(1);
        else
            decoder.reset();
        if (!text.isEmpty()) // bytes that read as no text at all, an escape sequence alone
            decoded.append(shortened(cleaned(std::move(text))));
    }
    return decoded;
}

// The next chunk of the device, no larger than `most` bytes; empty at the end.
QByteArray nextChunk(QIODevice &device, qsizetype most)
{
    return most > 0 ? device.read(std::min(ChunkSize, most)) : QByteArray();
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
    // The budget in characters, less the mark's.
    LineCollector<QString> collector(MaxLineLength + 1, ReadBudget / unitBytes - 1);
    while (!chunk.isEmpty() && !collector.feed(decoder.decode(chunk)))
        chunk = nextChunk(device, collector.budgetLeft() * unitBytes);
    collector.finish();
    QStringList lines;
    for (const auto &line : collector.lines())
        lines.append(shortened(cleaned(line.text)));
    return lines;
}

QStringList readBytes(QIODevice &device, QByteArray chunk)
{
    static const QByteArray utf8Mark("\xEF\xBB\xBF");
    if (chunk.startsWith(utf8Mark))
        chunk.remove(0, utf8Mark.size());
    LineCollector<QByteArray> collector(MaxLineBytes, ReadBudget);
    while (!chunk.isEmpty() && !collector.feed(chunk))
        chunk = nextChunk(device, collector.budgetLeft());
    collector.finish();
    return decodeLines(collector.lines());
}

} // namespace

QStringList readBook(QIODevice &device)
{
    QByteArray first = nextChunk(device, ReadBudget);
    // A byte-order mark needs up to four bytes; a tiny first read is topped up.
    while (first.size() < 4) {
        const QByteArray more = nextChunk(device, ReadBudget);
        if (more.isEmpty())
            break;
        first += more;
    }
    if (const auto wide = wideEncoding(first))
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
