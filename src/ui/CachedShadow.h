// A drop shadow that is computed once and then only drawn.
#pragma once

#include "ui/ShadowPicture.h"
#include "ui/WidgetPicture.h"

#include <QGraphicsDropShadowEffect>
#include <QPixmap>
#include <QTransform>

// Draws what QGraphicsDropShadowEffect draws, at most 1 of 255 off in any channel, and keeps the finished pictures (the
// widget's own and its shadow). When something inside the widget changes, only that part is rendered and blurred anew. The
// stock effect renders the whole widget and blurs its whole shadow on every single draw, even when only something behind the
// widget moved.
//
// Must be a child of the widget that it is installed on; otherwise, and while the widget is hidden, nothing is kept.
// Memory: two pictures of the widget's size plus its shadow's rim, only while the widget is visible and the effect
// enabled. GUI thread.
class CachedShadow : public QGraphicsDropShadowEffect
{
    Q_OBJECT

public:
    explicit CachedShadow(QWidget *widget);

    QRectF boundingRectFor(const QRectF &rect) const override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    // How often the widget, or a part of it, has been rendered, and its shadow blurred, since construction; and how much of
    // that, in device pixels. For tests and benchmarks.
    int renderCount() const { return rendered; }
    int blurCount() const { return blurred; }
    qint64 renderedPixels() const { return pixelsRendered; }
    bool holdsPictures() const { return !source.isNull() || !shadow.isNull(); }

protected:
    void draw(QPainter *painter) override;
    void sourceChanged(ChangeFlags flags) override;

private:
    struct Placement // what the pictures' geometry depends on
    {
        QTransform transform;
        qreal ratio = 0;
        QRect bounds; // of the shadow and the widget, in the painter's coordinates
        QRect visiblePart; // of the widget: elsewhere changes are announced to nobody
    };

    QWidget *shadowedWidget() const;
    ShadowRecipe wantedRecipe() const;
    Placement placementFor(const QPainter &painter) const;
    bool mayKeepPictures() const;
    bool fits(const Placement &now) const;
    void dropPictures();
    void watchForChanges();
    void renderSource(const Placement &now);
    void renderChanges(const QPainter &painter, const Placement &now);
    void renderNewlyVisible(const Placement &now);
    void refresh(const QRect &part);
    QRect refreshShadow();
    void bringUpToDate(const QPainter &painter, const Placement &now);
    static QPoint originOf(const Placement &now); // of the widget in its picture, in logical pixels
    static QPoint placeOf(const QPainter &painter,
                          const Placement &now); // of the pictures, in device pixels

    WidgetPicture source;
    ShadowPicture shadow;
    QRect staleShadow; // in device pixels of the source
    Placement kept; // of both pictures
    QPixmap watch; // shared with the toolkit's cache until the widget changes
    int rendered = 0;
    int blurred = 0;
    qint64 pixelsRendered = 0;
};
