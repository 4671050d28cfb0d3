// The strip at the window's left: a badge and one button per page.
#pragma once

#include "ui/SidebarBackdrop.h"
#include "ui/SurfaceFrame.h"

#include <QColor>
#include <QList>
#include <QPointF>

class NavButton;
class QIcon;
class QPropertyAnimation;
class QTimer;
class QVBoxLayout;

// Widens under the cursor and narrows shortly after it left; a bar slides to the current page's button, a spotlight
// follows the cursor. Tells which page was picked, but leaves it to the receiver to make that page the current one.
// GUI thread; positions in its own coordinates.
class SidebarNav : public SurfaceFrame
{
    Q_OBJECT
    Q_PROPERTY(double indicatorY MEMBER indicatorY WRITE setIndicatorY)
    Q_PROPERTY(double spotlightAlpha MEMBER spotlightAlpha WRITE setSpotlightAlpha)

public:
    explicit SidebarNav(QWidget *parent = nullptr);

    const QList<NavButton *> &items() const { return buttons; }
    int current() const { return currentIndex; }
    bool isExpanded() const { return expanded; }
    QPointF spotlight() const { return spotlightPosition; }

    // Appends a button that picks page `index`.
    void addItem(const QString &text, const QIcon &icon, int index);

    // Marks that page's button; -1, or an index that no button carries, marks none.
    void setCurrentIndex(int index);

    void setExpanded(bool nowExpanded, bool animate);
    void setAccentColor(const QColor &color);
    void setIndicatorY(double y); // top of the bar
    void setSpotlightAlpha(double alpha); // clamped to 0 to 1

    // Moves the bar to the current page's button: sliding, or at once (which ends a slide that is under way).
    void updateIndicatorTarget(bool animate);

    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

signals:
    void navSelected(int index);

private:
    void setupLayout();
    void setupAnimations();
    void setWidthLimits(int width);

    void paintSpotlight(QPainter &painter) const;
    void paintIndicator(QPainter &painter) const;

    SidebarBackdrop backdrop;
    QList<NavButton *> buttons;
    QList<int> indexes; // page of the button at the same position
    QWidget *itemsContainer = nullptr;
    QVBoxLayout *itemsLayout = nullptr;
    QColor accentColor{102, 217, 255};
    int currentIndex = -1;
    bool expanded = false;
    int collapsedWidth = 82;
    int expandedWidth = 190;
    double indicatorY = 0;
    double spotlightAlpha = 0;
    QPointF spotlightPosition{12, 60};
    QPropertyAnimation *widthAnimation = nullptr;
    QPropertyAnimation *indicatorAnimation = nullptr;
    QPropertyAnimation *spotlightAnimation = nullptr;
    QTimer *collapseTimer = nullptr;
};
