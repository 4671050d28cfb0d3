// How well text can be read: the contrast ratio of two opaque colours, 1 to 21, from their relative luminance.
#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

namespace testcolor {

inline double luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

inline double contrast(const QColor &a, const QColor &b)
{
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

} // namespace testcolor
