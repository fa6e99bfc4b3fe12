// Bytes in, book out: the same bytes read from memory and from a file give
// the same lines, no line breaks the limits the window relies on, and one
// long line more, cut in the middle of a character, leaves the others as
// they were.
#include "fuzzcheck.h"
#include "poem/textimport.h"

#include <QFile>
#include <QStringConverter>
#include <QTemporaryDir>

#include <algorithm>

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    static const QTemporaryDir dir;
    static const QString path = dir.filePath(QStringLiteral("book.txt"));

    const QByteArray bytes = inputBytes(data, size);
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
    const QByteArray extra = longLine(bytes);
    if (uncut && !extra.isEmpty() && lines.size() < verlis::MaxBookLines &&
        !QStringConverter::encodingForData(bytes)) {
        const QStringList longer = verlis::decodeBookBytes(bytes + "\n" + extra);
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
