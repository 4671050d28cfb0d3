// Arithmetic with premultiplied ARGB32 colours, rounded as the toolkit does it.
#pragma once

#include <QRgb>

// All four channels times alpha / 255; two at a time.
inline QRgb multiplied(QRgb color, unsigned alpha)
{
    constexpr unsigned kPairs = 0x00ff00ff;
    constexpr unsigned kHalves = 0x00800080;
    unsigned low = (color & kPairs) * alpha;
    low = ((low + ((low >> 8) & kPairs) + kHalves) >> 8) & kPairs;
    unsigned high = ((color >> 8) & kPairs) * alpha;
    high = (high + ((high >> 8) & kPairs) + kHalves) & ~kPairs;
    return high | low;
}

inline QRgb blended(QRgb source, QRgb target)
{
    return source + multiplied(target, 255U - (source >> 24));
}
