#pragma once

#include <QStackedWidget>

namespace verlis {

// The pages of the window; Value is the page showing.
class PagePanel : public QStackedWidget {
    Q_OBJECT
public:
    explicit PagePanel(int pageCount, QWidget *parent = nullptr);
    int Value() const { return currentIndex(); }
    void setValue(int value) { setCurrentIndex(value); }
    QWidget *panelPage(int index) const { return widget(index); }
};

} // namespace verlis
