// A widget's picture without its graphics effect, of which parts can be rendered anew.
#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>

class QWidget;

// Only for use within the draw() of the widget's own effect: there, and only there, the toolkit renders the bare widget.
// GUI thread; holds one picture.
class WidgetPicture
{
public:
    bool isNull() const { return picture.isNull(); }
    void clear() { picture = QImage(); }
    const QImage &image() const { return picture; } // premultiplied ARGB32

    // A picture of `size` device pixels at `ratio` device pixels per logical one, with the widget's top-left corner at
    // `origin` (logical pixels). Keeps its memory if it can.
    void renderAll(QWidget &widget, const QSize &size, qreal ratio, const QPoint &origin);

    // Renders `part` (device pixels; a whole ratio is required) anew. Returns the rectangle in which alphas changed.
    QRect renderPart(QWidget &widget, const QRect &part);

private:
    QImage picture;
    QPoint widgetOrigin;
};
