// What of the sidebar does not move: its panel and the grid on it.
#pragma once

#include <QImage>
#include <QSize>

class QPainter;

// Painted once for a size, and then only drawn. GUI thread; holds one picture of the sidebar's size.
class SidebarBackdrop
{
public:
    // Of `size` logical pixels, at `ratio` device pixels each; premultiplied ARGB32.
    const QImage &picture(const QSize &size, qreal ratio);

    // Limits the painter to the panel's inside.
    static void clipToInside(QPainter &painter, const QSize &size);

private:
    void render(const QSize &size, qreal ratio);

    QImage kept;
    QSize keptSize; // logical pixels
};
