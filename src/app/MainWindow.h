// The one window of the program, and the map of everything that is visible in it.
#pragma once

#include "platform/Command.h"
#include "platform/WebQuery.h"

#include <QColor>
#include <QMainWindow>
#include <QPalette>
#include <QPoint>
#include <array>
#include <chrono>
#include <functional>

class AnimatedNav;
class DesktopToastManager;
class GlassCard;
class PCConfigPage;
class PageTransitions;
class ParticleCanvas;
class ProcessWatcherWidget;
class QPushButton;
class ScrollPage;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QProgressBar;
class QSlider;
class QStackedWidget;
class QTableWidget;
class QTextEdit;
class QTimer;
class QToolButton;
class QVariantAnimation;
class SidebarNav;
namespace performance {
struct Pace;
}

// Frameless, translucent, rounded, always 1100 x 680: a title bar that it is dragged by, the sidebar, and a stack of
// eight pages above a moving background. Owns all of it through the widget tree. GUI thread.
//
// Dynamic properties, read by everything that animates: "perfMode" (0 "Low Memory", 1 "Middle", 2 "High") and
// "lowMemoryMode" (bool).
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    enum Page {
        DashboardPage,
        CleanerPage,
        StartupPage,
        ProcWatchPage,
        PcConfigPage,
        NetworkPage,
        SettingsPage,
        LogsPage
    };

    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // The left button drags the window by its title bar.
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    // Appends "[hh:mm:ss] message" to both log views, as plain text. Lost silently before the views exist.
    void log(const QString &message);

    // Writes the history to a text file (UTF-8), replacing it, and logs whether it could be opened; whether all of it found
    // room is not checked.
    void exportLogsTo(const QString &path);

    // One line of the log, and a failed toast, for what escaped a handler as an exception. GUI thread.
    void reportFailure(const QString &what);

    // A toast that says how an action goes: "Running..." stays until it is closed, the outcomes close by themselves.
    void showActionToast(
        const QString &title, const QString &text, bool running, bool success, bool unused);

    // Starts a console program found on PATH beside the window; logs and shows its start, and then exactly one outcome.
    // With `restartHint`, a success recommends a restart.
    void runCommandAsync(const QString &title,
                         const QString &text,
                         const QString &program,
                         const QStringList &arguments,
                         bool restartHint);

    // Rounds the window's corners off (radius 16, without smoothing).
    void updateWindowMask();

    // Makes the widget glow stronger under the cursor. Null is ignored.
    void registerHoverLift(QWidget *widget);

    // A dormant way to drive the sidebar's width by the cursor's place in the window; no event reaches it.
    void setSidebarExpanded(bool expanded, bool animate);
    void updateSidebarByCursor(const QPoint &globalPosition);
    void applySidebarButtonMode(bool expanded, bool animate);

public slots:
    // Clamps `accentColor` (see theme::clampedAccent) and gives it to the style sheet, palette, font and sidebar. Does
    // nothing before the root surface exists.
    void applyTheme();

    // Asks the desktop for a blur behind the window; none in low-memory mode.
    void applyNativeAcrylic();

    void onNavChanged(int index);
    void onExportLogs();
    void onCleanTemp();
    void onEmptyRecycle();
    void onRamFreeHelper();
    void onOpenStorageSense();
    void onOpenTempFolder();
    void onOpenPrefetchFolder();
    void onOpenBrowserCacheHelper();
    void onOpenStartupApps();
    void onOpenWindowsSecurity();
    void onFlushDns();
    void onRenewIp();
    void onResetWinsock();
    void refreshNetworkStatus(); // simulated readings

    void onProcessWatcherToast(const QString &title,
                               const QString &text,
                               const QString &state,
                               bool success,
                               bool autoDismiss);
    void onNotifPositionChanged(int index); // clamped to 0 to 5
    void onNotifOffsetXChanged(int x); // px
    void onNotifOffsetYChanged(int y); // px
    void onShowLogFromToast(); // focuses the activity log at its newest line; switches no page

    void updateSystemStats(); // both cards, each on its own, then the clock
    void updateLiveDateTime();
    void refreshLiveLocationWeather(); // asks anew; waits for nothing

    void onAccentHueChanged(int hue); // 0 to 359
    void onAccentSaturationChanged(int saturation); // 0 to 255
    void onAccentValueChanged(int value); // 0 to 255
    void onRandomizeTheme();
    void onAutoColorShiftToggled(bool on);
    void onParticleDensityChanged(int dots); // at least 8; the old ones are thrown away
    void onParticleSpeedChanged(int tenths); // at least 1: dots never stand still
    void onParticlesToggled(bool on);
    void onPerformanceModeChanged(int mode); // see performance::Mode

    void pulsePrimaryButtons();
    void tickParticles();

public:
    // The frame.
    QWidget *rootSurface = nullptr;
    QFrame *windowSurface = nullptr;
    QFrame *titleBar = nullptr;
    QLabel *titleLabel = nullptr;
    QToolButton *minimizeButton = nullptr;
    QToolButton *closeButton = nullptr;
    QWidget *contentLayer = nullptr;
    AnimatedNav *animatedNav = nullptr;
    SidebarNav *sidebar = nullptr; // the same object
    QStackedWidget *pageStack = nullptr;
    PageTransitions *pageTransitions = nullptr;
    ParticleCanvas *particleCanvas = nullptr;
    DesktopToastManager *toastManager = nullptr; // may be null: then nothing is shown
    PCConfigPage *pcConfigPage = nullptr;
    ProcessWatcherWidget *processWatcher = nullptr;

    struct Dashboard
    {
        QWidget *page = nullptr;
        QLabel *ramValue = nullptr;
        QProgressBar *ramBar = nullptr; // may be null, like the next
        QLabel *diskValue = nullptr;
        QProgressBar *diskBar = nullptr;
        QLabel *time = nullptr;
        QLabel *date = nullptr;
        QLabel *location = nullptr;
        QLabel *weather = nullptr;
    } dashboard;

    struct Settings
    {
        QWidget *page = nullptr;
        // Where one of the first three is null, the slots use the initial accent's value.
        QSlider *hue = nullptr; // degrees
        QSlider *saturation = nullptr;
        QSlider *brightness = nullptr;
        QSlider *density = nullptr; // dots
        QSlider *speed = nullptr; // tenths
        QCheckBox *particles = nullptr;
        QCheckBox *autoColorShift = nullptr;
        QPushButton *randomize = nullptr;
        QComboBox *performanceMode = nullptr;
        QComboBox *notifications = nullptr;
        QSlider *offsetX = nullptr; // px; null: 16
        QSlider *offsetY = nullptr;
    } settings;

    struct Cleaner
    {
        QWidget *page = nullptr;
        std::array<QPushButton *, 12> buttons{};
    } cleaner;
    QProgressBar *actionProgress = nullptr;

    struct Network
    {
        QWidget *page = nullptr;
        QLabel *ping = nullptr;
        QLabel *throughput = nullptr;
        QLabel *adapter = nullptr;
        QPushButton *flushDns = nullptr;
        QPushButton *reset = nullptr;
    } network;

    struct Startup
    {
        QWidget *page = nullptr;
        QLineEdit *search = nullptr;
        QTableWidget *table = nullptr;
        QPushButton *openSettings = nullptr;
    } startup;

    QWidget *logsPage = nullptr;
    QTextEdit *activityLogView = nullptr; // Cleaner page
    QTextEdit *historyLogView = nullptr; // Logs page
    QPushButton *exportLogsButton = nullptr;

    struct Timers
    {
        QTimer *pulse = nullptr;
        QTimer *statistics = nullptr;
        QTimer *locationWeather = nullptr;
        QTimer *particles = nullptr;
        QTimer *networkStatus = nullptr;
    } timers;

    QColor accentColor;
    double pulsePhase = 0.0; // radians; a kept hook, nothing is drawn from it

    // The dormant sidebar path's parts; nothing creates the pointers.
    struct DormantSidebar
    {
        bool expanded = false;
        int collapsedWidth = 84;
        int expandedWidth = 248;
        int cursorMargin = 120; // px to the right of the sidebar that still count as over it
        std::array<QToolButton *, 5> navButtons{};
        QTimer *collapseTimer = nullptr;
        QVariantAnimation *widthAnimation = nullptr;
    } dormantSidebar;

private:
    void setupWindow();
    void setupSurfaces();
    void setupTitleBar();
    void setupContentLayer();
    void setupSidebar();
    void setupPages();
    void setupDashboardPage();
    void setupCleanerPage();
    void setupActionsCard(ScrollPage *page);
    void setupStartupPage();
    void setupNetworkPage();
    void setupLogsPage();
    void setupSettingsPage();
    void setupLookSettings(GlassCard *card);
    void setupParticleSettings(GlassCard *card);
    void setupModeSettings(GlassCard *card);
    void setupTitleButtons();
    void assembleWindow();
    void setupBackground();
    void setupToasts();
    void setupConnections();
    void connectActions();
    void connectSettings();
    void setupTimers();
    void setupInitialState();
    void setupHoverLift();
    void applyParticleSettings();
    void applyToastPlacement();
    void queueFirstRuns();
    void setupToastBridge();
    void releaseToastBridge();

    QTimer *createTimer(std::chrono::milliseconds interval, void (MainWindow::*slot)());
    struct OpeningTexts;
    bool isConfirmed(const QString &title, const QString &question);
    void reportOpening(bool success, const OpeningTexts &texts);
    void runNetworkTask(const QString &title, platform::NetworkTask task, bool restartHint);
    void releaseRunningCommands(); // they go on without the window
    void askWeb(platform::WebTopic topic, const std::function<void(const QString &)> &answered);
    void endWebQueries(); // nobody reads their answers without the window
    void setEffectsEnabled(bool enabled); // of everything in the root surface
    void enterLowMemory();
    void enterPace(const performance::Pace &pace);
    void updateRamCard();
    void updateDiskCard();

    bool startDragging(const QPoint &globalPosition);
    void dragTo(const QPoint &globalPosition);
    bool filterTitleBarEvent(QEvent *event);
    void liftOnHover(QObject *watched, const QEvent &event) const;
    void setAccent(const QColor &accent);
    void dressRootSurface();
    void adoptTheme(QObject *polished) const;
    void applyValueColor() const;

    QPalette
        surfacePalette; // what every widget of the root surface is given beside the style sheet
    bool isRandomizing = false; // the accent is not final yet
    QString runningAction; // what to name when it throws
    bool dragging = false;
    QPoint dragOffset; // from the window's top-left corner to the cursor, at the press
};
