// The reference for start-up: a bare window with a menu bar and a read-only
// field of 17 rows of Japanese text at 552 x 516, ending at its first paint.
// Its fourteen lines are as many and as varied as a poem's, at the size the
// reading page uses, so that both programs draw a like number of glyphs.
#include "firstpaint.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTextEdit>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    for (const char *title : {"ファイル", "編集", "表示", "生成", "前のページ", "次のページ"})
        window.menuBar()->addMenu(QString::fromUtf8(title))->addAction(QStringLiteral("項目"));
    auto *field = new QTextEdit(&window);
    field->setReadOnly(true);
    const QStringList rows{QStringLiteral("朝の光が窓辺にさしこみ"),
                           QStringLiteral("湯気の立つ茶碗を両手で包む"),
                           QStringLiteral("遠くで犬が一声だけ吠え"),
                           QStringLiteral("町はゆっくりと目をさます。"),
                           QString(),
                           QStringLiteral("自転車の鈴が角を曲がり"),
                           QStringLiteral("パン屋の前に列ができて"),
                           QStringLiteral("黒板に今日の献立が並び"),
                           QStringLiteral("子どもらは坂を駆けおりる。"),
                           QString(),
                           QStringLiteral("昼には雲が東へ流れ"),
                           QStringLiteral("洗濯物が風にふくらみ"),
                           QStringLiteral("川面に白い鳥が降りる。"),
                           QString(),
                           QStringLiteral("夕方の鐘が三度鳴って"),
                           QStringLiteral("家々の窓に灯がともり"),
                           QStringLiteral("一日は静かに幕を引く。")};
    QFont font = field->font();
    font.setPointSizeF(448.0 / 26.0 * 72.0 / field->logicalDpiY()); // 448 / 26 pixels
    field->setFont(font);
    field->setPlainText(rows.join('\n'));
    window.setCentralWidget(field);
    window.resize(552, 516 + window.menuBar()->sizeHint().height());
    new ExitAtFirstPaint(field->viewport());
    window.show();
    const int status = application.exec();
    ExitAtFirstPaint::reportPeakMemory();
    return status;
}
