#pragma once

#include "bookshape.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

namespace verlis {

inline constexpr int MaxBookLines = PageCount * LineCount;
// The lines' own bytes are read no further than this, in a file without
// line ends, a disc image say: 140 lines of a real book come long before
// it. Line ends and the cut-off tails of long lines cost nothing of it.
inline constexpr qsizetype ReadBudget = qsizetype(4) * 1024 * 1024;
// Nor is any file read further than this, whatever its bytes: a file of
// nothing but line ends, or one that grows while it is read.
inline constexpr qsizetype MaxReadBytes = qsizetype(64) * 1024 * 1024;
// A longer line is no poem line: it is cut here, so that no table row or
// field ever has to lay out megabytes.
inline constexpr qsizetype MaxLineLength = 4096;
// The start of a file read first: whether the book is in UTF-16 or UTF-32
// is told from it alone.
inline constexpr qsizetype FirstReadBytes = qsizetype(64) * 1024;

// Reads the non-empty lines of a book, as its author wrote them, in any of
// the encodings EncodingGuess tells; a book may mix UTF-8 lines with lines in
// one other encoding. LF, CRLF and a lone CR end a line. Reading stops after
// the 140th non-empty line, ReadBudget bytes of lines or MaxReadBytes bytes,
// so a large file costs no more than its start. A damaged byte, a cut
// character, an unassigned code or a control character shows as U+FFFD in
// its own line and nowhere else. Never throws.
QStringList readBook(QIODevice &device);

// The same from a file. A missing file, a folder, a device or a pipe gives
// no lines, and is not waited on.
QStringList readBookFile(const QString &path);

// The same over bytes already in memory.
QStringList decodeBookBytes(const QByteArray &bytes);

} // namespace verlis
