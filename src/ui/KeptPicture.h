// The picture of a widget that its graphics effect keeps, and brings up to date piece by piece.
#pragma once

#include "ui/WidgetPicture.h"

#include <QPixmap>
#include <QRegion>
#include <QTransform>
#include <functional>

class QGraphicsEffect;
class QPainter;

// An effect that owns one, and is a child of the widget that it is installed on, calls update() in its draw() and then draws
// image() at topLeft(). Its draw() and boundingRectFor() must ask isArming() first. What changed inside the widget is rendered
// anew, and nothing else, as long as
// - the drawing goes to the window, or to the picture that such an effect around this one keeps: only there everything that
//   changed lies within what is being repainted;
// - the ratio of device to logical pixels is whole, so that pieces begin and end on pixels.
// Otherwise the whole picture is rendered anew when something changed. GUI thread.
class KeptPicture
{
public:
    // Calls the effect's sourcePixmap() in device coordinates, padded to the effective bounding rectangle.
    using Arm = std::function<QPixmap()>;

    KeptPicture(QGraphicsEffect *ownEffect, Arm ownArm);

    // While it is true, draw() has to return at once, and boundingRectFor() to return onePixel().
    static bool isArming();
    static QRectF onePixel(const QRectF &rect) { return {rect.topLeft(), QSizeF(1, 1)}; }

    struct Change
    {
        bool isWhole = false; // all is new; else only alphas within `alphas` have changed
        QRegion alphas; // device pixels of the picture
    };

    // `bounds`: of what the effect draws, in the painter's device coordinates (logical pixels).
    Change update(const QPainter &painter, const QRectF &bounds);

    // Tells the effect around this one what changed in the drawing beyond what is being repainted (device pixels of the
    // picture), such as a shadow's rim.
    void reportSpill(const QPainter &painter, const QRegion &changed) const;

    void clear();
    bool isNull() const { return picture.isNull(); }
    const QImage &image() const { return picture.image(); }
    QPoint topLeft() const { return current.bounds.topLeft(); }

    int renderCount() const { return rendered; } // whole or in part
    qint64 renderedPixels() const { return pixels; } // device pixels

private:
    struct Placement // what the picture's geometry depends on
    {
        QTransform transform;
        qreal ratio = 0;
        QRect bounds;
        QRect visiblePart; // of the widget: elsewhere changes are announced to nobody
    };

    QWidget &widget() const;
    bool mayKeep() const;
    bool fits() const;
    void watchForChanges();
    void renderAll(Change &change);
    void renderChanges(const QPainter &painter, Change &change);
    void renderNewlyVisible(Change &change);
    void renderParts(const QRegion &parts, Change &change);
    QPoint widgetOrigin() const; // in the picture, in logical pixels
    QPoint placeIn(const QPainter &painter) const; // of the picture, in device pixels

    QGraphicsEffect *effect;
    Arm arm;
    WidgetPicture picture;
    Placement current;
    Placement kept; // when the picture was last rendered as a whole, but for the visible part
    QPixmap watch; // shared with the toolkit's cache until the widget changes
    int rendered = 0;
    qint64 pixels = 0;
};
