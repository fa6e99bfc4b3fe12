#include "textstyle.h"

#include <QApplication>

namespace verlis {

QFont TextStyle::toFont() const
{
    QFont font = QApplication::font();
    if (TextFont.compare(QLatin1String("system"), Qt::CaseInsensitive) != 0)
        font.setFamilies({TextFont});
    if (TextSize > 0)
        font.setPointSizeF(TextSize);
    font.setBold(Bold);
    font.setItalic(Italic);
    font.setUnderline(Underline);
    return font;
}

} // namespace verlis
