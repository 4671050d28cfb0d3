// A region of many rectangles, covered by a few.
#pragma once

#include <QList>
#include <QRect>

class QRegion;

// At most six rectangles that together cover the region, and not much more. To paint a window rectangle by rectangle costs
// something for each, to paint what did not change costs something for each pixel: close ones are put together. Over 32
// rectangles become a single one around them. Pure functions.
QList<QRect> fewRectangles(const QRegion &region);

// The same for rectangles that may overlap. Each one of them lies within one of the result.
QList<QRect> fewRectangles(QList<QRect> rects);
