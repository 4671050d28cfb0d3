#include "ui/WidgetPicture.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {

QRect toLogical(const QRect &rect, int ratio)
{
    return {QPoint(rect.left() / ratio, rect.top() / ratio),
            QPoint(rect.right() / ratio, rect.bottom() / ratio)};
}

QRect toDevice(const QRect &rect, int ratio)
{
    return {rect.topLeft() * ratio, rect.size() * ratio};
}

const QRgb *pixels(const QImage &image, int x, int y)
{
    return reinterpret_cast<const QRgb *>(image.constScanLine(y)) + x;
}

bool sameAlpha(QRgb a, QRgb b)
{
    return ((a ^ b) & 0xff000000U) == 0;
}

// The columns, from the first to behind the last, in which two rows have different alphas.
std::pair<int, int> changedColumns(const QRgb *before, const QRgb *after, int count)
{
    const auto from = std::mismatch(before, before + count, after, sameAlpha).first - before;
    auto to = count;
    while (to > from && sameAlpha(before[to - 1], after[to - 1])) {
        --to;
    }
    return {static_cast<int>(from), to};
}

// Where the alphas of `before`, a copy of that part, are others now.
QRect changedAlphas(const QImage &before, const QImage &after, const QRect &part)
{
    QRect changed;
    for (int y = 0; y < part.height(); ++y) {
        const auto [from, to] = changedColumns(
            pixels(before, 0, y), pixels(after, part.left(), part.top() + y), part.width());
        if (from < to) {
            changed |= QRect(part.left() + from, part.top() + y, to - from, 1);
        }
    }
    return changed;
}

} // namespace

void WidgetPicture::renderAll(QWidget &widget, const QSize &size, qreal ratio, const QPoint &origin)
{
    if (picture.size() != size) {
        picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    widgetOrigin = origin;
    widget.render(&picture, origin, {}, QWidget::DrawChildren);
}

QRect WidgetPicture::renderPart(QWidget &widget, const QRect &part)
{
    const int ratio = static_cast<int>(std::lround(picture.devicePixelRatio()));
    const QRect inWidget =
        toLogical(part & picture.rect(), ratio).translated(-widgetOrigin) & widget.rect();
    if (inWidget.isEmpty()) {
        return {};
    }
    const QRect target = inWidget.translated(widgetOrigin);
    const QRect inPixels = toDevice(target, ratio) & picture.rect();
    QImage before = picture.copy(inPixels);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(target, Qt::transparent);
    painter.end();
    widget.render(&picture, target.topLeft(), inWidget, QWidget::DrawChildren);
    return changedAlphas(before, picture, inPixels);
}
