#include "pagepanel.h"

namespace verlis {

PagePanel::PagePanel(int pageCount, QWidget *parent) : QStackedWidget(parent)
{
    setFrameShape(QFrame::NoFrame);
    for (int i = 0; i < pageCount; ++i)
        addWidget(new QWidget(this));
}

} // namespace verlis
