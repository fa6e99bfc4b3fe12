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
// The bytes of one line kept before decoding: enough for MaxLineLength
// characters in any encoding. The rest of a longer line is dropped unread.
constexpr qsizetype MaxLineBytes = qsizetype(4) * MaxLineLength;
constexpr QChar IcuSubstitute = QChar(0x1A);

// Splits a stream of chunks into lines and keeps the non-empty ones, each
// cut at `maxLength`. A CR at the end of one chunk and an LF at the start of
// the next are one line end.
template <typename Text>
class LineCollector {
public:
    explicit LineCollector(qsizetype maxLength) : m_maxLength(maxLength) {}

    // Returns true once MaxBookLines lines are held: nothing more is needed.
    bool feed(const Text &chunk)
    {
        const auto *data = chunk.constData();
        const qsizetype size = chunk.size();
        qsizetype start = 0;
        if (m_afterCR && size > 0 && data[0] == '\n')
            start = 1;
        m_afterCR = false;
        while (start < size) {
            const auto *end = std::find_if(data + start, data + size,
                                           [](auto c) { return c == '\n' || c == '\r'; });
            const qsizetype at = end - data;
            keep(chunk, start, at - start);
            if (at == size)
                break;
            if (take())
                return true;
            start = at + 1;
            if (data[at] == '\r') {
                if (start == size)
                    m_afterCR = true;
                else if (data[start] == '\n')
                    ++start;
            }
        }
        return full();
    }

    // The last line may have no line end.
    void finish()
    {
        if (!full())
            take();
    }

    bool full() const { return m_lines.size() >= MaxBookLines; }
    const QList<Text> &lines() const { return m_lines; }

private:
    void keep(const Text &chunk, qsizetype from, qsizetype length)
    {
        const qsizetype room = m_maxLength - m_partial.size();
        if (room > 0)
            m_partial += chunk.mid(from, std::min(length, room));
    }

    bool take()
    {
        if (!m_partial.isEmpty())
            m_lines.append(std::exchange(m_partial, Text()));
        return full();
    }

    const qsizetype m_maxLength;
    Text m_partial;
    bool m_afterCR = false;
    QList<Text> m_lines;
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

// Decodes with a named decoder; nothing when the name is unknown or the
// bytes don't fit the encoding.
std::optional<QString> decodeStrictly(const QString &encoding, const QByteArray &bytes)
{
    if (encoding.isEmpty())
        return std::nullopt;
    QStringDecoder decoder(encoding.toLatin1().constData());
    if (!decoder.isValid())
        return std::nullopt;
    QString text = decoder.decode(bytes);
    if (decoder.hasError() || text.contains(IcuSubstitute))
        return std::nullopt;
    return text;
}

// The encoding a detector's name stands for: books written on Windows
// say Shift_JIS and mean its superset CP932.
QString decoderName(const QString &detected)
{
    if (detected.compare(QLatin1String("SHIFT_JIS"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("windows-31j");
    return detected;
}

bool isJapanese(char16_t c)
{
    return (c >= 0x3000 && c <= 0x30FF)     // punctuation, hiragana, katakana
           || (c >= 0x3400 && c <= 0x4DBF)  // kanji
           || (c >= 0x4E00 && c <= 0x9FFF)  // kanji
           || (c >= 0xF900 && c <= 0xFAFF)  // kanji
           || (c >= 0xFF01 && c <= 0xFF60); // full-width forms; half-width kana don't count:
                                            // they are what EUC-JP looks like as CP932
}

// The share of the visible characters that are Japanese.
double japaneseShare(const QString &text)
{
    qsizetype visible = 0, japanese = 0;
    for (const QChar c : text) {
        if (c.isSpace())
            continue;
        ++visible;
        japanese += isJapanese(c.unicode()) ? 1 : 0;
    }
    return visible == 0 ? 0.0 : double(japanese) / double(visible);
}

// A Japanese reading wins over a detector's guess when at least this share
// of it is Japanese; a Western text read as CP932 stays far below.
constexpr double JapaneseShareNeeded = 0.25;

struct Utf8Reading {
    QString text;       // U+FFFD in place of each bad sequence
    qsizetype good = 0; // characters of two or more bytes
    qsizetype bad = 0;  // sequences that are no UTF-8
};

Utf8Reading readUtf8(const QByteArray &bytes)
{
    Utf8Reading reading;
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    reading.text = decoder.decode(bytes);
    // U+FFFD that stood in the file as three bytes is no bad sequence.
    const qsizetype written = bytes.count("\xEF\xBF\xBD");
    for (const QChar c : std::as_const(reading.text)) {
        if (c.unicode() == 0xFFFD)
            ++reading.bad;
        else if (c.unicode() >= 0x80 && !c.isLowSurrogate())
            ++reading.good;
    }
    reading.bad -= written;
    reading.good += written;
    return reading;
}

// The lines as one text. Valid UTF-8 stands as it is, and so does UTF-8 with
// a few damaged bytes, which become U+FFFD: EUC-JP and Shift_JIS read as
// UTF-8 come nowhere near four good sequences to a bad one. Else the strict
// Japanese reading that reads most as Japanese, unless the detector's own
// answer reads better; else what the detector names; else UTF-8 with U+FFFD.
// The detector has least to go on where a book is most likely, in short
// lines of a few kanji: it calls them UTF-8, GB18030 or a Western code page.
QString decodeLines(const QByteArray &joined)
{
    const Utf8Reading utf8 = readUtf8(joined);
    if (utf8.bad == 0) {
        // ISO-2022-JP is valid UTF-8 byte for byte; its escape sequences give it away.
        if (joined.contains('\x1B')) {
            if (auto decoded = decodeStrictly(QStringLiteral("ISO-2022-JP"), joined))
                return *decoded;
        }
        return utf8.text;
    }
    if (utf8.good >= 4 * utf8.bad)
        return utf8.text;

    // The detector's "UTF-8" for bytes that are no UTF-8 is no answer.
    QString detected = decoderName(detectedEncodingName(joined));
    if (detected.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) == 0)
        detected.clear();
    struct Candidate {
        QString encoding;
        bool mustReadAsJapanese;
    };
    const Candidate candidates[] = {{QStringLiteral("windows-31j"), true},
                                    {QStringLiteral("EUC-JP"), true},
                                    {QStringLiteral("ISO-2022-JP"), true},
                                    {detected, false}};
    std::optional<QString> best;
    double bestShare = 0.0;
    for (const Candidate &candidate : candidates) {
        const auto decoded = decodeStrictly(candidate.encoding, joined);
        if (!decoded)
            continue;
        const double share = japaneseShare(*decoded);
        if (candidate.mustReadAsJapanese && share < JapaneseShareNeeded)
            continue;
        if (!best || share > bestShare) {
            best = decoded;
            bestShare = share;
        }
    }
    return best ? *best : utf8.text;
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

// The decoded text split at the line ends that the collector put in.
QStringList nonEmpty(const QString &text)
{
    QStringList lines;
    for (const QString &line : text.split(QChar('\n'), Qt::SkipEmptyParts)) {
        if (lines.size() == MaxBookLines)
            break;
        lines.append(shortened(line));
    }
    return lines;
}

// Reads a device in chunks, no more than ReadBudget bytes in all.
class Chunks {
public:
    explicit Chunks(QIODevice &device) : m_device(device) {}
    QByteArray next() // empty at the end
    {
        const qsizetype want = std::min(ChunkSize, ReadBudget - m_read);
        if (want <= 0)
            return {};
        QByteArray chunk = m_device.read(want);
        m_read += chunk.size();
        return chunk;
    }

private:
    QIODevice &m_device;
    qsizetype m_read = 0;
};

QStringList readWide(QStringConverter::Encoding encoding, Chunks &source, QByteArray first)
{
    QStringDecoder decoder(encoding); // skips the byte-order mark itself
    // One more than kept, so that a cut never leaves half a surrogate pair.
    LineCollector<QString> collector(MaxLineLength + 1);
    bool full = false;
    for (QByteArray chunk = std::move(first); !chunk.isEmpty() && !full; chunk = source.next())
        full = collector.feed(decoder.decode(chunk));
    if (!full)
        collector.finish();
    QStringList lines;
    for (const QString &line : collector.lines())
        lines.append(shortened(line));
    return lines;
}

QStringList readBytes(Chunks &source, QByteArray first)
{
    static const QByteArray utf8Mark("\xEF\xBB\xBF");
    if (first.startsWith(utf8Mark))
        first.remove(0, utf8Mark.size());
    LineCollector<QByteArray> collector(MaxLineBytes);
    bool full = false;
    for (QByteArray chunk = std::move(first); !chunk.isEmpty() && !full; chunk = source.next())
        full = collector.feed(chunk);
    if (!full)
        collector.finish();
    if (collector.lines().isEmpty())
        return {};
    return nonEmpty(decodeLines(collector.lines().join('\n')));
}

} // namespace

QStringList readBook(QIODevice &device)
{
    Chunks source(device);
    QByteArray first = source.next();
    // A byte-order mark needs up to four bytes; a tiny first read is topped up.
    while (first.size() < 4) {
        const QByteArray more = source.next();
        if (more.isEmpty())
            break;
        first += more;
    }
    if (const auto wide = wideEncoding(first))
        return readWide(*wide, source, std::move(first));
    return readBytes(source, std::move(first));
}

BookFile readBookFile(const QString &path)
{
    BookFile book;
    // A folder, a device or a pipe is no book; reading one could block.
    if (!QFileInfo(path).isFile())
        return book;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return book;
    book.opened = true;
    book.lines = readBook(file);
    return book;
}

QStringList decodeBookBytes(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readBook(buffer);
}

} // namespace verlis
