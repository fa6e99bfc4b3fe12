#include "dialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>

namespace verlis {

std::optional<QString> QtDialogs::openFile(QWidget *parent, const OpenFileRequest &request)
{
    QFileDialog dialog(parent, request.title);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(request.filter);
    // The toolkit's own dialog, so that the prompt can stand above the files.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    if (auto *grid = qobject_cast<QGridLayout *>(dialog.layout())) {
        auto *prompt = new QLabel(request.prompt, &dialog);
        prompt->setObjectName(QStringLiteral("prompt"));
        grid->addWidget(prompt, grid->rowCount(), 0, 1, grid->columnCount());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

bool QtDialogs::selectColor(QWidget *parent, Color &color, const QString &prompt)
{
    const QColor chosen = QColorDialog::getColor(toQColor(color), parent, prompt);
    if (!chosen.isValid())
        return false;
    color = fromQColor(chosen);
    return true;
}

void QtDialogs::msgBox(QWidget *parent, const QString &text)
{
    QMessageBox box(parent);
    box.setWindowTitle(QString());
    box.setText(QString(text).replace(QChar(13), QChar('\n')));
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

} // namespace verlis
