#include "textfield.h"

#include "poem/composition.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextCursor>
#include <QTextLayout>

#include <algorithm>
#include <numeric>

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
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // until the rows don't fit at the floor
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
    m_textPending = m_measurePending = true;
    viewport()->update();
}

void TextField::layOut()
{
    if (m_leader)
        m_leader->layOut(); // its size and rows first: this field follows them
    if (!m_textPending && !m_measurePending && !m_fitPending && !m_formatPending)
        return;
    if (m_measurePending)
        measureRows();
    if (m_fitPending)
        fitRows();
    if (m_textPending)
        insertText();
    formatRows();
    keepRowsWhole();
    countRows();
    // The field scrolls only where its rows don't fit even at the floor. The
    // scroll bar, once it shows, narrows the rows: left to itself it could
    // stay for rows that fit without it.
    const auto policy = qint64(laidOutRows()) * m_rowHeight > rowsRoom() ? Qt::ScrollBarAsNeeded
                                                                         : Qt::ScrollBarAlwaysOff;
    if (!m_leader && policy != verticalScrollBarPolicy())
        setVerticalScrollBarPolicy(policy);
}

// One edit, one layout: the rows take their height and font as the text goes in.
void TextField::insertText()
{
    m_textPending = false;
    QStringList rows = m_text.split(RowBreak);
    for (QString &row : rows)
        row = shownRow(row);
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    cursor.setBlockFormat(rowFormat(-1));
    cursor.setBlockCharFormat(charFormat());
    cursor.insertText(rows.join(QLatin1Char('\n')), charFormat());
    cursor.endEditBlock();
    m_formatPending = !m_blankRows.isEmpty();
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
    // Measured at the style's own size, as glyphs are not quite in proportion to it.
    if (!sameFace || style.TextSize != m_style.TextSize)
        m_measurePending = true;
    m_style = style;
    m_fitPending = true;
    viewport()->update();
}

// Each row's characters as the reader sees them, with the places where the
// row may turn over, at the style's font, scaled to a font of 1 pixel: text
// widths grow about in proportion to the size, so one measure serves every
// size the fitting tries. The font is the one the text is mostly drawn at,
// so the glyphs measured are those the layout shapes next.
void TextField::measureRows()
{
    m_measurePending = false;
    const QFont font = m_style.toFont(logicalDpiY());
    const QFontMetricsF metrics(font, this);
    const qreal pixels = font.pointSizeF() * logicalDpiY() / 72.0;
    m_measured.clear();
    if (pixels <= 0)
        return;
    for (const QString &text : m_text.split(RowBreak)) {
        const QString row = shownRow(text);
        MeasuredRow pieces;
        QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, row);
        QTextBoundaryFinder turns(QTextBoundaryFinder::Line, row);
        for (qsizetype from = 0, to = 0; from < row.size(); from = to) {
            to = characters.toNextBoundary();
            const QString piece = row.sliced(from, to - from);
            const qreal width = piece.size() == 1 ? metrics.horizontalAdvance(piece.front())
                                                  : metrics.horizontalAdvance(piece);
            turns.setPosition(to);
            pieces.append(
                {width / pixels, to < row.size() && turns.isAtBoundary(), piece.front().isSpace()});
        }
        m_measured.append(pieces);
    }
}

static qreal widthOf(const MeasuredRow &row)
{
    return std::accumulate(row.cbegin(), row.cend(), 0.0,
                           [](qreal sum, const RowPiece &piece) { return sum + piece.width; });
}

// The rows as measured, each as much wider as the layout has found it.
QList<MeasuredRow> TextField::scaledRows() const
{
    QList<MeasuredRow> rows = m_measured;
    for (qsizetype row = 0; row < rows.size() && row < m_rowScales.size(); ++row)
        for (RowPiece &piece : rows[row])
            piece.width *= m_rowScales[row];
    return rows;
}

// The size, row spacing and indent at which all rows fit the field. A
// follower is drawn no larger than its leader, on its leader's rows, and has
// no floor: its rows are short, and one that is too wide is drawn smaller
// whole. `afresh` forgets what the last layout taught of the widths.
void TextField::fitRows(bool afresh)
{
    m_fitPending = false;
    if (afresh)
        m_rowScales.clear();
    const QList<MeasuredRow> rows = m_rowScales.isEmpty() ? m_measured : scaledRows();
    if (!m_leader) {
        const PoemFit fit =
            fitPoem(rows, QSizeF(rowRoom(), rowsRoom()), m_style.TextSize, m_fullRowHeight);
        applyFit(fit.size, fit.rowHeight,
                 std::ranges::any_of(fit.visualRows, [](int n) { return n > 1; }));
        return;
    }
    qreal size = m_style.TextSize;
    if (m_leader->drawnSize() > 0)
        size = qMin(size, m_leader->drawnSize());
    qreal widest = 0;
    for (const MeasuredRow &row : rows)
        widest = qMax(widest, widthOf(row));
    if (rowRoom() > 0 && widest * size > rowRoom())
        size = rowRoom() / widest;
    applyFit(size, m_leader->rowHeight() > 0 ? m_leader->rowHeight() : m_fullRowHeight, false);
}

void TextField::applyFit(qreal size, int rowHeight, bool turn)
{
    TextStyle fitted = m_style;
    if (size > 0)
        fitted.TextSize = float(size);
    // The font reaches the text with the row formats, in the same layout.
    const QFont font = fitted.toFont(logicalDpiY());
    const qreal indent = turn ? qreal(fitted.TextSize) : 0; // an em, as verse is printed
    if (turn != (m_turnIndent > 0))
        setWordWrapMode(turn ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    if (font != m_font || rowHeight != m_rowHeight || indent != m_turnIndent)
        m_formatPending = true;
    m_font = font;
    m_rowHeight = rowHeight;
    m_turnIndent = indent;
}

// Whether the rows as laid out stand whole in the field: none cut at the
// right, and all within its height unless the floor made it scroll.
bool TextField::fitsAsLaidOut() const
{
    if (m_turnIndent > 0)
        return qint64(laidOutRows()) * m_rowHeight <= rowsRoom() ||
               fontPixels() <= qMin(qreal(m_style.TextSize), LegibleFloor) + 0.01;
    qreal widest = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        widest = qMax(widest, block.layout()->maximumWidth());
    return widest <= rowRoom();
}

int TextField::laidOutRows() const
{
    int rows = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        rows += qMax(1, block.layout()->lineCount());
    return rows;
}

// Glyph widths follow the size only roughly (advances are rounded to the
// pixel at some sizes, an ideograph's to the size rounded), so the rows
// fitted by measure are checked as laid out, and where they don't stand
// whole, fitted again with each row as wide as it is shaped at the drawn size.
void TextField::keepRowsWhole()
{
    for (int i = 0; i < 4; ++i) {
        document()->documentLayout()->documentSize(); // lays out what is pending
        if (fitsAsLaidOut())
            return;
        const QFontMetricsF metrics(m_font, this);
        const QStringList rows = m_text.split(RowBreak);
        m_rowScales.resize(m_measured.size(), 1.0);
        for (qsizetype row = 0; row < m_measured.size() && row < rows.size(); ++row) {
            const qreal measured = widthOf(m_measured[row]) * fontPixels();
            // A little more than found: advances rounded to the pixel stay
            // as they are over a range of sizes, while the measure shrinks.
            if (measured > 0)
                m_rowScales[row] = qMax(m_rowScales[row],
                                        metrics.horizontalAdvance(shownRow(rows[row])) / measured) *
                                   1.01;
        }
        fitRows(false);
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

// The height the rows may take.
int TextField::rowsRoom() const
{
    return contentsRect().height() - 2 * int(document()->documentMargin());
}

void TextField::countRows()
{
    QList<int> rows;
    rows.reserve(document()->blockCount());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        block.layout()->setCacheEnabled(true); // painting draws the glyphs just shaped
        rows.append(qMax(1, block.layout()->lineCount()));
    }
    const qreal drawn = fontPixels();
    if (rows == m_visualRows && drawn == m_drawnSize && m_rowHeight == m_countedRowHeight)
        return;
    m_visualRows = rows;
    m_drawnSize = drawn;
    m_countedRowHeight = m_rowHeight;
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
    m_fitPending = true; // the leader's size and spacing may have changed
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
    m_fullRowHeight = qMax(1, rowsRoom() / PoemRows); // the poem's rows fill the field
    m_fitPending = true;
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
    if (m_rowHeight > 0) // known from the first fit on
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
