// One entry of the sidebar.
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QWidget>

class QPropertyAnimation;

// Painted by itself: icon, label that fades in with the sidebar, hover glow, press dip, mark of the current page.
// Reached by Tab, pressed by Space and Enter; the mouse never moves the keyboard focus here. GUI thread.
class NavButton : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(double hoverStrength MEMBER hoverStrength WRITE setHoverStrength)
    Q_PROPERTY(double pressOffset MEMBER pressOffset WRITE setPressOffset)
    Q_PROPERTY(double textOpacity MEMBER textOpacity WRITE setTextOpacity)

public:
    NavButton(const QString &labelText, const QIcon &labelIcon, QWidget *parent = nullptr);

    QString label() const { return text; }
    QIcon labelIcon() const { return icon; }
    QColor accent() const { return accentColor; }
    bool isActive() const { return active; }
    bool isExpanded() const { return expanded; }

    void setAccentColor(const QColor &color);
    void setActive(bool nowActive); // this entry's page is the current one
    void setExpanded(bool nowExpanded); // fades the label in or out, unless nothing changes

    void setHoverStrength(double strength); // clamped to 0 to 1
    void setPressOffset(double offset); // px downwards, clamped to 0 to 2
    void setTextOpacity(double opacity); // clamped to 0 to 1

    // Both start from the present value, so that an interrupted movement never jumps.
    void animateHover(double target);
    void animatePress(double target, int durationMs);

    QSize sizeHint() const override;

    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

signals:
    void clicked();

private:
    QRectF bodyRect() const;
    void paintGlow(QPainter &painter, const QRectF &body) const;
    void paintBody(QPainter &painter, const QRectF &body) const;
    void paintSheen(QPainter &painter, const QRectF &body) const;
    void paintFocusMark(QPainter &painter, const QRectF &body) const;
    void paintIcon(QPainter &painter, const QRectF &body) const;
    void paintLabel(QPainter &painter, const QRectF &body) const;

    QString text;
    QIcon icon;
    QColor accentColor{102, 217, 255};
    bool active = false;
    bool focusMarked = false; // the keyboard is being used here
    bool keyHeld = false;
    bool expanded = false;
    double hoverStrength = 0;
    double pressOffset = 0;
    double textOpacity = 0;
    QPropertyAnimation *hoverAnimation;
    QPropertyAnimation *pressAnimation;
    QPropertyAnimation *textAnimation;
};
