#pragma once

#include <QColor>
#include <QtGlobal>

namespace verlis {

// One colour as 0xRRGGBB. Two colours are equal when the 32 bits are equal.
using Color = quint32;

// Hue, saturation and value are doubles in 0 to 1; a grey has hue 0.
// HSV of the three read functions gives the same colour back, exactly.
Color HSV(double hue, double saturation, double value, int alpha = 0);
double readColorHue(Color color);
double readColorSaturation(Color color);
double readColorValue(Color color);

inline QColor toQColor(Color color) { return QColor::fromRgb(QRgb(0xFF000000u | color)); }
inline Color fromQColor(const QColor &color) { return Color(color.rgb() & 0xFFFFFFu); }

} // namespace verlis
