// Thousands of things that a hurried user does, in seeded disorder; and windows that die in the middle of it.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "ui/AnimatedNav.h"
#include "ui/NavButton.h"
#include "ui/TestInput.h"

#include <QAbstractAnimation>
#include <QRandomGenerator>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <memory>

namespace {

void oneStep(MainWindow &window, QRandomGenerator &random)
{
    const auto widgets = window.findChildren<QWidget *>();
    QWidget *any = widgets.at(random.bounded(static_cast<int>(widgets.size())));
    const QPointF place = any->mapToGlobal(QPointF(random.bounded(200), random.bounded(60)));
    switch (random.bounded(9)) {
    case 0:
        window.onNavChanged(random.bounded(-1, 9));
        break;
    case 1:
        testinput::enter(any);
        break;
    case 2:
        testinput::leave(any);
        break;
    case 3:
        testinput::mouse(window.sidebar->items().at(random.bounded(8)),
                         QEvent::MouseButtonPress,
                         place,
                         Qt::LeftButton,
                         Qt::LeftButton);
        break;
    case 4:
        testinput::mouse(window.sidebar->items().at(random.bounded(8)),
                         QEvent::MouseButtonRelease,
                         place,
                         Qt::LeftButton,
                         {});
        break;
    case 5:
        window.resize(random.bounded(300, 1400), random.bounded(200, 900));
        break;
    case 6:
        window.sidebar->setExpanded(random.bounded(2) == 1, random.bounded(2) == 1);
        break;
    case 7:
        testinput::mouse(window.sidebar, QEvent::MouseMove, place, Qt::NoButton, {});
        break;
    default:
        window.onAccentHueChanged(random.bounded(360));
        break;
    }
}

bool isQuiet(const MainWindow &window)
{
    const auto animations = window.findChildren<QAbstractAnimation *>();
    return std::none_of(
        animations.begin(), animations.end(), [](const QAbstractAnimation *animation) {
            return animation->state() == QAbstractAnimation::Running;
        });
}

void calmDown(MainWindow &window)
{
    const auto widgets = window.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        testinput::leave(widget);
    }
    QTRY_VERIFY_WITH_TIMEOUT(isQuiet(window), 10000);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class RandomWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fakes::scriptedPlatform() = {}; }

    void tenThousandSteps()
    {
        MainWindow window;
        window.show();
        QRandomGenerator random(20261121);
        // Every widget has been hovered once before the count, since that is when its glow is made.
        const auto widgets = window.findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            testinput::enter(widget);
        }
        for (int page = 0; page < 8; ++page) {
            window.onNavChanged(page);
        }
        calmDown(window);
        const auto children = window.findChildren<QObject *>().size();

        constexpr int kSteps = 10000;
        constexpr int kStepsPerPaint = 100;
        for (int step = 0; step < kSteps; ++step) {
            oneStep(window, random);
            if (step % kStepsPerPaint == 0) {
                QCoreApplication::processEvents();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            }
        }
        calmDown(window);
        QCOMPARE(window.findChildren<QObject *>().size(), children);
        for (int page = 0; page < 8; ++page) {
            const QWidget *widget = window.pageStack->widget(page);
            QVERIFY(widget->graphicsEffect() == nullptr);
            QCOMPARE(widget->pos(),
                     window.pageStack->contentsRect().topLeft()); // also while it is hidden
        }
    }

    void destroyedInTheMiddle()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 20; ++round) {
            auto window = std::make_unique<MainWindow>();
            if (round % 4 != 0) {
                window->show();
            }
            for (int step = 0; step < round * 10; ++step) {
                oneStep(*window, random);
            }
            if (round % 2 == 0) {
                QCoreApplication::processEvents();
            }
            window.reset();
            QCoreApplication::processEvents();
        }
    }
};

QTEST_MAIN(RandomWalkTest)
#include "RandomWalkTest.moc"
