// How far two pictures are apart.
#pragma once

#include <QImage>
#include <algorithm>
#include <cstdlib>

// The largest difference in any channel, alpha included, of premultiplied colours: 0 to 255; 256 if the sizes differ.
inline int largestDifference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size()) {
        return 256;
    }
    const QImage a = one.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage b = other.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        const uchar *left = a.constScanLine(y);
        const uchar *right = b.constScanLine(y);
        for (int i = 0; i < 4 * a.width(); ++i) {
            largest = std::max(largest, std::abs(left[i] - right[i]));
        }
    }
    return largest;
}
