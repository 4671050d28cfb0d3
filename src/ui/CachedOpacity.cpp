#include "ui/CachedOpacity.h"

#include "ui/DrawPicture.h"

#include <QPainter>
#include <QWidget>

CachedOpacity::CachedOpacity(QWidget *widget)
    : QGraphicsOpacityEffect(widget)
    , source(this, [this] {
        return sourcePixmap(Qt::DeviceCoordinates, nullptr, PadToEffectiveBoundingRect);
    })
{ }

QRectF CachedOpacity::boundingRectFor(const QRectF &rect) const
{
    return KeptPicture::isArming() ? KeptPicture::onePixel(rect)
                                   : QGraphicsOpacityEffect::boundingRectFor(rect);
}

void CachedOpacity::draw(QPainter *painter)
{
    if (KeptPicture::isArming() || opacity() <= 0) {
        return;
    }
    const auto *widget = qobject_cast<QWidget *>(parent());
    if (widget == nullptr || opacity() >= 1) {
        drawSource(painter);
        return;
    }
    const QTransform transform = painter->worldTransform();
    source.update(*painter, transform.mapRect(QRectF(widget->rect())));
    const qreal outerOpacity = painter->opacity();
    painter->setOpacity(opacity());
    painter->setWorldTransform(QTransform());
    drawPicture(*painter, source.topLeft(), source.image());
    painter->setWorldTransform(transform);
    painter->setOpacity(outerOpacity);
}
