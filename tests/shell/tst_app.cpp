#include "bookfile.h"
#include "menus/menubar1.h"
#include "testapp.h"
#include "window/mainwindow.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QPushButton>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace verlis;

class TestApp_ : public QObject {
    Q_OBJECT
private slots:
    void startWithDefaultBookShowsTheFirstPoem();
    void startWithoutBookShowsTheEmptyImportPage_data();
    void startWithoutBookShowsTheEmptyImportPage();
    void settingsAreSavedOnceWhicheverWayTheRunEnds_data();
    void settingsAreSavedOnceWhicheverWayTheRunEnds();
    void savedSettingsComeBack();
    void damagedPreferencesGiveARunningProgram_data();
    void damagedPreferencesGiveARunningProgram();
    void aSaveCutShortLeavesTheOldRecordOrTheNew();
};

void TestApp_::startWithDefaultBookShowsTheFirstPoem()
{
    QTemporaryDir dir;
    const auto t = TestApp::started(dir, numberedBook());
    QVERIFY(t);
    mainWindow &w = t->app->window();
    QCOMPARE(w.PagePanel1()->Value(), int(mainWindow::ReadingPage));
    // The window's opening empties the label rows before the book is
    // composed, never after: the poem stands in the labels too.
    for (int i = 0; i < 14; ++i)
        QCOMPARE(w.textLabel(i)->Text(), QStringLiteral("1-%1").arg(i + 1));
    QVERIFY(w.TextField1()->Text().startsWith(QStringLiteral("1-1\r1-2\r1-3\r1-4\r\r1-5")));
    QCOMPARE(w.DefaultListbox()->ListCount(), 140);
    QCOMPARE(w.DefaultListbox()->Cell(139, 0), QStringLiteral("10"));
    QCOMPARE(w.DefaultListbox()->Cell(139, 1), QStringLiteral("14"));
    QCOMPARE(w.DefaultListbox()->Cell(139, 2), QStringLiteral("10-14"));
    QVERIFY(w.makePBtn()->isEnabled());
    // Made once: a second use of the accessor finds the same window.
    QCOMPARE(&t->app->window(), &w);
    QVERIFY(t->dialogs->messages.isEmpty());
}

void TestApp_::startWithoutBookShowsTheEmptyImportPage_data()
{
    QTest::addColumn<QStringList>("book");
    QTest::addColumn<bool>("exists");
    QTest::newRow("no book") << QStringList{} << false;
    QTest::newRow("a book of blank lines") << QStringList{"", "", ""} << true;
}

void TestApp_::startWithoutBookShowsTheEmptyImportPage()
{
    QFETCH(QStringList, book);
    QFETCH(bool, exists);
    QTemporaryDir dir;
    const QString path = dir.filePath("Verlis.txt");
    if (exists)
        QVERIFY(writeBook(path, book));
    TestApp t(path);
    t.app->Event_Open();
    mainWindow &w = t.app->window();
    QCOMPARE(w.PagePanel1()->Value(), int(mainWindow::ImportPage));
    QCOMPARE(w.DefaultListbox()->ListCount(), 0);
    QCOMPARE(w.DefaultListbox()->columnCount(), 3);
    QStringList headings;
    for (int c = 0; c < 3; ++c)
        headings << w.DefaultListbox()->horizontalHeaderItem(c)->text();
    QCOMPARE(headings, (QStringList{"頁", "行", " "}));
    QVERIFY(!w.makePBtn()->isEnabled());
    QVERIFY(t.dialogs->messages.isEmpty());
    QVERIFY(t.dialogs->fileRequests.isEmpty());

    // The items made at start obey the page from the first moment.
    w.show();
    QVERIFY(QTest::qWaitForWindowActive(&w));
    QTest::keyClick(&w, Qt::Key_2, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(w.whatPage(1), qint8(0));
    // A resize runs the appearance pass, and the table keeps the keyboard.
    w.DefaultListbox()->setFocus();
    w.setClientGeometry(100, 100, 600, 560);
    QTRY_COMPARE(w.Height(), 560);
    QCOMPARE(QApplication::focusWidget(), w.DefaultListbox());
}

void TestApp_::settingsAreSavedOnceWhicheverWayTheRunEnds_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("close box") << "close";
    QTest::newRow("close window item") << "MClose";
    QTest::newRow("quit item") << "FileQuit";
}

void TestApp_::settingsAreSavedOnceWhicheverWayTheRunEnds()
{
    QFETCH(QString, way);
    TestApp t;
    t.app->Event_Open();
    mainWindow &w = t.app->window();
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(t.app->preferencesWrites(), 0);
    if (way == "close")
        w.close();
    else
        t.app->menuBar().item(way)->trigger();
    QCOMPARE(t.app->preferencesWrites(), 1);
    QCOMPARE(t.quits, QList<int>{0});
    QVERIFY(!w.isVisible());
    QCOMPARE(QFileInfo(t.prefsPath()).size(), 68);
}

void TestApp_::savedSettingsComeBack()
{
    TestApp first;
    first.app->Event_Open();
    Preferences &p = first.app->prefs;
    p.mainfont = QStringLiteral("游明朝");
    p.mainSize = 40;
    p.mainItalic = true;
    p.BshowNumber = true;
    p.ColorText = 0x204060;
    p.ColorBack = 0xFAF0E6;
    // An older, longer file is replaced whole.
    QFile old(first.prefsPath());
    QVERIFY(QDir().mkpath(QFileInfo(old).path()));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(300, 'x'));
    old.close();
    first.app->savePrefs();
    QCOMPARE(QFileInfo(first.prefsPath()).size(), 62 + QByteArray("游明朝").size());

    verlis::Environment env{
        QFileInfo(first.prefsPath()).path(), QString(), {"Alpha"}, first.dialogs, [](int) {}};
    App second(env);
    second.Event_Open();
    QCOMPARE(second.prefs, p);
    mainWindow &w = second.window();
    QCOMPARE(w.TextField1()->textStyle().TextFont, QStringLiteral("游明朝"));
    QVERIFY(w.TextField1()->textStyle().Italic);
    QCOMPARE(w.TextField1()->TextColor(), Color(0x204060));
    QCOMPARE(w.BackColor(), Color(0xFAF0E6));
    QVERIFY(second.menuBar().item("fontItalic")->isChecked());
    QVERIFY(!second.menuBar().item("fontBold")->isChecked());
}

void TestApp_::damagedPreferencesGiveARunningProgram_data()
{
    QTest::addColumn<QString>("damage");
    QTest::newRow("empty file") << "empty";
    QTest::newRow("random bytes") << "random";
    QTest::newRow("cut short") << "short";
    QTest::newRow("a folder in its place") << "folder";
    QTest::newRow("a folder that can't be made") << "unwritable";
    QTest::newRow("a pipe in its place") << "pipe";
    QTest::newRow("a file one byte longer than any record") << "long";
    QTest::newRow("a record of the longest font name") << "longest";
    QTest::newRow("a link to a record") << "link";
}

void TestApp_::damagedPreferencesGiveARunningProgram()
{
    QFETCH(QString, damage);
    QTemporaryDir dir;
    QString folder = dir.filePath("config");
    const QString file = folder + "/Verlis Preferences";
    QVERIFY(QDir().mkpath(folder));
    QFile f(file);
    if (damage == "folder") {
        QVERIFY(QDir().mkpath(file));
    } else if (damage == "pipe") {
        QCOMPARE(mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    } else if (damage == "unwritable") {
        folder = file + "/below-a-file"; // its parent is a plain file
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
    } else if (damage == "link") {
        QVERIFY(QFile::link(dir.filePath("elsewhere"), file));
        QFile target(dir.filePath("elsewhere"));
        QVERIFY(target.open(QIODevice::WriteOnly));
        target.write(QByteArray(80, '\0'));
        target.close();
    } else {
        QVERIFY(f.open(QIODevice::WriteOnly));
        if (damage == "long" || damage == "longest")
            f.write(QByteArray(PreferencesFixedBytes + MaxFontNameBytes + (damage == "long"), 'x'));
        if (damage == "random")
            for (int i = 0; i < 97; ++i)
                f.putChar(char((i * 131 + 7) % 256));
        if (damage == "short")
            f.write(QByteArray::fromHex("0c0673797374656d0064"));
        f.close();
    }
    auto dialogs = std::make_shared<FakeDialogs>();
    App app({folder, QString(), {"Alpha"}, dialogs, [](int) {}});
    app.Event_Open();
    const Preferences &p = app.prefs;
    QVERIFY(p.mainSize >= 1 && p.mainSize <= 64);
    QVERIFY(p.MWWidth >= 480 && p.MWHeight >= 480);
    QVERIFY(p.ColorText != p.ColorBack);
    QVERIFY(!p.mainfont.isEmpty());
    app.Quit(0);
    QVERIFY(dialogs->messages.isEmpty());
    if (damage == "folder")
        QVERIFY(QFileInfo(file).isDir());
    if (damage == "long")
        QCOMPARE(QFileInfo(file).size(), PreferencesFixedBytes + MaxFontNameBytes + 1);
    if (damage == "link")
        QVERIFY(QFileInfo(file).isSymLink());
    if (damage == "folder" || damage == "unwritable" || damage == "pipe" || damage == "long")
        QCOMPARE(app.preferencesWrites(), 0);
    else
        QCOMPARE(QFileInfo(file).size(), 62 + qint64(p.mainfont.toUtf8().size()));
}

void TestApp_::aSaveCutShortLeavesTheOldRecordOrTheNew()
{
    TestApp t;
    t.app->Event_Open();
    Preferences older = t.app->prefs;
    older.mainfont = QStringLiteral("游明朝");
    older.mainSize = 40;
    Preferences newer = t.app->prefs;
    newer.mainBold = true;
    t.app->prefs = older;
    t.app->savePrefs();
    const QByteArray olderBytes = encodePreferences(older), newerBytes = encodePreferences(newer);
    const QDir folder = QFileInfo(t.prefsPath()).dir();
    const auto record = [&] {
        QFile file(t.prefsPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    };
    // A child saves the two in turn until it is killed, after a different
    // delay each round.
    for (int round = 0; round < 60; ++round) {
        const pid_t child = fork();
        if (child == 0)
            for (bool flip = false;; flip = !flip) {
                t.app->prefs = flip ? older : newer;
                t.app->savePrefs();
            }
        QVERIFY(child > 0);
        usleep(useconds_t(round * 173 % 6000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const QByteArray found = record();
        QVERIFY2(found == olderBytes || found == newerBytes,
                 qPrintable(QStringLiteral("round %1: %2").arg(round).arg(found.toHex())));
    }
    t.app->savePrefs(); // and whatever a killed save left beside the record is gone
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{App::PreferencesFileName});
    // A write that fails half way (here: the file size limit) keeps the record.
    t.app->prefs = older;
    t.app->savePrefs();
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit{10, 10};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
        t.app->prefs = newer;
        t.app->savePrefs();
        _exit(t.app->preferencesWrites());
    }
    int status = -1;
    QVERIFY(child > 0 && waitpid(child, &status, 0) == child);
    QCOMPARE(WEXITSTATUS(status), t.app->preferencesWrites());
    QCOMPARE(record(), olderBytes);
}

QTEST_MAIN(TestApp_)
#include "tst_app.moc"
