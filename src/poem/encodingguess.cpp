#include "encodingguess.h"

#include "linedecoder.h"
#include "unreadable.h"

#include <QHash>
#include <QStringDecoder>
#include <QStringEncoder>

#include <uchardet.h>
#include <unicode/ucsdet.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace verlis {

namespace {

const QByteArray Utf8("UTF-8");

// What the charset detector of the C library names, upper case; empty where
// it names nothing.
QByteArray uchardetName(const QByteArray &sample)
{
    const std::unique_ptr<std::remove_pointer_t<uchardet_t>, void (*)(uchardet_t)> detector(
        uchardet_new(), uchardet_delete);
    if (!detector)
        return {};
    // In pieces: once the detector is sure, it passes over the rest.
    constexpr qsizetype Piece = 512;
    for (qsizetype at = 0; at < sample.size(); at += Piece)
        if (uchardet_handle_data(detector.get(), sample.constData() + at,
                                 size_t(std::min(Piece, sample.size() - at))) != 0)
            return {};
    uchardet_data_end(detector.get());
    return QByteArray(uchardet_get_charset(detector.get())).toUpper();
}

// What the toolkit's own Unicode library names, upper case.
QByteArray icuName(const QByteArray &sample)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, void (*)(UCharsetDetector *)> detector(
        ucsdet_open(&status), ucsdet_close);
    ucsdet_setText(detector.get(), sample.constData(), int32_t(sample.size()), &status);
    const UCharsetMatch *match = ucsdet_detect(detector.get(), &status);
    return U_SUCCESS(status) && match ? QByteArray(ucsdet_getName(match, &status)).toUpper()
                                      : QByteArray();
}

bool isKanji(char16_t c)
{
    return (c >= 0x3400 && c <= 0x4DBF) || (c >= 0x4E00 && c <= 0x9FFF) ||
           (c >= 0xF900 && c <= 0xFAFF);
}

bool isKana(char16_t c) // with the Japanese punctuation and full-width forms
{
    return (c >= 0x3000 && c <= 0x30FF) || (c >= 0xFF01 && c <= 0xFF60);
}

bool isHalfWidthKana(char16_t c) { return c >= 0xFF61 && c <= 0xFF9F; }

bool isEastAsian(char16_t c)
{
    return isKanji(c) || isKana(c) || (c >= 0x3100 && c <= 0x33FF) ||
           (c >= 0xAC00 && c <= 0xD7AF) || (c >= 0xFE30 && c <= 0xFFEF) || QChar::isSurrogate(c);
}

// How unlike real text a line's reading is: each character that reads as
// nothing, each symbol beyond ASCII, each letter in a script other than its
// neighbour's, each lower-case letter followed by a capital. A text read in
// the wrong one of two encodings shows them where the right reading shows
// none: "cafÃ©" for "café", "РџСЂ" for "Пр", "ġŲ" for two kanji.
int oddities(const QString &text)
{
    int odd = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.unicode() < 0x80)
            continue;
        if (isUnreadable(c.unicode()) || (c.unicode() >= 0xE000 && c.unicode() <= 0xF8FF))
            odd += 2; // nothing, or a private code: what a CJK code page makes of other bytes
        else if (!isEastAsian(c.unicode()) && (c.isSymbol() || c.isPunct()))
            ++odd;
        if (i == 0 || !c.isLetter() || !text.at(i - 1).isLetter())
            continue;
        const QChar before = text.at(i - 1);
        odd += before.script() != c.script() && before.unicode() >= 0x80;
        odd += before.isLower() && c.isUpper();
    }
    return odd;
}

// How Japanese some lines read in one encoding.
struct JapaneseReading {
    QByteArray encoding;
    qsizetype faultyLines = 0;
    double share = 0; // of the visible characters, those that are Japanese

    // Reads no further once more than `faultsAllowed` lines are faulty.
    JapaneseReading(const QByteArray &name, const QList<QByteArray> &lines, bool halfWidthCounts,
                    qsizetype faultsAllowed)
        : encoding(name)
    {
        LineDecoder decoder(name);
        qsizetype visible = 0, kanji = 0, kana = 0, halfWidth = 0;
        for (const QByteArray &line : lines) {
            const QString text = decoder.decode(line);
            faultyLines += hasUnreadable(text);
            if (faultyLines > faultsAllowed)
                return;
            for (const QChar c : text) {
                visible += !c.isSpace();
                kanji += isKanji(c.unicode());
                kana += isKana(c.unicode());
                halfWidth += isHalfWidthKana(c.unicode());
            }
        }
        // Half-width katakana count only in a reading without kanji: EUC-JP
        // read as CP932 is a jumble of both, a book in half-width katakana has
        // none. KOI8-R's lower case is CP932's half-width katakana too.
        const qsizetype japanese = kanji + kana + (kanji == 0 && halfWidthCounts ? halfWidth : 0);
        share = visible == 0 ? 0.0 : double(japanese) / double(visible);
    }
};

// Short lines of kanji give the detector too little to go on: it names UTF-8,
// a Western code page or nothing. Where it names no East Asian encoding, a
// Japanese reading wins that reads all lines but one as Japanese text;
// half-width katakana only where it names nothing at all.
QByteArray japaneseEncoding(const QList<QByteArray> &lines, bool halfWidthCounts)
{
    const qsizetype faultsAllowed = std::max<qsizetype>(1, lines.size() / 10);
    QByteArray best;
    double bestShare = 0.5;
    for (const char *name : {"windows-31j", "EUC-JP"}) {
        const JapaneseReading reading(name, lines, halfWidthCounts, faultsAllowed);
        if (reading.faultyLines <= faultsAllowed && reading.share > bestShare) {
            best = reading.encoding;
            bestShare = reading.share;
        }
    }
    return best;
}

// Whether bytes 0x80-0x9F stand in more than one line: one alone may be a
// stray byte.
bool hasC1Bytes(const QByteArray &sample)
{
    int lines = 0;
    for (const QByteArray &line : sample.split('\n'))
        lines += std::any_of(line.begin(), line.end(),
                             [](char b) { return uchar(b) >= 0x80 && uchar(b) <= 0x9F; });
    return lines > 1;
}

qsizetype letterCount(const char *encoding, const QByteArray &bytes)
{
    const QString text = QStringDecoder(encoding).decode(bytes);
    return std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

// The detector tells a Western book from others well but not the code pages
// apart. Bytes 0x80-0x9F are controls in ISO-8859-1 and -15, letters and
// signs in Windows-1252; without them, ISO-8859-15 is taken where it reads
// more letters (œ, Š) than Latin-1's signs (½, ¦), else Windows-1252, which
// reads all of Latin-1's text as Latin-1 does.
QByteArray westernEncoding(const QByteArray &sample)
{
    if (!hasC1Bytes(sample) &&
        letterCount("ISO-8859-15", sample) > letterCount("windows-1252", sample))
        return "ISO-8859-15";
    return "windows-1252";
}

// Windows-1250 and ISO-8859-2 share most letters at other codes: 0x80-0x9F
// hold letters only in the first. Without them the two detectors' readings
// of short books differ, and the other library's is the better one.
QByteArray centralEuropeanEncoding(const QByteArray &sample, const QByteArray &detected)
{
    if (hasC1Bytes(sample))
        return "windows-1250";
    QByteArray letters = sample; // without a stray byte 0x80-0x9F
    letters.removeIf([](char b) { return uchar(b) >= 0x80 && uchar(b) <= 0x9F; });
    const QByteArray second = icuName(letters);
    return second == "ISO-8859-2" || second == "WINDOWS-1250" ? second : detected;
}

// The encoding some lines read in, as a detector names it. The C library's
// names each of the encodings read here rightly from a few lines of real
// text; its names are mapped to the decoders' supersets (CP932, CP949,
// GB18030).
QByteArray namedEncoding(const QList<QByteArray> &lines, const QByteArray &detected)
{
    const QByteArray sample = lines.join('\n');
    static const QList<QByteArray> eastAsian{"SHIFT_JIS", "EUC-JP", "GB18030", "GB2312", "GBK",
                                             "BIG5",      "EUC-KR", "UHC",     "EUC-TW"};
    if (!eastAsian.contains(detected))
        if (QByteArray japanese = japaneseEncoding(lines, detected.isEmpty()); !japanese.isEmpty())
            return japanese;
    if (detected == "SHIFT_JIS")
        return "windows-31j";
    if (detected == "EUC-KR" || detected == "UHC")
        return "windows-949";
    if (detected == "GB2312" || detected == "GBK")
        return "GB18030";
    if (detected == "ISO-8859-1" || detected == "WINDOWS-1252" || detected == "ISO-8859-15")
        return westernEncoding(sample);
    if (detected == "ISO-8859-2" || detected == "WINDOWS-1250")
        return centralEuropeanEncoding(sample, detected);
    if (detected.isEmpty() || detected == "ASCII" ||
        !QStringDecoder(detected.constData()).isValid())
        return Utf8; // what it can't read shows as U+FFFD
    return detected;
}

qsizetype faultyLines(const QByteArray &encoding, const QList<QByteArray> &lines)
{
    LineDecoder decoder(encoding);
    return std::count_if(lines.begin(), lines.end(), [&](const QByteArray &line) {
        return hasUnreadable(decoder.decode(line));
    });
}

// The encoding of the lines that can't be UTF-8. Where the C library's
// detector names nothing, or what can't read them, as from a line or two,
// the toolkit's own library is asked.
QByteArray otherEncoding(const QList<QByteArray> &lines)
{
    // A few hundred characters of real text: each book of the import test is
    // named rightly from them. The detectors' cost grows with the sample, and
    // with the whole book it was most of the import's time.
    constexpr qsizetype SampleSize = 1024;
    const QByteArray joined = lines.join('\n');
    QByteArray sample = joined.left(SampleSize);
    QByteArray detected = uchardetName(sample);
    // The detector is thrown by a sample that starts inside a character, as
    // where a stray byte went missing at the start: it names nothing, or a
    // reading these lines can't have. A sample from the next line on starts
    // whole, since one stray byte can't be at both starts.
    if (const qsizetype next = joined.indexOf('\n');
        next >= 0 && (detected.isEmpty() || detected == "ASCII" || detected == Utf8)) {
        sample = joined.mid(next + 1, SampleSize);
        detected = uchardetName(sample);
    }
    QByteArray first = namedEncoding(lines, detected);
    const qsizetype faults = faultyLines(first, lines);
    if (first != Utf8 && faults == 0)
        return first;
    const QByteArray second = namedEncoding(lines, icuName(sample));
    return second != Utf8 && faultyLines(second, lines) < faults ? second : first;
}

// The script most letters beyond ASCII are in.
QChar::Script mainScript(const QString &text)
{
    QHash<QChar::Script, qsizetype> counts;
    for (const QChar c : text)
        if (c.unicode() >= 0x80 && c.isLetter())
            ++counts[c.script()];
    QChar::Script main = QChar::Script_Unknown;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (main == QChar::Script_Unknown || it.value() > counts.value(main))
            main = it.key();
    return main;
}

// A line or two that can't be UTF-8 in a book of UTF-8 lines is too little
// for a detector. Where what it named can't read them, the lines are taken
// to be in the language of the book's UTF-8 lines: the first code page of
// their script that reads them whole.
QByteArray encodingOfScript(const QList<QByteArray> &lines, const QString &utf8Text)
{
    const QChar::Script script = mainScript(utf8Text);
    for (const char *candidate :
         {"windows-1251", "KOI8-R", "windows-1252", "windows-1250", "ISO-8859-7", "windows-31j",
          "EUC-JP", "GB18030", "windows-949", "Big5"}) {
        if (faultyLines(candidate, lines) > 0)
            continue;
        LineDecoder decoder(candidate);
        QString text;
        for (const QByteArray &line : lines)
            text += decoder.decode(line);
        if (script != QChar::Script_Unknown && mainScript(text) == script)
            return candidate;
    }
    return {};
}

// ISO-2022-JP is 7-bit and so valid UTF-8: a line is in it where it
// switches to a JIS character set.
bool switchesToJis(const QByteArray &line)
{
    if (!line.contains('\x1B'))
        return false;
    for (const char *escape : {"\x1B$B", "\x1B$@", "\x1B(I", "\x1B(J", "\x1B$(D"})
        if (line.contains(escape))
            return true;
    return false;
}

// A code page of one byte a character: it writes a letter of each of four
// scripts, or a substitute for it, in a byte each.
bool isSingleByte(const QByteArray &encoding)
{
    QStringEncoder encoder(encoding.constData());
    const QByteArray bytes = encoder.encode(QStringLiteral("\u00FF\u0416\u03A9\u4E00"));
    return bytes.size() == 4;
}

bool isAscii(const QByteArray &line)
{
    return std::all_of(line.begin(), line.end(), [](char b) { return uchar(b) < 0x80; });
}

} // namespace

EncodingGuess::EncodingGuess(const QList<QByteArray> &lines)
    : m_utf8(lines.size(), true), m_jis(lines.size(), false)
{
    QList<QByteArray> others;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        m_jis[i] = switchesToJis(lines[i]);
        if (!m_jis[i] && !QUtf8StringView(lines[i]).isValidUtf8()) {
            m_utf8[i] = false;
            others.append(lines[i]);
        }
    }
    m_encoding = others.isEmpty() ? Utf8 : otherEncoding(others);
    if (m_encoding == Utf8 || others.size() == lines.size())
        return;
    if (faultyLines(m_encoding, others) > 0) {
        QString utf8Text;
        for (qsizetype i = 0; i < lines.size(); ++i)
            if (m_utf8[i])
                utf8Text += QString::fromUtf8(lines[i]);
        if (const QByteArray byScript = encodingOfScript(others, utf8Text); !byScript.isEmpty())
            m_encoding = byScript;
    }
    // A valid UTF-8 line is UTF-8 where the other reading has more oddities.
    // Text in a code page of one byte a letter never makes UTF-8's sequences
    // but by chance, so a tie goes to UTF-8; two kanji of a double-byte code
    // page can, so there a tie goes with most lines of the book.
    LineDecoder utf8(Utf8), other(m_encoding);
    const bool singleByte = isSingleByte(m_encoding);
    qsizetype validLines = 0;
    QList<qsizetype> even;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!m_utf8[i] || m_jis[i] || isAscii(lines[i]))
            continue;
        const int asUtf8 = oddities(utf8.decode(lines[i]));
        const QString otherText = other.decode(lines[i]);
        const bool proven = hasUnreadable(otherText);
        const int asOther = oddities(otherText);
        ++validLines;
        if (asOther == asUtf8 && !proven)
            even.append(i);
        else
            m_utf8[i] = proven || asUtf8 < asOther;
    }
    if (!singleByte && validLines < others.size())
        for (const qsizetype i : even)
            m_utf8[i] = false;
}

QByteArray EncodingGuess::encodingOf(qsizetype line) const
{
    if (m_jis.value(line))
        return "ISO-2022-JP";
    return m_utf8.value(line, true) ? Utf8 : m_encoding;
}

QByteArray EncodingGuess::encodingOf(const QByteArray &line) const
{
    if (switchesToJis(line))
        return "ISO-2022-JP";
    return QUtf8StringView(line).isValidUtf8() ? Utf8 : m_encoding;
}

std::optional<QStringConverter::Encoding> EncodingGuess::wideEncoding(QByteArrayView start)
{
    if (const auto marked = QStringConverter::encodingForData(start);
        marked && *marked != QStringConverter::Utf8)
        return marked;
    // Where most LF bytes stand beside a NUL, the book is UTF-16. The byte
    // order is told where a stray byte can't change it: by the first and the
    // last unit read where both are Latin letters (a stray byte moves only
    // one); else by the side of the NUL where it stands on one side only
    // (after in little endian, before in big endian, a CR unit between
    // counting for nothing), whatever the LF's offset; else by one of the
    // two units; and where NULs stand on both sides of every LF, as between
    // Latin letters, by the offset of most.
    // The line feeds are found with memchr: the whole first read is searched.
    qsizetype lineFeeds = 0, little = 0, big = 0, bothEven = 0, bothOdd = 0;
    const char *const data = start.data();
    const qsizetype last = start.size() - 1; // a line feed needs a byte after it
    for (qsizetype i = 0; i < last; ++i) {
        const void *found = std::memchr(data + i, '\n', size_t(last - i));
        if (!found)
            break;
        i = static_cast<const char *>(found) - data;
        ++lineFeeds;
        const qsizetype before = i >= 3 && data[i - 2] == '\r' ? i - 3 : i - 1;
        const bool nulBefore = before >= 0 && data[before] == '\0';
        const bool nulAfter = data[i + 1] == '\0';
        little += nulAfter && !nulBefore;
        big += nulBefore && !nulAfter;
        (i % 2 == 0 ? bothEven : bothOdd) += nulAfter && nulBefore;
    }
    if (2 * (little + big + bothEven + bothOdd) <= lineFeeds)
        return std::nullopt;
    using enum QStringConverter::Encoding;
    // A unit of a Latin letter: 1 little endian, -1 big endian, 0 not one.
    const auto order = [data](qsizetype at) {
        return (data[at] == '\0') == (data[at + 1] == '\0') ? 0 : data[at + 1] == '\0' ? 1 : -1;
    };
    const int ends = order(0) + order(start.size() - 2);
    if (std::abs(ends) == 2 || (little == big && ends != 0))
        return ends > 0 ? Utf16LE : Utf16BE;
    if (little != big)
        return little > big ? Utf16LE : Utf16BE;
    return bothEven >= bothOdd ? Utf16LE : Utf16BE;
}

} // namespace verlis
