#include "textfield.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

namespace verlis {

TextField::TextField(QWidget *parent) : QTextEdit(parent)
{
    setReadOnly(true);
    setAcceptRichText(false);
    setUndoRedoEnabled(false);
    setFrameShape(QFrame::NoFrame);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::StrongFocus);
    setTabChangesFocus(true);
    setCursorWidth(0); // a field that can't be edited shows no caret
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::NoWrap);
    document()->setDocumentMargin(2);
    setColors(0x000000, 0xFFFFFF);
}

QString TextField::shownRow(QString row)
{
    for (QChar &c : row) {
        const auto category = c.category();
        if ((category == QChar::Other_Control && c != QLatin1Char('\t'))
            || category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            c = QLatin1Char(' ');
    }
    return row;
}

void TextField::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_textPending = true;
    viewport()->update();
}

void TextField::applyPendingText()
{
    if (!m_textPending && !m_fontPending)
        return;
    fitFont(); // with the last measure: a new text seldom needs another size
    if (m_textPending) {
        m_textPending = false;
        QStringList rows = m_text.split(QChar(13));
        for (QString &row : rows)
            row = shownRow(row);
        // One edit, one layout: the rows take their height as the text goes in.
        QTextCursor cursor(document());
        cursor.beginEditBlock();
        cursor.select(QTextCursor::Document);
        cursor.removeSelectedText();
        cursor.setBlockFormat(rowFormat());
        cursor.insertText(rows.join(QLatin1Char('\n')));
        cursor.endEditBlock();
        m_widestPerPixel = -1;
    }
    if (m_widestPerPixel < 0) {
        measureRows();
        fitFont();
    }
}

void TextField::selectAll()
{
    applyPendingText();
    QTextEdit::selectAll();
}

void TextField::copy()
{
    applyPendingText();
    QTextEdit::copy();
}

void TextField::keyPressEvent(QKeyEvent *event)
{
    applyPendingText();
    QTextEdit::keyPressEvent(event);
}

void TextField::mousePressEvent(QMouseEvent *event)
{
    applyPendingText();
    QTextEdit::mousePressEvent(event);
}

void TextField::focusInEvent(QFocusEvent *event)
{
    applyPendingText();
    QTextEdit::focusInEvent(event);
}

void TextField::setTextStyle(const TextStyle &style)
{
    if (style == m_style)
        return;
    const bool sameFace = style.TextFont == m_style.TextFont && style.Bold == m_style.Bold
                          && style.Italic == m_style.Italic;
    m_style = style;
    if (!sameFace)
        m_widestPerPixel = -1; // measured again with the new face
    m_fontPending = true;
    viewport()->update();
}

// The width of the widest row, per pixel of the font's size, read from the
// layout that painting needs anyway: text widths grow in proportion to the
// size, so one measure serves every height.
void TextField::measureRows()
{
    document()->documentLayout()->documentSize(); // lays out what is pending
    qreal widest = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const QTextLayout *layout = block.layout();
        for (int i = 0; i < layout->lineCount(); ++i)
            widest = qMax(widest, layout->lineAt(i).naturalTextWidth());
    }
    const qreal pixels = font().pointSizeF() * logicalDpiY() / 72.0;
    m_widestPerPixel = pixels > 0 ? widest / pixels : 0;
}

// The style's font, or a smaller one where the widest row would not fit.
void TextField::fitFont()
{
    m_fontPending = false;
    TextStyle fitted = m_style;
    const qreal room = viewport()->width() - 2 * document()->documentMargin() - 1;
    if (m_style.TextSize > 0 && m_widestPerPixel > 0
        && m_widestPerPixel * m_style.TextSize > room && room > 0)
        fitted.TextSize = float(qMax(1.0, room / m_widestPerPixel));
    const QFont font = fitted.toFont(logicalDpiY());
    if (font != this->font())
        setFont(font);
}

Color TextField::BackColor() const { return fromQColor(palette().color(QPalette::Base)); }

void TextField::setColors(Color text, Color back)
{
    QPalette p = palette();
    p.setColor(QPalette::Text, toQColor(text));
    p.setColor(QPalette::Base, toQColor(back));
    setPalette(p);
}

void TextField::setRightAligned(bool right)
{
    QTextOption option = document()->defaultTextOption();
    option.setAlignment(right ? Qt::AlignRight : Qt::AlignLeft);
    document()->setDefaultTextOption(option);
}

void TextField::resizeEvent(QResizeEvent *event)
{
    QTextEdit::resizeEvent(event);
    const int usable = viewport()->height() - 2 * int(document()->documentMargin());
    const int rowHeight = qMax(1, usable / Rows);
    if (event->size().width() != event->oldSize().width())
        m_fontPending = true;
    if (rowHeight == m_rowHeight)
        return;
    m_rowHeight = rowHeight;
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(rowFormat());
}

// The rows are shorter than the font's own line spacing, and the toolkit
// highlights a selection at that spacing, over the row above. The field
// paints the highlight itself, one band a row, and lets the layout draw
// the selected text in its colour.
void TextField::paintEvent(QPaintEvent *event)
{
    applyPendingText();
    QPainter painter(viewport());
    const QPointF offset(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    painter.translate(offset);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = palette();
    context.clip = QRectF(event->rect()).translated(-offset);
    painter.setClipRect(context.clip);
    const QTextCursor cursor = textCursor();
    if (cursor.hasSelection()) {
        paintSelectionBands(painter, cursor);
        QAbstractTextDocumentLayout::Selection selection;
        selection.cursor = cursor;
        selection.format.setForeground(palette().brush(QPalette::HighlightedText));
        context.selections.append(selection);
    }
    document()->documentLayout()->draw(&painter, context);
}

void TextField::paintSelectionBands(QPainter &painter, const QTextCursor &selection) const
{
    const int start = selection.selectionStart();
    const int end = selection.selectionEnd();
    const QAbstractTextDocumentLayout *layout = document()->documentLayout();
    const qreal gap = fontMetrics().horizontalAdvance(QLatin1Char(' '));
    for (QTextBlock block = document()->findBlock(start);
         block.isValid() && block.position() <= end; block = block.next()) {
        const QRectF blockRect = layout->blockBoundingRect(block);
        const QTextLayout *text = block.layout();
        const qreal rowHeight = text->lineCount() > 0 ? blockRect.height() / text->lineCount() : 0;
        for (int i = 0; i < text->lineCount(); ++i) {
            const QTextLine line = text->lineAt(i);
            const int lineStart = block.position() + line.textStart();
            const int lineEnd = lineStart + line.textLength();
            const int from = qMax(start, lineStart);
            const int to = qMin(end, lineEnd);
            if (from > to)
                continue;
            qreal left = blockRect.left() + line.cursorToX(from - block.position());
            qreal right = blockRect.left() + line.cursorToX(to - block.position());
            if (end > lineEnd) // the row's end is selected too
                right += gap;
            painter.fillRect(QRectF(QPointF(left, blockRect.top() + i * rowHeight),
                                    QPointF(right, blockRect.top() + (i + 1) * rowHeight)),
                             palette().brush(QPalette::Highlight));
        }
    }
}

QTextBlockFormat TextField::rowFormat() const
{
    QTextBlockFormat format;
    if (m_rowHeight > 0) // known from the first resize on
        format.setLineHeight(m_rowHeight, QTextBlockFormat::FixedHeight);
    return format;
}

} // namespace verlis
