#pragma once

#include <QStackedWidget>

namespace verlis {

// The pages of the window's panel, as against the pages of the Poem book.
enum PanelPage { ImportPage = 0, LabelPage = 1, ReadingPage = 2 };

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
