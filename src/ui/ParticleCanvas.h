// The moving background of the whole window: two soft glows, a grid, and drifting dots in the accent colour.
#pragma once

#include "ui/DotRaster.h"

#include <QColor>
#include <QImage>
#include <QRegion>
#include <QWidget>
#include <vector>

// Its owner moves the dots and asks for the repaint; the canvas only seeds and paints them. GUI thread; pixels are the
// widget's own.
class ParticleCanvas : public QWidget
{
    Q_OBJECT

public:
    struct Particle
    {
        double x = 0; // centre
        double y = 0;
        double vx = 0; // px per tick at speed 1
        double vy = 0;
        double radius = 0;
        double phase = 0; // radians, drives the twinkle
    };

    explicit ParticleCanvas(QWidget *parent = nullptr);

    // Throws all dots away and makes `count` new ones, somewhere in the present size.
    void initParticles();

    // One step of the animation: the hue (if it shifts) and every dot; a dot that left by 20 px comes back opposite.
    // Does nothing while disabled or without a size.
    void advance();

    // Asks for a repaint of no more than what the dots covered when this was last called, and cover now; of everything when
    // `enabled` or `frameOutline` was written since.
    void updateDots();

    // Written by the owner; a repaint is its business.
    std::vector<Particle> particles;
    int count = 70;
    double speed = 1.0;
    bool enabled = true;
    bool autoColorShift = true;
    int hueOffset = 0; // degrees, 0 to 359
    bool frameOutline = false;
    QColor accentColor; // invalid: a light blue of the canvas's own

    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Recipe // what the backdrop depends on
    {
        QSize size;
        qreal ratio = 0;
        bool frameOutline = false;

        bool operator==(const Recipe &) const = default;
    };

    void updatePicture(qreal ratio);
    void renderBackdrop();
    void paintOutline(QPainter &painter) const;
    void paintParticles();
    void paintDot(const QPointF &center, double radius, const QColor &color);
    QColor particleColor() const;

    QRegion coveredByDots; // where dots may stand painted since the last tick
    bool lastEnabled = true; // at the last tick
    bool lastOutline = false;
    Recipe recipe;
    QImage backdrop; // glows and grid
    QImage picture; // the same with the dots
    std::vector<QRect> dotsInPicture; // device pixels
    DotRaster raster;
};
