#include "ui/TiltCard.h"

#include "ui/TestInput.h"

#include <QGraphicsDropShadowEffect>
#include <QGraphicsOpacityEffect>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QTest>
#include <QVariantAnimation>

namespace {

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, {});
    return image;
}

QGraphicsDropShadowEffect *shadowOf(const QWidget *widget)
{
    return qobject_cast<QGraphicsDropShadowEffect *>(widget->graphicsEffect());
}

// The hover animation runs for 150 ms, the other one for 140 ms.
QVariantAnimation *animationOf(const TiltCard &card, int duration)
{
    const auto animations = card.findChildren<QVariantAnimation *>();
    for (QVariantAnimation *animation : animations) {
        if (animation->duration() == duration) {
            return animation;
        }
    }
    return nullptr;
}

double hoverTarget(const TiltCard &card)
{
    return animationOf(card, 150)->endValue().toDouble();
}
QPointF offsetTarget(const TiltCard &card)
{
    return animationOf(card, 140)->endValue().toPointF();
}

void finish(const TiltCard &card)
{
    for (const int duration : {150, 140}) {
        QVariantAnimation *animation = animationOf(card, duration);
        animation->setCurrentTime(duration);
    }
}

void moveOver(QWidget &widget, const QPointF &place)
{
    testinput::mouse(
        &widget, QEvent::MouseMove, widget.mapToGlobal(place), Qt::NoButton, Qt::NoButton);
}

} // namespace

class TiltCardTest : public QObject
{
    Q_OBJECT

private slots:
    void startsAtRest()
    {
        const TiltCard card(nullptr);
        QVERIFY(card.testAttribute(Qt::WA_Hover));
        QVERIFY(card.hasMouseTracking());
        QVERIFY(card.content() == nullptr);
        QCOMPARE(card.sizeHint(), QSize(96, 96));
        const auto *shadow = card.findChild<QGraphicsDropShadowEffect *>();
        QCOMPARE(shadow->blurRadius(), 18.0);
        QCOMPARE(shadow->offset(), QPointF(0, 2));
        QCOMPARE(shadow->color(), QColor(40, 120, 255, 40));
        for (const int duration : {150, 140}) {
            QCOMPARE(animationOf(card, duration)->easingCurve().type(), QEasingCurve::OutCubic);
            QCOMPARE(animationOf(card, duration)->state(), QAbstractAnimation::Stopped);
        }
    }

    void takesItsContent()
    {
        TiltCard card(nullptr);
        card.resize(210, 110);
        auto *content = new QLabel(QStringLiteral("content"));
        card.setContent(content);
        QCOMPARE(card.content(), content);
        QCOMPARE(content->parentWidget(), &card);
        QVERIFY(content->hasMouseTracking());
        QCOMPARE(content->geometry(), QRect(5, 5, 200, 100));
        QCOMPARE(shadowOf(content)->color(), QColor(56, 142, 255, 40)); // the first update
        QCOMPARE(shadowOf(content)->parent(), &card);
        QCOMPARE(card.sizeHint(), content->sizeHint() + QSize(10, 10));
        card.show();
        QVERIFY(content->isVisible());
    }

    void nullAndTheSameContentChangeNothing()
    {
        TiltCard card(nullptr);
        auto *content = new QLabel;
        card.setContent(content);
        const QGraphicsEffect *shadow = content->graphicsEffect();
        card.setContent(nullptr);
        card.setContent(content);
        QCOMPARE(card.content(), content);
        QCOMPARE(content->graphicsEffect(), shadow);
    }

    // The shadow moves to the new content and works there.
    void contentIsReplaced()
    {
        TiltCard card(nullptr);
        card.resize(210, 110);
        card.show();
        auto *former = new QLabel(QStringLiteral("former"));
        card.setContent(former);
        auto *next = new QLabel(QStringLiteral("next"));
        card.setContent(next);
        QVERIFY(former->graphicsEffect() == nullptr);
        QVERIFY(!former->isVisible());
        QVERIFY(next->isVisible());
        QVERIFY(shadowOf(next) != nullptr);
        QCOMPARE(card.findChildren<QGraphicsDropShadowEffect *>().size(), 1);
        card.setHoverTarget(1);
        finish(card);
        QCOMPARE(shadowOf(next)->blurRadius(), 32.0);
        QCOMPARE(next->geometry(), QRect(3, 4, 204, 102));
        testinput::leave(former); // nobody listens
        QCOMPARE(hoverTarget(card), 1.0);
        card.setContent(former); // and back
        QVERIFY(former->isVisible());
        QCOMPARE(shadowOf(former)->blurRadius(), 32.0);
        picture(card);
    }

    void contentLosesAnEffectOfItsOwn()
    {
        TiltCard card(nullptr);
        auto *content = new QLabel;
        card.setContent(content);
        const QPointer<QGraphicsEffect> shadow = content->graphicsEffect();
        content->setGraphicsEffect(new QGraphicsOpacityEffect); // deletes the shadow
        QVERIFY(shadow.isNull());
        card.setHoverTarget(1);
        finish(card);
        auto *next = new QLabel;
        card.setContent(next);
        QVERIFY(content->graphicsEffect() == nullptr);
        QCOMPARE(shadowOf(next)->blurRadius(), 32.0);
    }

    void contentIsDeleted()
    {
        TiltCard card(nullptr);
        card.resize(100, 100);
        auto *content = new QLabel;
        card.setContent(content);
        delete content;
        QVERIFY(card.content() == nullptr);
        QCOMPARE(card.sizeHint(), QSize(96, 96));
        card.setHoverTarget(1);
        finish(card);
        card.resize(120, 120);
        QVERIFY(card.findChild<QGraphicsDropShadowEffect *>() != nullptr);
        auto *next = new QLabel;
        card.setContent(next);
        QCOMPARE(shadowOf(next)->color().alpha(), 125);
    }

    void hoverTargetIsClamped_data()
    {
        QTest::addColumn<double>("wanted");
        QTest::addColumn<double>("used");
        QTest::newRow("above") << 3.0 << 1.0;
        QTest::newRow("one") << 1.0 << 1.0;
        QTest::newRow("between") << 0.5 << 0.5;
        QTest::newRow("zero") << 0.0 << 0.0;
        QTest::newRow("below") << -1.0 << 0.0;
    }

    void hoverTargetIsClamped()
    {
        QFETCH(double, wanted);
        TiltCard card(nullptr);
        card.setHoverTarget(wanted);
        QTEST(hoverTarget(card), "used");
        QCOMPARE(animationOf(card, 150)->state(), QAbstractAnimation::Running);
    }

    void shadowFollowsHoverAndOffset_data()
    {
        QTest::addColumn<double>("hover");
        QTest::addColumn<QPointF>("offset");
        QTest::addColumn<qreal>("blur");
        QTest::addColumn<QPointF>("shadowOffset");
        QTest::addColumn<int>("alpha");
        QTest::newRow("rest") << 0.0 << QPointF(0, 0) << 18.0 << QPointF(0, 2) << 40;
        QTest::newRow("half") << 0.5 << QPointF(4, -2) << 25.0 << QPointF(1.4, 1) << 82;
        QTest::newRow("full") << 1.0 << QPointF(-5, 3.5) << 32.0 << QPointF(-1.75, 3.75) << 125;
    }

    void shadowFollowsHoverAndOffset()
    {
        QFETCH(double, hover);
        QFETCH(QPointF, offset);
        TiltCard card(nullptr);
        auto *content = new QLabel;
        card.setContent(content);
        card.setHoverTarget(hover);
        card.setOffsetTarget(offset);
        finish(card);
        QTEST(shadowOf(content)->blurRadius(), "blur");
        QTEST(shadowOf(content)->offset(), "shadowOffset");
        QFETCH(int, alpha);
        QCOMPARE(shadowOf(content)->color(), QColor(56, 142, 255, alpha));
    }

    void contentGrowsAndDrifts()
    {
        TiltCard card(nullptr);
        card.resize(210, 110);
        auto *content = new QLabel;
        card.setContent(content);
        card.setHoverTarget(1);
        card.setOffsetTarget({5, -3.5});
        finish(card);
        // 204 x 102 from (3 + 5, 4 - 3.5), rounded to whole pixels
        QCOMPARE(content->geometry(), QRectF(8, 0.5, 204, 102).toRect());
        card.resize(110, 60);
        QCoreApplication::sendPostedEvents();
        picture(card); // delivers the resize
        QCOMPARE(content->geometry(), QRectF(9, 1, 102, 51).toRect());
    }

    void pointerMovesTheTarget_data()
    {
        QTest::addColumn<QPointF>("pointer");
        QTest::addColumn<QPointF>("target");
        QTest::newRow("centre") << QPointF(100, 50) << QPointF(0, 0);
        QTest::newRow("right edge") << QPointF(200, 50) << QPointF(5, 0);
        QTest::newRow("left top") << QPointF(0, 0) << QPointF(-5, -3.5);
        QTest::newRow("half way") << QPointF(150, 75) << QPointF(2.5, 1.75);
        QTest::newRow("beyond") << QPointF(999, -999) << QPointF(5, -3.5);
    }

    void pointerMovesTheTarget()
    {
        QFETCH(QPointF, pointer);
        QFETCH(QPointF, target);
        TiltCard card(nullptr);
        card.resize(200, 100);
        moveOver(card, pointer);
        QCOMPARE(offsetTarget(card), target);
        // The same place, seen by the content.
        auto *content = new QLabel;
        card.setContent(content);
        card.setOffsetTarget({1, 1});
        moveOver(*content, content->mapFromGlobal(card.mapToGlobal(pointer)));
        QCOMPARE(offsetTarget(card), target);
    }

    void emptyCardIgnoresThePointer_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("no width") << QSize(0, 50);
        QTest::newRow("no height") << QSize(50, 0);
    }

    void emptyCardIgnoresThePointer()
    {
        QFETCH(QSize, size);
        TiltCard card(nullptr);
        card.resize(size);
        moveOver(card, {3, 3});
        QCOMPARE(animationOf(card, 140)->state(), QAbstractAnimation::Stopped);
    }

    void entersAndLeaves_data()
    {
        QTest::addColumn<bool>("byContent");
        QTest::newRow("card") << false;
        QTest::newRow("content") << true;
    }

    void entersAndLeaves()
    {
        QFETCH(bool, byContent);
        TiltCard card(nullptr);
        card.resize(200, 100);
        auto *content = new QLabel;
        card.setContent(content);
        QWidget *entered = byContent ? static_cast<QWidget *>(content) : &card;
        testinput::enter(entered);
        QCOMPARE(hoverTarget(card), 1.0);
        finish(card);
        moveOver(card, {200, 100});
        finish(card);
        const QImage tilted = picture(card);
        testinput::leave(entered);
        QCOMPARE(hoverTarget(card), 0.0);
        QCOMPARE(offsetTarget(card), QPointF(0, 0));
        QVERIFY(picture(card) != tilted); // the highlight is back in the middle
        finish(card);
        QCOMPARE(content->geometry(), QRect(5, 5, 190, 90));
    }

    // By the clock, and back from where it is.
    void turnsRoundWithoutAJump()
    {
        TiltCard card(nullptr);
        auto *content = new QLabel;
        card.setContent(content);
        card.setHoverTarget(1);
        QTRY_VERIFY(shadowOf(content)->blurRadius() > 19);
        card.setHoverTarget(0);
        QVERIFY(shadowOf(content)->blurRadius() > 19);
        QVERIFY(animationOf(card, 150)->startValue().toDouble() > 0);
        QTRY_COMPARE(shadowOf(content)->blurRadius(), 18.0);
    }

    void filterConsumesNothing()
    {
        TiltCard card(nullptr);
        auto *content = new QLabel;
        card.setContent(content);
        for (const auto type :
             {QEvent::Enter, QEvent::Leave, QEvent::MouseMove, QEvent::MouseButtonPress}) {
            QMouseEvent event(type, {1, 1}, {1, 1}, Qt::NoButton, {}, {});
            QVERIFY(!card.eventFilter(content, &event));
            QVERIFY(!card.eventFilter(&card, &event));
        }
    }

    void paintsFrameAndHighlight_data()
    {
        QTest::addColumn<double>("hover");
        QTest::addColumn<QPointF>("pointer");
        QTest::newRow("rest") << 0.0 << QPointF(100, 50);
        QTest::newRow("half, left") << 0.5 << QPointF(0, 50);
        QTest::newRow("full, corner") << 1.0 << QPointF(200, 100);
    }

    void paintsFrameAndHighlight()
    {
        QFETCH(double, hover);
        QFETCH(QPointF, pointer);
        TiltCard card(nullptr);
        card.resize(200, 100);
        moveOver(card, pointer);
        card.setHoverTarget(hover);
        finish(card);
        QImage expected(card.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::black);
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF frame(2, 2, 196, 96);
        painter.setPen(QPen(QColor(190, 220, 255, static_cast<int>(70 + 80 * hover)), 1));
        painter.setBrush(QColor(255, 255, 255, static_cast<int>(8 + 12 * hover)));
        painter.drawRoundedRect(frame, 10, 10);
        const QPointF center((pointer.x() - 100) / 100 * 196 * 0.18 + 98 + 2,
                             (pointer.y() - 50) / 50 * 96 * 0.18 + 48 + 2);
        QRadialGradient highlight(center, (0.55 + 0.08 * hover) * 196);
        highlight.setColorAt(0, QColor(120, 190, 255, static_cast<int>(46 + 48 * hover)));
        highlight.setColorAt(1, QColor(120, 190, 255, 4));
        painter.setPen(Qt::NoPen);
        painter.setBrush(highlight);
        painter.drawRoundedRect(frame, 10, 10);
        painter.end();
        QCOMPARE(picture(card), expected);
    }
};

QTEST_MAIN(TiltCardTest)
#include "TiltCardTest.moc"
