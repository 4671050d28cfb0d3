#include "ui/CachedShadow.h"

#include "ui/DrawPicture.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QScopedValueRollback>
#include <QWidget>
#include <cmath>
#include <utility>

namespace {

// The drawing that is going on, through all shadows within shadows.
bool isArmingWatch = false; // nothing is to be painted
const QImage *outerPicture = nullptr; // of the shadow around the one that is drawn
QRegion *outerSpill = nullptr; // what changed in it outside of what is being repainted

bool isWhole(qreal value)
{
    return value == std::floor(value);
}

bool differByWholePixels(const QTransform &a, const QTransform &b)
{
    return a.type() <= QTransform::TxTranslate && b.type() <= QTransform::TxTranslate
        && isWhole(a.dx() - b.dx()) && isWhole(a.dy() - b.dy());
}

// Swallows all paint events while it exists.
class PaintBlock : public QObject
{
public:
    PaintBlock() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        return event->type() == QEvent::Paint || QObject::eventFilter(watched, event);
    }
};

QRect visiblePartOf(const QWidget &widget)
{
    QRect part = widget.rect();
    QPoint offset;
    for (const QWidget *child = &widget; !child->isWindow() && child->parentWidget() != nullptr;
         child = child->parentWidget()) {
        offset += child->pos();
        part &= child->parentWidget()->rect().translated(-offset);
    }
    return part;
}

// Everything that changed since the last drawing lies within what is being repainted; true for the window itself, and for
// the picture of a shadow around.
bool repaintsAllChanges(const QPaintDevice *device, const QWidget &widget)
{
    QBackingStore *store = widget.window()->backingStore();
    return device == outerPicture || (store != nullptr && store->paintDevice() == device);
}

} // namespace

CachedShadow::CachedShadow(QWidget *widget)
    : QGraphicsDropShadowEffect(widget)
{
    // Scrolling by moving pixels of the window would leave the kept pictures behind, unannounced.
    qputenv("QT_NO_FAST_SCROLL", "1");
    qputenv("QT_NO_FAST_MOVE", "1");
    widget->installEventFilter(this);
    connect(this, &QGraphicsEffect::enabledChanged, this, &CachedShadow::dropPictures);
}

QWidget *CachedShadow::shadowedWidget() const
{
    return qobject_cast<QWidget *>(parent());
}

QRectF CachedShadow::boundingRectFor(const QRectF &rect) const
{
    return isArmingWatch ? QRectF(rect.topLeft(), QSizeF(1, 1))
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
    watch = QPixmap();
}

// What happens inside a hidden widget is announced to nobody.
bool CachedShadow::mayKeepPictures() const
{
    const QWidget *widget = shadowedWidget();
    return widget != nullptr && widget->graphicsEffect() == this && widget->isVisible();
}

void CachedShadow::draw(QPainter *painter)
{
    if (isArmingWatch) {
        return;
    }
    if ((blurRadius() <= 0 && offset().isNull()) || shadowedWidget() == nullptr) {
        drawSource(painter);
        return;
    }
    const Placement now = placementFor(*painter);
    bringUpToDate(*painter, now);
    const QPoint place = now.bounds.topLeft();
    painter->setWorldTransform(QTransform());
    drawPicture(*painter, place, shadow.image());
    drawPicture(*painter, place, source.image());
    painter->setWorldTransform(now.transform);
}

ShadowRecipe CachedShadow::wantedRecipe() const
{
    return {blurRadius(), offset(), color()};
}

CachedShadow::Placement CachedShadow::placementFor(const QPainter &painter) const
{
    const QWidget &widget = *shadowedWidget();
    const QTransform transform = painter.worldTransform();
    const QRectF bounds = boundingRectFor(transform.mapRect(QRectF(widget.rect())));
    return {transform,
            painter.device()->devicePixelRatio(),
            bounds.toAlignedRect(),
            visiblePartOf(widget)};
}

bool CachedShadow::fits(const Placement &now) const
{
    return mayKeepPictures() && !source.isNull() && now.ratio == kept.ratio
        && differByWholePixels(now.transform, kept.transform)
        && now.bounds.size() == kept.bounds.size()
        && now.bounds.topLeft() - kept.bounds.topLeft()
        == QPointF(now.transform.dx() - kept.transform.dx(),
                   now.transform.dy() - kept.transform.dy())
               .toPoint();
}

// A changed widget is not announced to its effect. But the toolkit puts the picture that sourcePixmap() returns into its
// pixmap cache, and takes it out as soon as the widget, or anything inside it, asks for a repaint. While both hold the
// picture it is shared; once ours is the only reference, the widget has changed. (Being thrown out for lack of room looks the
// same, and costs one rendering.) The picture itself does not matter: one pixel, into which nothing is painted.
void CachedShadow::watchForChanges()
{
    const QScopedValueRollback arming(isArmingWatch, true);
    const PaintBlock block;
    watch = QPixmap();
    watch = sourcePixmap(Qt::DeviceCoordinates, nullptr, PadToEffectiveBoundingRect);
}

void CachedShadow::bringUpToDate(const QPainter &painter, const Placement &now)
{
    if (!fits(now)) {
        watchForChanges(); // first: who asks for a repaint while being painted shall be seen
        renderSource(now);
    } else {
        if (watch.isNull() || watch.isDetached()) {
            watchForChanges();
            renderChanges(painter, now);
        }
        renderNewlyVisible(now);
    }
    const QRect changed = refreshShadow();
    if (outerSpill != nullptr) {
        *outerSpill += changed.translated(placeOf(painter, now));
    }
}

// Returns what is new, in device pixels of the pictures.
QRect CachedShadow::refreshShadow()
{
    const QRect stale = std::exchange(staleShadow, QRect());
    if (shadow.isNull() || shadow.recipe() != wantedRecipe()) {
        shadow.make(source.image(), wantedRecipe());
        ++blurred;
        return shadow.image().rect();
    }
    if (stale.isEmpty()) {
        return {};
    }
    ++blurred;
    return shadow.refresh(source.image(), stale);
}

QPoint CachedShadow::originOf(const Placement &now)
{
    return now.transform.map(QPoint()) - now.bounds.topLeft();
}

QPoint CachedShadow::placeOf(const QPainter &painter, const Placement &now)
{
    const QTransform toDevice = now.transform.inverted() * painter.deviceTransform();
    return toDevice.map(QPointF(now.bounds.topLeft())).toPoint();
}

void CachedShadow::renderSource(const Placement &now)
{
    shadow.clear();
    kept = now;
    const QPoint origin = originOf(now);
    const QSize size = now.bounds.size() * now.ratio;
    const QScopedValueRollback<const QImage *> picture(outerPicture, &source.image());
    const QScopedValueRollback<QRegion *> spill(outerSpill, nullptr); // all of it is painted
    source.renderAll(*shadowedWidget(), size, now.ratio, origin);
    pixelsRendered += static_cast<qint64>(size.width()) * size.height();
    ++rendered;
}

void CachedShadow::renderChanges(const QPainter &painter, const Placement &now)
{
    const QRegion clip = painter.paintEngine()->systemClip();
    const QWidget &widget = *shadowedWidget();
    // What is out of sight is repainted by nobody, but throws its shadow.
    const bool isPart = isWhole(now.ratio) && !clip.isEmpty() && now.visiblePart == widget.rect()
        && repaintsAllChanges(painter.device(), widget);
    if (!isPart) {
        renderSource(now);
        return;
    }
    refresh(clip.boundingRect().translated(-placeOf(painter, now)));
}

void CachedShadow::renderNewlyVisible(const Placement &now)
{
    const QRegion appeared = QRegion(now.visiblePart) - kept.visiblePart;
    kept.visiblePart = now.visiblePart;
    if (appeared.isEmpty()) {
        return;
    }
    if (!isWhole(now.ratio)) {
        renderSource(now);
        return;
    }
    const QRect part = appeared.boundingRect().translated(originOf(now));
    refresh({part.topLeft() * now.ratio, part.size() * now.ratio});
}

void CachedShadow::refresh(const QRect &part)
{
    QRegion spilled;
    {
        const QScopedValueRollback<const QImage *> picture(outerPicture, &source.image());
        const QScopedValueRollback<QRegion *> spill(outerSpill, &spilled);
        staleShadow |= source.renderPart(*shadowedWidget(), part);
    }
    pixelsRendered += static_cast<qint64>(part.width()) * part.height();
    ++rendered;
    // Shadows inside changed beyond the part.
    if (const QRect more = (spilled - part).boundingRect(); !more.isEmpty()) {
        const QScopedValueRollback<const QImage *> picture(outerPicture, &source.image());
        staleShadow |= source.renderPart(*shadowedWidget(), more);
    }
}
