// The whole window on the real machine: what a user sees in the first second.
#include "app/MainWindow.h"

#include "monitor/ByteFormat.h"
#include "platform/SystemDisk.h"
#include "platform/SystemMemory.h"
#include "ui/GlassCard.h"

#include <QLabel>
#include <QProgressBar>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>

class RealWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void showsThisMachine()
    {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowTitle(), QStringLiteral("Veltra Premium C++ PC Optimizer"));
        QCOMPARE(window.size(), QSize(1100, 680));
        QTRY_VERIFY(window.dashboard.ramValue->text() != QLatin1String("--"));

        const auto memory = platform::queryMemory();
        const auto disk = platform::querySystemDisk();
        QVERIFY(memory && disk);
        const QString size = QStringLiteral("\\d+(\\.\\d)? [KMGT]?B");
        const QRegularExpression ram(
            QStringLiteral("^%1 / %2 \\(\\d+%%\\)$")
                .arg(size, QRegularExpression::escape(formatBytesULongLong(memory->totalBytes))));
        QVERIFY2(ram.match(window.dashboard.ramValue->text()).hasMatch(),
                 qPrintable(window.dashboard.ramValue->text()));
        const QRegularExpression diskText(
            QStringLiteral("^%1 / %2 \\(\\d+%% used\\)$")
                .arg(size, QRegularExpression::escape(formatBytesULongLong(disk->totalBytes))));
        QVERIFY2(diskText.match(window.dashboard.diskValue->text()).hasMatch(),
                 qPrintable(window.dashboard.diskValue->text()));
        QVERIFY(std::abs(window.dashboard.ramBar->value() - static_cast<int>(memory->loadPercent))
                <= 5);

        const QString first =
            window.activityLogView->toPlainText().section(QLatin1Char('\n'), 0, 0);
        QVERIFY(QRegularExpression(QStringLiteral("^\\[\\d\\d:\\d\\d:\\d\\d\\] Ready\\.$"))
                    .match(first)
                    .hasMatch());
    }

    void figuresAreRenewedEverySecond()
    {
        MainWindow window;
        window.show();
        QTRY_VERIFY(window.dashboard.time->text() != QLatin1String("--"));
        const QString first = window.dashboard.time->text();
        QTRY_VERIFY_WITH_TIMEOUT(window.dashboard.time->text() != first, 3000);
    }

    void everyPageKeepsTheSize()
    {
        MainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (int page = 0; page < 8; ++page) {
            window.onNavChanged(page);
            QCoreApplication::processEvents();
            QCOMPARE(window.pageStack->currentIndex(), page);
            QCOMPARE(window.size(), QSize(1100, 680));
            QVERIFY(
                window.pageStack->currentWidget()->findChild<QWidget *>(QStringLiteral("glassCard"))
                != nullptr);
        }
    }
};

QTEST_MAIN(RealWindowTest)
#include "RealWindowTest.moc"
