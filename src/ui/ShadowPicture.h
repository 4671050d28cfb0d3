// The picture of a drop shadow, made anew only where its source's outline changed.
#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRegion>

struct ShadowRecipe // everything that a shadow's picture depends on besides its source
{
    qreal blurRadius = 0; // device pixels, whatever the picture's ratio
    QPointF offset; // logical pixels
    QColor color;

    bool operator==(const ShadowRecipe &) const = default;
};

// Pixel by pixel what QGraphicsDropShadowEffect paints below its source, at most 1 of 255 off where a part was refreshed:
// the blur decays to 2 of 255 within its radius, so that what is two radii away has no say.
// GUI thread; holds one picture of the source's size.
class ShadowPicture
{
public:
    bool isNull() const { return shadow.isNull(); }
    void clear() { shadow = QImage(); }
    const QImage &image() const { return shadow; } // premultiplied ARGB32, with the source's ratio
    const ShadowRecipe &recipe() const { return made; }

    void make(const QImage &source, const ShadowRecipe &recipe);

    // After make(): `changed` (device pixels of the source, of which the size stayed) has other alphas than before. Returns
    // what was made anew of the shadow.
    QRegion refresh(const QImage &source, const QRegion &changed);

private:
    QRect refreshPart(const QImage &source, const QRect &changed);
    QImage shifted(const QImage &source, const QRect &part) const;
    QImage blurred(const QImage &source, const QRect &part) const;
    QImage blurredPlane(const QImage &source,
                        const QRect &part) const; // alphas alone: three times as fast
    QImage blurredByToolkit(const QImage &source, const QRect &part) const;

    QImage shadow;
    ShadowRecipe made;
};
