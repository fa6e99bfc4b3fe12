#pragma once

#include <QFont>
#include <QString>

namespace verlis {

// Font, size and styles of a whole control. Size 0 is the platform's
// default size; "system" and "System" name the platform's default font.
struct TextStyle {
    QString TextFont = QStringLiteral("System");
    float TextSize = 0; // logical pixels: the height of the font's em
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;

    // The font for a device of `logicalDpi` dots per inch. The toolkit sizes
    // fractional fonts in points only, so the pixel size is converted at
    // the device's own resolution and reaches the screen unchanged.
    QFont toFont(int logicalDpi) const;
    bool operator==(const TextStyle &) const = default;
};

} // namespace verlis
