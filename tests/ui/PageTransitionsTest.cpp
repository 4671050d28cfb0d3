#include "ui/PageTransitions.h"

#include "ui/CachedOpacity.h"
#include "ui/PictureDifference.h"

#include <QGraphicsDropShadowEffect>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QStackedWidget>
#include <QTest>

namespace {

QList<QParallelAnimationGroup *> runningGroups(const QWidget *page)
{
    QList<QParallelAnimationGroup *> running;
    const auto groups = page->findChildren<QParallelAnimationGroup *>();
    for (auto *group : groups) {
        if (group->state() == QAbstractAnimation::Running) {
            running.append(group);
        }
    }
    return running;
}

const QPropertyAnimation *part(const QParallelAnimationGroup *group, const QByteArray &property)
{
    for (int i = 0; i < group->animationCount(); ++i) {
        const auto *animation = qobject_cast<QPropertyAnimation *>(group->animationAt(i));
        if (animation != nullptr && animation->propertyName() == property) {
            return animation;
        }
    }
    return nullptr;
}

} // namespace

class PageTransitionsTest : public QObject
{
    Q_OBJECT

private slots:
    // Rendered once, a page fades as the toolkit fades it.
    void fadesFromOnePicture()
    {
        QWidget window;
        QLabel page(QStringLiteral("Veltra"), &window);
        page.setGeometry(20, 10, 120, 40);
        window.resize(200, 80);
        window.show();
        for (const qreal opacity : {0.2, 0.5, 0.9}) {
            auto *stock = new QGraphicsOpacityEffect(&page);
            stock->setOpacity(opacity);
            page.setGraphicsEffect(stock);
            const QImage expected = window.grab().toImage();
            auto *kept = new CachedOpacity(&page);
            kept->setOpacity(0.7);
            page.setGraphicsEffect(kept);
            window.grab();
            kept->setOpacity(opacity);
            QVERIFY(largestDifference(window.grab().toImage(), expected) <= 1);
            QCOMPARE(kept->renderCount(), 1);
            page.setText(QStringLiteral("changed"));
            window.grab();
            QCOMPARE(kept->renderCount(), 2);
            page.setText(QStringLiteral("Veltra"));
        }
    }

    void init()
    {
        stack = new QStackedWidget;
        stack->setFrameShape(QFrame::Box); // so that a page's place is not (0, 0)
        stack->setLineWidth(5);
        for (int i = 0; i < 3; ++i) {
            stack->addWidget(new QWidget);
        }
        stack->resize(300, 200);
        stack->show();
        place = stack->currentWidget()->pos();
        QVERIFY(place != QPoint(0, 0));
    }

    void cleanup() { delete stack; }

    void outOfRangeDoesNothing_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("-1") << -1;
        QTest::newRow("count") << 3;
        QTest::newRow("far") << 1000;
    }

    void outOfRangeDoesNothing()
    {
        QFETCH(int, index);
        PageTransitions transitions(nullptr);
        stack->setCurrentIndex(1);
        transitions.switchTo(stack, index);
        QCOMPARE(stack->currentIndex(), 1);
        QVERIFY(stack->widget(1)->graphicsEffect() == nullptr);
        QVERIFY(stack->findChildren<QParallelAnimationGroup *>().isEmpty());
    }

    void nullIsHarmless()
    {
        PageTransitions transitions(nullptr);
        transitions.switchTo(nullptr, 0);
        transitions.animateIn(nullptr);
    }

    void entranceIsAsDesigned()
    {
        PageTransitions transitions(nullptr);
        transitions.switchTo(stack, 2);
        QCOMPARE(stack->currentIndex(), 2);
        QWidget *page = stack->widget(2);
        QVERIFY(qobject_cast<QGraphicsOpacityEffect *>(page->graphicsEffect()) != nullptr);
        const auto groups = runningGroups(page);
        QCOMPARE(groups.size(), 1);
        QCOMPARE(groups.constFirst()->parent(), page);
        const auto *opacity = part(groups.constFirst(), "opacity");
        const auto *position = part(groups.constFirst(), "pos");
        for (const auto *animation : {opacity, position}) {
            QCOMPARE(animation->duration(), 220);
            QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutCubic);
        }
        QCOMPARE(opacity->targetObject(), page->graphicsEffect());
        QCOMPARE(opacity->startValue().toDouble(), 0.0);
        QCOMPARE(opacity->endValue().toDouble(), 1.0);
        QCOMPARE(position->startValue().toPoint(), place + QPoint(12, 0));
        QCOMPARE(position->endValue().toPoint(), place);
        QCOMPARE(page->pos(), place + QPoint(12, 0));
        QTRY_VERIFY(page->graphicsEffect() == nullptr);
        QCOMPARE(page->pos(), place);
        QTRY_VERIFY(page->findChildren<QParallelAnimationGroup *>().isEmpty());
    }

    void selectingAgainReplays()
    {
        PageTransitions transitions(nullptr);
        transitions.switchTo(stack, 0);
        QTRY_VERIFY(stack->widget(0)->graphicsEffect() == nullptr);
        transitions.switchTo(stack, 0);
        QVERIFY(stack->widget(0)->graphicsEffect() != nullptr);
        QCOMPARE(runningGroups(stack->widget(0)).size(), 1);
    }

    void overlappingEntrancesRestAtTheirPlace()
    {
        PageTransitions transitions(nullptr);
        QWidget *page = stack->widget(1);
        for (int i = 0; i < 5; ++i) {
            transitions.switchTo(stack, 1);
            QCOMPARE(runningGroups(page).size(), 1);
            const auto *position = part(runningGroups(page).constFirst(), "pos");
            QCOMPARE(position->endValue().toPoint(), place);
            QTRY_VERIFY(position->currentTime() > 20);
        }
        const QGraphicsEffect *newest = page->graphicsEffect();
        const QParallelAnimationGroup *group = runningGroups(page).constFirst();
        QVERIFY(newest != nullptr);
        while (!runningGroups(page).isEmpty() && group->currentTime() < 200) {
            QCOMPARE(page->graphicsEffect(), newest); // no older entrance takes it away
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        QTRY_VERIFY(page->graphicsEffect() == nullptr);
        QCOMPARE(page->pos(), place);
    }

    void leavingAndComingBackRestsAtItsPlace()
    {
        PageTransitions transitions(nullptr);
        for (const int index : {0, 1, 0, 2, 0, 1}) {
            transitions.switchTo(stack, index);
            QCoreApplication::processEvents();
        }
        for (int i = 0; i < 3; ++i) {
            QTRY_VERIFY(stack->widget(i)->graphicsEffect() == nullptr);
            QTRY_VERIFY(runningGroups(stack->widget(i)).isEmpty());
            QCOMPARE(stack->widget(i)->pos(), place); // also of those that are hidden now
        }
    }

    void replacesAnEffectOfThePage()
    {
        PageTransitions transitions(nullptr);
        stack->widget(0)->setGraphicsEffect(new QGraphicsDropShadowEffect);
        transitions.switchTo(stack, 0);
        QVERIFY(qobject_cast<QGraphicsOpacityEffect *>(stack->widget(0)->graphicsEffect())
                != nullptr);
        QTRY_VERIFY(stack->widget(0)->graphicsEffect() == nullptr);
    }

    void destroyedInTheMiddle()
    {
        PageTransitions transitions(nullptr);
        transitions.switchTo(stack, 1);
        QCoreApplication::processEvents();
        delete stack->widget(1);
        QCoreApplication::processEvents();
        transitions.switchTo(stack, 0);
        delete stack;
        stack = nullptr;
        QCoreApplication::processEvents();
    }

    void holdsNoMetaMembers()
    {
        const QMetaObject &meta = PageTransitions::staticMetaObject;
        QCOMPARE(meta.methodCount(), meta.methodOffset());
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

private:
    QStackedWidget *stack = nullptr;
    QPoint place;
};

QTEST_MAIN(PageTransitionsTest)
#include "PageTransitionsTest.moc"
