#include "ui/Glow.h"

#include "ui/GlassCard.h"
#include "ui/Theme.h"

#include <QGraphicsDropShadowEffect>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QVBoxLayout>
#include <QVariantAnimation>
#include <algorithm>
#include <cmath>

namespace {

QGraphicsDropShadowEffect *shadowOf(const QWidget &widget)
{
    return qobject_cast<QGraphicsDropShadowEffect *>(widget.graphicsEffect());
}

} // namespace

class GlowTest : public QObject
{
    Q_OBJECT

private slots:
    void cardsHaveTitleAndAccentLine()
    {
        QWidget parent;
        GlassCard *card = createGlassCard(&parent, QStringLiteral("RAM"));
        QCOMPARE(card->parentWidget(), &parent);
        auto *layout = qobject_cast<QVBoxLayout *>(card->layout());
        QVERIFY(layout != nullptr);
        QCOMPARE(layout->contentsMargins(), QMargins(18, 16, 18, 16));
        QCOMPARE(layout->spacing(), 10);
        QCOMPARE(layout->count(), 2);
        const auto *title = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
        QCOMPARE(title->objectName(), QStringLiteral("cardTitle"));
        QCOMPARE(title->text(), QStringLiteral("RAM"));
        const QWidget *line = layout->itemAt(1)->widget();
        QCOMPARE(line->objectName(), QStringLiteral("cardAccentLine"));
        QCOMPARE(line->minimumHeight(), 2);
        QCOMPARE(line->maximumHeight(), 2);
        QVERIFY(qobject_cast<const QFrame *>(line) != nullptr);
    }

    void borderOfTheSheetTakesNoRoom()
    {
        QWidget parent;
        GlassCard *card = createGlassCard(&parent, QStringLiteral("RAM"));
        parent.setStyleSheet(theme::styleSheet(theme::initialAccent()));
        card->resize(300, 200);
        parent.show();
        QTRY_COMPARE(card->layout()->itemAt(1)->widget()->x(), 18);
        QCOMPARE(card->layout()->itemAt(0)->widget()->y(), 16);
        QCOMPARE(card->layout()->itemAt(1)->widget()->width(), 300 - 36);
    }

    void glowReplacesAnyEffect()
    {
        QPushButton button;
        button.setGraphicsEffect(new QGraphicsOpacityEffect);
        applyGlow(&button, QColor(58, 126, 255, 40), 24);
        QVERIFY(shadowOf(button) != nullptr);
        QCOMPARE(shadowOf(button)->blurRadius(), 24.0);
        QCOMPARE(shadowOf(button)->color(), QColor(58, 126, 255, 40));
        QCOMPARE(shadowOf(button)->offset(), QPointF(0, 0));
        applyGlow(&button, Qt::red, 5);
        QCOMPARE(shadowOf(button)->blurRadius(), 5.0);
    }

    void glowLeavesCardsAlone()
    {
        GlassCard card(nullptr);
        const QGraphicsEffect *before = card.graphicsEffect();
        applyGlow(&card, Qt::red, 99);
        QCOMPARE(card.graphicsEffect(), before);
        QCOMPARE(shadowOf(card)->blurRadius(), 18.0);
        applyGlow(nullptr, Qt::red, 1); // harmless
    }

    void standardGlow()
    {
        QCOMPARE(standardGlowColor(), QColor(58, 126, 255, 40));
        QCOMPARE(kStandardGlowRadius, 24);
    }

    void sliderAtRest()
    {
        QSlider slider;
        applySliderInteractionGlow(&slider, QColor(10, 20, 30, 5));
        QCOMPARE(shadowOf(slider)->blurRadius(), 10.0);
        QCOMPARE(shadowOf(slider)->offset(), QPointF(0, 0));
        QCOMPARE(shadowOf(slider)->color(), QColor(10, 20, 30, 70));
        const auto *pulse = slider.findChild<QVariantAnimation *>();
        QCOMPARE(pulse->duration(), 820);
        QCOMPARE(pulse->loopCount(), -1);
        QCOMPARE(pulse->easingCurve().type(), QEasingCurve::InOutSine);
        QCOMPARE(pulse->startValue().toDouble(), 0.0);
        QCOMPARE(pulse->endValue().toDouble(), 1.0);
        QCOMPARE(pulse->state(), QAbstractAnimation::Stopped);
    }

    void pressedSliderPulses()
    {
        QSlider slider;
        applySliderInteractionGlow(&slider, QColor(10, 20, 30));
        auto *pulse = slider.findChild<QVariantAnimation *>();
        slider.setSliderDown(true);
        QCOMPARE(pulse->state(), QAbstractAnimation::Running);
        for (const int time : {100, 205, 410, 615, 800}) {
            pulse->setCurrentTime(time);
            const double value = pulse->currentValue().toDouble();
            QCOMPARE(double(shadowOf(slider)->blurRadius()), 18 + 8 * value);
            const int alpha =
                std::clamp(static_cast<int>(120 + 70 * std::sin(value * 6.28318)), 90, 220);
            QCOMPARE(shadowOf(slider)->color(), QColor(10, 20, 30, alpha));
        }
    }

    // On the first press the pressed values or the pulse's first value show, until the next tick.
    void firstPressShowsOneOfTwo()
    {
        QSlider slider;
        applySliderInteractionGlow(&slider, QColor(10, 20, 30));
        slider.setSliderDown(true);
        const double blur = shadowOf(slider)->blurRadius();
        QVERIFY((blur == 22.0 && shadowOf(slider)->color().alpha() == 145)
                || (blur >= 18.0 && blur < 19.0));
    }

    void releasedBeforeTheFirstTick()
    {
        QSlider slider;
        applySliderInteractionGlow(&slider, QColor(10, 20, 30));
        slider.setSliderDown(true);
        slider.setSliderDown(false);
        QCOMPARE(slider.findChild<QVariantAnimation *>()->state(), QAbstractAnimation::Stopped);
        QCOMPARE(shadowOf(slider)->blurRadius(), 10.0);
        QCOMPARE(shadowOf(slider)->color(), QColor(10, 20, 30, 70));
    }

    void anotherEffectEndsThePulse()
    {
        QSlider slider;
        applySliderInteractionGlow(&slider, QColor(10, 20, 30));
        slider.setGraphicsEffect(nullptr);
        slider.setSliderDown(true);
        slider.setSliderDown(false); // must not touch the effect that is gone
        QVERIFY(slider.graphicsEffect() == nullptr);
    }

    void destroyedWhilePulsing()
    {
        auto *slider = new QSlider;
        applySliderInteractionGlow(slider, QColor(10, 20, 30));
        slider->setSliderDown(true);
        delete slider;
        QCoreApplication::processEvents();
    }

    // A page with hundreds of other things is not painted because a button's glow grows.
    void changedGlowsRepaintWhatTheyReach()
    {
        class Page : public QWidget
        {
        public:
            QRegion painted;

        protected:
            void paintEvent(QPaintEvent *event) override { painted += event->region(); }
        };
        Page page;
        page.resize(400, 300);
        auto *button = new QPushButton(&page);
        button->setGeometry(100, 100, 80, 30);
        applyGlow(button, standardGlowColor(), 10);
        page.show();
        QTRY_VERIFY(page.painted.contains(page.rect().center()));
        QCoreApplication::processEvents();
        for (const qreal blur : {24.0, 8.0}) {
            page.painted = QRegion();
            setGlow(shadowOf(*button), Qt::red, blur, 90);
            QTRY_VERIFY(!page.painted.isEmpty());
            const QRect reached = button->geometry().adjusted(-24, -24, 24, 24);
            QCOMPARE(page.painted.boundingRect(),
                     reached); // grown, and where it was before it shrank
            QVERIFY(page.updatesEnabled());
        }
    }

    void glowsOfWindowsAndHiddenWidgetsChangeToo()
    {
        QWidget window;
        applyGlow(&window, standardGlowColor(), 10);
        setGlow(shadowOf(window), Qt::red, 20, 90);
        QCOMPARE(shadowOf(window)->blurRadius(), 20.0);
        auto *child = new QWidget(&window);
        window.setUpdatesEnabled(false);
        applyGlow(child, standardGlowColor(), 10);
        setGlow(shadowOf(*child), Qt::red, 30, 90);
        QCOMPARE(shadowOf(*child)->blurRadius(), 30.0);
        QVERIFY(!window.updatesEnabled()); // as it was
    }
};

QTEST_MAIN(GlowTest)
#include "GlowTest.moc"
