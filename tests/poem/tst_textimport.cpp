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

// A table of old and new kanji forms, two a line: the shortest lines a book
// can have, and the least a detector can go on.
const QString KanjiPairs = QStringLiteral(
    "亞亜惡悪壓圧圍囲醫医爲為壹壱隱隠營営榮栄衞衛驛駅圓円鹽塩奧奥應応歐欧毆殴穩穏假仮"
    "價価畫画會会壞壊懷懐繪絵擴拡殼殻覺覚學学嶽岳樂楽勸勧卷巻歡歓罐缶觀観關関陷陥巖巌"
    "顏顔歸帰氣気龜亀僞偽戲戯犧犠舊旧據拠擧挙峽峡狹狭曉暁區区驅駆勳勲徑径惠恵溪渓經経"
    "繼継莖茎螢蛍輕軽鷄鶏藝芸缺欠儉倹劍剣圈圏檢検權権獻献縣県險険顯顕驗験嚴厳效効廣広"
    "恆恒鑛鉱號号國国濟済碎砕齋斎劑剤櫻桜册冊雜雑參参慘惨棧桟蠶蚕贊賛殘残絲糸齒歯兒児"
    "辭辞濕湿實実舍舎寫写釋釈壽寿收収從従澁渋獸獣縱縦肅粛處処敍叙奬奨將将燒焼稱称證証"
    "乘乗剩剰壤壌孃嬢條条淨浄疊畳讓譲釀醸囑嘱觸触寢寝愼慎晉晋眞真盡尽圖図粹粋醉酔隨随");
// Accented letters only inside words: every byte of it is valid CP932 as well.
const QStringList FrenchLines = {
    QStringLiteral("Les pèlerins préfèrent"),
    QStringLiteral("les sentiers s'élèvent"),
    QStringLiteral("des châteaux près des forêts"),
};

QStringList twoKanjiALine()
{
    QStringList lines;
    for (qsizetype at = 0; at < KanjiPairs.size(); at += 2)
        lines << KanjiPairs.mid(at, 2);
    return lines;
}

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
    void aFileThatIsNoBookIsReadOnlyToTheBudget_data();
    void aFileThatIsNoBookIsReadOnlyToTheBudget();
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
    const QStringList pairs = twoKanjiALine();
    // The detector calls these UTF-8, GB18030 or a Western code page.
    QTest::newRow("EUC-JP two kanji a line") << encoded("EUC-JP", pairs.join('\n')) << pairs;
    QTest::newRow("Shift_JIS two kanji a line, named Latin-1 by the detector")
        << encoded("Shift_JIS", pairs.join("\r\n")) << pairs;
    QTest::newRow("ISO-2022-JP two kanji a line")
        << encoded("ISO-2022-JP", pairs.join('\n')) << pairs;
    // One line pasted from a Latin-1 source: the detector names a Latin code page.
    QStringList chateaux;
    for (int n = 1; n <= MaxBookLines; ++n)
        chateaux << QStringLiteral("Le château %1 de la forêt").arg(n);
    QStringList mended = chateaux;
    mended[0].replace(QChar(0xE2), QChar(0xFFFD)).replace(QChar(0xEA), QChar(0xFFFD));
    QTest::newRow("UTF-8 with one line of stray bytes")
        << chateaux.first().toLatin1() + '\n' + chateaux.mid(1).join('\n').toUtf8() << mended;
    QTest::newRow("Latin-1 that CP932 reads without error")
        << encoded("ISO-8859-1", FrenchLines.join('\n')) << FrenchLines;
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

void TestTextImport::aFileThatIsNoBookIsReadOnlyToTheBudget_data()
{
    // What the file starts with; the rest up to 2 GiB is a hole of zeros.
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QString>("line");
    QTest::newRow("sparse file") << QByteArray() << QString(MaxLineLength, QChar(0));
    QTest::newRow("a line longer than the budget") << QByteArray(ReadBudget + 1, 'x') + "\nlate\n"
                                                   << QString(MaxLineLength, 'x');
    QTest::newRow("UTF-16 without line ends")
        << encoded("UTF-16LE", QChar(0xFEFF) + QString(MaxLineLength, QChar(0x6708)))
        << QString(MaxLineLength, QChar(0x6708));
}

void TestTextImport::aFileThatIsNoBookIsReadOnlyToTheBudget()
{
    QFETCH(QByteArray, start);
    QFETCH(QString, line);
    QTemporaryDir dir;
    QFile file(dir.filePath("image.txt"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QCOMPARE(file.write(start), start.size());
    QVERIFY(file.resize(qint64(2) * 1024 * 1024 * 1024));
    QVERIFY(file.seek(0));
    const QStringList lines = readBook(file);
    QVERIFY2(file.pos() <= ReadBudget, qPrintable(QString::number(file.pos())));
    QCOMPARE(lines, QStringList{line});
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
