// Source over target, many pixels at once.
#pragma once

#include <QRgb>

// target[i] = blended(source[i], target[i]) for premultiplied ARGB32, to the last bit, but two pixels at a time. The rows must
// not overlap. Pure, any thread.
void blendPixels(const QRgb *source, QRgb *target, int count);
