// The page in its window: refreshed while it comes in, twice in a row, and while the mouse and the keyboard are held.
#include "app/MainWindow.h"
#include "fakes/ScriptedHardware.h"
#include "fakes/ScriptedPlatform.h"
#include "pcconfig/PCConfigPage.h"
#include "pcconfig/PowerShellFake.h"
#include "ui/Theme.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTimer>
#include <memory>

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

class PcConfigWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fakes::scriptedPlatform() = {};
        fakes::scriptedHardware() = {};
        noShell = std::make_unique<PowerShellFake>();
        window = std::make_unique<MainWindow>();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        page = window->pcConfigPage;
    }

    void cleanup()
    {
        window.reset();
        noShell.reset();
    }

    void collectsWhileTheWindowIsBuilt()
    {
        QCOMPARE(fakes::scriptedHardware().queries, 1);
        window->onNavChanged(MainWindow::PcConfigPage);
        QCOMPARE(fakes::scriptedHardware().queries, 1);
    }

    void refreshWhileThePageComesIn()
    {
        window->onNavChanged(MainWindow::PcConfigPage);
        QTest::mouseClick(page->refreshButton, Qt::LeftButton);
        QTest::mouseClick(page->refreshButton, Qt::LeftButton);
        window->onNavChanged(MainWindow::DashboardPage);
        page->refreshInfo(); // while it is hidden, half way
        window->onNavChanged(MainWindow::PcConfigPage);
        QTest::mouseClick(page->refreshButton, Qt::LeftButton);
        QCOMPARE(fakes::scriptedHardware().queries, 5);
        QTRY_VERIFY(page->graphicsEffect() == nullptr); // the entrance is over
        QCOMPARE(page->pos(), QPoint(0, 0));
    }

    // The first reading, and everything else that is due meanwhile, comes in between the collections, never within one.
    void blockingPowerShellDuringTheEntrance()
    {
        noShell->install();
        noShell->sleep(1, 300);
        window->onNavChanged(MainWindow::PcConfigPage);
        QTimer::singleShot(0, page, &PCConfigPage::refreshInfo);
        QTimer::singleShot(0, page, &PCConfigPage::refreshInfo);
        QTRY_COMPARE_WITH_TIMEOUT(noShell->calls().size(), 60, 20000);
        const QStringList calls = noShell->calls();
        for (qsizetype run = 0; run < 30; ++run) {
            QVERIFY(calls.at(2 * run).startsWith(text("%1 begins").arg(run + 1)));
            QCOMPARE(calls.at(2 * run + 1), text("%1 ends").arg(run + 1));
        }
        QTRY_VERIFY(page->graphicsEffect() == nullptr);
        QCOMPARE(page->pos(), QPoint(0, 0));
    }

    void nothingIsReported()
    {
        const QString before = window->historyLogView->toPlainText();
        page->refreshInfo();
        page->copyReport();
        QCOMPARE(window->historyLogView->toPlainText(), before);
    }

    void looksLikeTheOtherPages()
    {
        window->onNavChanged(MainWindow::PcConfigPage);
        const QLabel *value = page->cpuSection.labels.value(text("Name"));
        QTRY_COMPARE(value->font().pixelSize(), theme::font().pixelSize());
        QCOMPARE(value->palette().color(QPalette::WindowText),
                 theme::palette(window->accentColor).color(QPalette::WindowText));
        const auto *area = page->findChild<QScrollArea *>();
        QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
        QVERIFY(area->verticalScrollBar()->maximum() > 0); // the cards are taller than the window
        QCOMPARE(window->size(), QSize(1100, 680));
        QVERIFY(page->refreshButton->property("hoverLift").toBool());
        QVERIFY(page->copyButton->property("hoverLift").toBool());
    }

    void longValuesDoNotWidenTheWindow()
    {
        fakes::scriptedHardware().inventory.boardSerial = std::string(256, 'W');
        page->refreshInfo();
        window->onNavChanged(MainWindow::PcConfigPage);
        QTRY_VERIFY(page->graphicsEffect() == nullptr);
        QCOMPARE(window->size(), QSize(1100, 680));
    }

private:
    std::unique_ptr<PowerShellFake> noShell;
    std::unique_ptr<MainWindow> window;
    PCConfigPage *page = nullptr;
};

QTEST_MAIN(PcConfigWindowTest)
#include "PcConfigWindowTest.moc"
