#include "soak/Walk.h"

#include "app/MainWindow.h"
#include "app/PerformanceMode.h"
#include "monitor/ProcessWatcherWidget.h"
#include "ui/AnimatedNav.h"
#include "ui/NavButton.h"
#include "ui/TestInput.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QToolButton>

namespace {

constexpr int kPages = 8;

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

Walk::~Walk()
{
    victim.kill();
    victim.waitForFinished();
}

// As often as they are in the list.
const QList<Walk::Step> &Walk::allSteps()
{
    static const QList<Step> steps{
        &Walk::changePage,       &Walk::changePage,       &Walk::changePage,
        &Walk::pressSidebar,     &Walk::pressSidebar,     &Walk::moveMouse,
        &Walk::moveMouse,        &Walk::moveMouse,        &Walk::dragWindow,
        &Walk::minimize,         &Walk::searchStartup,    &Walk::changeSetting,
        &Walk::changeSetting,    &Walk::changeSetting,    &Walk::pressSomeButton,
        &Walk::pressSomeButton,  &Walk::pressSomeButton,  &Walk::pressSomeButton,
        &Walk::refreshInventory, &Walk::cleanTemp,        &Walk::cleanFullTemp,
        &Walk::showToasts,       &Walk::exportToFullDisk, &Walk::closeToasts,
        &Walk::watchProcesses,   &Walk::watchProcesses,   &Walk::endProcess,
    };
    return steps;
}

void Walk::step()
{
    ++steps;
    log.mark();
    watch.setKind(BlockWatch::Kind::Usual);
    const auto &all = allSteps();
    (this->*all.at(random.bounded(static_cast<int>(all.size()))))();
}

void Walk::changePage()
{
    watch.setAction(QStringLiteral("page"));
    window.onNavChanged(random.bounded(kPages));
}

void Walk::pressSidebar()
{
    watch.setAction(QStringLiteral("sidebar"));
    const auto &items = window.sidebar->items();
    NavButton *button = items.at(random.bounded(static_cast<int>(items.size())));
    const QPointF middle = button->mapToGlobal(QPointF(button->rect().center()));
    testinput::mouse(button, QEvent::MouseButtonPress, middle, Qt::LeftButton, Qt::LeftButton);
    testinput::mouse(button, QEvent::MouseButtonRelease, middle, Qt::LeftButton, {});
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

void Walk::dragWindow()
{
    watch.setAction(QStringLiteral("drag"));
    const QPointF from = window.titleBar->mapToGlobal(QPointF(window.titleBar->rect().center()));
    const QPointF to = from + QPointF(random.bounded(-80, 81), random.bounded(-40, 41));
    testinput::mouse(&window, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    testinput::mouse(&window, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    testinput::mouse(
        &window, QEvent::MouseMove, from, Qt::NoButton, Qt::LeftButton); // never off the screen
    testinput::mouse(&window, QEvent::MouseButtonRelease, from, Qt::LeftButton, {});
}

void Walk::minimize()
{
    watch.setAction(QStringLiteral("minimize"));
    window.minimizeButton->click();
    QTimer::singleShot(random.bounded(500), &window, &QWidget::showNormal);
}

void Walk::searchStartup()
{
    static const QStringList words{
        QString(), QStringLiteral("corp"), QStringLiteral("e"), QStringLiteral("<b>")};
    watch.setAction(QStringLiteral("startup"));
    window.onNavChanged(MainWindow::StartupPage);
    window.startup.search->setText(words.at(random.bounded(static_cast<int>(words.size()))));
    window.startup.table->selectRow(random.bounded(window.startup.table->rowCount()));
}

void Walk::changeSetting()
{
    watch.setAction(QStringLiteral("setting"));
    switch (random.bounded(5)) { // one at a time, as with a mouse
    case 0: {
        const auto boxes = window.settings.page->findChildren<QComboBox *>();
        QComboBox *box = boxes.at(random.bounded(static_cast<int>(boxes.size())));
        watch.setAction(box->accessibleName());
        return box->setCurrentIndex(random.bounded(box->count()));
    }
    case 1:
        return window.settings.particles->setChecked(random.bounded(4) != 0);
    case 2:
        return window.settings.autoColorShift->setChecked(random.bounded(2) == 0);
    case 3:
        watch.setAction(QStringLiteral("random colour"));
        return window.settings.randomize->click();
    default:
        const auto sliders = window.settings.page->findChildren<QSlider *>();
        QSlider *slider = sliders.at(random.bounded(static_cast<int>(sliders.size())));
        watch.setAction(slider->accessibleName());
        slider->setValue(random.bounded(slider->minimum(), slider->maximum() + 1));
    }
}

void Walk::calmDown()
{
    window.showNormal();
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

void Walk::answer()
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        box->button(isToBeDone(*box) ? QMessageBox::Yes : QMessageBox::No)->click();
    } else if (dialog != nullptr) {
        dialog->reject();
    }
}
