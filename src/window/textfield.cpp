#include "textfield.h"

#include "poem/composition.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

#include <algorithm>

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
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded); // rows turned over may need it
    setLineWrapMode(QTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::NoWrap);
    document()->setDocumentMargin(2);
    setColors(0x000000, 0xFFFFFF);
}

QString TextField::shownRow(QString row)
{
    for (QChar &c : row) {
        const auto category = c.category();
        if ((category == QChar::Other_Control && c != QLatin1Char('\t')) ||
            category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
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

void TextField::layOut()
{
    if (m_leader)
        m_leader->layOut(); // its size and rows first: this field follows them
    if (!m_textPending && !m_fontPending && !m_formatPending)
        return;
    fitFont(); // with the last measure: a new text seldom needs another size
    if (m_textPending) {
        m_textPending = false;
        QStringList rows = m_text.split(QChar(13));
        for (QString &row : rows)
            row = shownRow(row);
        // One edit, one layout: the rows take their height and font as the text goes in.
        QTextCursor cursor(document());
        cursor.beginEditBlock();
        cursor.select(QTextCursor::Document);
        cursor.removeSelectedText();
        cursor.setBlockFormat(rowFormat(-1));
        cursor.setBlockCharFormat(charFormat());
        cursor.insertText(rows.join(QLatin1Char('\n')), charFormat());
        cursor.endEditBlock();
        m_formatPending = !m_blankRows.isEmpty();
        m_widestPerPixel = -1;
    }
    formatRows();
    if (m_widestPerPixel < 0) {
        measureRows();
        fitFont();
        formatRows();
    }
    keepRowsWhole();
    countRows();
}

void TextField::selectAll()
{
    layOut();
    QTextEdit::selectAll();
}

void TextField::copy()
{
    layOut();
    QTextEdit::copy();
}

void TextField::keyPressEvent(QKeyEvent *event)
{
    layOut();
    QTextEdit::keyPressEvent(event);
}

void TextField::mousePressEvent(QMouseEvent *event)
{
    layOut();
    QTextEdit::mousePressEvent(event);
}

void TextField::focusInEvent(QFocusEvent *event)
{
    layOut();
    QTextEdit::focusInEvent(event);
}

void TextField::setTextStyle(const TextStyle &style)
{
    if (style == m_style)
        return;
    const bool sameFace = style.TextFont == m_style.TextFont && style.Bold == m_style.Bold &&
                          style.Italic == m_style.Italic;
    m_style = style;
    if (!sameFace)
        m_widestPerPixel = -1; // measured again with the new face
    m_fontPending = true;
    viewport()->update();
}

qreal TextField::legibleFloor(float textSize)
{
    return qMin(qreal(textSize), qMax(textSize * 2.0 / 3.0, 11.0));
}

// The width of the widest row, per pixel of the font's size, read from the
// layout that painting needs anyway: text widths grow in proportion to the
// size, so one measure serves every height. A row that has turned over
// measures as the one row it is.
void TextField::measureRows()
{
    document()->documentLayout()->documentSize(); // lays out what is pending
    qreal widest = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const QTextLayout *layout = block.layout();
        qreal width = 0;
        for (int i = 0; i < layout->lineCount(); ++i) {
            const QTextLine line = layout->lineAt(i);
            width +=
                i + 1 < layout->lineCount() ? line.horizontalAdvance() : line.naturalTextWidth();
        }
        widest = qMax(widest, width);
    }
    const qreal pixels = fontPixels();
    m_widestPerPixel = pixels > 0 ? widest / pixels : 0;
}

// The style's size where the widest row fits, and never above `atMost`;
// else the size at which it just fits, down to the legible floor, where the
// rows too wide turn over. A follower is drawn no larger than its leader,
// and has no floor: its rows are short, and one that is still too wide is
// drawn smaller whole.
void TextField::fitFont(qreal atMost)
{
    m_fontPending = false;
    TextStyle fitted = m_style;
    bool turn = false;
    const qreal room = rowRoom();
    if (fitted.TextSize > 0 && room > 0) {
        qreal size = qMin(qreal(fitted.TextSize), atMost);
        if (m_leader && m_leader->drawnSize() > 0)
            size = qMin(size, m_leader->drawnSize());
        if (m_widestPerPixel * size > room)
            size = room / m_widestPerPixel;
        const qreal floor = m_leader ? 1.0 : legibleFloor(m_style.TextSize);
        turn = size < floor;
        fitted.TextSize = float(qMax(size, floor));
    }
    // The font reaches the text with the row formats, in the same layout.
    const QFont font = fitted.toFont(logicalDpiY());
    if (font != m_font) {
        m_font = font;
        m_formatPending = true;
    }
    const qreal indent = turn ? qreal(fitted.TextSize) : 0; // an em, as verse is printed
    if (turn != (m_turnIndent > 0))
        setWordWrapMode(turn ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    if (indent != m_turnIndent) {
        m_turnIndent = indent;
        m_formatPending = true;
    }
}

// Glyph widths follow the size only roughly (an ideograph is as wide as the
// size rounded to the pixel), so a row fitted by proportion is checked
// against the field as laid out, and shrunk again where it still overflows.
void TextField::keepRowsWhole()
{
    for (int i = 0; i < 3 && m_turnIndent == 0; ++i) {
        document()->documentLayout()->documentSize(); // lays out what is pending
        qreal widest = 0;
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
            widest = qMax(widest, block.layout()->maximumWidth());
        if (widest <= rowRoom())
            return;
        fitFont(fontPixels() * rowRoom() / widest);
        formatRows();
    }
}

qreal TextField::fontPixels() const { return m_font.pointSizeF() * logicalDpiY() / 72.0; }

QTextCharFormat TextField::charFormat() const
{
    QTextCharFormat format;
    format.setFont(m_font);
    return format;
}

// The width a row may take: the whole field, whether a scroll bar stands in
// it or not, for the scroll bar follows from the size, not the size from it.
qreal TextField::rowRoom() const
{
    return contentsRect().width() - 2 * document()->documentMargin() - 1;
}

void TextField::countRows()
{
    document()->documentLayout()->documentSize(); // lays out what is pending
    QList<int> rows;
    rows.reserve(document()->blockCount());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        block.layout()->setCacheEnabled(true); // painting draws the glyphs just shaped
        rows.append(qMax(1, block.layout()->lineCount()));
    }
    const qreal drawn = fontPixels();
    if (rows == m_visualRows && drawn == m_drawnSize)
        return;
    m_visualRows = rows;
    m_drawnSize = drawn;
    emit rowsChanged();
}

void TextField::followRows(TextField *leader)
{
    m_leader = leader;
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the leader's shows for both
    connect(leader, &TextField::rowsChanged, this, &TextField::leaderRowsChanged);
    QScrollBar *own = verticalScrollBar();
    QScrollBar *theirs = leader->verticalScrollBar();
    connect(theirs, &QScrollBar::valueChanged, own, &QScrollBar::setValue);
    connect(own, &QScrollBar::valueChanged, theirs, &QScrollBar::setValue);
    // Blank rows come and go after the leader has scrolled.
    connect(own, &QScrollBar::rangeChanged, this,
            [own, theirs] { own->setValue(theirs->value()); });
}

void TextField::leaderRowsChanged()
{
    QList<int> blank;
    for (const int rows : m_leader->visualRows())
        blank.append(rows - 1);
    if (std::all_of(blank.cbegin(), blank.cend(), [](int n) { return n == 0; }))
        blank.clear();
    // Not QList's own ==, which hands memcmp a null pointer for an empty list.
    if (!std::ranges::equal(blank, m_blankRows)) {
        m_blankRows = blank;
        m_formatPending = true;
    }
    m_fontPending = true; // the leader's size may have changed
    viewport()->update();
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
    const int rowHeight = qMax(1, usable / PoemRows); // the poem's rows fill the field
    if (event->size().width() != event->oldSize().width())
        m_fontPending = true;
    if (rowHeight == m_rowHeight)
        return;
    m_rowHeight = rowHeight;
    m_formatPending = true;
}

// The rows are shorter than the font's own line spacing, and the toolkit
// highlights a selection at that spacing, over the row above. The field
// paints the highlight itself, one band a row, and lets the layout draw
// the selected text in its colour.
void TextField::paintEvent(QPaintEvent *event)
{
    layOut();
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
    const qreal gap = QFontMetricsF(m_font, this).horizontalAdvance(QLatin1Char(' '));
    for (QTextBlock block = document()->findBlock(start);
         block.isValid() && block.position() <= end; block = block.next()) {
        const QRectF blockRect = layout->blockBoundingRect(block);
        const QTextLayout *text = block.layout();
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
            painter.fillRect(QRectF(QPointF(left, blockRect.top() + i * m_rowHeight),
                                    QPointF(right, blockRect.top() + (i + 1) * m_rowHeight)),
                             palette().brush(QPalette::Highlight));
        }
    }
}

// Row `row`'s format; -1 for what all rows share.
QTextBlockFormat TextField::rowFormat(int row) const
{
    QTextBlockFormat format;
    if (m_rowHeight > 0) // known from the first resize on
        format.setLineHeight(m_rowHeight, QTextBlockFormat::FixedHeight);
    if (m_turnIndent > 0) { // the first visual row at the left edge, the others indented
        format.setLeftMargin(m_turnIndent);
        format.setTextIndent(-m_turnIndent);
    }
    if (row >= 0 && row < m_blankRows.size())
        format.setBottomMargin(m_blankRows[row] * m_rowHeight);
    return format;
}

// Puts the font, row height, indent and blank rows last decided on the
// rows, all in one edit and so in one layout.
void TextField::formatRows()
{
    if (!m_formatPending)
        return;
    m_formatPending = false;
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    const QTextCharFormat format = charFormat();
    cursor.setCharFormat(format);
    cursor.setBlockCharFormat(format);
    if (m_blankRows.isEmpty()) {
        cursor.setBlockFormat(rowFormat(-1));
    } else {
        int row = 0;
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
            cursor.setPosition(block.position());
            cursor.setBlockFormat(rowFormat(row++));
        }
    }
    cursor.endEditBlock();
}

} // namespace verlis
