#include "ui/ShadowPicture.h"

#include "ui/AlphaPlane.h"
#include "ui/FewRectangles.h"

#include <QPainter>
#include <QtWidgets/qtwidgetsglobal.h>
#include <cmath>

QT_BEGIN_NAMESPACE
// The toolkit's own blur, exported but not declared in a public header; only with it can the pictures be equal.
extern Q_WIDGETS_EXPORT void qt_blurImage(
    QPainter *painter, QImage &image, qreal radius, bool quality, bool alphaOnly, int transposed);
extern Q_WIDGETS_EXPORT void
qt_blurImage(QImage &image, qreal radius, bool quality, int transposed);
QT_END_NAMESPACE

namespace {

// The tail of the blur falls by 255 / 2 per radius: two radii away it is a sixtieth of a step of 255, enough to tip a rounding
// over and no more. Four pixels are for the scaling.
int reachOf(qreal blurRadius)
{
    return static_cast<int>(std::ceil(2 * blurRadius)) + 4;
}

// From this radius on the toolkit blurs a picture of half the size.
constexpr qreal kSmallestHalved = 4;

// Parts begin and end on multiples of this, so that half their size is whole at each whole ratio up to 4.
constexpr int kGrain = 8;

QRect onGrain(const QRect &rect)
{
    const auto down = [](int value) {
        return value - ((value % kGrain) + kGrain) % kGrain;
    };
    const QPoint from(down(rect.left()), down(rect.top()));
    return {from, QPoint(down(rect.right()) + kGrain - 1, down(rect.bottom()) + kGrain - 1)};
}

QRect grown(const QRect &rect, int by)
{
    return rect.adjusted(-by, -by, by, by);
}

// How many pixels of the shadow one pixel of the blurred picture spans, which is `shrink` times smaller. The toolkit rounds
// the blurred picture's extent to whole logical pixels, and stretches it accordingly.
qreal stretch(int length, int shrink, qreal ratio)
{
    const int count = length / shrink;
    return shrink * std::round(count / ratio) * ratio / count;
}

} // namespace

void ShadowPicture::make(const QImage &source, const ShadowRecipe &recipe)
{
    made = recipe;
    shadow = blurred(source, QRect(QPoint(), source.size()));
}

// What is close together is made together: around each part, as much again has to be blurred and is thrown away.
QRegion ShadowPicture::refresh(const QImage &source, const QRegion &changed)
{
    const int margin = 2 * (reachOf(made.blurRadius) + 1);
    QList<QRect> needed;
    for (const QRect &part : changed) {
        needed.append(grown(part, margin));
    }
    QRegion refreshed;
    for (const QRect &part : fewRectangles(needed)) {
        refreshed += refreshPart(source, grown(part, -margin));
    }
    return refreshed;
}

QRect ShadowPicture::refreshPart(const QImage &source, const QRect &changed)
{
    const QRect whole(QPoint(), source.size());
    const QPoint moved = (made.offset * source.devicePixelRatio()).toPoint();
    const int reach = reachOf(made.blurRadius) + 1; // the offset was rounded
    const QRect target = onGrain(grown(changed.translated(moved), reach)) & whole;
    const QRect needed = onGrain(grown(target, reach)) & whole;
    if (target.isEmpty()) {
        return {};
    }
    const QImage part = blurred(source, needed);
    QPainter painter(&shadow);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const qreal ratio = source.devicePixelRatio();
    painter.scale(1 / ratio, 1 / ratio);
    QImage pixels = part;
    pixels.setDevicePixelRatio(1);
    painter.drawImage(target.topLeft(), pixels, target.translated(-needed.topLeft()));
    return target;
}

// The source where its shadow falls, as the toolkit rounds offsets that are not whole.
QImage ShadowPicture::shifted(const QImage &source, const QRect &part) const
{
    QImage result(part.size(), QImage::Format_ARGB32_Premultiplied);
    result.setDevicePixelRatio(source.devicePixelRatio());
    result.fill(0);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.translate(-QPointF(part.topLeft()) / source.devicePixelRatio());
    painter.drawImage(made.offset, source);
    return result;
}

QImage ShadowPicture::blurred(const QImage &source, const QRect &part) const
{
    const qreal ratio = source.devicePixelRatio();
    const bool isUsual = made.blurRadius >= kSmallestHalved && ratio == std::floor(ratio)
        && part.width() >= 2 && part.height() >= 2;
    QImage result = isUsual ? blurredPlane(source, part) : blurredByToolkit(source, part);
    result.setDevicePixelRatio(ratio);
    return result;
}

QImage ShadowPicture::blurredPlane(const QImage &source, const QRect &part) const
{
    const qreal ratio = source.devicePixelRatio();
    const QPointF moved = made.offset * ratio;
    QImage plane = moved == moved.toPoint()
        ? halfAlphaPlane(source, part.translated(-moved.toPoint()))
        : halfAlphaPlane(shifted(source, part), QRect(QPoint(), part.size()));
    qt_blurImage(plane, made.blurRadius / 2, false, 0);
    const Stretch x{stretch(source.width(), 2, ratio), part.left(), part.left() / 2};
    const Stretch y{stretch(source.height(), 2, ratio), part.top(), part.top() / 2};
    return colored(plane, part.size(), x, y, made.color);
}

QImage ShadowPicture::blurredByToolkit(const QImage &source, const QRect &part) const
{
    QImage silhouette = shifted(source, part);
    silhouette.setDevicePixelRatio(1);
    qt_blurImage(nullptr, silhouette, made.blurRadius, false, true, 0);
    const int shrink = silhouette.size() == part.size() ? 1 : 2;
    const qreal x = stretch(source.width(), shrink, source.devicePixelRatio());
    const qreal y = stretch(source.height(), shrink, source.devicePixelRatio());
    QImage result(part.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(0);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(part.left() * (x / shrink - 1), part.top() * (y / shrink - 1));
    painter.scale(x, y);
    painter.drawImage(QPoint(), silhouette);
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), made.color);
    return result;
}
