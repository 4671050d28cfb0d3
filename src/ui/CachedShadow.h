// A drop shadow that is computed once and then only drawn.
#pragma once

#include <QGraphicsDropShadowEffect>
#include <QImage>
#include <QPixmap>
#include <QPoint>

// Draws exactly what QGraphicsDropShadowEffect draws, pixel by pixel, and keeps the finished pictures (the widget's own
// and its shadow) until the widget or something inside it really changes. The stock effect renders the widget and blurs
// its shadow on every single draw, even when only something behind the widget moved.
//
// Must be a child of the widget that it is installed on; otherwise, and while the widget is hidden, nothing is kept.
// Memory: two pictures of the widget's size plus its shadow's rim, only while the widget is visible and the effect
// enabled. GUI thread.
class CachedShadow : public QGraphicsDropShadowEffect
{
    Q_OBJECT

public:
    explicit CachedShadow(QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

    // How often the widget has been rendered, and its shadow blurred, since construction. For tests and benchmarks.
    int renderCount() const { return rendered; }
    int blurCount() const { return blurred; }
    bool holdsPictures() const { return !source.isNull() || !shadow.isNull(); }

protected:
    void draw(QPainter *painter) override;
    void sourceChanged(ChangeFlags flags) override;

private:
    struct ShadowRecipe // everything that a shadow's picture depends on besides its source
    {
        qreal blurRadius = 0;
        QPointF offset;
        QColor color;

        bool operator==(const ShadowRecipe &) const = default;
    };

    ShadowRecipe wantedRecipe() const;
    bool mayKeepPictures() const;
    void dropPictures();
    bool sourceIsCurrent(const QTransform &transform, qreal ratio) const;
    void renderSource(const QTransform &transform, qreal ratio);
    void renderShadow();

    QPixmap source;
    QImage shadow; // null when it has to be computed
    QPoint
        sourceOffset; // of both pictures' top-left corner, in device coordinates, when they were rendered
    QTransform sourceTransform;
    qreal sourceRatio = 0;
    ShadowRecipe recipe;
    int rendered = 0;
    int blurred = 0;
};
