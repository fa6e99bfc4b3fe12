#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QStringConverter>

#include <optional>

namespace verlis {

// Which encoding a book's lines are written in, told from their bytes.
//
// A book may mix UTF-8 lines with lines in one other encoding, so each line
// is judged: a line that is no valid UTF-8 is in the book's other encoding;
// a valid one is UTF-8 where that reading is the likelier of the two. The
// other encoding is named by the charset detector on the lines that can't
// be UTF-8, with rules of its own only where a detector is known to fail:
// short lines of kanji, the Windows and ISO code pages of one script, and
// ISO-2022-JP, which is decided line by line by its escape sequences.
class EncodingGuess {
public:
    // The book's lines, without their line ends.
    explicit EncodingGuess(const QList<QByteArray> &lines);

    // The encoding of the lines that are not UTF-8; "UTF-8" where all are.
    QByteArray encoding() const { return m_encoding; }
    // The encoding the line of that index reads in.
    QByteArray encodingOf(qsizetype line) const;
    // The encoding a line that took no part in the guess reads in (a long
    // one, cut, that shouldn't sway the others), by its own bytes alone.
    QByteArray encodingOf(const QByteArray &line) const;

    // A book in UTF-16 or UTF-32, told by its byte-order mark, or in UTF-16
    // without one by where its line ends' NUL bytes stand.
    static std::optional<QStringConverter::Encoding> wideEncoding(QByteArrayView start);

private:
    QByteArray m_encoding;
    QList<bool> m_utf8; // for each line: does it read as UTF-8
    QList<bool> m_jis;  // for each line: does it switch to JIS by escape sequences
};

} // namespace verlis
