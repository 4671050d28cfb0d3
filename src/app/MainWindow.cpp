#include "app/MainWindow.h"

#include "app/PerformanceMode.h"
#include "monitor/ProcessWatcherWidget.h"
#include "pcconfig/PCConfigPage.h"
#include "ui/AnimatedNav.h"
#include "ui/Glow.h"
#include "ui/PageTransitions.h"
#include "ui/ParticleCanvas.h"
#include "ui/SurfaceFrame.h"
#include "ui/Theme.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr QSize kWindowSize(1100, 680);
constexpr int kSurfaceMargin = 12;
constexpr int kSurfaceSpacing = 10;
constexpr int kTitleBarHeight = 38;
constexpr QMargins kTitleBarMargins(10, 4, 6, 4);
constexpr int kTitleBarSpacing = 8;
constexpr QSize kTitleButtonSize(30, 24);
constexpr int kContentSpacing = 16;

constexpr auto kStatisticsInterval = 1000ms;
constexpr auto kNetworkStatusInterval = 1000ms;
constexpr auto kFirstStatistics = 80ms;
constexpr auto kFirstLocationWeather = 1200ms;

struct PageEntry
{
    const char *text;
    QStyle::StandardPixmap icon;
};

constexpr std::array<PageEntry, 8> kPages{{
    {"Dashboard", QStyle::SP_DesktopIcon},
    {"Cleaner", QStyle::SP_TrashIcon},
    {"Startup", QStyle::SP_FileDialogListView},
    {"Proc Watch", QStyle::SP_BrowserReload},
    {"PC Config", QStyle::SP_ComputerIcon},
    {"Network", QStyle::SP_DriveNetIcon},
    {"Settings", QStyle::SP_FileDialogDetailedView},
    {"Logs", QStyle::SP_FileIcon},
}};

QToolButton *createTitleButton(QWidget *parent,
                               const QString &name,
                               const QString &glyph,
                               const QString &description)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(name);
    button->setText(glyph);
    button->setAccessibleName(description);
    button->setFixedSize(kTitleButtonSize);
    button->setCursor(Qt::PointingHandCursor);
    // Tool buttons have a padding that leaves no room for a glyph in a button this small. A press still dips by 1 px.
    button->setStyleSheet(QStringLiteral(
        "QToolButton { padding: 0px; } QToolButton:pressed { padding: 0px; padding-top: 1px; }"));
    return button;
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , accentColor(theme::initialAccent())
{
    setupWindow();
    setupSurfaces();
    setupTitleBar();
    setupContentLayer();
    setupSidebar();
    setupPages();
    setupTitleButtons();
    assembleWindow();
    setupBackground();
    setupToasts();
    setupConnections();
    setupTimers();
    setupInitialState();
    setupHoverLift();
    applyToastPlacement();
    applyTheme();
    queueFirstRuns();
    setupToastBridge();
    log(QStringLiteral("Ready."));
}

MainWindow::~MainWindow()
{
    releaseToastBridge();
    endWebQueries();
    releaseRunningCommands();
}

void MainWindow::setupWindow()
{
    setWindowTitle(QStringLiteral("Veltra Premium C++ PC Optimizer"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setProperty("perfMode", performance::High);
    setProperty("lowMemoryMode", false);
    resize(kWindowSize);
    layout()->setSizeConstraint(QLayout::SetNoConstraint); // no content makes the window grow
}

void MainWindow::setupSurfaces()
{
    rootSurface = new QWidget(this);
    rootSurface->setObjectName(QStringLiteral("rootSurface"));
    auto *rootLayout = new QVBoxLayout(rootSurface);
    rootLayout->setContentsMargins(kSurfaceMargin, kSurfaceMargin, kSurfaceMargin, kSurfaceMargin);

    windowSurface = new SurfaceFrame(rootSurface);
    windowSurface->setObjectName(QStringLiteral("windowSurface"));
    auto *surfaceLayout = new QVBoxLayout(windowSurface);
    surfaceLayout->setContentsMargins(
        kSurfaceMargin, kSurfaceMargin, kSurfaceMargin, kSurfaceMargin);
    surfaceLayout->setSpacing(kSurfaceSpacing);
}

void MainWindow::setupTitleBar()
{
    titleBar = new SurfaceFrame(windowSurface);
    titleBar->setObjectName(QStringLiteral("titleBar"));
    titleBar->setFixedHeight(kTitleBarHeight);
    auto *layout = new QHBoxLayout(titleBar);
    layout->setContentsMargins(kTitleBarMargins);
    layout->setSpacing(kTitleBarSpacing);

    titleLabel = new QLabel(windowTitle(), titleBar);
    titleLabel->setObjectName(QStringLiteral("titleLabel"));
    layout->addWidget(titleLabel);
    layout->addStretch(1);
}

void MainWindow::setupContentLayer()
{
    contentLayer = new QWidget(windowSurface);
    contentLayer->setObjectName(QStringLiteral("contentLayer"));
    auto *layout = new QHBoxLayout(contentLayer);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kContentSpacing);

    auto *surfaceLayout = qobject_cast<QVBoxLayout *>(windowSurface->layout());
    surfaceLayout->addWidget(titleBar, 0);
    surfaceLayout->addWidget(contentLayer, 1);
    rootSurface->layout()->addWidget(windowSurface);
}

void MainWindow::setupSidebar()
{
    animatedNav = new AnimatedNav(contentLayer);
    sidebar = animatedNav;
    int index = 0;
    for (const PageEntry &entry : kPages) {
        sidebar->addItem(QString::fromLatin1(entry.text), style()->standardIcon(entry.icon), index);
        ++index;
    }
}

void MainWindow::setupPages()
{
    pageStack = new QStackedWidget(contentLayer);
    pageTransitions = new PageTransitions(this);

    setupDashboardPage();
    setupCleanerPage();
    setupStartupPage();
    setupNetworkPage();
    setupLogsPage();
    setupSettingsPage();
    pcConfigPage = new PCConfigPage(pageStack);
    processWatcher = new ProcessWatcherWidget(pageStack);
    connect(processWatcher,
            &ProcessWatcherWidget::requestToast,
            this,
            &MainWindow::onProcessWatcherToast);

    // The order of the Page enumeration.
    for (QWidget *page : std::initializer_list<QWidget *>{dashboard.page,
                                                          cleaner.page,
                                                          startup.page,
                                                          processWatcher,
                                                          pcConfigPage,
                                                          network.page,
                                                          settings.page,
                                                          logsPage}) {
        pageStack->addWidget(page);
    }
}

// Made after the pages, so that they are the last to be reached by Tab: the first thing that the keyboard comes to must
// not close the window.
void MainWindow::setupTitleButtons()
{
    minimizeButton = createTitleButton(
        titleBar, QStringLiteral("titleBtn"), QStringLiteral("-"), QStringLiteral("Minimize"));
    closeButton = createTitleButton(
        titleBar, QStringLiteral("titleBtnClose"), QStringLiteral("x"), QStringLiteral("Close"));
    titleBar->layout()->addWidget(minimizeButton);
    titleBar->layout()->addWidget(closeButton);
}

void MainWindow::assembleWindow()
{
    auto *layout = qobject_cast<QHBoxLayout *>(contentLayer->layout());
    layout->addWidget(sidebar, 0);
    layout->addWidget(pageStack, 1);
    setCentralWidget(rootSurface);
    updateWindowMask();
}

void MainWindow::setupBackground()
{
    applyGlow(windowSurface, standardGlowColor(), kStandardGlowRadius);

    particleCanvas = new ParticleCanvas(rootSurface);
    particleCanvas->setAttribute(Qt::WA_TransparentForMouseEvents);
    particleCanvas->initParticles();
    particleCanvas->setGeometry(0, 0, rootSurface->width(), rootSurface->height());
    particleCanvas->lower();
    windowSurface->raise();
    contentLayer->raise();
}

void MainWindow::setupConnections()
{
    timers.pulse = createTimer(performance::kHighPace.pulse, &MainWindow::pulsePrimaryButtons);
    connect(sidebar, &SidebarNav::navSelected, this, &MainWindow::onNavChanged);
    connect(minimizeButton, &QToolButton::clicked, this, &QWidget::showMinimized);
    connect(closeButton, &QToolButton::clicked, this, &QWidget::close);
    connectActions();
    connectSettings();
}

QTimer *MainWindow::createTimer(std::chrono::milliseconds interval, void (MainWindow::*slot)())
{
    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, slot);
    timer->setTimerType(interval < kStatisticsInterval ? Qt::PreciseTimer : Qt::CoarseTimer);
    timer->start(interval);
    return timer;
}

void MainWindow::setupTimers()
{
    timers.statistics = createTimer(kStatisticsInterval, &MainWindow::updateSystemStats);
    timers.networkStatus = createTimer(kNetworkStatusInterval, &MainWindow::refreshNetworkStatus);
    timers.locationWeather =
        createTimer(performance::kLocationWeatherInterval, &MainWindow::refreshLiveLocationWeather);
    timers.particles = createTimer(performance::kHighPace.particles, &MainWindow::tickParticles);
}

void MainWindow::setupInitialState()
{
    onNavChanged(DashboardPage);
    applyParticleSettings();
}

void MainWindow::queueFirstRuns()
{
    QTimer::singleShot(0ms, this, &MainWindow::applyNativeAcrylic);
    QTimer::singleShot(kFirstStatistics, this, &MainWindow::updateSystemStats);
    QTimer::singleShot(kFirstLocationWeather, this, &MainWindow::refreshLiveLocationWeather);
}

void MainWindow::onNavChanged(int index)
{
    if (pageStack == nullptr) {
        return;
    }
    if (sidebar != nullptr) {
        sidebar->setCurrentIndex(index);
    }
    if (pageTransitions != nullptr) {
        pageTransitions->switchTo(pageStack, index);
    } else {
        pageStack->setCurrentIndex(index);
    }
}

void MainWindow::tickParticles()
{
    if (property("perfMode").toInt() == 0 || particleCanvas == nullptr || isMinimized()) {
        return;
    }
    if (rootSurface != nullptr && particleCanvas->geometry() != rootSurface->rect()) {
        particleCanvas->setGeometry(rootSurface->rect());
    }
    particleCanvas->advance();
    particleCanvas->updateDots();
    windowSurface->raise();
}
