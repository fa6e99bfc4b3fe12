#include "textimport.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <uchardet.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace verlis {

namespace {

constexpr qsizetype ChunkSize = qsizetype(64) * 1024;
// A book's 140 lines come long before this; a file without line ends (a
// disc image, say) stops here instead of filling the memory.
constexpr qsizetype ReadBudget = qsizetype(128) * 1024 * 1024;
constexpr QChar IcuSubstitute = QChar(0x1A);

// Splits a stream of chunks into lines and keeps the non-empty ones. A CR
// at the end of one chunk and an LF at the start of the next are one line end.
template <typename Text>
class LineCollector {
public:
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
            if (at == size) {
                m_partial += chunk.mid(start);
                break;
            }
            if (take(chunk.mid(start, at - start)))
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
            take(Text());
    }

    bool full() const { return m_lines.size() >= MaxBookLines; }
    const QList<Text> &lines() const { return m_lines; }

private:
    bool take(const Text &tail)
    {
        Text line = m_partial.isEmpty() ? tail : m_partial + tail;
        m_partial.clear();
        if (!line.isEmpty())
            m_lines.append(std::move(line));
        return full();
    }

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

// The lines as one text: valid UTF-8 as it stands, else what the detector
// names, else CP932, else UTF-8 with U+FFFD for the bad bytes. ISO-2022-JP
// is valid UTF-8 byte for byte; its escape sequences give it away.
QString decodeLines(const QList<QByteArray> &rawLines)
{
    const QByteArray joined = rawLines.join('\n');
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(joined);
    const bool validUtf8 = !utf8.hasError();
    if (validUtf8 && !joined.contains('\x1B'))
        return text;

    const QString detected = decoderName(detectedEncodingName(joined));
    if (validUtf8) {
        if (detected.startsWith(QLatin1String("ISO-2022"), Qt::CaseInsensitive)) {
            if (auto decoded = decodeStrictly(detected, joined))
                return *decoded;
        }
        return text;
    }
    if (detected.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) != 0) {
        if (auto decoded = decodeStrictly(detected, joined))
            return *decoded;
    }
    if (auto decoded = decodeStrictly(QStringLiteral("windows-31j"), joined))
        return *decoded;
    return text; // Qt's UTF-8 decoder has put U+FFFD in place of the bad bytes
}

QStringList nonEmpty(const QString &text)
{
    QStringList lines = text.split(QChar('\n'));
    lines.removeAll(QString());
    if (lines.size() > MaxBookLines)
        lines.resize(MaxBookLines);
    return lines;
}

class ChunkSource {
public:
    virtual ~ChunkSource() = default;
    virtual QByteArray next() = 0; // empty at the end
};

QStringList readWide(QStringConverter::Encoding encoding, ChunkSource &source, QByteArray first)
{
    QStringDecoder decoder(encoding); // skips the byte-order mark itself
    LineCollector<QString> collector;
    for (QByteArray chunk = std::move(first); !chunk.isEmpty(); chunk = source.next()) {
        if (collector.feed(decoder.decode(chunk)))
            return collector.lines();
    }
    collector.finish();
    return collector.lines();
}

QStringList readBytes(ChunkSource &source, QByteArray first)
{
    static const QByteArray utf8Mark("\xEF\xBB\xBF");
    if (first.startsWith(utf8Mark))
        first.remove(0, utf8Mark.size());
    LineCollector<QByteArray> collector;
    bool full = false;
    for (QByteArray chunk = std::move(first); !chunk.isEmpty() && !full;) {
        full = collector.feed(chunk);
        if (!full)
            chunk = source.next();
    }
    if (!full)
        collector.finish();
    if (collector.lines().isEmpty())
        return {};
    return nonEmpty(decodeLines(collector.lines()));
}

QStringList readSource(ChunkSource &source)
{
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

class FileChunks final : public ChunkSource {
public:
    explicit FileChunks(QFile &file) : m_file(file) {}
    QByteArray next() override
    {
        if (m_file.pos() >= ReadBudget)
            return {};
        return m_file.read(ChunkSize);
    }

private:
    QFile &m_file;
};

class MemoryChunks final : public ChunkSource {
public:
    explicit MemoryChunks(const QByteArray &bytes) : m_bytes(bytes) {}
    QByteArray next() override
    {
        const QByteArray chunk = m_bytes.mid(m_at, ChunkSize);
        m_at += chunk.size();
        return chunk;
    }

private:
    const QByteArray &m_bytes;
    qsizetype m_at = 0;
};

} // namespace

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
    FileChunks source(file);
    book.lines = readSource(source);
    return book;
}

QStringList decodeBookBytes(const QByteArray &bytes)
{
    MemoryChunks source(bytes);
    return readSource(source);
}

} // namespace verlis
