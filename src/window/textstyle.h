#pragma once

#include <QFont>
#include <QString>

namespace verlis {

// Font, size and styles of a whole control. Size 0 is the platform's
// default size; "system" and "System" name the platform's default font.
struct TextStyle {
    QString TextFont = QStringLiteral("System");
    float TextSize = 0;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;

    QFont toFont() const;
    bool operator==(const TextStyle &) const = default;
};

} // namespace verlis
