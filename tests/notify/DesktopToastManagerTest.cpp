#include "notify/DesktopToastManager.h"

#include "notify/ToastInput.h"
#include "ui/TestInput.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <chrono>
#include <memory>

using testinput::animationOf;
using testinput::isRunning;
using toastinput::bury;
using toastinput::closeButton;
using toastinput::liveToasts;
using toastinput::show;

using Position = DesktopToastManager::Position;

namespace {

constexpr Position kUnnamed = static_cast<Position>(9);
constexpr Position kNegative = static_cast<Position>(-1);

const QString kLongText = QStringLiteral("A message of several lines. ").repeated(8);

QPoint startOf(const DesktopToast *toast)
{
    return animationOf(toast, "pos")->startValue().toPoint();
}

QPoint endOf(const DesktopToast *toast)
{
    return animationOf(toast, "pos")->endValue().toPoint();
}

bool growsDown(Position position)
{
    return position == DesktopToastManager::TopRight || position == DesktopToastManager::TopLeft
        || position == DesktopToastManager::TopCenter;
}

void addPositions()
{
    QTest::addColumn<Position>("position");
    QTest::newRow("top right") << DesktopToastManager::TopRight;
    QTest::newRow("top left") << DesktopToastManager::TopLeft;
    QTest::newRow("bottom right") << DesktopToastManager::BottomRight;
    QTest::newRow("bottom left") << DesktopToastManager::BottomLeft;
    QTest::newRow("top centre") << DesktopToastManager::TopCenter;
    QTest::newRow("bottom centre") << DesktopToastManager::BottomCenter;
    QTest::newRow("6") << static_cast<Position>(6);
    QTest::newRow("9") << kUnnamed;
    QTest::newRow("-1") << kNegative;
}

class MoveCounter : public QObject
{
public:
    explicit MoveCounter(QObject *watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        moves += event->type() == QEvent::Move ? 1 : 0;
        return false;
    }
    int moves = 0;
};

} // namespace

class DesktopToastManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        bury();
        QVERIFY(liveToasts().isEmpty());
    }

    void positionsAreNumberedLikeTheSettings()
    {
        static_assert(sizeof(Position) == 4);
        static_assert(std::is_same_v<std::underlying_type_t<Position>, int>);
        QCOMPARE(int(DesktopToastManager::TopRight), 0);
        QCOMPARE(int(DesktopToastManager::TopLeft), 1);
        QCOMPARE(int(DesktopToastManager::BottomRight), 2);
        QCOMPARE(int(DesktopToastManager::BottomLeft), 3);
        QCOMPARE(int(DesktopToastManager::TopCenter), 4);
        QCOMPARE(int(DesktopToastManager::BottomCenter), 5);
    }

    void belongsToItsParent()
    {
        QObject parent;
        const QPointer<DesktopToastManager> manager = new DesktopToastManager(&parent);
        QCOMPARE(manager->parent(), &parent);
        QCOMPARE(QByteArray(manager->metaObject()->className()), QByteArray("DesktopToastManager"));
        QVERIFY(manager->metaObject()->indexOfSlot("removeToast(DesktopToast*)") >= 0);
        QCOMPARE(manager->anchorPoint(QSize(0, 0), QRect(0, 0, 1, 1)), QPoint(-16, 16));
    }

    void anchors_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QRect>("screen");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("offset");
        QTest::addColumn<QPoint>("anchor");
        const QSize toast(330, 90);
        const QPoint usual(16, 16);
        const QRect desk(0, 0, 1920, 1040);
        const QList<QPoint> deskAnchors{
            {1573, 16}, {16, 16}, {1573, 933}, {16, 933}, {810, 16}, {810, 933}};
        for (int i = 0; i < 6; ++i) {
            QTest::addRow("desk %d", i) << i << desk << toast << usual << deskAnchors[i];
        }
        for (const int unnamed : {-2147483647 - 1, -1, 6, 7, 8, 9, 2147483647}) {
            QTest::addRow("desk %d", unnamed)
                << unnamed << desk << toast << usual << deskAnchors[0];
        }
        // left of and above the primary screen: left -1281, right -2, top -1024, bottom -2
        const QRect negative(-1281, -1024, 1280, 1023);
        const QList<QPoint> negativeAnchors{
            {-352, -994}, {-1271, -994}, {-352, -123}, {-1271, -123}, {-801, -994}, {-801, -123}};
        for (int i = 0; i < 6; ++i) {
            QTest::addRow("negative %d", i)
                << i << negative << QSize(340, 91) << QPoint(10, 30) << negativeAnchors[i];
        }
        // odd everything: left 1921, right 3285, top 3, bottom 769
        const QRect odd(1921, 3, 1365, 767);
        const QList<QPoint> oddAnchors{
            {2955, 3}, {1921, 3}, {2955, 692}, {1921, 692}, {2438, 3}, {2438, 692}};
        for (int i = 0; i < 6; ++i) {
            QTest::addRow("odd %d", i)
                << i << odd << QSize(329 + 1, 77) << QPoint(0, 0) << oddAnchors[i];
        }
        // halves are cut off towards zero: (-3 + 0) / 2 = -1, and 331 / 2 = 165
        QTest::newRow("towards zero")
            << 4 << QRect(-3, 0, 4, 4) << QSize(331, 5) << QPoint(0, 0) << QPoint(-166, 0);
        QTest::newRow("largest offsets")
            << 2 << desk << toast << QPoint(120, 120) << QPoint(1469, 829);
        QTest::newRow("screen smaller than the toast")
            << 2 << QRect(0, 0, 100, 50) << toast << usual << QPoint(-247, -57);
    }

    void anchors()
    {
        QFETCH(int, position);
        QFETCH(QRect, screen);
        QFETCH(QSize, size);
        QFETCH(QPoint, offset);
        DesktopToastManager manager(nullptr);
        manager.setPosition(static_cast<Position>(position));
        manager.setOffset(offset.x(), offset.y());
        QTEST(manager.anchorPoint(size, screen), "anchor");
    }

    void firstAndSecondToast_data() { addPositions(); }

    void firstAndSecondToast()
    {
        QFETCH(Position, position);
        DesktopToastManager manager(nullptr);
        manager.setPosition(position);
        const QRect screen = manager.activeScreenGeometry();
        const int direction = growsDown(position) ? 1 : -1;
        const QPoint slide(0, 22 * direction);

        const DesktopToast *first = show(manager, kLongText);
        QCOMPARE(endOf(first), manager.anchorPoint(first->size(), screen));
        QCOMPARE(startOf(first), endOf(first) - slide);
        QCOMPARE(first->pos(), startOf(first));
        QVERIFY(first->isVisible());
        QVERIFY(first->parent() == nullptr);

        const DesktopToast *second = show(manager);
        QVERIFY(second->height() != first->height());
        const QPoint stacked(0, direction * (first->height() + 10));
        QCOMPARE(endOf(second), manager.anchorPoint(second->size(), screen) + stacked);
        QCOMPARE(startOf(second), endOf(second) - slide);

        const DesktopToast *third = show(manager);
        QCOMPARE(endOf(third), endOf(second) + QPoint(0, direction * (second->height() + 10)));
        QTRY_VERIFY(animationOf(third, "pos") == nullptr);
        QCOMPARE(first->pos(), manager.anchorPoint(first->size(), screen)); // nobody pushed it
    }

    void relayoutPutsTheNewestNearest_data() { addPositions(); }

    void relayoutPutsTheNewestNearest()
    {
        QFETCH(Position, position);
        DesktopToastManager manager(nullptr);
        manager.setPosition(position);
        const DesktopToast *oldest = show(manager, kLongText);
        const DesktopToast *middle = show(manager);
        const DesktopToast *newest = show(manager, kLongText.left(60));
        manager.relayout();
        const QRect screen = manager.activeScreenGeometry();
        const int direction = growsDown(position) ? 1 : -1;
        int stacked = 0;
        for (const DesktopToast *toast : {newest, middle, oldest}) {
            const QPoint base = manager.anchorPoint(toast->size(), screen);
            QCOMPARE(toast->pos(), base + QPoint(0, direction * stacked));
            stacked += toast->height() + 10;
        }
    }

    void settingsRestackAtOnce()
    {
        DesktopToastManager manager(nullptr);
        const DesktopToast *toast = show(manager);
        QTRY_VERIFY(!isRunning(toast, "pos"));
        const QRect screen = manager.activeScreenGeometry();
        manager.setOffset(100, 50);
        QCOMPARE(toast->pos(), QPoint(screen.right() - 330 - 100, screen.top() + 50));
        manager.setPosition(DesktopToastManager::BottomLeft);
        QCOMPARE(toast->pos(), QPoint(screen.left() + 100, screen.bottom() - toast->height() - 50));
        manager.setOffset(-5, 0);
        QCOMPARE(toast->pos(), QPoint(screen.left() - 5, screen.bottom() - toast->height()));
        QVERIFY(animationOf(toast, "pos") == nullptr);
    }

    // Otherwise the slide would drag the toast to where its place was when it appeared.
    void restackingOutlastsTheSlide()
    {
        DesktopToastManager manager(nullptr);
        DesktopToast *first = show(manager);
        const DesktopToast *second = show(manager);
        QVERIFY(isRunning(second, "pos"));
        closeButton(first)->click();
        const QPoint anchor = manager.anchorPoint(second->size(), manager.activeScreenGeometry());
        QCOMPARE(second->pos(), anchor);
        QTRY_COMPARE(second->windowOpacity(), 1.0);
        QCOMPARE(second->pos(), anchor);
    }

    void closingMovesTheOthersUp()
    {
        DesktopToastManager manager(nullptr);
        const QPointer<DesktopToast> first = show(manager);
        const DesktopToast *second = show(manager);
        QTRY_VERIFY(animationOf(second, "pos") == nullptr);
        const QPoint anchor = manager.anchorPoint(second->size(), manager.activeScreenGeometry());
        QCOMPARE(second->pos(), anchor + QPoint(0, first->height() + 10));
        closeButton(first)->click();
        QCOMPARE(second->pos(), anchor);
        QVERIFY(!first.isNull()); // on the next turn of the event loop
        bury();
        QVERIFY(first.isNull());
    }

    void askedTwice()
    {
        DesktopToastManager manager(nullptr);
        const QPointer<DesktopToast> toast = show(manager);
        const DesktopToast *other = show(manager);
        toast->animateHide();
        QVERIFY(animationOf(toast, "windowOpacity") != nullptr);
        closeButton(toast)->click();
        closeButton(toast)->click();
        emit toast->closeRequested(toast); // the end of the fade
        QCOMPARE(other->pos(), manager.anchorPoint(other->size(), manager.activeScreenGeometry()));
        bury();
        QVERIFY(toast.isNull());
        QCOMPARE(liveToasts().size(), 1);
    }

    void fadeEndsARemovedToast()
    {
        DesktopToastManager manager(nullptr);
        const QPointer<DesktopToast> toast = show(manager);
        toast->animateHide();
        QTRY_VERIFY(toast.isNull());
    }

    void removesWhatItDoesNotKnow()
    {
        DesktopToastManager manager(nullptr);
        const DesktopToast *known = show(manager);
        manager.removeToast(nullptr);
        const QPointer<DesktopToast> stranger = new DesktopToast;
        manager.removeToast(stranger);
        bury();
        QVERIFY(stranger.isNull());
        QCOMPARE(known->pos(), manager.anchorPoint(known->size(), manager.activeScreenGeometry()));
        QCOMPARE(liveToasts().size(), 1);
    }

    void destroyedToastsTakeNoRoom()
    {
        DesktopToastManager manager(nullptr);
        delete show(manager);
        const DesktopToast *second = show(manager);
        const QPoint anchor = manager.anchorPoint(second->size(), manager.activeScreenGeometry());
        QCOMPARE(endOf(second), anchor);
        delete show(manager);
        manager.relayout();
        QCOMPARE(second->pos(), anchor);
        manager.removeToast(nullptr);
        manager.relayout();
        QCOMPARE(second->pos(), anchor);
    }

    void destroyedWithLiveToasts()
    {
        auto manager = std::make_unique<DesktopToastManager>(nullptr);
        const QPointer<DesktopToast> standing = show(*manager);
        const QPointer<DesktopToast> dismissed = show(*manager, QStringLiteral("Text"), true);
        const QPointer<DesktopToast> fading = show(*manager);
        fading->animateHide();
        delete show(*manager);
        manager.reset();
        for (const auto &toast : {standing, dismissed, fading}) {
            QVERIFY(!toast.isNull());
            QVERIFY(toast->isHidden());
        }
        emit standing->closeRequested(standing); // reaches nobody
        bury();
        QVERIFY(standing.isNull() && dismissed.isNull() && fading.isNull());
    }

    void dismissesItself()
    {
        using namespace std::chrono_literals;
        DesktopToastManager manager(nullptr);
        QElapsedTimer clock;
        clock.start();
        const QPointer<DesktopToast> passing = show(manager, QStringLiteral("Text"), true);
        const QPointer<DesktopToast> staying = show(manager);
        delete show(manager, QStringLiteral("Text"), true); // dies before its time
        QTRY_VERIFY(animationOf(passing, "windowOpacity") == nullptr);
        QCOMPARE(passing->windowOpacity(), 1.0);
        QTRY_VERIFY(animationOf(passing, "windowOpacity") != nullptr);
        QVERIFY(clock.elapsed() >= 3200);
        QVERIFY(clock.elapsed() < 3200 + 1000); // a busy machine is late, never early
        QCOMPARE(animationOf(passing, "windowOpacity")->duration(), 170);
        QTRY_VERIFY(passing.isNull());
        QVERIFY(clock.elapsed() >= 3200 + 170);
        QVERIFY(!staying.isNull());
        QVERIFY(animationOf(staying, "windowOpacity") == nullptr);
        QCOMPARE(staying->pos(),
                 manager.anchorPoint(staying->size(), manager.activeScreenGeometry()));
    }

    // Each of them would else move all that are left: with hundreds, the window would stand still meanwhile.
    void manyThatFadeTogetherMoveTheRestOnce()
    {
        constexpr int kFading = 60;
        DesktopToastManager manager(nullptr);
        DesktopToast *oldest = show(manager);
        QList<QPointer<DesktopToast>> fading;
        for (int i = 0; i < kFading; ++i) {
            fading.append(show(manager));
        }
        manager.relayout(); // ends the slides
        MoveCounter counter(oldest);
        for (DesktopToast *toast : fading) {
            toast->animateHide(); // all in one turn of the event loop, and so is their end
        }
        QTRY_COMPARE(liveToasts().size(), 1);
        QCOMPARE(oldest->pos(),
                 manager.anchorPoint(oldest->size(), manager.activeScreenGeometry()));
        QCOMPARE(counter.moves, 1);
    }

    void thereIsNoLimit()
    {
        DesktopToastManager manager(nullptr);
        QList<DesktopToast *> shown;
        for (int i = 0; i < 200; ++i) {
            shown.append(show(manager));
        }
        for (const DesktopToast *toast : shown) {
            QVERIFY(toast->isVisible());
        }
        const int step = shown.first()->height() + 10;
        const QPoint anchor =
            manager.anchorPoint(shown.first()->size(), manager.activeScreenGeometry());
        QCOMPARE(endOf(shown.last()), anchor + QPoint(0, 199 * step));
        while (shown.size() > 1) {
            closeButton(shown.takeAt(shown.size() / 2))->click();
            QCOMPARE(shown.last()->pos(), anchor);
            QCOMPARE(shown.first()->pos(), anchor + QPoint(0, (int(shown.size()) - 1) * step));
        }
        bury();
        QCOMPARE(liveToasts().size(), 1);
    }
};

QTEST_MAIN(DesktopToastManagerTest)
#include "DesktopToastManagerTest.moc"
