#include "controls.h"

#include <QAbstractTextDocumentLayout>
#include <QEnterEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

namespace verlis {

namespace {

Qt::Alignment toQt(Listbox::Alignment alignment)
{
    return (alignment == Listbox::Left ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter;
}

} // namespace

Label::Label(int index, QWidget *parent) : QLabel(parent), m_index(index)
{
    setTextFormat(Qt::PlainText);
    setAutoFillBackground(false);
}

void Label::setTextColor(Color color)
{
    m_textColor = color;
    QPalette p = palette();
    p.setColor(QPalette::WindowText, toQColor(color));
    setPalette(p);
}

void Label::setTextStyle(const TextStyle &style)
{
    if (style == m_style)
        return;
    m_style = style;
    setFont(style.toFont(logicalDpiY()));
}

void Label::setSelectable(bool selectable)
{
    setTextInteractionFlags(selectable ? Qt::TextSelectableByMouse : Qt::NoTextInteraction);
}


void Label::mousePressEvent(QMouseEvent *event)
{
    QLabel::mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        emit mouseDown(this, event->modifiers());
}

void Label::enterEvent(QEnterEvent *event)
{
    QLabel::enterEvent(event);
    emit mouseEnter(this);
}

void Label::leaveEvent(QEvent *event)
{
    QLabel::leaveEvent(event);
    emit mouseExit(this);
}

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

bool TextField::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Paint)
        applyPendingText();
    return QTextEdit::viewportEvent(event);
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

Color TextField::TextColor() const { return fromQColor(palette().color(QPalette::Text)); }
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

PagePanel::PagePanel(int pageCount, QWidget *parent) : QStackedWidget(parent)
{
    setFrameShape(QFrame::NoFrame);
    for (int i = 0; i < pageCount; ++i)
        addWidget(new QWidget(this));
}

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

int Listbox::AddRow(const QString &firstCell)
{
    if (m_rowsUsed >= rowCount())
        setRowCount(m_rowsUsed + 1);
    const int row = m_rowsUsed++;
    setCell(row, 0, firstCell);
    return row;
}

void Listbox::reserveRows(int count)
{
    if (m_rowsUsed + count > rowCount())
        setRowCount(m_rowsUsed + count);
}

QString Listbox::Cell(int row, int column) const
{
    const QTableWidgetItem *cell = item(row, column);
    return cell ? cell->text() : QString();
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
