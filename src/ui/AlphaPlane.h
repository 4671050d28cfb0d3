// Alphas alone, one byte a pixel: what shadows are made of.
#pragma once

#include <QImage>

// The alphas of a premultiplied ARGB32 picture within `part`, which may reach beyond the picture: 0 there. Indexed8
// without a table.
QImage alphaPlane(const QImage &picture, const QRect &part);

// The same at half the size, rounded down as the toolkit's blur does it.
QImage halfAlphaPlane(const QImage &picture, const QRect &part);

// How a plane is stretched to the picture that it colours: the picture's pixel p shows what lies at
// (p + 0.5 + origin) / scale - 0.5 - planeOrigin in the plane.
struct Stretch
{
    qreal scale = 1;
    int origin = 0;
    int planeOrigin = 0;
};

// A premultiplied ARGB32 picture of `size` in one colour: its alpha times the plane's, scaled bilinearly, within 1 of 255 of
// what the toolkit's smooth scaling gives.
QImage colored(const QImage &plane,
               const QSize &size,
               const Stretch &x,
               const Stretch &y,
               const QColor &color);
