#include "listbox.h"

#include <QHeaderView>

namespace verlis {

namespace {

Qt::Alignment toQt(Listbox::Alignment alignment)
{
    return (alignment == Listbox::Left ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter;
}

} // namespace

Listbox::Listbox(const QStringList &headings, QWidget *parent)
    : QTableWidget(parent), m_columnAlignment(headings.size(), Centred)
{
    // Columns added after construction, so that measuring the header waits
    // until the table is on screen.
    setColumnCount(int(headings.size()));
    setHorizontalHeaderLabels(headings);
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setSectionsClickable(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setShowGrid(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    fitColumns();
}

void Listbox::AddRows(const QList<QStringList> &rows)
{
    const int first = rowCount();
    setRowCount(first + int(rows.size()));
    for (int row = first; const QStringList &cells : rows) {
        for (int column = 0; column < cells.size(); ++column)
            setCell(row, column, cells[column]);
        ++row;
    }
}

void Listbox::setCell(int row, int column, const QString &text)
{
    auto *cell = new QTableWidgetItem(text);
    cell->setTextAlignment(toQt(m_columnAlignment.value(column, Centred)));
    setItem(row, column, cell);
}

void Listbox::setColumnAlignment(int column, Alignment alignment)
{
    m_columnAlignment[column] = alignment;
    if (QTableWidgetItem *heading = horizontalHeaderItem(column))
        heading->setTextAlignment(toQt(alignment));
}

void Listbox::setCellAlignment(int row, int column, Alignment alignment)
{
    if (QTableWidgetItem *cell = item(row, column))
        cell->setTextAlignment(toQt(alignment));
}

void Listbox::resizeEvent(QResizeEvent *event)
{
    QTableWidget::resizeEvent(event);
    fitColumns();
}

// A table on a page that isn't showing has nothing to lay out: its header
// and scroll bars are measured when it comes on screen.
void Listbox::updateGeometries()
{
    if (!isVisible()) {
        m_geometriesPending = true;
        return;
    }
    m_geometriesPending = false;
    QTableWidget::updateGeometries();
}

void Listbox::showEvent(QShowEvent *event)
{
    QTableWidget::showEvent(event);
    if (m_geometriesPending)
        updateGeometries();
}

void Listbox::fitColumns()
{
    const int tenth = viewport()->width() / 10;
    setColumnWidth(0, tenth);
    setColumnWidth(1, tenth);
}

} // namespace verlis
