#include "ui/CachedShadow.h"

#include "ui/DrawPicture.h"

#include <QEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QWidget>
#include <cmath>

QT_BEGIN_NAMESPACE
// The toolkit's own blur, exported but not declared in a public header; only with it can the pictures be equal.
extern Q_WIDGETS_EXPORT void qt_blurImage(
    QPainter *painter, QImage &image, qreal radius, bool quality, bool alphaOnly, int transposed);
QT_END_NAMESPACE

namespace {

// The source pictures live in the toolkit's pixmap cache as well (see sourceIsCurrent), so they must fit: a window of
// 1100 x 680 takes 12 MB at device pixel ratio 2, and several cards stand inside it.
constexpr int kPixmapCacheKilobytes = 96 * 1024;

bool differByWholePixels(const QTransform &a, const QTransform &b)
{
    const auto whole = [](qreal value) {
        return value == std::floor(value);
    };
    return a.type() <= QTransform::TxTranslate && b.type() <= QTransform::TxTranslate
        && whole(a.dx() - b.dx()) && whole(a.dy() - b.dy());
}

} // namespace

CachedShadow::CachedShadow(QWidget *widget)
    : QGraphicsDropShadowEffect(widget)
{
    widget->installEventFilter(this);
    connect(this, &QGraphicsEffect::enabledChanged, this, &CachedShadow::dropPictures);
    if (QPixmapCache::cacheLimit() < kPixmapCacheKilobytes) {
        QPixmapCache::setCacheLimit(kPixmapCacheKilobytes);
    }
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
    source = QPixmap();
    shadow = QImage();
}

// What happens inside a hidden widget is announced to nobody.
bool CachedShadow::mayKeepPictures() const
{
    const auto *widget = qobject_cast<QWidget *>(parent());
    return widget != nullptr && widget->graphicsEffect() == this && widget->isVisible();
}

void CachedShadow::draw(QPainter *painter)
{
    if (blurRadius() <= 0 && offset().isNull()) {
        drawSource(painter);
        return;
    }
    const QTransform transform = painter->worldTransform();
    const qreal ratio = painter->device()->devicePixelRatio();
    if (!sourceIsCurrent(transform, ratio)) {
        renderSource(transform, ratio);
    }
    if (source.isNull()) {
        return;
    }
    if (shadow.isNull() || recipe != wantedRecipe()) {
        renderShadow();
    }
    const QPoint moved(qRound(transform.dx() - sourceTransform.dx()),
                       qRound(transform.dy() - sourceTransform.dy()));
    painter->setWorldTransform(QTransform());
    drawPicture(*painter, sourceOffset + moved, shadow);
    drawPicture(*painter, sourceOffset + moved, source.toImage()); // the same memory, not a copy
    painter->setWorldTransform(transform);
}

CachedShadow::ShadowRecipe CachedShadow::wantedRecipe() const
{
    return {blurRadius(), offset(), color()};
}

// A changed widget is not announced to its effect. But the toolkit puts the picture that sourcePixmap() returns into its
// pixmap cache, and takes it out as soon as the widget, or anything inside it, asks for a repaint. While both hold the
// picture it is shared; once ours is the only reference, the widget has changed. (Being thrown out for lack of room
// looks the same, and costs one rendering.)
bool CachedShadow::sourceIsCurrent(const QTransform &transform, qreal ratio) const
{
    return mayKeepPictures() && !source.isNull() && !source.isDetached() && ratio == sourceRatio
        && differByWholePixels(transform, sourceTransform) && recipe.blurRadius == blurRadius()
        && recipe.offset == offset();
}

void CachedShadow::renderSource(const QTransform &transform, qreal ratio)
{
    dropPictures(); // lets the old ones go before the new ones are made
    // Rendered in device coordinates, so that nothing is scaled, and with room for the shadow around it.
    source = sourcePixmap(Qt::DeviceCoordinates, &sourceOffset, PadToEffectiveBoundingRect);
    sourceTransform = transform;
    sourceRatio = ratio;
    ++rendered;
}

void CachedShadow::renderShadow()
{
    recipe = wantedRecipe();
    QImage silhouette(source.size(), QImage::Format_ARGB32_Premultiplied);
    silhouette.setDevicePixelRatio(source.devicePixelRatio());
    silhouette.fill(0);
    QPainter painter(&silhouette);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawPixmap(recipe.offset, source);
    painter.end();

    shadow = QImage(source.size(), QImage::Format_ARGB32_Premultiplied);
    shadow.setDevicePixelRatio(source.devicePixelRatio());
    shadow.fill(0);
    painter.begin(&shadow);
    qt_blurImage(&painter, silhouette, recipe.blurRadius, false, true, 0);
    painter.end();

    painter.begin(&shadow);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(shadow.rect(), recipe.color);
    painter.end();
    ++blurred;
}
