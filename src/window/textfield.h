#pragma once

#include "settings/color.h"
#include "textstyle.h"

#include <QList>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextEdit>

#include <limits>

namespace verlis {

// A read-only field of several rows. Its text holds Chr(13) between rows.
// Every row has the same height, with its baseline at the same place in
// the row, so two fields of one height side by side stand level whatever
// their fonts. Where the widest row is wider than the field, the text is
// drawn smaller until it fits, but not below a legible floor; a row that
// is too wide even there turns over onto further visual rows with a
// hanging indent, and the field scrolls when they no longer fit. Text,
// style and size reach the document when the field is painted or used,
// not when they are set: a command that changes the poem costs no text
// shaping until the poem is on screen.
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
    // The drawn size or the visual rows have changed.
    void rowsChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QTextBlockFormat rowFormat(int row) const;
    void formatRows();
    void paintSelectionBands(QPainter &painter, const QTextCursor &selection) const;
    // The smallest size a row is shrunk to before it turns over.
    static qreal legibleFloor(float textSize);
    void fitFont(qreal atMost = std::numeric_limits<qreal>::infinity());
    void keepRowsWhole();
    qreal rowRoom() const;
    qreal fontPixels() const;
    QTextCharFormat charFormat() const;
    void measureRows();
    void countRows();
    void leaderRowsChanged();

    QString m_text;
    bool m_textPending = false;
    bool m_fontPending = false;
    bool m_formatPending = false;
    TextStyle m_style;
    QFont m_font; // the fitted font, which reaches the text with the row formats
    int m_rowHeight = 0;
    qreal m_widestPerPixel = 0; // the widest row's width for a 1-pixel font; < 0: to measure
    qreal m_turnIndent = 0;     // of the visual rows a row turns over onto; 0: none turns
    qreal m_drawnSize = 0;
    QList<int> m_visualRows;
    TextField *m_leader = nullptr;
    QList<int> m_blankRows; // after each row, as the leader's rows turn over
};

} // namespace verlis
