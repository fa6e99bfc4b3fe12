#include "composition.h"

namespace verlis {

ComposedPoem composePoem(const PoemBook &book, const Selection &selection)
{
    ComposedPoem poem;
    for (int i = 0; i < LineCount; ++i) {
        const int page = selection.whatPage(i);
        poem.pageNumbers[i] = QString::number(page + 1);
        poem.lineTexts[i] = book.Line(page, i);
    }
    for (int i = 0; i < LineCount; ++i) {
        poem.text += poem.lineTexts[i];
        poem.numbers += poem.pageNumbers[i];
        if (i != LineCount - 1) {
            poem.text += RowBreak;
            poem.numbers += RowBreak;
        }
        if (endsStanza(i)) {
            poem.text += RowBreak;
            poem.numbers += RowBreak;
        }
    }
    return poem;
}

} // namespace verlis
