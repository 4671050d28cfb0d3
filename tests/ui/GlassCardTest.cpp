#include "ui/GlassCard.h"

#include "ui/CachedShadow.h"
#include "ui/TestInput.h"

#include <QTest>
#include <QVariantAnimation>

namespace {

QGraphicsDropShadowEffect *shadowOf(const QWidget &widget)
{
    return qobject_cast<QGraphicsDropShadowEffect *>(widget.graphicsEffect());
}

} // namespace

class GlassCardTest : public QObject
{
    Q_OBJECT

private slots:
    void startsAtRest()
    {
        const GlassCard card(nullptr);
        QCOMPARE(card.objectName(), QStringLiteral("glassCard"));
        QCOMPARE(card.frameShape(), QFrame::NoFrame);
        QVERIFY(card.testAttribute(Qt::WA_Hover));
        QVERIFY(card.testAttribute(Qt::WA_MouseTracking));
        QCOMPARE(card.property("hoverProgress").toDouble(), 0.0);
        QVERIFY(shadowOf(card) != nullptr);
        QCOMPARE(shadowOf(card)->parent(), &card);
        QCOMPARE(shadowOf(card)->offset(), QPointF(0, 4));
        QCOMPARE(shadowOf(card)->blurRadius(), 18.0);
        QCOMPARE(shadowOf(card)->color(), QColor(72, 140, 255, 38));
        const auto *animation = card.findChild<QVariantAnimation *>();
        QCOMPARE(animation->duration(), 190);
        QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutCubic);
    }

    void progressDrivesTheShadow_data()
    {
        QTest::addColumn<double>("progress");
        QTest::addColumn<double>("stored");
        QTest::addColumn<double>("blur");
        QTest::addColumn<int>("alpha");
        QTest::newRow("below") << -1.0 << 0.0 << 18.0 << 38;
        QTest::newRow("rest") << 0.0 << 0.0 << 18.0 << 38;
        QTest::newRow("truncated") << 0.01 << 0.01 << 18.14 << 38;
        QTest::newRow("half") << 0.5 << 0.5 << 25.0 << 73;
        QTest::newRow("full") << 1.0 << 1.0 << 32.0 << 108;
        QTest::newRow("above") << 1.5 << 1.0 << 32.0 << 108;
    }

    void progressDrivesTheShadow()
    {
        QFETCH(double, progress);
        GlassCard card(nullptr);
        QVERIFY(card.setProperty("hoverProgress", progress));
        QTEST(card.property("hoverProgress").toDouble(), "stored");
        QTEST(double(shadowOf(card)->blurRadius()), "blur");
        QTEST(shadowOf(card)->color().alpha(), "alpha");
        QCOMPARE(shadowOf(card)->color().rgb(), QColor(72, 140, 255).rgb());
    }

    void enterAndLeaveRunToTheEnds()
    {
        GlassCard card(nullptr);
        auto *animation = card.findChild<QVariantAnimation *>();
        testinput::enter(&card);
        QCOMPARE(animation->state(), QAbstractAnimation::Running);
        QCOMPARE(animation->endValue().toDouble(), 1.0);
        QTRY_COMPARE(card.property("hoverProgress").toDouble(), 1.0);
        testinput::leave(&card);
        QTRY_COMPARE(card.property("hoverProgress").toDouble(), 0.0);
    }

    void reenteringStartsFromTheCurrentValue()
    {
        GlassCard card(nullptr);
        card.setHoverProgress(0.4);
        testinput::enter(&card);
        const auto *animation = card.findChild<QVariantAnimation *>();
        QCOMPARE(animation->startValue().toDouble(), 0.4);
        QCOMPARE(card.property("hoverProgress").toDouble(), 0.4);
        QCOMPARE(card.findChildren<QVariantAnimation *>().size(), 1);
    }

    void pixels_data()
    {
        QTest::addColumn<double>("progress");
        QTest::addColumn<int>("topAlpha");
        QTest::addColumn<int>("bottomAlpha");
        QTest::newRow("rest") << 0.0 << 126 << 114;
        QTest::newRow("hovered") << 1.0 << 150 << 136;
    }

    void pixels()
    {
        QFETCH(double, progress);
        QFETCH(int, topAlpha);
        QFETCH(int, bottomAlpha);
        GlassCard card(nullptr);
        card.resize(400, 200);
        card.setHoverProgress(progress);
        card.graphicsEffect()->setEnabled(false);
        QImage image(card.size(), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        card.render(&image, {}, {}, QWidget::DrawChildren);
        // The gradient runs from corner to corner; in the middle both ends count the same.
        const QColor middle = image.pixelColor(200, 100);
        QVERIFY(std::abs(middle.alpha() - (topAlpha + bottomAlpha) / 2) <= 1);
        QVERIFY(std::abs(middle.red() - 11) <= 2 && std::abs(middle.blue() - 45) <= 2);
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0); // rounded off
        QVERIFY(image.pixelColor(200, 0).alpha() > middle.alpha() / 2); // the rim
    }

    void destroyedDuringItsAnimation()
    {
        auto *card = new GlassCard(nullptr);
        card->show();
        testinput::enter(card);
        QTRY_VERIFY(card->property("hoverProgress").toDouble() > 0);
        delete card;
        QCoreApplication::processEvents();
    }
};

QTEST_MAIN(GlassCardTest)
#include "GlassCardTest.moc"
