// Commands, import and the font list, on the offscreen platform.
#include "menus/commands.h"
#include "menus/enabling.h"
#include "menus/menubar1.h"
#include "menus/runtimemenus.h"
#include "poem/textimport.h"
#include "shell/app.h"
#include "window/mainwindow.h"

#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTextEdit>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace verlis;

namespace {

const QString DefaultBook = QStringLiteral(VERLIS_SOURCE_DIR "/data/Verlis.txt");

QStringList manyFonts(int count)
{
    QStringList fonts;
    for (int i = 0; i < count; ++i)
        fonts << QStringLiteral("Font Family %1").arg(i);
    return fonts;
}

std::unique_ptr<App> newApp(const QStringList &fonts = {QStringLiteral("Sans")})
{
    Environment env{QString(), DefaultBook, fonts, nullptr, [](int) {}};
    auto app = std::make_unique<App>(std::move(env));
    app->Event_Open();
    app->window().show();
    QApplication::processEvents();
    return app;
}

// Made at the first use and gone before the QApplication.
std::unique_ptr<App> theSharedApp;

App &sharedApp()
{
    if (!theSharedApp)
        theSharedApp = newApp();
    return *theSharedApp;
}

void runCommand(benchmark::State &state, bool (MenuCommands::*command)(), bool repaint)
{
    App &app = sharedApp();
    MenuCommands &commands = app.commands();
    QWidget *page = app.window().PagePanel1()->currentWidget();
    for (auto _ : state) {
        (commands.*command)();
        if (repaint)
            page->repaint();
    }
}

bool turnLineSix(MenuCommands &commands) { return commands._menuNextLine_Action(6); }

void BM_NextAllLine(benchmark::State &s)
{
    runCommand(s, &MenuCommands::_menuNextAllLine_Action, false);
}
void BM_Shuffle(benchmark::State &s) { runCommand(s, &MenuCommands::_menuShuffle_Action, false); }
void BM_NextAllLineRepaint(benchmark::State &s)
{
    runCommand(s, &MenuCommands::_menuNextAllLine_Action, true);
}
void BM_ShuffleRepaint(benchmark::State &s)
{
    runCommand(s, &MenuCommands::_menuShuffle_Action, true);
}

void BM_TurnOneLine(benchmark::State &state)
{
    MenuCommands &commands = sharedApp().commands();
    for (auto _ : state)
        turnLineSix(commands);
}

void BM_TurnOneLineRepaint(benchmark::State &state)
{
    App &app = sharedApp();
    MenuCommands &commands = app.commands();
    QWidget *page = app.window().PagePanel1()->currentWidget();
    for (auto _ : state) {
        turnLineSix(commands);
        page->repaint();
    }
}

// One step of a window dragged larger, from 552 x 516 to 1000 x 900 in 40
// steps and back to the start: the resize, both passes it runs and the
// repaint of the reading page. Steps differ in cost (the fonts change with
// the height), so their median and 90th percentile are reported too. Each
// step is also taken by a bare QTextEdit holding the same rows, at the
// reading field's size and text size, so that the ratio tells the program's
// own cost apart from how loaded the machine is.
void liveResize(benchmark::State &state)
{
    App &app = sharedApp();
    mainWindow &w = app.window();
    QWidget *page = w.PagePanel1()->currentWidget();
    QTextEdit bare;
    bare.setReadOnly(true);
    bare.setPlainText(w.TextField1()->Text().replace(QChar(13), QLatin1Char('\n')));
    bare.show();
    constexpr int Steps = 40;
    std::vector<double> times, bareTimes;
    int step = 0;
    const auto since = [](auto start) {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
            .count();
    };
    for (auto _ : state) {
        const int width = 552 + (1000 - 552) * step / Steps;
        const int height = 516 + (900 - 516) * step / Steps;
        auto start = std::chrono::steady_clock::now();
        w.setClientGeometry(100, 100, width, height);
        QApplication::processEvents();
        page->repaint();
        times.push_back(since(start));
        state.PauseTiming();
        start = std::chrono::steady_clock::now();
        bare.resize(w.TextField1()->size());
        QFont font = bare.font();
        font.setPixelSize(qRound(w.TextField1()->TextSize()));
        bare.setFont(font);
        QApplication::processEvents();
        bare.repaint();
        bareTimes.push_back(since(start));
        state.ResumeTiming();
        step = (step + 1) % (Steps + 1);
    }
    std::sort(times.begin(), times.end());
    std::sort(bareTimes.begin(), bareTimes.end());
    const auto at = [](const std::vector<double> &t, double share) {
        return t[size_t(double(t.size()) * share)];
    };
    state.counters["median_ms"] = at(times, 0.5);
    state.counters["p90_ms"] = at(times, 0.9);
    state.counters["bare_median_ms"] = at(bareTimes, 0.5);
    state.counters["bare_p90_ms"] = at(bareTimes, 0.9);
    state.counters["median_ratio"] = at(times, 0.5) / at(bareTimes, 0.5);
    state.counters["p90_ratio"] = at(times, 0.9) / at(bareTimes, 0.9);
    w.setClientGeometry(100, 100, 552, 516);
    QApplication::processEvents();
}

void BM_LiveResizeStep(benchmark::State &state) { liveResize(state); }

// Book files, written once.
struct Books {
    QTemporaryDir dir;
    QString utf8, shiftJis, gb18030, cp1251, huge, lineEnds, longLines, longLineBook;

    Books()
    {
        QFile source(DefaultBook);
        source.open(QIODevice::ReadOnly);
        const QByteArray book = source.readAll();
        utf8 = write("utf8.txt", book);
        QStringEncoder toShiftJis("windows-31j");
        shiftJis = write("sjis.txt", toShiftJis.encode(QString::fromUtf8(book)));
        gb18030 = write("gb18030.txt", realBook("zh_CN", "GB18030"));
        cp1251 = write("cp1251.txt", realBook("ru", "windows-1251"));

        // Line ends only, twice as many as are read: the read stops at
        // MaxReadBytes, so this costs what 1 GiB of them would.
        QFile blank(dir.filePath("line-ends.txt"));
        blank.open(QIODevice::WriteOnly);
        const QByteArray ends(1024 * 1024, '\n');
        for (qsizetype written = 0; written < 2 * MaxReadBytes; written += ends.size())
            blank.write(ends);
        lineEnds = blank.fileName();

        QFile file(dir.filePath("huge.txt"));
        file.open(QIODevice::WriteOnly);
        file.write(book);
        const QByteArray filler = QByteArray(1023, 'x') + '\n';
        for (int i = 0; i < 100 * 1024; ++i) // 100 MB after the book
            file.write(filler);
        huge = file.fileName();

        QFile wide(dir.filePath("long.txt"));
        wide.open(QIODevice::WriteOnly);
        const QByteArray longLine = QString(100 * 1024 / 3, QChar(0x6625)).toUtf8() + '\n';
        for (int i = 0; i < 140; ++i)
            wide.write(longLine);
        longLines = wide.fileName();

        QStringList lines = QString::fromUtf8(book).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (QString &line : lines)
            line = line.repeated(51 / line.size() + 1).left(51);
        longLineBook = write("long-lines.txt", lines.join(QLatin1Char('\n')).toUtf8());
    }

    // A book of real text from testdata/books, in an encoding of its language.
    static QByteArray realBook(const char *language, const char *encoding)
    {
        QFile file(QStringLiteral(VERLIS_SOURCE_DIR "/testdata/books/%1.txt").arg(language));
        file.open(QIODevice::ReadOnly);
        return QStringEncoder(encoding).encode(QString::fromUtf8(file.readAll()));
    }

    QString write(const char *name, const QByteArray &bytes)
    {
        QFile file(dir.filePath(QString::fromLatin1(name)));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return file.fileName();
    }
};

Books &books()
{
    static Books b;
    return b;
}

// The same with every line of the book 51 characters long: at 552 x 516 the
// poem at the legible floor, every line turned over, with its scroll bar.
void BM_LiveResizeStepLongLines(benchmark::State &state)
{
    mainWindow &w = sharedApp().window();
    w.readText(books().longLineBook);
    w.makePoetry();
    liveResize(state);
    w.readText(DefaultBook);
    w.makePoetry();
}

// A file larger than the read budget gives only the lines within it.
void importFile(benchmark::State &state, const QString &path, bool whole = true)
{
    for (auto _ : state) {
        const QStringList read = readBookFile(path);
        if (whole ? read.size() != 140 : read.isEmpty())
            state.SkipWithError("the book was not read as expected");
        benchmark::DoNotOptimize(read);
    }
}

void BM_ImportUtf8(benchmark::State &s) { importFile(s, books().utf8); }
void BM_ImportShiftJis(benchmark::State &s) { importFile(s, books().shiftJis); }
void BM_ImportGb18030(benchmark::State &s) { importFile(s, books().gb18030); }
void BM_ImportCp1251(benchmark::State &s) { importFile(s, books().cp1251); }
void BM_Import100MB(benchmark::State &s) { importFile(s, books().huge); }

void BM_ImportLineEndsOnly(benchmark::State &state)
{
    for (auto _ : state) {
        const QStringList read = readBookFile(books().lineEnds);
        if (!read.isEmpty())
            state.SkipWithError("line ends read as lines");
        benchmark::DoNotOptimize(read);
    }
}
void BM_Import140LinesOf100KB(benchmark::State &s)
{
    importFile(s, books().longLines, false); // 4 MiB of it: the read budget
}

// The whole import command's work on the window: the read and the table.
void BM_ReadTextIntoWindow(benchmark::State &state)
{
    mainWindow &w = sharedApp().window();
    for (auto _ : state)
        w.readText(books().utf8);
}

void BM_FontMenu3000(benchmark::State &state)
{
    const QStringList fonts = manyFonts(3000);
    for (auto _ : state) {
        state.PauseTiming();
        auto app =
            std::make_unique<App>(Environment{QString(), QString(), fonts, nullptr, [](int) {}});
        state.ResumeTiming();
        app->makeFontMenu();
        EnableMenuItems(app->menuBar(), mainWindow::ReadingPage);
        state.PauseTiming();
        app.reset();
        state.ResumeTiming();
    }
}

void BM_FontMenuFirstOpen3000(benchmark::State &state)
{
    const QStringList fonts = manyFonts(3000);
    for (auto _ : state) {
        state.PauseTiming();
        auto app = newApp(fonts);
        QMenu *menu = app->menuBar().menu(QStringLiteral("hyoujiFont"));
        measureFontMenu(app->menuBar()); // as the program does after its first paint
        state.ResumeTiming();
        menu->popup(QPoint(100, 100));
        menu->repaint();
        state.PauseTiming();
        menu->hide();
        app.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(BM_NextAllLine)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Shuffle)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TurnOneLine)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_NextAllLineRepaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ShuffleRepaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TurnOneLineRepaint)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_LiveResizeStep)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LiveResizeStepLongLines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImportUtf8)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ImportShiftJis)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ImportGb18030)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ImportCp1251)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ImportLineEndsOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Import100MB)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Import140LinesOf100KB)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadTextIntoWindow)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_FontMenu3000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_FontMenuFirstOpen3000)->Unit(benchmark::kMillisecond)->Iterations(10);

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    theSharedApp.reset();
    return 0;
}
