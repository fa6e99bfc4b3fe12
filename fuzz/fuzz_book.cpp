// Bytes in, book out: the same bytes read from memory and from a file give
// the same lines, and no line breaks the limits the window relies on.
#include "fuzzcheck.h"
#include "poem/textimport.h"

#include <QFile>
#include <QTemporaryDir>

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

    // A new file each time: truncating one makes ext4 flush it to disk on close.
    QFile::remove(path);
    QFile file(path);
    check(file.open(QIODevice::WriteOnly), "cannot write the book file");
    check(file.write(bytes) == bytes.size(), "cannot write the book file");
    file.close();
    const verlis::BookFile read = verlis::readBookFile(path);
    check(read.opened, "a regular file was not opened");
    check(read.lines == lines, "the file reads otherwise than the same bytes in memory");
    return 0;
}
