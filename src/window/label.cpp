#include "label.h"

#include <QEnterEvent>
#include <QMouseEvent>

namespace verlis {

Label::Label(int index, QWidget *parent) : QLabel(parent), m_index(index)
{
    setTextFormat(Qt::PlainText);
    setAutoFillBackground(false);
}

void Label::setTextColor(Color color)
{
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

} // namespace verlis
