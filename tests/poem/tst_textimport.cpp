#include "poem/textimport.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace verlis;

namespace {

const QStringList JapaneseLines = {
    QStringLiteral("霞たなびく春の朝に"),
    QStringLiteral("ひばりが空へ舞い上がり"),
    QStringLiteral("若葉の影はやわらかく揺れ"),
    QStringLiteral("わたしの胸に小さな灯がともる。"),
    QStringLiteral("表示の「表」とソフトの「ソ」"),
};
// Only CP932 has these: half-width kana stay, the circled digit and the
// full-width tilde are its own.
const QString WindowsLine = QStringLiteral("ｶﾀｶﾅと漢字と～記号①");

// Empty when the encoder is missing or can't encode the text exactly.
QByteArray encoded(const char *encoding, const QString &text)
{
    QStringEncoder encoder(encoding);
    if (!encoder.isValid())
        return {};
    const QByteArray bytes = encoder.encode(text);
    return encoder.hasError() ? QByteArray() : bytes;
}

} // namespace

class TestTextImport : public QObject {
    Q_OBJECT
private slots:
    void readsBooksAsTheirAuthorsWroteThem_data();
    void readsBooksAsTheirAuthorsWroteThem();
    void lineEndsAndBlankLines_data();
    void lineEndsAndBlankLines();
    void lineEndSplitAcrossReads();
    void stopsAfterTheHundredFortiethLine();
    void badBytesBecomeReplacementCharacters();
    void whatIsNoBookIsNotRead();
};

void TestTextImport::readsBooksAsTheirAuthorsWroteThem_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("lines");
    const QString text = JapaneseLines.join('\n') + '\n';
    const QStringList windows = JapaneseLines + QStringList{WindowsLine};
    QTest::newRow("utf-8") << text.toUtf8() << JapaneseLines;
    QTest::newRow("utf-8 with mark") << QByteArray("\xEF\xBB\xBF") + text.toUtf8() << JapaneseLines;
    QTest::newRow("utf-16le with mark")
        << encoded("UTF-16LE", QChar(0xFEFF) + text) << JapaneseLines;
    QTest::newRow("utf-16be with mark")
        << encoded("UTF-16BE", QChar(0xFEFF) + text) << JapaneseLines;
    QTest::newRow("shift_jis") << encoded("Shift_JIS", text) << JapaneseLines;
    QTest::newRow("cp932") << encoded("windows-31j", windows.join("\r\n")) << windows;
    QTest::newRow("euc-jp") << encoded("EUC-JP", text) << JapaneseLines;
    QTest::newRow("iso-2022-jp") << encoded("ISO-2022-JP", JapaneseLines.join("\r\n"))
                                 << JapaneseLines;
    // Too short for the detector to name: CP932 is tried next.
    QTest::newRow("short cp932") << encoded("windows-31j", QStringLiteral("春"))
                                 << QStringList{"春"};
}

void TestTextImport::readsBooksAsTheirAuthorsWroteThem()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, lines);
    QVERIFY2(!bytes.isEmpty(), "the encoder for this row is missing or lossy");
    QCOMPARE(decodeBookBytes(bytes), lines);
}

void TestTextImport::lineEndsAndBlankLines_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("lf") << QByteArray("a\nb\n") << QStringList{"a", "b"};
    QTest::newRow("crlf") << QByteArray("a\r\nb\r\n") << QStringList{"a", "b"};
    QTest::newRow("lone cr") << QByteArray("a\rb\rc") << QStringList{"a", "b", "c"};
    QTest::newRow("mixed, no end") << QByteArray("a\r\n\rb\n\nc") << QStringList{"a", "b", "c"};
    QTest::newRow("blank lines anywhere")
        << QByteArray("\n\n\na\n\n\nb\n\n\n") << QStringList{"a", "b"};
    QTest::newRow("spaces are a line")
        << QByteArray("a\n   \n\t\nb") << QStringList{"a", "   ", "\t", "b"};
    QTest::newRow("nothing") << QByteArray() << QStringList{};
    QTest::newRow("only line ends") << QByteArray("\r\n\r\n\n\r") << QStringList{};
}

void TestTextImport::lineEndsAndBlankLines()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, lines);
    QCOMPARE(decodeBookBytes(bytes), lines);
}

void TestTextImport::lineEndSplitAcrossReads()
{
    // A CR as the last byte of one read and its LF as the first of the next
    // are one line end, not two; likewise in UTF-16.
    QByteArray bytes(64 * 1024 - 1, 'x');
    bytes += "\r\nnext\r\n";
    QStringList lines = decodeBookBytes(bytes);
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[1], QStringLiteral("next"));

    const QString wide = QChar(0xFEFF) + QString(32 * 1024 - 2, 'y') + "\r\n終\r\n";
    lines = decodeBookBytes(encoded("UTF-16LE", wide));
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[1], QStringLiteral("終"));
}

void TestTextImport::stopsAfterTheHundredFortiethLine()
{
    QTemporaryDir dir;
    QStringList book;
    for (int i = 0; i < 141; ++i)
        book << QStringLiteral("行%1").arg(i + 1);
    QFile file(dir.filePath("long.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    // Bad bytes after the 140th line must not reach the encoding check.
    file.write(book.join("\n\n").toUtf8() + "\n\xFF\xFE\x80 junk\n");
    file.close();

    const BookFile read = readBookFile(file.fileName());
    QVERIFY(read.opened);
    QCOMPARE(read.lines.size(), 140);
    QCOMPARE(read.lines.first(), QStringLiteral("行1"));
    QCOMPARE(read.lines.last(), QStringLiteral("行140"));
}

void TestTextImport::badBytesBecomeReplacementCharacters()
{
    // Neither UTF-8 nor any Japanese encoding: the read still ends, with
    // U+FFFD where bytes could not be read and never U+001A.
    const QByteArray bytes("ok\n\x80\x81\xFF\xFE\xFD\n");
    const QStringList lines = decodeBookBytes(bytes);
    QCOMPARE(lines.size(), 2);
    QVERIFY(!lines.join(QString()).contains(QChar(0x1A)));
}

void TestTextImport::whatIsNoBookIsNotRead()
{
    QTemporaryDir dir;
    QVERIFY(!readBookFile(dir.filePath("missing.txt")).opened);
    QVERIFY(!readBookFile(dir.path()).opened);
    QVERIFY(!readBookFile(QStringLiteral("/dev/zero")).opened);
    const QString pipe = dir.filePath("pipe.txt"); // reading it would wait for ever
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!readBookFile(pipe).opened);
    QVERIFY(readBookFile(QString()).lines.isEmpty());

    QFile empty(dir.filePath("empty.txt"));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.close();
    const BookFile read = readBookFile(empty.fileName());
    QVERIFY(read.opened);
    QVERIFY(read.lines.isEmpty());
}

QTEST_GUILESS_MAIN(TestTextImport)
#include "tst_textimport.moc"
