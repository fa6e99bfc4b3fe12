#pragma once

#include "poem/poemfit.h"
#include "settings/color.h"
#include "textstyle.h"

#include <QList>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextEdit>

namespace verlis {

// A read-only field of several rows. Its text holds Chr(13) between rows.
// Every row has the same height, with its baseline at the same place in
// the row, so two fields of one height side by side stand level whatever
// their fonts. The rows are drawn at the largest size, at most the style's,
// at which all of them fit the field: a row too wide turns over onto
// further visual rows with a hanging indent, the row spacing shrinks with
// the text, and only below a legible floor does the field scroll instead.
// Text, style and size reach the document when the field is painted or
// used, not when they are set: a command that changes the poem costs no
// text shaping until the poem is on screen.
class TextField : public QTextEdit {
    Q_OBJECT
public:
    explicit TextField(QWidget *parent = nullptr);

    QString Text() const { return m_text; }
    void setText(const QString &text);
    // Select all and copy work on the text last set, laid out or not.
    void selectAll();
    void copy();

    const TextStyle &textStyle() const { return m_style; }
    void setTextStyle(const TextStyle &style);
    float TextSize() const { return m_style.TextSize; }

    // Brings the document up to date with the text, style and size set, and
    // lays it out; drawnSize and visualRows tell what came of it.
    void layOut();
    // The size the text is drawn at, in logical pixels.
    qreal drawnSize() const { return m_drawnSize; }
    // The row spacing the text is drawn at.
    int rowHeight() const { return m_rowHeight; }
    // For each row of the text, the visual rows it takes: more than one
    // where it turns over.
    const QList<int> &visualRows() const { return m_visualRows; }

    // This field follows `leader` row for row: it is drawn no larger than
    // the leader, leaves a blank row beside each visual row the leader
    // turns over onto, and scrolls with it. It never turns over itself.
    void followRows(TextField *leader);

    Color BackColor() const;
    void setColors(Color text, Color back);

    void setRightAligned(bool right);

    // What a row of the text shows: characters that would break a row or
    // stand for nothing visible are drawn as spaces.
    static QString shownRow(QString row);

signals:
    // The drawn size, the row spacing or the visual rows have changed.
    void rowsChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QTextBlockFormat rowFormat(int row) const;
    void insertText();
    void formatRows();
    void paintSelectionBands(QPainter &painter, const QTextCursor &selection) const;
    void measureRows();
    QList<MeasuredRow> scaledRows() const;
    void fitRows(bool afresh = true);
    void applyFit(qreal size, int rowHeight, bool turn);
    bool fitsAsLaidOut() const;
    int laidOutRows() const;
    void keepRowsWhole();
    qreal rowRoom() const;
    int rowsRoom() const;
    qreal fontPixels() const;
    QTextCharFormat charFormat() const;
    void countRows();
    void leaderRowsChanged();

    QString m_text;
    bool m_textPending = false;
    bool m_measurePending = false;
    bool m_fitPending = false;
    bool m_formatPending = false;
    TextStyle m_style;
    QList<MeasuredRow> m_measured; // the rows' pieces, for a font of 1 pixel
    QList<qreal> m_rowScales;      // how much wider than measured each row is laid out
    QFont m_font;                  // the fitted font, which reaches the text with the row formats
    int m_fullRowHeight = 0;       // the row spacing at the style's size: the poem fills the field
    int m_rowHeight = 0;           // the row spacing at the drawn size
    int m_countedRowHeight = 0;    // that the visual rows were last counted at
    qreal m_turnIndent = 0;        // of the visual rows a row turns over onto; 0: none turns
    qreal m_drawnSize = 0;
    QList<int> m_visualRows;
    TextField *m_leader = nullptr;
    QList<int> m_blankRows; // after each row, as the leader's rows turn over
};

} // namespace verlis
