#pragma once

#include "settings/color.h"
#include "textstyle.h"

#include <QTextBlockFormat>
#include <QTextEdit>

namespace verlis {

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

    Color BackColor() const;
    void setColors(Color text, Color back);

    void setRightAligned(bool right);

    // What a row of the text shows: characters that would break a row or
    // stand for nothing visible are drawn as spaces.
    static QString shownRow(QString row);

protected:
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

} // namespace verlis
