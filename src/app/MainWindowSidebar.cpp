// A dormant feature: the cursor's place in the window widens and narrows the sidebar. The sidebar does so by itself.
#include "app/MainWindow.h"

#include "ui/AnimatedNav.h"

#include <QTimer>
#include <QToolButton>
#include <QVariantAnimation>

void MainWindow::updateSidebarByCursor(const QPoint &globalPosition)
{
    if (sidebar == nullptr || isHidden()) {
        return;
    }
    const QPoint position = mapFromGlobal(globalPosition);
    const bool near = position.x() >= 0
        && position.x() <= sidebar->width() + dormantSidebar.cursorMargin && position.y() >= 0
        && position.y() <= height();
    QTimer *collapse = dormantSidebar.collapseTimer;
    if (isActiveWindow() && near) {
        if (collapse != nullptr) {
            collapse->stop();
        }
        if (!dormantSidebar.expanded) {
            setSidebarExpanded(true, true);
        }
    } else if (dormantSidebar.expanded && collapse != nullptr && !collapse->isActive()) {
        collapse->start();
    }
}

void MainWindow::setSidebarExpanded(bool expanded, bool animate)
{
    if (sidebar == nullptr || dormantSidebar.expanded == expanded) {
        return;
    }
    dormantSidebar.expanded = expanded;
    applySidebarButtonMode(expanded, animate);
    QVariantAnimation *animation = dormantSidebar.widthAnimation;
    if (animation == nullptr) {
        return;
    }
    const int target = expanded ? dormantSidebar.expandedWidth : dormantSidebar.collapsedWidth;
    animation->stop();
    if (animate) {
        animation->setStartValue(sidebar->width());
        animation->setEndValue(target);
        animation->start();
    } else {
        sidebar->setMinimumWidth(target);
        sidebar->setMaximumWidth(target);
    }
}

void MainWindow::applySidebarButtonMode(bool expanded, bool /*animate*/)
{
    const auto mode = expanded ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly;
    for (QToolButton *button : dormantSidebar.navButtons) {
        if (button != nullptr) {
            button->setToolButtonStyle(mode);
        }
    }
}
