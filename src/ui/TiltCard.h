// A frame that makes its content react to the mouse.
#pragma once

#include <QGraphicsDropShadowEffect>
#include <QPointF>
#include <QPointer>
#include <QWidget>

class QVariantAnimation;

// Wraps one widget with a margin of 5 px. Under the mouse the content grows a little and its shadow deepens; it drifts
// towards the pointer, and so does a soft highlight on the frame. Every change starts from the present state, so a quick
// change of mind never jumps. GUI thread; lengths in px.
class TiltCard : public QWidget
{
public:
    explicit TiltCard(QWidget *parent = nullptr);

    // Takes the widget over as a child, and shows it. Null, or the present content, changes nothing. The former content
    // stays a child, hidden, without shadow; whoever wants it elsewhere takes it. The card notices when its content is
    // deleted.
    void setContent(QWidget *widget);
    QWidget *content() const { return wrapped; } // null when there is none

    // Where the present state moves to: in 150 ms to a hover level, clamped to 0 (away) to 1 (under the mouse), and in
    // 140 ms to a displacement of the content.
    void setHoverTarget(double target);
    void setOffsetTarget(const QPointF &target);

    // The content's and 10 px in each direction; 96 x 96 without content.
    QSize sizeHint() const override;

    bool eventFilter(QObject *watched, QEvent *event) override;

    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setupAnimations();
    void followPointer(const QPointF &pointer);
    void comeUnderMouse();
    void leaveToRest();
    void applyState();
    void updateShadow();
    void updateContentGeometry();
    void ensureShadow();
    void paintFrame(QPainter &painter, const QRectF &frame) const;
    void paintHighlight(QPainter &painter, const QRectF &frame) const;

    QPointer<QWidget> wrapped;
    QPointer<QGraphicsDropShadowEffect>
        shadow; // a child of the card; dies with the content, see ensureShadow()
    QVariantAnimation *hoverAnimation;
    QVariantAnimation *offsetAnimation;
    double hover = 0;
    double tiltX = 0; // the pointer's place from the centre, -1 to 1
    double tiltY = 0;
    QPointF offset;
};
