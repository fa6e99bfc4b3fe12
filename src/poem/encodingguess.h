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
// a valid one is UTF-8 where that reading is the likelier of the two.
//
// The other encoding is named by the C library's charset detector (uchardet)
// on the lines that can't be UTF-8. The toolkit's own (ICU) is asked where
// that names nothing, or a reading that can't read the lines, and decides
// Windows-1250 from ISO-8859-2 where no byte tells them apart. Rules of our
// own stand only where both are known to fail: short lines of kanji, the
// Windows and ISO code pages of one script, lines too few to detect whose
// code page the script of the book's UTF-8 lines gives away, ISO-2022-JP
// (decided line by line by its escape sequences), and UTF-16 without a
// byte-order mark.
class EncodingGuess {
public:
    // The book's lines, without their line ends.
    explicit EncodingGuess(const QList<QByteArray> &lines);

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
