#pragma once

#include "settings/color.h"
#include "textstyle.h"

#include <QLabel>

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
    TextStyle m_style;
};

} // namespace verlis
