// Source over target, many pixels at once.
#pragma once

#include <QRgb>

// target[i] = blended(source[i], target[i]) for premultiplied ARGB32, to the last bit; four pixels at a time where the
// processor has SSE2, as each one with 64 bits by Intel and AMD has. The rows must not overlap. Pure, any thread.
void blendPixels(const QRgb *source, QRgb *target, int count);
