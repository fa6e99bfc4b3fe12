#include "qtdialogs.h"

#include <QClipboard>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QShortcut>

namespace verlis {

namespace {

// Puts `widget` on a row of its own above everything the grid holds.
void addRowAbove(QGridLayout *grid, QWidget *widget)
{
    struct Placed {
        QLayoutItem *item;
        int row, column, rowSpan, columnSpan;
    };
    QList<Placed> placed;
    while (grid->count() > 0) {
        Placed p{};
        grid->getItemPosition(0, &p.row, &p.column, &p.rowSpan, &p.columnSpan);
        p.item = grid->takeAt(0);
        placed.append(p);
    }
    grid->addWidget(widget, 0, 0, 1, -1);
    for (const Placed &p : placed)
        grid->addItem(p.item, p.row + 1, p.column, p.rowSpan, p.columnSpan);
}

} // namespace

std::optional<QString> QtDialogs::openFile(QWidget *parent, const OpenFileRequest &request)
{
    QFileDialog dialog(parent, request.title);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setDirectory(m_lastFolder.isEmpty() ? QDir::homePath() : m_lastFolder);
    dialog.setNameFilter(request.filter);
    // The toolkit's own dialog, so that the prompt can stand above the files.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    if (auto *grid = qobject_cast<QGridLayout *>(dialog.layout())) {
        auto *prompt = new QLabel(request.prompt, &dialog);
        prompt->setObjectName(QStringLiteral("prompt"));
        addRowAbove(grid, prompt);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    m_lastFolder = dialog.directory().absolutePath();
    return dialog.selectedFiles().constFirst();
}

std::optional<Color> QtDialogs::selectColor(QWidget *parent, Color initial, const QString &prompt)
{
    const QColor chosen = QColorDialog::getColor(toQColor(initial), parent, prompt);
    if (!chosen.isValid())
        return std::nullopt;
    return fromQColor(chosen);
}

void QtDialogs::msgBox(QWidget *parent, const QString &text)
{
    const QString shown = QString(text).replace(QChar(13), QChar('\n'));
    QMessageBox box(parent);
    // The message has no title of its own. An empty one would make the
    // platform show the program's name in the frame; a blank shows nothing.
    box.setWindowTitle(QStringLiteral(" "));
    box.setText(shown);
    box.setStandardButtons(QMessageBox::Ok);
    // So that the version can be copied into a report: Ctrl+C copies what is
    // selected, or else the whole message.
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const auto *label = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
    auto *copy = new QShortcut(QKeySequence::Copy, &box);
    QObject::connect(copy, &QShortcut::activated, &box, [label, shown] {
        const bool selected = label && label->hasSelectedText();
        QGuiApplication::clipboard()->setText(selected ? label->selectedText() : shown);
    });
    box.exec();
}

} // namespace verlis
