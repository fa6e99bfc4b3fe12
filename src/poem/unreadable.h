#pragma once

#include <QString>

#include <algorithm>

namespace verlis {

// What stands where bytes read as nothing (the decoders' U+FFFD and U+001A),
// and the control characters, C0 and C1, that have no place in a line.
inline bool isUnreadable(char16_t c)
{
    return c == 0xFFFD || (c < 0x20 && c != '\t') || (c >= 0x7F && c <= 0x9F);
}

// Whether a decoded line shows any of them: its reading is wrong somewhere.
inline bool hasUnreadable(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return isUnreadable(c.unicode()); });
}

} // namespace verlis
