#include "ui/PageTransitions.h"

#include "ui/Animate.h"
#include "ui/CachedOpacity.h"

#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QStackedWidget>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kEntranceDuration = 220ms;
constexpr QPoint kEntranceShift(12, 0);
constexpr const char *kRestProperty =
    "veltraEntranceRest"; // of the group: where its page comes to rest

QString groupName()
{
    return QStringLiteral("pageEntrance");
}

// Ends an entrance that is still under way, without its finish, and tells where the page belongs.
QPoint settle(QWidget *page)
{
    QPoint rest = page->pos();
    const auto groups =
        page->findChildren<QParallelAnimationGroup *>(groupName(), Qt::FindDirectChildrenOnly);
    for (QParallelAnimationGroup *group : groups) {
        if (group->state() == QAbstractAnimation::Running) {
            rest = group->property(kRestProperty).toPoint();
            group->stop();
        }
    }
    return rest;
}

} // namespace

PageTransitions::PageTransitions(QObject *parent)
    : QObject(parent)
{ }

void PageTransitions::switchTo(QStackedWidget *stack, int index)
{
    if (stack == nullptr || index < 0 || index >= stack->count()) {
        return;
    }
    stack->setCurrentIndex(index);
    animateIn(stack->currentWidget());
}

void PageTransitions::animateIn(QWidget *page)
{
    if (page == nullptr) {
        return;
    }
    const QPoint rest = settle(page);

    auto *effect = new CachedOpacity(page);
    page->setGraphicsEffect(effect);
    QPropertyAnimation *opacity = animate::create(effect, "opacity", kEntranceDuration);
    opacity->setStartValue(0.0);
    opacity->setEndValue(1.0);

    QPropertyAnimation *position = animate::create(page, "pos", kEntranceDuration);
    position->setStartValue(rest + kEntranceShift);
    position->setEndValue(rest);

    auto *group = new QParallelAnimationGroup(page);
    group->setObjectName(groupName());
    group->setProperty(kRestProperty, rest);
    group->addAnimation(opacity);
    group->addAnimation(position);
    connect(group, &QParallelAnimationGroup::finished, page, [page] {
        page->setGraphicsEffect(nullptr);
    });
    group->start(QAbstractAnimation::DeleteWhenStopped);
}
