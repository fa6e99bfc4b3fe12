#include "poem/textimport.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

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

} // namespace

class TestTextImport : public QObject {
    Q_OBJECT
private slots:
    void readsLinesAsWritten_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        // Old and new kanji forms, two a line: the least a detector can go on.
        const QStringList pairs =
            QStringLiteral("亞亜 惡悪 壓圧 圍囲 醫医 爲為 壹壱 隱隠 營営 榮栄 衞衛 驛駅 "
                           "圓円 鹽塩 奧奥 應応 歐欧 毆殴 穩穏 假仮 價価 畫画 會会 "
                           "壞壊 懷懐 繪絵 擴拡 殼殻")
                .split(' ');
        QTest::newRow("utf-32be mark")
            << encoded("UTF-32BE", QChar(0xFEFF) + pairs.join('\n')) << pairs;
        // The detector calls these UTF-8, GB18030 or a Western code page.
        QTest::newRow("euc-jp, two kanji a line") << encoded("EUC-JP", pairs.join('\n')) << pairs;
        QTest::newRow("shift_jis, two kanji a line")
            << encoded("Shift_JIS", pairs.join('\n')) << pairs;
        QTest::newRow("iso-2022-jp, two kanji a line")
            << encoded("ISO-2022-JP", pairs.join('\n')) << pairs;
        QTest::newRow("too short to detect")
            << encoded("windows-31j", QStringLiteral("春")) << QStringList{"春"};
        QTest::newRow("latin-1 that cp932 reads without error")
            << encoded("ISO-8859-1", QStringLiteral("les sentiers s'élèvent\ndes châteaux"))
            << QStringList{"les sentiers s'élèvent", "des châteaux"};
        // One line pasted from a Latin-1 source: the rest is still UTF-8.
        QTest::newRow("utf-8 with a damaged line")
            << "for\xEAt\n" + QStringLiteral("château\nforêt\nété\nnoël").toUtf8()
            << QStringList{QStringLiteral("for\uFFFDt"), "château", "forêt", "été", "noël"};
        // A book of 140 lines with one damaged: that line alone shows U+FFFD.
        QStringList book;
        for (int i = 1; i <= 140; ++i)
            book << QStringLiteral("第%1行　春の野に菫摘みにと").arg(i);
        const auto damaged = [](const char *name, const char *encoding, int line,
                                const QByteArray &bytes, const QString &shown, QStringList lines) {
            QByteArray all;
            for (int i = 0; i < 140; ++i)
                all += (i == line ? bytes : encoded(encoding, lines[i])) + "\r\n";
            lines[line] = shown;
            QTest::newRow(name) << all << lines;
        };
        const QByteArray kan = encoded("windows-31j", QStringLiteral("漢"));
        const QString x = QStringLiteral("x"), longText = x + QString(MaxLineLength, QChar(0x6F22));
        QStringList cafes(140, QStringLiteral("at the inn")); // one é in the whole book
        cafes[0] = QStringLiteral("au café");
        const QByteArray xs =
            QByteArray(16382, 'x') + "\xC3\xA9"; // after "x": é across 16 and 32 KiB
        damaged("shift_jis, a cut character", "windows-31j", 5, kan + kan.left(1), "漢\uFFFD",
                book);
        damaged("shift_jis, 85 40", "windows-31j", 6, kan + "\x85\x40" + kan, "漢\uFFFD漢", book);
        damaged("shift_jis, a DEL", "windows-31j", 7, kan + "\x7F", "漢\uFFFD", book);
        damaged("cp932, a long line cut in a character", "windows-31j", 9,
                "x" + kan.repeated(20000), longText.left(MaxLineLength), book);
        damaged("mostly ascii utf-8, a long line cut in a character", "UTF-8", 9,
                "x" + xs.repeated(3), QString(MaxLineLength, 'x'), cafes);
        QTest::newRow("4 MiB of blank lines first")
            << QByteArray(ReadBudget, '\n') + book.join('\n').toUtf8() << book;
        const QString halfWidth = QStringLiteral("ﾊﾙﾉﾉﾆ ｽﾐﾚﾂﾐﾆﾄ");
        QTest::newRow("shift_jis in half-width katakana")
            << encoded("Shift_JIS", QStringList(14, halfWidth).join('\n'))
            << QStringList(14, halfWidth);
        QTest::newRow("utf-16, lone and reversed surrogates")
            << "\xFF\xFE" + QByteArray("a\0\0\xD8"
                                       "b\0\n\0\0\xDC\0\xD8",
                                       12)
            << QStringList{"a\uFFFDb", "\uFFFD\uFFFD"};
        QTest::newRow("lone cr, crlf, blank lines, spaces")
            << QByteArray("\r\n\na\rb\r\n\r\n  \n\t\n\nc")
            << QStringList{"a", "b", "  ", "\t", "c"};
    }

    void readsLinesAsWritten()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QVERIFY2(!bytes.isEmpty(), "the encoder for this row is missing or lossy");
        QCOMPARE(decodeBookBytes(bytes), lines);
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
        QVERIFY2(file.pos() <= ReadBudget, qPrintable(QString::number(file.pos())));
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
