#pragma once

#include <QTableWidget>

namespace verlis {

// The table of the import page. The first two columns take 10 % of the
// width each at every size and the last the rest.
class Listbox : public QTableWidget {
    Q_OBJECT
public:
    enum Alignment { Left = 1, Centred = 2 };

    explicit Listbox(const QStringList &headings, QWidget *parent = nullptr);

    void DeleteAllRows() { setRowCount(0); }
    // Rows behind the last, their cells filled from the left, in one step.
    void AddRows(const QList<QStringList> &rows);
    int ListCount() const { return rowCount(); }
    void setCell(int row, int column, const QString &text);
    void setColumnAlignment(int column, Alignment alignment);
    void setCellAlignment(int row, int column, Alignment alignment);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void updateGeometries() override;

private:
    void fitColumns();
    QList<Alignment> m_columnAlignment;
    bool m_geometriesPending = false;
};

} // namespace verlis
