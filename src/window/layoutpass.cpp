#include "layoutpass.h"

#include "poem/composition.h"

namespace verlis {

std::array<RowGeometry, LineCount> labelRowGeometry(qint64 width, qint64 height)
{
    constexpr qint64 pageLeft = 48;
    constexpr qint64 pageWidth = 32;
    constexpr qint64 arrowWidth = 20;
    constexpr qint64 top = 48;
    const qint64 textWidth = width - pageWidth - pageLeft - arrowWidth - arrowWidth - 48;
    // Truncated, never rounded: 420 / 17 = 24.7 gives 24.
    const qint64 rowHeight = qint64(double(height - 2 * top) / PoemRows);
    const qint64 textLeft = pageLeft + pageWidth + 4;
    const qint64 leftArrowLeft = textLeft + textWidth;
    const qint64 rightArrowLeft = leftArrowLeft + arrowWidth;

    std::array<RowGeometry, LineCount> rows;
    qint64 lineTop = top;
    for (int i = 0; i < LineCount; ++i) {
        if (i > 0)
            lineTop += endsStanza(i - 1) ? 2 * rowHeight : rowHeight; // a stanza's gap
        const auto y = int(lineTop);
        const auto h = int(rowHeight);
        rows[i] = {QRect(int(pageLeft), y, int(pageWidth), h),
                   QRect(int(textLeft), y, int(textWidth), h),
                   QRect(int(leftArrowLeft), y, int(arrowWidth), h),
                   QRect(int(rightArrowLeft), y, int(arrowWidth), h)};
    }
    return rows;
}

} // namespace verlis
