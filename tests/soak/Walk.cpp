#include "soak/Walk.h"

#include "app/MainWindow.h"
#include "app/PerformanceMode.h"
#include "monitor/ProcessWatcherWidget.h"
#include "notify/DesktopToast.h"
#include "pcconfig/PCConfigPage.h"
#include "ui/AnimatedNav.h"
#include "ui/NavButton.h"
#include "ui/TestInput.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>

namespace {

constexpr int kPages = 8;
constexpr int kToastsAtOnce = 100;

void fill(const QString &folder)
{
    QFile filler(folder + QStringLiteral("/filler"));
    const QByteArray block(1 << 16, 'x');
    if (filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        while (filler.write(block) > 0) { }
    }
}

void makeTempFiles()
{
    const QDir temp(QDir::tempPath());
    temp.mkpath(QStringLiteral("folder/inner"));
    for (const char *name : {"a", "b", "folder/c", "folder/inner/d"}) {
        QFile file(temp.filePath(QLatin1String(name)));
        if (file.open(QIODevice::WriteOnly)) {
            file.write("temporary");
        }
    }
}

} // namespace

Walk::Walk(MainWindow &walked, BlockWatch &watching, LogCheck &checking)
    : window(walked)
    , watch(watching)
    , log(checking)
{
    constexpr int kLookEvery = 20; // ms
    connect(&answering, &QTimer::timeout, this, &Walk::answer);
    answering.start(kLookEvery);
}

void Walk::step()
{
    ++steps;
    log.mark();
    watch.setKind(BlockWatch::Kind::Usual);
    switch (random.bounded(20)) {
    case 0:
        return cleanTemp();
    case 1:
        return showToasts();
    case 2:
        return closeToasts();
    case 3:
        return exportToFullDisk();
    case 4:
        watch.setAction(QStringLiteral("inventory"));
        return press(window.pcConfigPage->refreshButton, BlockWatch::Kind::ByDesign, {});
    case 5:
    case 6:
    case 7:
        return pressSomeButton();
    case 8:
    case 9:
    case 10:
        return changeSetting();
    case 11:
    case 12:
        return watchProcesses();
    case 13:
    case 14:
    case 15:
        return moveMouse();
    default:
        watch.setAction(QStringLiteral("page"));
        window.onNavChanged(random.bounded(kPages));
    }
}

// Pressed from the event loop: the press is a handler, and may ask.
void Walk::press(QPushButton *button, BlockWatch::Kind kind, const QStringList &lines)
{
    for (const QString &line : lines) {
        log.expect(line);
    }
    QTimer::singleShot(0, button, [this, button, kind] {
        watch.setKind(kind);
        watch.setAction(button->text());
        button->click();
        QTimer::singleShot(0, this, [this] { watch.setKind(BlockWatch::Kind::Usual); });
    });
}

void Walk::cleanTemp()
{
    makeTempFiles();
    ++cleanings;
    press(window.cleaner.buttons.at(0),
          BlockWatch::Kind::ByDesign,
          {QStringLiteral("Cleaning temp files..."),
           QStringLiteral("Temp cleaned. Deleted 3 items.")});
}

// What they open are stand-ins, or nothing.
void Walk::pressSomeButton()
{
    using Kind = BlockWatch::Kind;
    const auto &buttons = window.cleaner.buttons;
    switch (random.bounded(10)) {
    case 0:
        return press(buttons.at(1), Kind::Usual, {}); // asks, and gets a No, like two others
    case 1:
        return press(buttons.at(2), Kind::Usual, {QStringLiteral("Flush DNS: Running...")});
    case 2:
        return press(buttons.at(3), Kind::Usual, {});
    case 3:
        return press(
            buttons.at(4), Kind::ByDesign, {QStringLiteral("Failed opening Storage Sense.")});
    case 4:
        return press(buttons.at(5), Kind::ByDesign, {QStringLiteral("Opened TEMP folder.")});
    case 5:
        return press(buttons.at(6), Kind::ByDesign, {});
    case 6:
        return press(buttons.at(9), Kind::Usual, {});
    case 7:
        return press(buttons.at(10),
                     Kind::ByDesign,
                     {QStringLiteral("Failed opening Startup Apps settings.")});
    case 8:
        return press(window.exportLogsButton, Kind::Usual, {});
    default:
        return press(window.pcConfigPage->copyButton, Kind::Usual, {});
    }
}

void Walk::changeSetting()
{
    watch.setAction(QStringLiteral("setting"));
    switch (random.bounded(5)) { // one at a time, as with a mouse
    case 0: {
        const auto boxes = window.settings.page->findChildren<QComboBox *>();
        QComboBox *box = boxes.at(random.bounded(static_cast<int>(boxes.size())));
        return box->setCurrentIndex(random.bounded(box->count()));
    }
    case 1:
        return window.settings.particles->setChecked(random.bounded(4) != 0);
    case 2:
        return window.settings.autoColorShift->setChecked(random.bounded(2) == 0);
    case 3:
        return window.settings.randomize->click();
    default:
        const auto sliders = window.settings.page->findChildren<QSlider *>();
        QSlider *slider = sliders.at(random.bounded(static_cast<int>(sliders.size())));
        slider->setValue(random.bounded(slider->minimum(), slider->maximum() + 1));
    }
}

void Walk::calmDown()
{
    for (int page = kPages - 1; page >= 0; --page) {
        window.onNavChanged(page);
    }
    const auto widgets = window.findChildren<QWidget *>();
    for (QWidget *widget :
         widgets) { // what glows gets its glow when it is hovered for the first time
        testinput::enter(widget);
        testinput::leave(widget);
    }
    window.processWatcher->findChild<QLineEdit *>()->clear();
    window.onPerformanceModeChanged(performance::LowMemory);
    closeToasts();
}

void Walk::watchProcesses()
{
    watch.setAction(QStringLiteral("processes"));
    window.onNavChanged(MainWindow::ProcWatchPage);
    window.processWatcher->findChild<QLineEdit *>()->setText(
        random.bounded(2) == 0 ? QString() : QStringLiteral("so"));
    auto *rates = window.processWatcher->findChild<QComboBox *>();
    rates->setCurrentIndex(random.bounded(rates->count()));
    const auto buttons = window.processWatcher->findChildren<QPushButton *>();
    press(buttons.constFirst(), BlockWatch::Kind::Usual, {}); // nothing selected, or a No
}

void Walk::moveMouse()
{
    watch.setAction(QStringLiteral("mouse"));
    const auto widgets = window.findChildren<QWidget *>();
    QWidget *widget = widgets.at(random.bounded(static_cast<int>(widgets.size())));
    testinput::enter(widget);
    const QPointF place = widget->mapToGlobal(QPointF(random.bounded(100), random.bounded(40)));
    testinput::mouse(window.sidebar, QEvent::MouseMove, place, Qt::NoButton, {});
    QTimer::singleShot(random.bounded(300), widget, [widget] { testinput::leave(widget); });
}

void Walk::showToasts()
{
    watch.setAction(QStringLiteral("toasts"));
    for (int i = 0; i < kToastsAtOnce; ++i) {
        QTimer::singleShot(i, &window, [this, i] {
            ++toasts;
            window.showActionToast(QStringLiteral("Soak"),
                                   QStringLiteral("Toast %1").arg(i),
                                   i % 2 == 0,
                                   i % 3 == 0,
                                   false);
        });
    }
}

void Walk::closeToasts()
{
    watch.setAction(QStringLiteral("closing toasts"));
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *toast : windows) {
        if (qobject_cast<DesktopToast *>(toast) != nullptr) {
            QTimer::singleShot(0, toast, [toast] {
                toast->findChild<QPushButton *>(QStringLiteral("toastClose"))->click();
            });
        }
    }
}

void Walk::exportToFullDisk()
{
    if (smallVolume.isEmpty()) {
        return;
    }
    watch.setAction(QStringLiteral("full disk"));
    watch.setKind(BlockWatch::Kind::Ignored); // the filling is the run's own
    const QString path = smallVolume + QStringLiteral("/log.txt");
    QFile::remove(path);
    fill(smallVolume);
    log.expect(QStringLiteral("Failed to export logs."));
    window.exportLogsTo(path);
    QFile::remove(smallVolume + QStringLiteral("/filler"));
    log.expect(QStringLiteral("Logs exported: ") + path);
    window.exportLogsTo(path);
    ++fullDisks;
}

void Walk::answer()
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        const bool isSafe = box->text() == QLatin1String("Delete temp files?");
        box->button(isSafe ? QMessageBox::Yes : QMessageBox::No)->click();
    } else if (dialog != nullptr) {
        dialog->reject();
    }
}
