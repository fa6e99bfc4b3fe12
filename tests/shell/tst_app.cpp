#include "menus/menubar1.h"
#include "testapp.h"

#include <QPushButton>
#include <QTest>

#include <csignal>
#include <cstdarg>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace verlis;

// The faults of the disk while a run ends: a folder that takes no new file
// (permissions alone don't bind root), every sync or every cut failing.
static QString failing;
extern "C" int openat(int dir, const char *name, int flags, ...)
{
    va_list args;
    va_start(args, flags);
    const int mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(args, int) : 0;
    va_end(args);
    if (failing.startsWith("read-only") && flags & O_CREAT)
        return errno = EACCES, -1;
    return int(syscall(SYS_openat, dir, name, flags, mode));
}
extern "C" int fdatasync(int fd)
{
    return failing.endsWith("no sync") ? (errno = EIO, -1) : int(syscall(SYS_fdatasync, fd));
}
extern "C" int ftruncate(int fd, off_t length)
{
    return failing.endsWith("no cut") ? (errno = EIO, -1) : int(syscall(SYS_ftruncate, fd, length));
}

class TestApp_ : public QObject {
    Q_OBJECT
private slots:
    void aRunStartsOnItsBookAndSavesOnceAtTheEnd_data()
    {
        QTest::addColumn<QStringList>("book"); // empty: no file at all
        QTest::addColumn<QString>("end");
        QTest::newRow("default book, close box") << numberedBook() << "close";
        QTest::newRow("no book, close window item") << QStringList{} << "MClose";
        QTest::newRow("a book of blank lines, quit item") << QStringList{"", ""} << "FileQuit";
    }
    void aRunStartsOnItsBookAndSavesOnceAtTheEnd()
    {
        QFETCH(QStringList, book);
        QFETCH(QString, end);
        const bool read = book.size() == 140;
        QTemporaryDir dir;
        QVERIFY(book.isEmpty() || writeBook(dir.filePath("Verlis.txt"), book));
        TestApp t(dir.filePath("Verlis.txt"));
        t.app->Event_Open();
        mainWindow &w = t.app->window();
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QCOMPARE(w.PagePanel1()->Value(), int(read ? w.ReadingPage : w.ImportPage));
        QCOMPARE(w.DefaultListbox()->ListCount(), read ? 140 : 0);
        QCOMPARE(w.makePBtn()->isEnabled(), read);
        QTest::keyClick(&w, Qt::Key_2, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(w.whatPage(1), qint8(read)); // line items made at start obey the page at once
        // A resize runs the appearance pass; on the import page the table keeps the keyboard.
        w.DefaultListbox()->setFocus();
        w.setClientGeometry(100, 100, 600, 560);
        QTRY_COMPARE(w.Height(), 560);
        QVERIFY(read || QApplication::focusWidget() == w.DefaultListbox());
        t.app->prefs.ColorBack = 0xFAF0E6;
        end == "close" ? void(w.close()) : t.app->menuBar().item(end)->trigger();
        QCOMPARE(t.app->preferencesWrites(), 1);
        QCOMPARE(t.quits, QList<int>{0});
        App next({t.folder(), QString(), {"Alpha"}, t.dialogs, [](int) {}});
        next.Event_Open();
        QCOMPARE(next.prefs, t.app->prefs);
    }

    void damagedPreferencesGiveARunningProgram_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("saved");
        const QByteArray x80(80, 'x'),
            latin1 = encodePreferences(
                {{}, 11, 552, 516, 100, 100, false, false, false, false, 0, 0xFFFFFF});
        QTest::newRow("longer than any record") << "file" << QByteArray(400, 'x') << true;
        QTest::newRow("a Latin-1 font name")
            << "kept" << QByteArray(latin1).replace(1, 1, "\tCaf\xe9 Sans") << true;
        QTest::newRow("a stale temporary file, a link") << "killed" << x80 << true;
        QTest::newRow("a link to a record") << "link" << QByteArray(80, '\0') << true;
        QTest::newRow("a folder that takes no new file") << "read-only" << x80 << true;
        QTest::newRow("an in-place write cut short") << "read-only, full disk" << x80 << false;
        QTest::newRow("an in-place cut that fails") << "read-only, no cut" << x80 << false;
        QTest::newRow("a sync that fails keeps the record") << "no sync" << x80 << false;
        QTest::newRow("a write that fails keeps the record") << "full disk" << x80 << false;
        QTest::newRow("a file in the folder's place") << "no folder" << QByteArray() << false;
        QTest::newRow("a pipe in its place") << "pipe" << QByteArray() << false;
    }
    void damagedPreferencesGiveARunningProgram()
    {
        QFETCH(QString, kind);
        QFETCH(QByteArray, bytes);
        QFETCH(bool, saved);
        TestApp t;
        const QString file = PreferencesFile(t.folder()).path(), folder = QFileInfo(file).path();
        QFile data(kind == "link"        ? t.home.filePath("elsewhere")
                   : kind == "no folder" ? folder
                                         : file);
        QVERIFY(kind == "no folder" || QDir().mkpath(folder));
        const QStringList others{file + ".backup", file + ".2024ab"}; // the user's own files
        for (const QString &other : others)
            QVERIFY(kind == "no folder" || writeBook(other, {other}));
        if (kind == "pipe")
            QCOMPARE(mkfifo(QFile::encodeName(file).constData(), 0600), 0);
        else
            QVERIFY(data.open(QIODevice::WriteOnly) && data.write(bytes) == bytes.size());
        data.close();
        QVERIFY(kind != "link" || QFile::link(data.fileName(), file));
        // What a run killed while saving leaves, here leading to the user's own file.
        QVERIFY(kind != "killed" ||
                QFile::link(others[0], QDir(folder).filePath(PreferencesFile::TempFileName)));
        t.app->Event_Open();
        QVERIFY(kind != "kept" ||
                t.app->window().textLabel(0)->textStyle().TextFont == "Café Sans");
        rlimit fileSize{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &fileSize), 0);
        const rlimit full{10, fileSize.rlim_max}; // as a full disk, writes fail past 10 bytes
        signal(SIGXFSZ, SIG_IGN);
        QVERIFY(!kind.endsWith("full disk") || setrlimit(RLIMIT_FSIZE, &full) == 0);
        failing = kind;
        t.app->Quit(0);
        failing.clear();
        setrlimit(RLIMIT_FSIZE, &fileSize);
        QVERIFY(t.dialogs->messages.isEmpty());
        QCOMPARE(t.app->preferencesWrites(), int(saved));
        if (kind != "pipe") { // what stands in the record's place
            QVERIFY(data.open(QIODevice::ReadOnly));
            QCOMPARE(data.readAll(),
                     saved && kind != "kept" ? encodePreferences(t.app->prefs) : bytes);
        }
        QCOMPARE(QFileInfo(file).isSymLink(), kind == "link");
        for (const QString &other : others) // untouched, and nothing else left beside them
            QVERIFY(kind == "no folder" || QFile(other).size() == other.size() + 1);
        const auto all = QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(folder).entryList(all).size(), kind == "no folder" ? 0 : 3);
    }
};

QTEST_MAIN(TestApp_)
#include "tst_app.moc"
