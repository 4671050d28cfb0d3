#include "ui/ShadowPicture.h"

#include <QPainter>
#include <QtWidgets/qtwidgetsglobal.h>
#include <cmath>

QT_BEGIN_NAMESPACE
// The toolkit's own blur, exported but not declared in a public header; only with it can the pictures be equal. A radius of
// 4 or more leaves an image of half the size.
extern Q_WIDGETS_EXPORT void qt_blurImage(
    QPainter *painter, QImage &image, qreal radius, bool quality, bool alphaOnly, int transposed);
QT_END_NAMESPACE

namespace {

// The tail of the blur falls by 255 / 2 per radius: two radii away it is a sixtieth of a step of 255, enough to tip a rounding
// over and no more. Four pixels are for the scaling.
int reachOf(qreal blurRadius)
{
    return static_cast<int>(std::ceil(2 * blurRadius)) + 4;
}

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

QRect ShadowPicture::refresh(const QImage &source, const QRect &changed)
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

QImage ShadowPicture::blurred(const QImage &source, const QRect &part) const
{
    const qreal ratio = source.devicePixelRatio();
    QImage silhouette(part.size(), QImage::Format_ARGB32_Premultiplied);
    silhouette.setDevicePixelRatio(ratio);
    silhouette.fill(0);
    QPainter painter(&silhouette);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.translate(-QPointF(part.topLeft()) / ratio);
    painter.drawImage(made.offset, source);
    painter.end();
    silhouette.setDevicePixelRatio(1);
    qt_blurImage(nullptr, silhouette, made.blurRadius, false, true, 0);

    QImage result(part.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(0);
    painter.begin(&result);
    const int shrink = silhouette.size() == part.size() ? 1 : 2;
    const qreal x = stretch(source.width(), shrink, ratio);
    const qreal y = stretch(source.height(), shrink, ratio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(part.left() * (x / shrink - 1), part.top() * (y / shrink - 1));
    painter.scale(x, y);
    painter.drawImage(QPoint(), silhouette);
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), made.color);
    painter.end();
    result.setDevicePixelRatio(ratio);
    return result;
}
