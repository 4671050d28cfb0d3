// A drop shadow that is computed once and then only drawn.
#pragma once

#include "ui/KeptPicture.h"
#include "ui/ShadowPicture.h"

#include <QGraphicsDropShadowEffect>

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
    // the first, in device pixels. For tests and benchmarks.
    int renderCount() const { return source.renderCount(); }
    int blurCount() const { return blurred; }
    qint64 renderedPixels() const { return source.renderedPixels(); }
    bool holdsPictures() const { return !source.isNull() || !shadow.isNull(); }

protected:
    void draw(QPainter *painter) override;
    void sourceChanged(ChangeFlags flags) override;

private:
    void dropPictures();
    QRegion refreshShadow(const KeptPicture::Change &change); // what is new, in device pixels

    KeptPicture source;
    ShadowPicture shadow;
    int blurred = 0;
};
