#include "ui/BlendPixels.h"

#include "ui/PremultipliedColor.h"

#include <QtGlobal>
#include <cstring>

namespace {

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "a pixel's alpha is its last byte");

// Vectors of the compiler, which has instructions for them on every processor that it builds for.
using Bytes [[gnu::vector_size(8)]] = quint8; // the eight channels of two pixels
using Words [[gnu::vector_size(16)]] = quint16;

Bytes twoPixels(const QRgb *from)
{
    Bytes channels;
    std::memcpy(&channels, from, sizeof channels);
    return channels;
}

// Rounded like multiplied(): none of the sums exceeds 16 bits.
Bytes blendedTwo(Bytes source, Bytes target)
{
    const Words from = __builtin_convertvector(source, Words);
    const Words rest = 255 - __builtin_shufflevector(from, from, 3, 3, 3, 3, 7, 7, 7, 7);
    const Words product = __builtin_convertvector(target, Words) * rest;
    const Words scaled = (product + (product >> 8) + 0x80) >> 8;
    return source + __builtin_convertvector(scaled, Bytes);
}

} // namespace

void blendPixels(const QRgb *source, QRgb *target, int count)
{
    int i = 0;
    for (; i + 2 <= count; i += 2) {
        const Bytes both = blendedTwo(twoPixels(source + i), twoPixels(target + i));
        std::memcpy(target + i, &both, sizeof both);
    }
    if (i < count) {
        target[i] = blended(source[i], target[i]);
    }
}
