// The import page: reading a book into the Poem book and its table.
#include "mainwindow.h"

#include "dialogs.h"
#include "filetypes.h"
#include "poem/textimport.h"

#include <QPushButton>

namespace verlis {

void mainWindow::readText(const std::optional<QString> &file)
{
    m_selection.clear();
    if (file) {
        m_book.clear();
        m_listbox->DeleteAllRows();
        // A file that can't be read leaves the book empty, as a file of no lines would.
        const QStringList read = readBookFile(*file);
        QList<QStringList> rows;
        for (qsizetype n = 0; n < read.size(); ++n) {
            const int page = int(n / LineCount);
            const int line = int(n % LineCount);
            const QString &text = read[n];
            m_book.setLine(page, line, text);
            rows.append({QString::number(page + 1), QString::number(line + 1), text});
        }
        m_listbox->setUpdatesEnabled(false);
        m_listbox->AddRows(rows);
        for (int row = 0; row < m_listbox->ListCount(); ++row)
            m_listbox->setCellAlignment(row, 2, Listbox::Left);
        m_listbox->setUpdatesEnabled(true);
    }
    m_makePBtn->setEnabled(m_listbox->ListCount() > 0);
}

std::optional<QString> mainWindow::SelectFile()
{
    return m_dialogs.openFile(this,
                              {QStringLiteral("ファイル選択"), FileTypes1::Text().dialogFilter(),
                               QStringLiteral("読み込むファイルを選択してください。")});
}

void mainWindow::DefaultListbox_Open()
{
    for (int column = 0; column < 3; ++column)
        m_listbox->setColumnAlignment(column, Listbox::Centred);
}

void mainWindow::ReadTextBtn_Action()
{
    if (const auto file = SelectFile())
        readText(file);
}

void mainWindow::makePBtn_Action()
{
    m_pagePanel->setValue(ReadingPage);
    makePoetry();
}

} // namespace verlis
