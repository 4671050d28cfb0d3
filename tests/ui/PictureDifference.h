// How far two pictures are apart.
#pragma once

#include <QImage>
#include <algorithm>
#include <cstdlib>

struct PictureDifference
{
    int largest =
        0; // in any channel, alpha included, of premultiplied colours: 0 to 255; 256 if the sizes differ
    int visible = 0; // pixels that differ by more than 1
};

inline PictureDifference differenceOf(const QImage &one, const QImage &other)
{
    PictureDifference result;
    if (one.size() != other.size()) {
        result.largest = 256;
        return result;
    }
    const QImage a = one.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage b = other.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < a.height(); ++y) {
        const uchar *left = a.constScanLine(y);
        const uchar *right = b.constScanLine(y);
        for (int x = 0; x < 4 * a.width(); x += 4) {
            int pixel = 0;
            for (int channel = x; channel < x + 4; ++channel) {
                pixel = std::max(pixel, std::abs(left[channel] - right[channel]));
            }
            result.largest = std::max(result.largest, pixel);
            result.visible += pixel > 1 ? 1 : 0;
        }
    }
    return result;
}

inline int largestDifference(const QImage &one, const QImage &other)
{
    return differenceOf(one, other).largest;
}
