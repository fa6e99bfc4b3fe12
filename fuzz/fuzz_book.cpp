// Bytes in, book out: the same bytes read from memory and from a file give
// the same lines, no line breaks the limits the window relies on, and one
// long line more, cut in the middle of a character, leaves the others as
// they were.
#include "fuzzcheck.h"
#include "poem/textimport.h"

#include <QFile>
#include <QStringConverter>
#include <QTemporaryDir>

namespace {

// The first line's bytes, repeated past the length a line is cut at.
QByteArray longLine(const QByteArray &bytes)
{
    const qsizetype start = bytes.indexOf(QByteArrayView("\n")) + 1;
    const qsizetype end = bytes.indexOf('\n', start);
    const QByteArray line = bytes.mid(start, end < 0 ? -1 : end - start).trimmed();
    if (line.isEmpty() || line.contains('\r'))
        return {};
    return line.repeated(int(40 * 1024 / line.size() + 1));
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

    // The long line is the book's own text, so the encoding it is read in
    // has no more reason to change than the line's own cut.
    const QByteArray extra = longLine(bytes);
    if (!extra.isEmpty() && lines.size() < verlis::MaxBookLines && !bytes.contains('\0')
        && !QStringConverter::encodingForData(bytes)) {
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
