// An opacity effect that renders its widget once while it fades.
#pragma once

#include "ui/KeptPicture.h"

#include <QGraphicsOpacityEffect>

// Draws what QGraphicsOpacityEffect draws, and keeps the widget's picture as long as nothing inside the widget changes; the
// stock effect renders the widget anew for every step of a fade. For effects without a mask. Must be a child of the widget
// that it is installed on. GUI thread.
class CachedOpacity : public QGraphicsOpacityEffect
{
    Q_OBJECT

public:
    explicit CachedOpacity(QWidget *widget);

    QRectF boundingRectFor(const QRectF &rect) const override;

    int renderCount() const { return source.renderCount(); } // for tests and benchmarks

protected:
    void draw(QPainter *painter) override;

private:
    KeptPicture source;
};
