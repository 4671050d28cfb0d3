#include "ui/DrawPicture.h"

#include "ui/BlendPixels.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QRegion>
#include <optional>

namespace {

constexpr int kManyRectangles = 32;

// Where the picture's top-left corner comes to lie in the pixels behind the painter; null when it does not lie on one, or is
// scaled.
std::optional<QPoint>
placeOf(const QPainter &painter, const QPoint &position, const QImage &picture)
{
    const QTransform &transform = painter.deviceTransform();
    const qreal ratio = picture.devicePixelRatio();
    if (transform.type() > QTransform::TxScale || transform.m11() != ratio
        || transform.m22() != ratio) {
        return std::nullopt;
    }
    const QPointF place = transform.map(QPointF(position));
    return place == place.toPoint() ? std::optional(place.toPoint()) : std::nullopt;
}

// The memory behind the painter, if it can be written to here.
QImage *memoryOf(const QPainter &painter)
{
    auto *device = painter.paintEngine()->paintDevice();
    if (device == nullptr || device->devType() != QInternal::Image || painter.hasClipping()
        || painter.opacity() != 1.0
        || painter.compositionMode() != QPainter::CompositionMode_SourceOver) {
        return nullptr;
    }
    auto *image = static_cast<QImage *>(device);
    return image->format() == QImage::Format_ARGB32_Premultiplied && image->isDetached() ? image
                                                                                         : nullptr;
}

void blendRectangle(QImage &target, const QRect &rect, const QPoint &place, const QImage &picture)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        auto *to = reinterpret_cast<QRgb *>(target.scanLine(y)) + rect.left();
        const auto *from = reinterpret_cast<const QRgb *>(picture.constScanLine(y - place.y()))
            + rect.left() - place.x();
        blendPixels(from, to, rect.width());
    }
}

bool drawIntoMemory(const QPainter &painter,
                    const QPoint &place,
                    const QImage &picture,
                    const QRegion &region)
{
    QImage *target = memoryOf(painter);
    if (target == nullptr) {
        return false;
    }
    const QRect bounds = QRect(place, picture.size()) & target->rect();
    for (const QRect &rect : region) {
        blendRectangle(*target, rect & bounds, place, picture);
    }
    return true;
}

void drawByRectangles(QPainter &painter,
                      const QPoint &position,
                      const QImage &picture,
                      const QRegion &region)
{
    const QTransform toLogical = painter.deviceTransform().inverted();
    for (const QRect &rect : region) {
        painter.setClipRect(toLogical.mapRect(QRectF(rect)));
        painter.drawImage(position, picture);
    }
    painter.setClipping(false);
}

} // namespace

void drawPicture(QPainter &painter, const QPoint &position, const QImage &picture)
{
    const QRegion region = painter.paintEngine()->systemClip();
    const auto place = placeOf(painter, position, picture);
    const bool isApart = place && region.rectCount() > 1 && !painter.hasClipping();
    if (isApart && region.rectCount() < kManyRectangles) {
        drawByRectangles(painter, position, picture, region);
    } else if (!isApart || !drawIntoMemory(painter, *place, picture, region)) {
        painter.drawImage(position, picture);
    }
}
