// Colours are kept as 24-bit numbers with red in the low byte (255 is red,
// 0xFF0000 blue), the way the data and screens describe them.
#pragma once

#include <QColor>

inline QColor bgrColor(int bgr)
{
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

namespace Bgr {
constexpr int Black = 0x000000;
constexpr int White = 0xFFFFFF;
constexpr int Red = 0x0000FF;
constexpr int Green = 0x008000;
constexpr int BrightGreen = 0x00FF00;
constexpr int Blue = 0xFF0000;
constexpr int Yellow = 0x00FFFF;
} // namespace Bgr
