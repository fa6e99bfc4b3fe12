#pragma once

#include "shell/color.h"
#include "textstyle.h"

#include <QLabel>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTextBlockFormat>
#include <QTextEdit>

#include <climits>

namespace verlis {

// A label that can act as a button: it reports presses and the pointer
// coming and going. Members of a control array know their Index.
class Label : public QLabel {
    Q_OBJECT
public:
    static constexpr int NoIndex = INT_MIN;

    explicit Label(int index = NoIndex, QWidget *parent = nullptr);

    int Index() const { return m_index; }
    QString Text() const { return text(); }
    void setText(const QString &text) { QLabel::setText(text); }

    Color TextColor() const { return m_textColor; }
    void setTextColor(Color color);

    const TextStyle &textStyle() const { return m_style; }
    void setTextStyle(const TextStyle &style);

    void setSelectable(bool selectable);

signals:
    void mouseDown(verlis::Label *label, Qt::KeyboardModifiers modifiers);
    void mouseEnter(verlis::Label *label);
    void mouseExit(verlis::Label *label);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    int m_index;
    Color m_textColor = 0;
    TextStyle m_style;
};

// A read-only field of several rows. Its text holds Chr(13) between rows.
// Every row has the same height, with its baseline at the same place in
// the row, so two fields of one height side by side stand level whatever
// their fonts. A row never wraps: where the widest row is wider than the
// field, the text is drawn smaller until it fits, so every row stands
// whole and in its place. Text, style and size reach the document when the
// field is painted or used, not when they are set: a command that changes
// the poem costs no text shaping until the poem is on screen.
class TextField : public QTextEdit {
    Q_OBJECT
public:
    static constexpr int Rows = 17;

    explicit TextField(QWidget *parent = nullptr);

    QString Text() const { return m_text; }
    void setText(const QString &text);
    // Select all and copy work on the text last set, laid out or not.
    void selectAll();
    void copy();

    const TextStyle &textStyle() const { return m_style; }
    void setTextStyle(const TextStyle &style);
    float TextSize() const { return m_style.TextSize; }

    Color TextColor() const;
    Color BackColor() const;
    void setColors(Color text, Color back);

    void setRightAligned(bool right);

    // What a row of the text shows: characters that would break a row or
    // stand for nothing visible are drawn as spaces.
    static QString shownRow(QString row);

protected:
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // Brings the document up to date with the text, style and size set.
    void applyPendingText();
    QTextBlockFormat rowFormat() const;
    void paintSelectionBands(QPainter &painter, const QTextCursor &selection) const;
    void fitFont();
    void measureRows();

    QString m_text;
    bool m_textPending = false;
    bool m_fontPending = false;
    TextStyle m_style;
    int m_rowHeight = 0;
    qreal m_widestPerPixel = 0; // the widest row's width for a 1-pixel font; < 0: to measure
};

// The pages of the window; Value is the page showing.
class PagePanel : public QStackedWidget {
    Q_OBJECT
public:
    explicit PagePanel(int pageCount, QWidget *parent = nullptr);
    int Value() const { return currentIndex(); }
    void setValue(int value) { setCurrentIndex(value); }
    QWidget *panelPage(int index) const { return widget(index); }
};

// The table of the import page. The first two columns take 10 % of the
// width each at every size and the last the rest.
class Listbox : public QTableWidget {
    Q_OBJECT
public:
    enum Alignment { Left = 1, Centred = 2 };

    explicit Listbox(const QStringList &headings, QWidget *parent = nullptr);

    void DeleteAllRows()
    {
        setRowCount(0);
        m_rowsUsed = 0;
    }
    int AddRow(const QString &firstCell);
    // Room for `count` more rows in one step, before a run of AddRow.
    void reserveRows(int count);
    int ListCount() const { return m_rowsUsed; }
    QString Cell(int row, int column) const;
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
    int m_rowsUsed = 0;
    bool m_geometriesPending = false;
};

} // namespace verlis
