#include "poem/textimport.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

#include <chrono>
#include <future>
#include <thread>

#include <sys/stat.h>

using namespace verlis;

namespace {

// Empty when the encoder is missing or can't encode the text exactly.
QByteArray encoded(const char *encoding, const QString &text)
{
    QStringEncoder encoder(encoding);
    const QByteArray bytes = encoder.isValid() ? encoder.encode(text) : QByteArray();
    return encoder.hasError() ? QByteArray() : bytes;
}

QList<QByteArray> encodedLines(const char *encoding, const QStringList &lines)
{
    QList<QByteArray> parts;
    for (const QString &line : lines)
        parts.append(encoded(encoding, line));
    return parts.contains(QByteArray()) ? QList<QByteArray>() : parts;
}

QByteArray joined(const char *encoding, const QStringList &lines, const char *end = "\n")
{
    return encoded(encoding, lines.join(QLatin1String(end)));
}

// A book of real text from testdata/books, in the order written.
QStringList book(const char *language)
{
    QFile file(QStringLiteral(VERLIS_BOOKS_DIR "/%1.txt").arg(language));
    if (!file.open(QIODevice::ReadOnly)) // no rows at all would pass
        qFatal("No book %s in %s", language, VERLIS_BOOKS_DIR);
    return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

} // namespace

class TestTextImport : public QObject {
    Q_OBJECT
private slots:
    void readsLinesAsWritten_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("stray"); // a line that may read otherwise, or -1
        // Real books, each in every encoding of its language, whole and as one
        // poem, and with one stray byte in a line.
        const QList<std::pair<const char *, QList<const char *>>> languages{
            {"ja",
             {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32BE", "windows-31j", "EUC-JP", "ISO-2022-JP"}},
            {"zh_CN", {"GB18030", "GBK"}},
            {"zh_TW", {"Big5"}},
            {"ko", {"EUC-KR", "windows-949"}},
            {"ru", {"windows-1251", "KOI8-R", "ISO-8859-5"}},
            {"uk", {"windows-1251"}},
            {"de", {"windows-1252", "ISO-8859-1"}},
            {"fr", {"ISO-8859-15", "windows-1252"}},
            {"pl", {"windows-1250", "ISO-8859-2"}},
            {"cs", {"windows-1250", "ISO-8859-2"}},
            {"el", {"ISO-8859-7"}}};
        const QList<QByteArray> strays{"\x1B", "\x85", "\xFF", "\x01", {}};
        int strayKind = 0;
        for (const auto &[language, encodings] : languages) {
            const QStringList all = book(language);
            for (const char *encoding : encodings) {
                // UTF-32 is told by its byte-order mark alone.
                const QByteArray mark = QByteArray(encoding).startsWith("UTF-32")
                                            ? encoded(encoding, QString(QChar(0xFEFF)))
                                            : QByteArray();
                for (const QStringList &lines : {all, all.mid(0, 14)}) {
                    const QString name =
                        QStringLiteral("%1 %2, %3 lines").arg(language, encoding).arg(lines.size());
                    QTest::addRow("%s", qPrintable(name))
                        << mark + joined(encoding, lines) << lines << -1;
                    // In the middle of line 6: one byte in, or one byte out.
                    QList<QByteArray> parts = encodedLines(encoding, lines);
                    const QByteArray stray = strays[strayKind++ % strays.size()];
                    if (stray.isEmpty())
                        parts[5].remove(parts[5].size() / 2, 1);
                    else
                        parts[5].insert(parts[5].size() / 2, stray);
                    QTest::addRow("%s, a stray %s in a line", qPrintable(name),
                                  stray.isEmpty() ? "byte out" : stray.toHex().constData())
                        << mark + parts.join(encoded(encoding, "\n")) << lines << 5;
                }
            }
        }
        const QStringList ja = book("ja");
        QTest::newRow("utf-8 ja, mark, crlf")
            << "\xEF\xBB\xBF" + joined("UTF-8", ja, "\r\n") << ja << -1;
        QTest::newRow("utf-16 ja, mark")
            << encoded("UTF-16", QChar(0xFEFF) + ja.join('\n')) << ja << -1;
        // Mixed books: lines of UTF-8 and of one other encoding, in any share.
        for (const auto &[language, encoding] : {std::pair{"ja", "windows-31j"},
                                                 {"ja", "EUC-JP"},
                                                 {"fr", "ISO-8859-1"},
                                                 {"ru", "windows-1251"},
                                                 {"zh_CN", "GB18030"},
                                                 {"ko", "EUC-KR"}}) {
            const QStringList lines = book(language);
            for (const int share : {1, 27, 70, 113, 139}) {
                QList<QByteArray> parts = encodedLines("UTF-8", lines);
                const QList<QByteArray> other = encodedLines(encoding, lines);
                for (qsizetype i = 0; i < parts.size(); ++i)
                    if (i * share / 140 != (i + 1) * share / 140)
                        parts[i] = other[i];
                QTest::addRow("utf-8 %s, %d lines %s", language, share, encoding)
                    << parts.join('\n') << lines << -1;
            }
        }
        const QStringList ko = book("ko"); // the first character cut: its line alone shows it
        QTest::newRow("euc-kr ko, its first byte out") << joined("EUC-KR", ko).mid(1) << ko << 0;
        // Two kanji that make valid UTF-8 ("ġŲ") in a book that shows EUC-JP.
        QStringList kanji = ja;
        kanji[3] = QStringLiteral("帖轍");
        QTest::newRow("euc-jp ja, a line valid as utf-8") << joined("EUC-JP", kanji) << kanji << -1;
        QStringList gujarati = ja; // in UTF-16LE: 4D 0A 00 4E, a line end off its place
        gujarati[3] = QStringLiteral("\u0A4D\u4E00");
        QTest::newRow("utf-16le, a line end's bytes across two characters")
            << joined("UTF-16LE", gujarati) << gujarati << -1;
        QStringList extensions = ja; // NEC and IBM extensions; JIS X 0212
        extensions[0] = QStringLiteral("①髙");
        QTest::newRow("cp932 ja, nec and ibm extensions")
            << joined("windows-31j", extensions) << extensions << -1;
        extensions[0] = QStringLiteral("森鷗外");
        QTest::newRow("euc-jp ja, jis x 0212") << joined("EUC-JP", extensions) << extensions << -1;
        QTest::newRow("iso-2022-jp, half-width kana")
            << QByteArray("\x1B(I\x4A\x59\x1B(B\n\x1B$B\x3D\x55\x1B(B") << QStringList{"ﾊﾙ", "春"}
            << -1;
        QStringList cafes(140, QStringLiteral("at the inn"));
        cafes[0] = cafes[1] = QStringLiteral("au café");
        QTest::newRow("ascii utf-8, one utf-8 and one latin-1 line")
            << "au caf\xE9\n" + joined("UTF-8", cafes.mid(1)) << cafes << -1;
        // Old and new kanji forms, two a line: the least a detector can go on.
        const QStringList pairs =
            QStringLiteral("亞亜 惡悪 壓圧 圍囲 醫医 爲為 壹壱 隱隠 營営 榮栄 衞衛 驛駅 "
                           "圓円 鹽塩 奧奥 應応 歐欧 毆殴 穩穏 假仮 價価 畫画 會会 "
                           "壞壊 懷懐 繪絵 擴拡 殼殻")
                .split(' ');
        for (const char *encoding : {"EUC-JP", "Shift_JIS", "ISO-2022-JP"})
            QTest::addRow("%s, two kanji a line", encoding)
                << joined(encoding, pairs) << pairs << -1;
        QTest::newRow("short euc-jp without bytes from E0")
            << joined("EUC-JP", {QStringLiteral("春の朝に鳥が鳴く")})
            << QStringList{"春の朝に鳥が鳴く"} << -1;
        QTest::newRow("too short to detect")
            << joined("windows-31j", {QStringLiteral("春")}) << QStringList{"春"} << -1;
        const QString halfWidth = QStringLiteral("ﾊﾙﾉﾉﾆ ｽﾐﾚﾂﾐﾆﾄ");
        QTest::newRow("shift_jis in half-width katakana")
            << joined("Shift_JIS", QStringList(14, halfWidth)) << QStringList(14, halfWidth) << -1;
        QTest::newRow("utf-8, c0 and c1 controls") << QByteArray("a\x1B"
                                                                 "b\xC2\x85"
                                                                 "c\xC2\x9B"
                                                                 "d")
                                                   << QStringList{"a\uFFFDb\uFFFDc\uFFFDd"} << -1;
        // Long lines are cut; what is cut off costs nothing of the budget.
        QStringList book140 = ja;
        const QString longText = QString(MaxLineLength, QChar(0x6F22));
        book140[9] = longText;
        QList<QByteArray> parts = encodedLines("windows-31j", book140);
        parts[9] += "\x8A"; // cut in a character
        QTest::newRow("cp932, a long line cut in a character") << parts.join('\n') << book140 << -1;
        parts = encodedLines("UTF-8", book140);
        parts[9] = QByteArray(5 * 1024 * 1024, 'x');
        book140[9] = QString(MaxLineLength, 'x');
        QTest::newRow("a 5 MiB line, then 130 lines") << parts.join('\n') << book140 << -1;
        // 140 lines cut inside a character: their starts, which tell the
        // encoding, are cut too; and all of them fit in the budget.
        QTest::newRow("utf-8, 140 lines of 12,000 kanji")
            << joined("UTF-8", QStringList(140, QString(12000, QChar(0x6625))))
            << QStringList(140, QString(MaxLineLength, QChar(0x6625))) << -1;
        QTest::newRow("4 MiB of blank lines first")
            << QByteArray(ReadBudget, '\n') + joined("UTF-8", ja) << ja << -1;
        QTest::newRow("utf-16, lone and reversed surrogates")
            << "\xFF\xFE" + QByteArray("a\0\0\xD8"
                                       "b\0\n\0\0\xDC\0\xD8",
                                       12)
            << QStringList{"a\uFFFDb", "\uFFFD\uFFFD"} << -1;
        QTest::newRow("lone cr, crlf, blank lines, spaces")
            << QByteArray("\r\n\na\rb\r\n\r\n  \n\t\n\nc") << QStringList{"a", "b", "  ", "\t", "c"}
            << -1;
    }

    void readsLinesAsWritten()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QFETCH(int, stray);
        QVERIFY2(!bytes.isEmpty(), "the encoder for this row is missing or lossy");
        QStringList read = decodeBookBytes(bytes);
        if (stray >= 0 && read.size() == lines.size())
            read[stray] = lines[stray];
        QCOMPARE(read, lines);
    }

    void readsNoFurtherThanTheBudget_data()
    {
        // What the file starts with; the rest up to 2 GiB is a hole of zeros.
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("sparse file") // zeros are no text: each shows as U+FFFD
            << QByteArray() << QStringList{QString(MaxLineLength, QChar::ReplacementCharacter)};
        QTest::newRow("utf-16 without line ends, a pair at the cut")
            << encoded("UTF-16LE", QChar(0xFEFF) + QString(MaxLineLength - 1, 'y') + "😀")
            << QStringList{QString(MaxLineLength - 1, 'y')};
        QStringList book; // a mark and blank lines count for nothing
        for (int i = 1; i <= 141; ++i)
            book << QStringLiteral("line %1").arg(i);
        QTest::newRow("what follows the 140th line")
            << "\xEF\xBB\xBF\n" + book.join("\n\n").toUtf8() << book.mid(0, 140);
    }

    void readsNoFurtherThanTheBudget()
    {
        QFETCH(QByteArray, start);
        QFETCH(QStringList, lines);
        QTemporaryDir dir;
        QFile file(dir.filePath("image.txt"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QCOMPARE(file.write(start), start.size());
        QVERIFY(file.resize(qint64(2) * 1024 * 1024 * 1024));
        QVERIFY(file.seek(0));
        QCOMPARE(readBook(file), lines);
        QVERIFY2(file.pos() <= MaxReadBytes, qPrintable(QString::number(file.pos())));
    }

    void whatIsNoBookIsNotRead()
    {
        QTemporaryDir dir;
        const QString pipe = dir.filePath("pipe.txt");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        for (const QString &path :
             {dir.filePath("missing.txt"), dir.path(), QStringLiteral("/dev/zero"), pipe}) {
            // Opening or reading a pipe could wait for ever: a thread of its own bounds the wait.
            std::packaged_task<bool()> read([path] { return readBookFile(path).isEmpty(); });
            std::future<bool> empty = read.get_future();
            std::thread(std::move(read)).detach();
            QVERIFY2(empty.wait_for(std::chrono::seconds(10)) == std::future_status::ready,
                     qPrintable("reading blocked: " + path));
            QVERIFY2(empty.get(), qPrintable(path));
        }
    }
};

QTEST_GUILESS_MAIN(TestTextImport)
#include "tst_textimport.moc"
