#include "ui/AnimatedNav.h"
#include "ui/NavButton.h"
#include "ui/TestInput.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>

using testinput::animationOf;
using testinput::isRunning;

namespace {

// Eight items with page indexes 0, 10, 20 ..., so that positions and indexes differ.
std::unique_ptr<SidebarNav> createSidebar()
{
    auto sidebar = std::make_unique<AnimatedNav>(nullptr);
    for (int i = 0; i < 8; ++i) {
        sidebar->addItem(QStringLiteral("Page %1").arg(i), QIcon(), i * 10);
    }
    sidebar->resize(82, 600);
    return sidebar;
}

int placeOf(const SidebarNav &sidebar, int position)
{
    const NavButton *button = sidebar.items().at(position);
    return button->mapTo(&sidebar, QPoint(0, 0)).y() + 7;
}

QTimer *collapseTimer(const SidebarNav &sidebar)
{
    return sidebar.findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
}

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, {});
    return image;
}

} // namespace

class SidebarNavTest : public QObject
{
    Q_OBJECT

private slots:
    void startsAsDesigned()
    {
        const AnimatedNav sidebar(nullptr);
        QCOMPARE(sidebar.objectName(), QStringLiteral("sidebar"));
        QVERIFY(sidebar.testAttribute(Qt::WA_MouseTracking));
        QVERIFY(sidebar.testAttribute(Qt::WA_Hover));
        QCOMPARE(sidebar.minimumWidth(), 82);
        QCOMPARE(sidebar.maximumWidth(), 82);
        QCOMPARE(sidebar.current(), -1);
        QVERIFY(!sidebar.isExpanded());
        QCOMPARE(sidebar.spotlight(), QPointF(12, 60));
        QCOMPARE(sidebar.layout()->contentsMargins(), QMargins(10, 10, 10, 10));
        QCOMPARE(sidebar.layout()->spacing(), 10);
        QCOMPARE(QByteArray(sidebar.metaObject()->className()), QByteArray("AnimatedNav"));
        const auto *timer = collapseTimer(sidebar);
        QVERIFY(timer->isSingleShot());
        QCOMPARE(timer->interval(), 160);
    }

    void badge()
    {
        const AnimatedNav sidebar(nullptr);
        const auto *badge = qobject_cast<QLabel *>(sidebar.layout()->itemAt(0)->widget());
        QCOMPARE(badge->text(), QStringLiteral("VPO"));
        QCOMPARE(badge->minimumHeight(), 58);
        QCOMPARE(badge->alignment(), Qt::AlignCenter);
        QCOMPARE(badge->styleSheet(),
                 QStringLiteral("QLabel { color: #e8f3ff; font-size: 22px; font-weight: 800; "
                                "border-radius: 12px; border: 1px "
                                "solid rgba(188,220,255,90); background: "
                                "qlineargradient(x1:0,y1:0,x2:1,y2:1, stop:0 "
                                "rgba(44,74,112,130), stop:1 rgba(21,38,63,110));}"));
    }

    void animations_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<int>("duration");
        QTest::newRow("width") << QByteArray("minimumWidth") << 210;
        QTest::newRow("indicator") << QByteArray("indicatorY") << 200;
        QTest::newRow("spotlight") << QByteArray("spotlightAlpha") << 170;
    }

    void animations()
    {
        QFETCH(QByteArray, property);
        const AnimatedNav sidebar(nullptr);
        const auto *animation = animationOf(&sidebar, property);
        QVERIFY(animation != nullptr);
        QTEST(animation->duration(), "duration");
        QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutCubic);
    }

    void itemsTakeTheSidebarsState()
    {
        AnimatedNav sidebar(nullptr);
        sidebar.setAccentColor(Qt::red);
        sidebar.setExpanded(true, false);
        sidebar.addItem(QStringLiteral("Late"), QIcon(), 3);
        QCOMPARE(sidebar.items().size(), 1);
        QCOMPARE(sidebar.items().constFirst()->accent(), QColor(Qt::red));
        QVERIFY(sidebar.items().constFirst()->isExpanded());
        const QMargins margins =
            sidebar.items().constFirst()->parentWidget()->layout()->contentsMargins();
        QCOMPARE(margins, QMargins(0, 4, 0, 4));
        QCOMPARE(sidebar.items().constFirst()->parentWidget()->layout()->spacing(), 8);
    }

    void clickOnlyTells()
    {
        const auto sidebar = createSidebar();
        sidebar->show();
        sidebar->setCurrentIndex(20);
        QSignalSpy selected(sidebar.get(), &SidebarNav::navSelected);
        QTest::mouseClick(sidebar->items().at(5), Qt::LeftButton, {}, {20, 20});
        QCOMPARE(selected.count(), 1);
        QCOMPARE(selected.takeFirst().constFirst().toInt(), 50);
        QCOMPARE(sidebar->current(), 20);
        QTest::mouseClick(sidebar->items().at(2), Qt::LeftButton, {}, {20, 20}); // the current one
        QCOMPARE(selected.takeFirst().constFirst().toInt(), 20);
        QCOMPARE(sidebar->current(), 20);
    }

    void currentIndexMarksOneButtonAndSlidesTheBar()
    {
        const auto sidebar = createSidebar();
        sidebar->show();
        sidebar->setCurrentIndex(30);
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(sidebar->items().at(i)->isActive(), i == 3);
        }
        QVERIFY(isRunning(sidebar.get(), "indicatorY"));
        QTRY_COMPARE(sidebar->property("indicatorY").toInt(), placeOf(*sidebar, 3));
        sidebar->setCurrentIndex(30);
        QVERIFY(!isRunning(sidebar.get(), "indicatorY"));
    }

    void unknownIndexLeavesTheBar()
    {
        const auto sidebar = createSidebar();
        sidebar->show();
        sidebar->setCurrentIndex(10);
        QTRY_COMPARE(sidebar->property("indicatorY").toInt(), placeOf(*sidebar, 1));
        sidebar->setCurrentIndex(99);
        QCOMPARE(sidebar->current(), 99);
        QVERIFY(!isRunning(sidebar.get(), "indicatorY"));
        QCOMPARE(sidebar->property("indicatorY").toInt(), placeOf(*sidebar, 1));
        const QColor bar = picture(*sidebar).pixelColor(8, placeOf(*sidebar, 1) + 10);
        QVERIFY(bar.blue() > 150); // still drawn
        sidebar->setCurrentIndex(-1);
        QVERIFY(picture(*sidebar).pixelColor(8, placeOf(*sidebar, 1) + 10).blue()
                < 100); // not drawn
    }

    void resizeMovesTheBarAtOnce()
    {
        const auto sidebar = createSidebar();
        sidebar->setCurrentIndex(70); // before there is any layout
        sidebar->show();
        QCOMPARE(sidebar->property("indicatorY").toInt(), placeOf(*sidebar, 7));
        QVERIFY(!isRunning(sidebar.get(), "indicatorY"));
        sidebar->setCurrentIndex(0);
        QVERIFY(isRunning(sidebar.get(), "indicatorY"));
        sidebar->resize(82, 640);
        QVERIFY(!isRunning(sidebar.get(), "indicatorY"));
        QCOMPARE(sidebar->property("indicatorY").toInt(), placeOf(*sidebar, 0));
    }

    void barIsFourWide()
    {
        const auto sidebar = createSidebar();
        sidebar->setCurrentIndex(0);
        sidebar->show();
        const int y = placeOf(*sidebar, 0) + 22;
        const QImage image = picture(*sidebar);
        for (int x = 6; x < 10; ++x) {
            QVERIFY(image.pixelColor(x, y).blue() > 120);
        }
        QVERIFY(image.pixelColor(5, y).blue() < 100);
        QVERIFY(image.pixelColor(10, y).blue() < 100);
    }

    void spotlightIsClamped()
    {
        AnimatedNav sidebar(nullptr);
        for (const auto &[set, expected] :
             {std::pair(2.0, 1.0), std::pair(-3.0, 0.0), std::pair(0.25, 0.25)}) {
            sidebar.setProperty("spotlightAlpha", set);
            QCOMPARE(sidebar.property("spotlightAlpha").toDouble(), expected);
        }
    }

    void expandsWithoutAnimation()
    {
        const auto sidebar = createSidebar();
        sidebar->setExpanded(true, false);
        QCOMPARE(sidebar->minimumWidth(), 190);
        QCOMPARE(sidebar->maximumWidth(), 190);
        for (NavButton *button : sidebar->items()) {
            QVERIFY(button->isExpanded());
        }
        sidebar->setExpanded(false, false);
        QCOMPARE(sidebar->minimumWidth(), 82);
        QCOMPARE(sidebar->maximumWidth(), 82);
    }

    void widthLimitsMoveTogether()
    {
        QWidget window;
        auto *layout = new QHBoxLayout(&window);
        auto *sidebar = new AnimatedNav(&window);
        layout->addWidget(sidebar);
        layout->addStretch(1);
        window.resize(500, 300);
        window.show();
        sidebar->setExpanded(true, true);
        bool together = true;
        connect(animationOf(sidebar, "minimumWidth"), &QPropertyAnimation::valueChanged, this, [&] {
            together = together && sidebar->minimumWidth() == sidebar->maximumWidth();
        });
        QTRY_COMPARE(sidebar->minimumWidth(), 190);
        QVERIFY(together);
        QTRY_COMPARE(sidebar->width(), 190);
    }

    void cursorWidensAndNarrows()
    {
        const auto sidebar = createSidebar();
        sidebar->show();
        testinput::enter(sidebar.get());
        QVERIFY(sidebar->isExpanded());
        QTRY_COMPARE(sidebar->property("spotlightAlpha").toDouble(), 1.0);
        QTRY_COMPARE(sidebar->maximumWidth(), 190);
        testinput::leave(sidebar.get());
        QVERIFY(sidebar->isExpanded()); // not yet
        QVERIFY(collapseTimer(*sidebar)->isActive());
        QTRY_VERIFY(!sidebar->isExpanded());
        QTRY_COMPARE(sidebar->maximumWidth(), 82);
        QTRY_COMPARE(sidebar->property("spotlightAlpha").toDouble(), 0.0);
    }

    void comingBackInTimeKeepsItWide()
    {
        const auto sidebar = createSidebar();
        sidebar->show();
        testinput::enter(sidebar.get());
        testinput::leave(sidebar.get());
        testinput::enter(sidebar.get());
        QVERIFY(!collapseTimer(*sidebar)->isActive());
        QTRY_COMPARE(sidebar->maximumWidth(), 190);
        QVERIFY(sidebar->isExpanded());
    }

    void spotlightFollowsTheCursor()
    {
        const auto sidebar = createSidebar();
        testinput::mouse(sidebar.get(),
                         QEvent::MouseMove,
                         sidebar->mapToGlobal(QPointF(5, 123)),
                         Qt::NoButton,
                         {});
        QCOMPARE(sidebar->spotlight(), QPointF(41, 123));
    }

    void accentReachesEveryButton()
    {
        const auto sidebar = createSidebar();
        sidebar->setAccentColor(QColor(1, 2, 3));
        for (NavButton *button : sidebar->items()) {
            QCOMPARE(button->accent(), QColor(1, 2, 3));
        }
    }

    void rightToLeftChangesNothing()
    {
        const auto sidebar = createSidebar();
        sidebar->setCurrentIndex(20);
        sidebar->show();
        const QImage leftToRight = picture(*sidebar);
        sidebar->setLayoutDirection(Qt::RightToLeft);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(picture(*sidebar), leftToRight);
        QCOMPARE(sidebar->property("indicatorY").toInt(), placeOf(*sidebar, 2));
    }

    void tabReachesTheButtonsInOrder()
    {
        const auto sidebar = createSidebar();
        sidebar->show();
        sidebar->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(sidebar.get()));
        sidebar->items().constFirst()->setFocus();
        for (int i = 1; i < 8; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QVERIFY(sidebar->items().at(i)->hasFocus());
        }
        QSignalSpy selected(sidebar.get(), &SidebarNav::navSelected);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(selected.takeFirst().constFirst().toInt(), 70);
    }

    void destroyedDuringEveryAnimation()
    {
        auto sidebar = createSidebar();
        sidebar->show();
        sidebar->setCurrentIndex(10);
        testinput::enter(sidebar.get());
        testinput::enter(sidebar->items().at(1));
        QTest::mousePress(sidebar->items().at(1), Qt::LeftButton, {}, {20, 20});
        QCoreApplication::processEvents();
        sidebar.reset();
        QCoreApplication::processEvents();
    }
};

QTEST_MAIN(SidebarNavTest)
#include "SidebarNavTest.moc"
