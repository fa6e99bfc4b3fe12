#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

namespace verlis {

// The lines of a book file, as its author wrote them.
struct BookFile {
    bool opened = false; // false for a missing file, a folder or anything not a regular file
    QStringList lines;   // the non-empty lines in file order, at most MaxLines
};

inline constexpr int MaxBookLines = 140;
// A file without line ends, a disc image say, is read no further than this:
// 140 lines of a real book come long before it.
inline constexpr qsizetype ReadBudget = qsizetype(4) * 1024 * 1024;
// A longer line is no poem line: it is cut here, so that no table row or
// field ever has to lay out megabytes.
inline constexpr qsizetype MaxLineLength = 4096;

// Reads the non-empty lines of a book. LF, CRLF and a lone CR end a line.
// Reading stops after the 140th non-empty line or ReadBudget bytes, so a
// large file costs no more than its start. Never throws.
QStringList readBook(QIODevice &device);

// The same from a file; a file that can't be read gives `opened == false`.
BookFile readBookFile(const QString &path);

// The same over bytes already in memory: detection of the encoding and the
// split into non-empty lines.
QStringList decodeBookBytes(const QByteArray &bytes);

} // namespace verlis
