#include "ui/CachedShadow.h"

#include "ui/DrawPicture.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>

CachedShadow::CachedShadow(QWidget *widget)
    : QGraphicsDropShadowEffect(widget)
    , source(this, [this] {
        return sourcePixmap(Qt::DeviceCoordinates, nullptr, PadToEffectiveBoundingRect);
    })
{
    widget->installEventFilter(this);
    connect(this, &QGraphicsEffect::enabledChanged, this, &CachedShadow::dropPictures);
}

QRectF CachedShadow::boundingRectFor(const QRectF &rect) const
{
    return KeptPicture::isArming() ? KeptPicture::onePixel(rect)
                                   : QGraphicsDropShadowEffect::boundingRectFor(rect);
}

void CachedShadow::sourceChanged(ChangeFlags flags)
{
    dropPictures();
    QGraphicsDropShadowEffect::sourceChanged(flags);
}

bool CachedShadow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide) {
        dropPictures();
    }
    return QGraphicsDropShadowEffect::eventFilter(watched, event);
}

void CachedShadow::dropPictures()
{
    source.clear();
    shadow.clear();
}

void CachedShadow::draw(QPainter *painter)
{
    if (KeptPicture::isArming()) {
        return;
    }
    const auto *widget = qobject_cast<QWidget *>(parent());
    if (widget == nullptr || (blurRadius() <= 0 && offset().isNull())) {
        drawSource(painter);
        return;
    }
    const QTransform transform = painter->worldTransform();
    const QRectF bounds = boundingRectFor(transform.mapRect(QRectF(widget->rect())));
    source.reportSpill(*painter, refreshShadow(source.update(*painter, bounds)));
    painter->setWorldTransform(QTransform());
    drawPicture(*painter, source.topLeft(), shadow.image());
    drawPicture(*painter, source.topLeft(), source.image());
    painter->setWorldTransform(transform);
}

QRegion CachedShadow::refreshShadow(const KeptPicture::Change &change)
{
    const ShadowRecipe wanted{blurRadius(), offset(), color()};
    if (change.isWhole || shadow.isNull() || shadow.recipe() != wanted) {
        shadow.make(source.image(), wanted);
        ++blurred;
        return shadow.image().rect();
    }
    QRegion made = shadow.refresh(source.image(), change.alphas);
    blurred += made.isEmpty() ? 0 : 1;
    return made;
}
