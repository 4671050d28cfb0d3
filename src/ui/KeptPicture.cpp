#include "ui/KeptPicture.h"

#include "ui/FewRectangles.h"

#include <QBackingStore>
#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsEffect>
#include <QPaintEngine>
#include <QPainter>
#include <QScopedValueRollback>
#include <QWidget>
#include <cmath>
#include <utility>

namespace {

// The drawing that is going on, through all effects within effects.
bool armingNow = false; // nothing is to be painted
const QImage *outerPicture = nullptr; // of the effect around the one that is drawn
const QRegion *outerParts = nullptr; // what is being repainted in it, part by part; null: all of it
QRegion *outerSpill = nullptr; // what changed in it outside of what is being repainted

// Says that `picture` is what is drawn to next.
class Nesting
{
public:
    Nesting(const QImage &drawnTo, const QRegion *repainted, QRegion *spilled)
        : picture(outerPicture, &drawnTo)
        , parts(outerParts, repainted)
        , spill(outerSpill, spilled)
    { }

private:
    QScopedValueRollback<const QImage *> picture;
    QScopedValueRollback<const QRegion *> parts;
    QScopedValueRollback<QRegion *> spill;
};

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

bool isWhole(qreal value)
{
    return value == std::floor(value);
}

bool differByWholePixels(const QTransform &a, const QTransform &b)
{
    return a.type() <= QTransform::TxTranslate && b.type() <= QTransform::TxTranslate
        && isWhole(a.dx() - b.dx()) && isWhole(a.dy() - b.dy());
}

QPoint shift(const QTransform &from, const QTransform &to)
{
    return QPointF(to.dx() - from.dx(), to.dy() - from.dy()).toPoint();
}

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

// Everything that changed since the last drawing lies within what is being repainted.
bool repaintsAllChanges(const QPaintDevice *device, const QWidget &widget)
{
    QBackingStore *store = widget.window()->backingStore();
    return device == outerPicture || (store != nullptr && store->paintDevice() == device);
}

} // namespace

KeptPicture::KeptPicture(QGraphicsEffect *ownEffect, Arm ownArm)
    : effect(ownEffect)
    , arm(std::move(ownArm))
{
    // Scrolling by moving pixels of the window would leave the kept pictures behind, unannounced.
    qputenv("QT_NO_FAST_SCROLL", "1");
    qputenv("QT_NO_FAST_MOVE", "1");
}

bool KeptPicture::isArming()
{
    return armingNow;
}

QWidget &KeptPicture::widget() const
{
    return *qobject_cast<QWidget *>(effect->parent());
}

void KeptPicture::clear()
{
    picture.clear();
    watch = QPixmap();
}

// What happens inside a hidden widget is announced to nobody.
bool KeptPicture::mayKeep() const
{
    return widget().graphicsEffect() == effect && widget().isVisible();
}

bool KeptPicture::fits() const
{
    return mayKeep() && !picture.isNull() && current.ratio == kept.ratio
        && differByWholePixels(current.transform, kept.transform)
        && current.bounds.size() == kept.bounds.size()
        && current.bounds.topLeft() - kept.bounds.topLeft()
        == shift(kept.transform, current.transform);
}

// A changed widget is not announced to its effect. But the toolkit puts the picture that sourcePixmap() returns into its
// pixmap cache, and takes it out as soon as the widget, or anything inside it, asks for a repaint. While both hold the
// picture it is shared; once ours is the only reference, the widget has changed. (Being thrown out for lack of room looks the
// same, and costs one rendering.) The picture itself does not matter: one pixel, into which nothing is painted.
void KeptPicture::watchForChanges()
{
    const QScopedValueRollback arming(armingNow, true);
    const PaintBlock block;
    watch = QPixmap();
    watch = arm();
}

KeptPicture::Change KeptPicture::update(const QPainter &painter, const QRectF &bounds)
{
    current = {painter.worldTransform(),
               painter.device()->devicePixelRatio(),
               bounds.toAlignedRect(),
               visiblePartOf(widget())};
    Change change;
    if (!fits()) {
        watchForChanges(); // first: who asks for a repaint while being painted shall be seen
        renderAll(change);
        return change;
    }
    if (watch.isNull() || watch.isDetached()) {
        watchForChanges();
        renderChanges(painter, change);
    }
    renderNewlyVisible(change);
    return change;
}

QPoint KeptPicture::widgetOrigin() const
{
    return current.transform.map(QPoint()) - current.bounds.topLeft();
}

QPoint KeptPicture::placeIn(const QPainter &painter) const
{
    const QTransform toDevice = current.transform.inverted() * painter.deviceTransform();
    return toDevice.map(QPointF(current.bounds.topLeft())).toPoint();
}

void KeptPicture::renderAll(Change &change)
{
    kept = current;
    change.isWhole = true;
    const Nesting nesting(picture.image(), nullptr, nullptr); // all of it is painted
    const QSize size = current.bounds.size() * current.ratio;
    picture.renderAll(widget(), size, current.ratio, widgetOrigin());
    pixels += static_cast<qint64>(size.width()) * size.height();
    ++rendered;
}

void KeptPicture::renderChanges(const QPainter &painter, Change &change)
{
    const bool isInside = painter.device() == outerPicture && outerParts != nullptr;
    const QRegion clip = isInside ? *outerParts : painter.paintEngine()->systemClip();
    // What is out of sight is repainted by nobody, but counts all the same, for its shadow.
    const bool isPart = isWhole(current.ratio) && !clip.isEmpty()
        && current.visiblePart == widget().rect() && repaintsAllChanges(painter.device(), widget());
    if (!isPart) {
        renderAll(change);
        return;
    }
    renderParts(clip.translated(-placeIn(painter)), change);
}

void KeptPicture::renderNewlyVisible(Change &change)
{
    const QRegion appeared = QRegion(current.visiblePart) - kept.visiblePart;
    kept.visiblePart = current.visiblePart;
    if (appeared.isEmpty()) {
        return;
    }
    if (!isWhole(current.ratio)) {
        renderAll(change);
        return;
    }
    const QRect part = appeared.boundingRect().translated(widgetOrigin());
    renderParts(QRect(part.topLeft() * current.ratio, part.size() * current.ratio), change);
}

void KeptPicture::renderParts(const QRegion &parts, Change &change)
{
    const QList<QRect> few = fewRectangles(parts & picture.image().rect());
    QRegion all;
    for (const QRect &part : few) {
        all += part;
    }
    QRegion spilled;
    for (const QRect &part : few) {
        const Nesting nesting(picture.image(), &all, &spilled);
        change.alphas += picture.renderPart(widget(), part);
        pixels += static_cast<qint64>(part.width()) * part.height();
    }
    ++rendered;
    for (const QRect &part : fewRectangles(spilled - all)) {
        const Nesting nesting(picture.image(), &all, nullptr);
        change.alphas += picture.renderPart(widget(), part);
        pixels += static_cast<qint64>(part.width()) * part.height();
    }
}

void KeptPicture::reportSpill(const QPainter &painter, const QRegion &changed) const
{
    if (outerSpill != nullptr) {
        *outerSpill += changed.translated(placeIn(painter));
    }
}
