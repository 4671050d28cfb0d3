// The frame: construction, size, dragging, mask, backdrop, timers, navigation.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "monitor/ProcessWatcherWidget.h"
#include "pcconfig/PCConfigPage.h"
#include "ui/AnimatedNav.h"
#include "ui/GlassCard.h"
#include "ui/NavButton.h"
#include "ui/PageTransitions.h"
#include "ui/ParticleCanvas.h"
#include "ui/TestInput.h"

#include <QApplication>
#include <QGraphicsDropShadowEffect>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStyle>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QVariantAnimation>
#include <memory>

namespace {

const QStringList kPageNames{QStringLiteral("Dashboard"),
                             QStringLiteral("Cleaner"),
                             QStringLiteral("Startup"),
                             QStringLiteral("Proc Watch"),
                             QStringLiteral("PC Config"),
                             QStringLiteral("Network"),
                             QStringLiteral("Settings"),
                             QStringLiteral("Logs")};

QGraphicsDropShadowEffect *shadowOf(const QWidget *widget)
{
    return qobject_cast<QGraphicsDropShadowEffect *>(widget->graphicsEffect());
}

// The pixels that differ from those of the button without its text, top to bottom.
QList<QPoint> glyphPixels(QToolButton *button)
{
    const QImage with = button->grab().toImage();
    const QString glyph = button->text();
    button->setText(QString());
    const QImage without = button->grab().toImage();
    button->setText(glyph);
    QList<QPoint> different;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) != without.pixel(x, y)) {
                different.append({x, y});
            }
        }
    }
    return different;
}

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        window = std::make_unique<MainWindow>(nullptr);
    }

    void cleanup() { window.reset(); }

    void frame()
    {
        QCOMPARE(window->windowTitle(), QStringLiteral("Veltra Premium C++ PC Optimizer"));
        QCOMPARE(window->windowFlags(), Qt::WindowFlags(Qt::Window | Qt::FramelessWindowHint));
        QVERIFY(window->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(window->property("perfMode"), QVariant(2));
        QCOMPARE(window->property("lowMemoryMode"), QVariant(false));
        QCOMPARE(window->size(), QSize(1100, 680));
        QCOMPARE(window->centralWidget(), window->rootSurface);
        QCOMPARE(window->rootSurface->layout()->contentsMargins(), QMargins(12, 12, 12, 12));
        QCOMPARE(window->windowSurface->layout()->contentsMargins(), QMargins(12, 12, 12, 12));
        QCOMPARE(window->windowSurface->layout()->spacing(), 10);
        QCOMPARE(window->contentLayer->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(window->contentLayer->layout()->spacing(), 16);
    }

    void objectNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("className");
        const auto row = [](const char *name, const char *className) {
            QTest::newRow(name) << QString::fromLatin1(name) << QByteArray(className);
        };
        row("rootSurface", "QWidget");
        row("windowSurface", "QFrame");
        row("titleBar", "QFrame");
        row("titleLabel", "QLabel");
        row("titleBtn", "QToolButton");
        row("titleBtnClose", "QToolButton");
        row("contentLayer", "QWidget");
        row("sidebar", "AnimatedNav");
        row("particleCanvas", "ParticleCanvas");
    }

    void objectNames()
    {
        QFETCH(QString, name);
        const auto widgets = window->findChildren<QWidget *>(name);
        QCOMPARE(widgets.size(), 1);
        QTEST(QByteArray(widgets.constFirst()->metaObject()->className()), "className");
    }

    void titleBar()
    {
        QCOMPARE(window->titleBar->height(), 38);
        QCOMPARE(window->titleBar->layout()->contentsMargins(), QMargins(10, 4, 6, 4));
        QCOMPARE(window->titleBar->layout()->spacing(), 8);
        QCOMPARE(window->titleLabel->text(), window->windowTitle());
        QCOMPARE(window->minimizeButton->text(), QStringLiteral("-"));
        QCOMPARE(window->closeButton->text(), QStringLiteral("x"));
        for (QToolButton *button : {window->minimizeButton, window->closeButton}) {
            QCOMPARE(button->size(), QSize(30, 24));
            QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
            QVERIFY(!button->accessibleName().isEmpty());
        }
        auto *layout = window->titleBar->layout();
        QCOMPARE(layout->itemAt(0)->widget(), window->titleLabel);
        QVERIFY(layout->itemAt(1)->spacerItem() != nullptr);
        QCOMPARE(layout->itemAt(2)->widget(), window->minimizeButton);
        QCOMPARE(layout->itemAt(3)->widget(), window->closeButton);
    }

    // The style sheet's padding for tool buttons would leave nothing of the glyphs.
    void titleGlyphsAreVisible()
    {
        window->show();
        for (QToolButton *button : {window->minimizeButton, window->closeButton}) {
            QVERIFY2(glyphPixels(button).size() >= 6, qPrintable(button->text()));
        }
    }

    void pressedTitleGlyphsDip()
    {
        window->show();
        for (QToolButton *button : {window->minimizeButton, window->closeButton}) {
            const int top = glyphPixels(button).constFirst().y();
            button->setDown(true);
            QVERIFY(glyphPixels(button).constFirst().y() > top);
        }
    }

    void pagesInOrder()
    {
        QCOMPARE(window->pageStack->count(), 8);
        QCOMPARE(window->pageStack->widget(3), window->processWatcher);
        QCOMPARE(window->pageStack->widget(4), window->pcConfigPage);
        QCOMPARE(window->pageStack->widget(0), window->dashboard.page);
        QCOMPARE(window->pageStack->widget(1), window->cleaner.page);
        QCOMPARE(window->pageStack->widget(2), window->startup.page);
        QCOMPARE(window->pageStack->widget(5), window->network.page);
        QCOMPARE(window->pageStack->widget(6), window->settings.page);
        QCOMPARE(window->pageStack->widget(7), window->logsPage);
        QCOMPARE(window->sidebar->items().size(), 8);
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(window->sidebar->items().at(i)->label(), kPageNames.at(i));
        }
        QCOMPARE(window->contentLayer->layout()->itemAt(0)->widget(), window->sidebar);
        QCOMPARE(window->contentLayer->layout()->itemAt(1)->widget(), window->pageStack);
        QCOMPARE(static_cast<SidebarNav *>(window->animatedNav), window->sidebar);
    }

    void icons()
    {
        const QList<QStyle::StandardPixmap> expected{QStyle::SP_DesktopIcon,
                                                     QStyle::SP_TrashIcon,
                                                     QStyle::SP_FileDialogListView,
                                                     QStyle::SP_BrowserReload,
                                                     QStyle::SP_ComputerIcon,
                                                     QStyle::SP_DriveNetIcon,
                                                     QStyle::SP_FileDialogDetailedView,
                                                     QStyle::SP_FileIcon};
        for (int i = 0; i < 8; ++i) {
            const QImage shown =
                window->sidebar->items().at(i)->labelIcon().pixmap(18, 18).toImage();
            QVERIFY(!shown.isNull());
            QCOMPARE(shown, window->style()->standardIcon(expected.at(i)).pixmap(18, 18).toImage());
        }
    }

    // The keyboard comes to the pages first, in their order, and to the title buttons last.
    void tabWalksThroughTheWindow()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QVERIFY(!window->titleBar->isAncestorOf(QApplication::focusWidget()));
        window->sidebar->items().constFirst()->setFocus(Qt::TabFocusReason);
        for (int i = 1; i < 8; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), window->sidebar->items().at(i));
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(window->pageStack->currentIndex(), 7);
        window->sidebar->items().constFirst()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), window->closeButton);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), window->minimizeButton);
    }

    void rightToLeft()
    {
        window->setLayoutDirection(Qt::RightToLeft);
        window->show();
        QCOMPARE(window->size(), QSize(1100, 680));
        QVERIFY(window->sidebar->geometry().left() > window->pageStack->geometry().right());
        const QPoint first =
            window->sidebar->items().constFirst()->mapTo(window->sidebar, QPoint(0, 0));
        QCOMPARE(window->sidebar->property("indicatorY").toDouble(), first.y() + 7.0);
        QTest::mouseClick(window->sidebar->items().at(7), Qt::LeftButton, {}, {20, 20});
        QCOMPARE(window->pageStack->currentIndex(), 7);
        QTRY_VERIFY(window->logsPage->graphicsEffect() == nullptr);
        QCOMPARE(window->logsPage->geometry(), window->pageStack->contentsRect());
    }

    void filterConsumesOnlyWhatItHandles()
    {
        window->show();
        const QPointF inside(5, 5);
        for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
            QMouseEvent release(QEvent::MouseButtonRelease, inside, inside, button, {}, {});
            QVERIFY(window->eventFilter(window->titleBar, &release));
            QVERIFY(window->eventFilter(window->titleLabel, &release));
            QVERIFY(!window->eventFilter(window->sidebar, &release));
        }
        QMouseEvent right(
            QEvent::MouseButtonPress, inside, inside, Qt::RightButton, Qt::RightButton, {});
        QVERIFY(!window->eventFilter(window->titleBar, &right));
        QPushButton button;
        window->registerHoverLift(&button);
        QEnterEvent enter(inside, inside, inside);
        QEvent leave(QEvent::Leave);
        QVERIFY(!window->eventFilter(&button, &enter));
        QVERIFY(!window->eventFilter(&button, &leave));
    }

    void dashboardComesFirst()
    {
        window->show();
        QCOMPARE(window->pageStack->currentIndex(), 0);
        QCOMPARE(window->sidebar->current(), 0);
        QVERIFY(window->sidebar->items().constFirst()->isActive());
        const QPoint first =
            window->sidebar->items().constFirst()->mapTo(window->sidebar, QPoint(0, 0));
        QCOMPARE(window->sidebar->property("indicatorY").toDouble(), first.y() + 7.0);
    }

    void everySidebarButtonSwitches()
    {
        window->show();
        for (const int i : {7, 3, 1, 2, 6, 5, 4, 0}) {
            QTest::mouseClick(window->sidebar->items().at(i), Qt::LeftButton, {}, {20, 20});
            QCOMPARE(window->pageStack->currentIndex(), i);
            QCOMPARE(window->sidebar->current(), i);
        }
        QTRY_VERIFY(window->dashboard.page->graphicsEffect() == nullptr);
        QTest::mouseClick(window->sidebar->items().at(0), Qt::LeftButton, {}, {20, 20});
        QVERIFY(qobject_cast<QGraphicsOpacityEffect *>(window->dashboard.page->graphicsEffect())
                != nullptr);
    }

    void pagesSwitchWithoutTransitions()
    {
        window->pageTransitions = nullptr;
        window->onNavChanged(MainWindow::LogsPage);
        QCOMPARE(window->pageStack->currentIndex(), static_cast<int>(MainWindow::LogsPage));
        QVERIFY(window->logsPage->graphicsEffect() == nullptr);
    }

    void wrongIndexIsHarmless()
    {
        window->onNavChanged(8);
        window->onNavChanged(-1);
        QCOMPARE(window->pageStack->currentIndex(), 0);
    }

    // Nothing makes the window grow, nothing is clipped: a page that is taller than its room scrolls.
    void sizeStays()
    {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QCOMPARE(window->minimumSize(), QSize(0, 0));
        QCOMPARE(window->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        for (const bool expanded : {false, true}) {
            window->sidebar->setExpanded(expanded, false);
            for (int i = 0; i < 8; ++i) {
                window->onNavChanged(i);
                QCoreApplication::processEvents();
                QCOMPARE(window->size(), QSize(1100, 680));
                QVERIFY(window->rect().contains(window->pageStack->mapTo(
                    window.get(), window->pageStack->rect().bottomRight())));
                const auto *page = qobject_cast<QScrollArea *>(window->pageStack->widget(i));
                if (page != nullptr) {
                    QVERIFY(page->widget()->width() <= page->viewport()->width());
                }
            }
        }
    }

    void tallContentScrolls_data()
    {
        QTest::addColumn<int>("index");
        for (const int index : {MainWindow::DashboardPage,
                                MainWindow::CleanerPage,
                                MainWindow::PcConfigPage,
                                MainWindow::SettingsPage}) {
            QTest::newRow(qPrintable(kPageNames.at(index))) << index;
        }
    }

    // The others need less than they get: what is long in them scrolls by itself.
    void otherPagesNeedLittleRoom()
    {
        window->show();
        for (const int index : {MainWindow::StartupPage,
                                MainWindow::ProcWatchPage,
                                MainWindow::NetworkPage,
                                MainWindow::LogsPage}) {
            const QSize needed = window->pageStack->widget(index)->minimumSizeHint();
            QVERIFY(needed.height() <= window->pageStack->height() * 2 / 3);
            QVERIFY(needed.width() <= window->pageStack->width() * 2 / 3);
        }
    }

    void tallContentScrolls()
    {
        QFETCH(int, index);
        window->show();
        QWidget *widget = window->pageStack->widget(index);
        auto *page = qobject_cast<QScrollArea *>(widget);
        page = page != nullptr ? page : widget->findChild<QScrollArea *>();
        QVERIFY(page != nullptr);
        window->onNavChanged(index);
        auto *tall = new QLabel(QStringLiteral("tall"), page->widget());
        tall->setMinimumHeight(2000);
        page->widget()->layout()->addWidget(tall);
        QTRY_VERIFY(page->verticalScrollBar()->maximum() > 0);
        QCOMPARE(window->size(), QSize(1100, 680));
    }

    void pagesShowTheirCards()
    {
        const QList<QStringList> titles{
            {QStringLiteral("Dashboard"),
             QStringLiteral("RAM"),
             QStringLiteral("System Disk (C:)"),
             QStringLiteral("Live Info")},
            {QStringLiteral("Safe System Actions"), QStringLiteral("Activity Log")},
            {QStringLiteral("Startup Manager")},
            {}, // its cards are plain frames
            {}, // likewise; their own tests look at them
            {QStringLiteral("Network Center")},
            {QStringLiteral("Customization Lab"), QStringLiteral("Safety Policy")},
            {QStringLiteral("Logs / History")}};
        for (int i = 0; i < 8; ++i) {
            QStringList found;
            const auto cards = window->pageStack->widget(i)->findChildren<GlassCard *>();
            for (const GlassCard *card : cards) {
                found.append(card->findChild<QLabel *>(QStringLiteral("cardTitle"))->text());
                QVERIFY(card->property("hoverLift").toBool());
            }
            QCOMPARE(found, titles.at(i));
        }
    }

    void timers()
    {
        QCOMPARE(window->timers.pulse->interval(), 33);
        QCOMPARE(window->timers.statistics->interval(), 1000);
        QCOMPARE(window->timers.locationWeather->interval(), 900000);
        QCOMPARE(window->timers.particles->interval(), 16);
        for (const QTimer *timer : {window->timers.pulse,
                                    window->timers.statistics,
                                    window->timers.locationWeather,
                                    window->timers.particles}) {
            QVERIFY(timer->isActive());
            QVERIFY(!timer->isSingleShot());
            QCOMPARE(timer->parent(), window.get());
        }
    }

    void layering()
    {
        window->show();
        const QWidget *canvas = window->particleCanvas;
        QCOMPARE(canvas->parentWidget(), window->rootSurface);
        QVERIFY(canvas->testAttribute(Qt::WA_TransparentForMouseEvents));
        const QObjectList &siblings = window->rootSurface->children();
        QVERIFY(siblings.indexOf(window->particleCanvas) < siblings.indexOf(window->windowSurface));
        QCOMPARE(canvas->geometry(), window->rootSurface->rect());
        QCOMPARE(window->particleCanvas->count, 110);
        QCOMPARE(window->particleCanvas->particles.size(), std::size_t(110));
        QCOMPARE(window->particleCanvas->speed, 0.9);
        QCOMPARE(window->particleCanvas->accentColor, window->accentColor);
        QVERIFY(shadowOf(window->windowSurface) != nullptr);
        QCOMPARE(shadowOf(window->windowSurface)->color(), QColor(58, 126, 255, 40));
        QCOMPARE(shadowOf(window->windowSurface)->blurRadius(), 24.0);
    }

    void maskIsRounded()
    {
        const auto isRounded = [this] {
            const QRegion mask = window->mask();
            const QRect all = window->rect();
            return !mask.contains(all.topLeft()) && !mask.contains(all.bottomRight())
                && !mask.contains(QPoint(3, 3)) && mask.contains(QPoint(8, 8))
                && mask.contains(QPoint(16, 0)) && mask.contains(QPoint(0, 16))
                && mask.boundingRect().contains(all.adjusted(1, 1, -1, -1));
        };
        QVERIFY(isRounded());
        window->show();
        window->resize(700, 500);
        QCoreApplication::processEvents();
        QVERIFY(isRounded());
        QVERIFY(!window->mask().contains(QPoint(699, 499)));
        QCOMPARE(window->particleCanvas->size(), window->rootSurface->size());
    }

    void backdropFollowsTheMode()
    {
        window->show();
        QTRY_COMPARE(fakes::scriptedPlatform().backdropCalls.size(),
                     std::size_t(1)); // by itself, after 0 ms
        QVERIFY(fakes::scriptedPlatform().backdropCalls.back().enabled);
        window->setProperty("lowMemoryMode", true);
        window->applyNativeAcrylic();
        QVERIFY(!fakes::scriptedPlatform().backdropCalls.back().enabled);
        window->setProperty("lowMemoryMode", false);
        window->applyNativeAcrylic();
        QVERIFY(fakes::scriptedPlatform().backdropCalls.back().enabled);
    }

    void draggedByTitleBarAndLabel_data()
    {
        QTest::addColumn<bool>("byLabel");
        QTest::newRow("title bar") << false;
        QTest::newRow("title label") << true;
    }

    void draggedByTitleBarAndLabel()
    {
        QFETCH(bool, byLabel);
        QWidget *handle = byLabel ? static_cast<QWidget *>(window->titleLabel) : window->titleBar;
        window->move(50, 60);
        window->show();
        const QPoint corner = window->frameGeometry().topLeft();
        const QPointF press = handle->mapToGlobal(QPointF(5.4, 6.6));
        testinput::mouse(handle, QEvent::MouseButtonPress, press, Qt::LeftButton, Qt::LeftButton);
        testinput::mouse(
            handle, QEvent::MouseMove, press + QPointF(30, -20), Qt::NoButton, Qt::LeftButton);
        QCOMPARE(window->pos(), corner + QPoint(30, -20));
        testinput::mouse(
            handle, QEvent::MouseMove, press + QPointF(-7, 3), Qt::NoButton, Qt::LeftButton);
        QCOMPARE(window->pos(), corner + QPoint(-7, 3));
        testinput::mouse(
            handle, QEvent::MouseButtonRelease, press, Qt::RightButton, {}); // any button ends it
        testinput::mouse(
            handle, QEvent::MouseMove, press + QPointF(99, 99), Qt::NoButton, Qt::LeftButton);
        QCOMPARE(window->pos(), corner + QPoint(-7, 3));
    }

    void rightButtonDoesNotDrag()
    {
        window->move(50, 60);
        window->show();
        const QPoint corner = window->pos();
        const QPointF press = window->titleBar->mapToGlobal(QPointF(300, 10));
        testinput::mouse(
            window->titleBar, QEvent::MouseButtonPress, press, Qt::RightButton, Qt::RightButton);
        testinput::mouse(window->titleBar,
                         QEvent::MouseMove,
                         press + QPointF(30, 30),
                         Qt::NoButton,
                         Qt::LeftButton);
        QCOMPARE(window->pos(), corner);
    }

    void windowItselfDragsOnlyInsideTheTitleBar()
    {
        window->move(50, 60);
        window->show();
        const QPoint corner = window->pos();
        const QPointF inside = window->titleBar->mapToGlobal(QPointF(0, 0)); // edges included
        QVERIFY(testinput::mouse(
            window.get(), QEvent::MouseButtonPress, inside, Qt::LeftButton, Qt::LeftButton));
        QVERIFY(testinput::mouse(
            window.get(), QEvent::MouseMove, inside + QPointF(4, 5), Qt::NoButton, Qt::LeftButton));
        QCOMPARE(window->pos(), corner + QPoint(4, 5));
        testinput::mouse(window.get(), QEvent::MouseButtonRelease, inside, Qt::LeftButton, {});
        testinput::mouse(window.get(),
                         QEvent::MouseMove,
                         inside + QPointF(44, 55),
                         Qt::NoButton,
                         Qt::LeftButton);
        QCOMPARE(window->pos(), corner + QPoint(4, 5));

        const QPointF below = window->titleBar->mapToGlobal(QPointF(5, 38));
        testinput::mouse(
            window.get(), QEvent::MouseButtonPress, below, Qt::LeftButton, Qt::LeftButton);
        testinput::mouse(
            window.get(), QEvent::MouseMove, below + QPointF(9, 9), Qt::NoButton, Qt::LeftButton);
        QCOMPARE(window->pos(), corner + QPoint(4, 5));
    }

    void titleButtonsClickAndDoNotDrag()
    {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const QPoint corner = window->pos();
        const QPointF press = window->closeButton->mapToGlobal(QPointF(5, 5));
        testinput::mouse(
            window->closeButton, QEvent::MouseButtonPress, press, Qt::LeftButton, Qt::LeftButton);
        testinput::mouse(window->closeButton,
                         QEvent::MouseMove,
                         press + QPointF(-50, 0),
                         Qt::NoButton,
                         Qt::LeftButton);
        testinput::mouse(window->closeButton,
                         QEvent::MouseButtonRelease,
                         press + QPointF(-50, 0),
                         Qt::LeftButton,
                         {});
        QCOMPARE(window->pos(), corner);
        QVERIFY(window->isVisible());
        QTest::mouseClick(window->minimizeButton, Qt::LeftButton);
        QVERIFY(window->isMinimized());
        window->showNormal();
        QTest::mouseClick(window->closeButton, Qt::LeftButton);
        QVERIFY(!window->isVisible());
    }

    void hoverLiftRaisesTheGlow()
    {
        QPushButton button;
        window->registerHoverLift(&button);
        QVERIFY(button.property("hoverLift").toBool());
        QVERIFY(button.testAttribute(Qt::WA_Hover));
        testinput::leave(&button);
        QVERIFY(button.graphicsEffect() == nullptr); // nothing to dim yet
        testinput::enter(&button);
        QVERIFY(shadowOf(&button) != nullptr);
        QCOMPARE(shadowOf(&button)->offset(), QPointF(0, 4));
        QCOMPARE(shadowOf(&button)->blurRadius(), 26.0);
        QColor glow = window->accentColor;
        glow.setAlpha(85);
        QCOMPARE(shadowOf(&button)->color(), glow);
        testinput::leave(&button);
        glow.setAlpha(45);
        QCOMPARE(shadowOf(&button)->blurRadius(), 16.0);
        QCOMPARE(shadowOf(&button)->color(), glow);
        window->registerHoverLift(nullptr); // harmless
    }

    void hoverLiftReplacesOtherEffectsAndKeepsShadows()
    {
        QPushButton button;
        window->registerHoverLift(&button);
        button.setGraphicsEffect(new QGraphicsOpacityEffect);
        testinput::enter(&button);
        QVERIFY(shadowOf(&button) != nullptr);
        auto *own = new QGraphicsDropShadowEffect;
        own->setOffset(9, 9);
        button.setGraphicsEffect(own);
        testinput::enter(&button);
        QCOMPARE(shadowOf(&button), own);
        QCOMPARE(own->offset(), QPointF(9, 9));
    }

    void hoverLiftSleepsInLowMemory()
    {
        QPushButton button;
        window->registerHoverLift(&button);
        window->setProperty("perfMode", 0);
        testinput::enter(&button);
        QVERIFY(button.graphicsEffect() == nullptr);
        QPushButton stranger;
        window->setProperty("perfMode", 2);
        testinput::enter(&stranger);
        QVERIFY(stranger.graphicsEffect() == nullptr);
    }

    void particleTick()
    {
        window->show();
        window->timers.particles->stop();
        auto *canvas = window->particleCanvas;
        canvas->particles = {{100, 100, 1, -1, 2, 0}};
        const int hue = canvas->hueOffset;
        window->tickParticles();
        QCOMPARE(canvas->particles[0].x, 100.9);
        QCOMPARE(canvas->particles[0].y, 99.1);
        QCOMPARE(canvas->particles[0].phase, 0.02);
        QCOMPARE(canvas->hueOffset, (hue + 1) % 360);
        window->setProperty("perfMode", 0);
        window->tickParticles();
        QCOMPARE(canvas->particles[0].x, 100.9);
        window->setProperty("perfMode", 1);
        canvas->enabled = false;
        window->tickParticles();
        QCOMPARE(canvas->particles[0].x, 100.9);
    }

    void dormantSidebarPath()
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        auto &dormant = window->dormantSidebar;
        QCOMPARE(dormant.collapsedWidth, 84);
        QCOMPARE(dormant.expandedWidth, 248);
        QCOMPARE(dormant.cursorMargin, 120);
        for (const QToolButton *button : dormant.navButtons) {
            QVERIFY(button == nullptr);
        }
        window->setSidebarExpanded(true, true);
        QVERIFY(dormant.expanded);
        QCOMPARE(window->sidebar->maximumWidth(), 82); // without an animation only the flag changes
        window->setSidebarExpanded(false, false);
        QVERIFY(!dormant.expanded);

        QToolButton button;
        QVariantAnimation animation;
        QTimer collapse;
        collapse.setSingleShot(true);
        collapse.setInterval(100000);
        dormant.navButtons[2] = &button;
        dormant.widthAnimation = &animation;
        dormant.collapseTimer = &collapse;
        window->setSidebarExpanded(true, false);
        QCOMPARE(button.toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
        QCOMPARE(window->sidebar->minimumWidth(), 248);
        QCOMPARE(window->sidebar->maximumWidth(), 248);
        window->setSidebarExpanded(false, true);
        QCOMPARE(button.toolButtonStyle(), Qt::ToolButtonIconOnly);
        QCOMPARE(animation.endValue().toInt(), 84);
        QCOMPARE(animation.state(), QAbstractAnimation::Running);

        const int limit = window->sidebar->width() + 120;
        window->updateSidebarByCursor(window->mapToGlobal(QPoint(limit, 0)));
        QVERIFY(dormant.expanded);
        window->updateSidebarByCursor(
            window->mapToGlobal(QPoint(window->sidebar->width() + 121, 0)));
        QVERIFY(collapse.isActive());
        window->updateSidebarByCursor(window->mapToGlobal(QPoint(0, 680)));
        QVERIFY(!collapse.isActive());
        window->hide();
        window->updateSidebarByCursor(window->mapToGlobal(QPoint(900, 0)));
        QVERIFY(!collapse.isActive());
        animation.stop();
        dormant = {};
    }

private:
    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
