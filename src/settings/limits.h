#pragma once

#include <QtGlobal>

namespace verlis {

// The bounds and defaults of the settings, each stated here once.

struct SizeLimits {
    int minWidth, maxWidth, minHeight, maxHeight;
};

// The window's client area, below the menu bar.
inline constexpr SizeLimits WindowLimits{480, 32000, 480, 32000};
// Where and how large the window opens without settings; its controls are
// declared for this size.
inline constexpr int DefaultLeft = 100;
inline constexpr int DefaultTop = 100;
inline constexpr int DefaultWidth = 552;
inline constexpr int DefaultHeight = 516;
// A stored position outside these bounds is no position.
inline constexpr int LowestPosition = -100;
inline constexpr int HighestPosition = 3000;

// The text size of the line labels.
inline constexpr quint8 SmallestTextSize = 1;
inline constexpr quint8 LargestTextSize = 64;
inline constexpr quint8 DefaultTextSize = 11;
// The size "smaller" stops at; smaller sizes come only from a stored record.
inline constexpr quint8 SmallestChosenTextSize = 7;

// The record: fixed fields, and a font name of at most one length byte's worth.
inline constexpr int RecordFixedBytes = 62;
inline constexpr int MaxFontNameBytes = 255;
inline constexpr int MaxRecordBytes = RecordFixedBytes + MaxFontNameBytes;

} // namespace verlis
