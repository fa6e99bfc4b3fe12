// Bytes in, book out: the same bytes read from memory and from a file give
// the same lines, no line breaks the limits the window relies on, and one
// long line more, cut in the middle of a character, leaves the others as
// they were. And on books of real text in each encoding read, one stray
// byte, in, out or changed, changes no line but its own.
#include "fuzzcheck.h"
#include "poem/encodingguess.h"
#include "poem/textimport.h"

#include <QFile>
#include <QStringConverter>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

namespace {

// The book's own text as one line, repeated past the length a line is cut
// at: the same characters in the same proportions, so that the encoding the
// book is read in has no more reason to change than the line's own cut.
QByteArray longLine(QByteArray bytes)
{
    bytes.replace('\r', ' ').replace('\n', ' ');
    if (bytes.trimmed().isEmpty())
        return {};
    return bytes.repeated(int(40 * 1024 / bytes.size() + 1));
}

bool readsWide(const QByteArray &bytes)
{
    return verlis::EncodingGuess::wideEncoding(
               bytes.first(std::min(bytes.size(), verlis::FirstReadBytes)))
        .has_value();
}

struct RealBook {
    QByteArray mark; // UTF-32 is told by its byte-order mark alone
    QList<QByteArray> lines;
    QByteArray lineFeed, carriageReturn;
    QStringList read;

    QByteArray bytes(const QList<QByteArray> &with) const { return mark + with.join(lineFeed); }
};

// The first 40 lines of each test book, in each encoding of its language.
const std::vector<RealBook> &realBooks()
{
    static const std::vector<RealBook> books = [] {
        std::vector<RealBook> all;
        for (const auto &[language, encoding] : {std::pair{"ja", "UTF-8"},
                                                 {"ja", "windows-31j"},
                                                 {"ja", "EUC-JP"},
                                                 {"ja", "ISO-2022-JP"},
                                                 {"zh_CN", "GB18030"},
                                                 {"zh_TW", "Big5"},
                                                 {"ko", "EUC-KR"},
                                                 {"ru", "windows-1251"},
                                                 {"ru", "KOI8-R"},
                                                 {"ru", "ISO-8859-5"},
                                                 {"fr", "windows-1252"},
                                                 {"fr", "ISO-8859-15"},
                                                 {"pl", "windows-1250"},
                                                 {"cs", "ISO-8859-2"},
                                                 {"el", "ISO-8859-7"},
                                                 {"ja", "UTF-16LE"},
                                                 {"ja", "UTF-16BE"},
                                                 {"ru", "UTF-16BE"},
                                                 {"ja", "UTF-32LE"}}) {
            QFile file(QStringLiteral(VERLIS_BOOKS_DIR "/%1.txt").arg(language));
            check(file.open(QIODevice::ReadOnly), "a test book is missing");
            RealBook book;
            QStringEncoder encoder(encoding);
            if (QByteArray(encoding).startsWith("UTF-32"))
                book.mark = encoder.encode(QString(QChar::ByteOrderMark));
            for (const QString &line : QString::fromUtf8(file.readAll()).split('\n').mid(0, 40))
                book.lines.append(encoder.encode(line));
            book.lineFeed = encoder.encode(u"\n");
            book.carriageReturn = encoder.encode(u"\r");
            book.read = verlis::decodeBookBytes(book.bytes(book.lines));
            check(book.read.size() == 40, "a test book reads otherwise than written");
            all.push_back(book);
        }
        return all;
    }();
    return books;
}

// The input's first five bytes choose a book, a line, a place in it and a
// stray byte, put in, put for the byte there or taking it out.
void checkStrayByte(const QByteArray &input)
{
    if (input.size() < 5)
        return;
    const auto *choice = reinterpret_cast<const unsigned char *>(input.constData());
    const RealBook &book = realBooks()[choice[0] % realBooks().size()];
    QList<QByteArray> lines = book.lines;
    const qsizetype index = choice[1] % lines.size();
    QByteArray &line = lines[index];
    const qsizetype at = choice[2] % line.size();
    const char stray = char(choice[4]);
    switch (choice[3] % 3) {
    case 0:
        line.insert(at, stray);
        break;
    case 1:
        line[at] = stray;
        break;
    default:
        line.remove(at, 1);
    }
    // A line end is no stray byte; in UTF-16 or UTF-32 a NUL may make one, or
    // a byte out bring one's bytes together.
    if (line.contains(book.lineFeed) || line.contains(book.carriageReturn))
        return;
    QStringList read = verlis::decodeBookBytes(book.bytes(lines));
    check(read.size() == book.read.size() || read.size() == book.read.size() - 1,
          "a stray byte changed the number of lines");
    if (read.size() < book.read.size()) // its line now reads as nothing, an escape alone
        read.insert(index, book.read[index]);
    read[index] = book.read[index];
    check(read == book.read, "a stray byte changed another line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    static const QTemporaryDir dir;
    static const QString path = dir.filePath(QStringLiteral("book.txt"));

    const QByteArray bytes = inputBytes(data, size);
    checkStrayByte(bytes);
    const QStringList lines = verlis::decodeBookBytes(bytes);
    check(lines.size() <= verlis::MaxBookLines, "more than 140 lines");
    for (const QString &line : lines) {
        check(!line.isEmpty(), "an empty line was kept");
        check(line.size() <= verlis::MaxLineLength, "a line longer than the limit");
        check(!line.contains(QChar('\n')) && !line.contains(QChar('\r')),
              "a line end inside a line");
    }

    // On a book none of whose lines was cut.
    const bool uncut = std::all_of(lines.begin(), lines.end(), [](const QString &line) {
        return line.size() < verlis::MaxLineLength;
    });
    // Only where the book is read byte by byte, with the line and without:
    // in a book read as UTF-16 or UTF-32 the byte "\n" is part of a unit, and
    // what follows it goes on with the last line.
    const QByteArray extra = longLine(bytes);
    const QByteArray longerBytes = bytes + "\n" + extra;
    if (uncut && !extra.isEmpty() && lines.size() < verlis::MaxBookLines && !readsWide(bytes) &&
        !readsWide(longerBytes)) {
        const QStringList longer = verlis::decodeBookBytes(longerBytes);
        check(longer.mid(0, lines.size()) == lines, "a long line changed the lines before it");
    }

    // A new file each time: truncating one makes ext4 flush it to disk on close.
    QFile::remove(path);
    QFile file(path);
    check(file.open(QIODevice::WriteOnly), "cannot write the book file");
    check(file.write(bytes) == bytes.size(), "cannot write the book file");
    file.close();
    check(verlis::readBookFile(path) == lines,
          "the file reads otherwise than the same bytes in memory");
    return 0;
}
