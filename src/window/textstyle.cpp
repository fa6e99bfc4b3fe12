#include "textstyle.h"

#include <QApplication>

namespace verlis {

QFont TextStyle::toFont(int logicalDpi) const
{
    QFont font = QApplication::font();
    if (TextFont.compare(QLatin1String("system"), Qt::CaseInsensitive) != 0)
        font.setFamilies({TextFont});
    if (TextSize > 0 && logicalDpi > 0)
        font.setPointSizeF(double(TextSize) * 72.0 / logicalDpi);
    font.setBold(Bold);
    font.setItalic(Italic);
    font.setUnderline(Underline);
    return font;
}

} // namespace verlis
