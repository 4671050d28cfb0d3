// The page on the real machine, whichever it is: with PowerShell where the system has one, and without.
#include "pcconfig/PCConfigPage.h"
#include "pcconfig/PowerShellFake.h"
#include "platform/Command.h"
#include "platform/HardwareInventory.h"
#include "platform/SpecialFolders.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QStorageInfo>

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

QString value(const PCConfigPage::Section &section, const char *key)
{
    return section.labels.value(text(key))->text();
}

void compareRowsOfTheToolkit(const PCConfigPage &page)
{
    QCOMPARE(value(page.osSection, "Name"), QSysInfo::prettyProductName());
    QVERIFY(value(page.osSection, "Version") != text("Unknown"));
    QCOMPARE(value(page.osSection, "Machine"), QSysInfo::currentCpuArchitecture());
    QCOMPARE(value(page.storageSection, "System Drive"), QStorageInfo::root().rootPath());
    QVERIFY(QRegularExpression(text("^\\d+(\\.\\d)? [KMGT]?B$"))
                .match(value(page.storageSection, "Total"))
                .hasMatch());
    QVERIFY(QRegularExpression(text("^\\d+ x \\d+$"))
                .match(value(page.displaySection, "Resolution"))
                .hasMatch());
}

} // namespace

class RealInventoryTest : public QObject
{
    Q_OBJECT

private slots:
    // Whatever PowerShell says, or does not say, it is over within the limits. On Windows it is always there.
    void withTheSystemsOwnPowerShell()
    {
        const auto restored = qScopeGuard([path = qgetenv("PATH")] { qputenv("PATH", path); });
        const QString folder = QString::fromStdU16String(platform::systemFolder().u16string());
        qputenv("PATH",
                qgetenv("PATH")
                    + QDir::toNativeSeparators(QDir::listSeparator() + folder
                                               + text("/System32/WindowsPowerShell/v1.0"))
                          .toLocal8Bit());
        const bool hasShell = platform::findOnPath("powershell").has_value();
        constexpr int kRuns = 15;
        constexpr qint64 kLimit = 2500 + 1500; // and the starting and ending of a process
        QElapsedTimer time;
        time.start();
        const PCConfigPage page(nullptr);
        QVERIFY(hasShell || platform::systemFolder().empty());
        QVERIFY(time.elapsed() < (hasShell ? kRuns * kLimit : kLimit));
        qInfo("collected in %lld ms, PowerShell: %s",
              static_cast<long long>(time.elapsed()),
              hasShell ? "yes" : "no");
        compareRowsOfTheToolkit(page);
        for (const auto &section : {page.cpuSection, page.gpuSection, page.motherboardSection}) {
            for (const QLabel *label : section.labels) {
                QVERIFY(!label->text().trimmed().isEmpty());
                QCOMPARE(label->text(), label->text().trimmed());
            }
        }
    }

    void withoutPowerShell()
    {
        const PowerShellFake noShell;
        QElapsedTimer time;
        time.start();
        const PCConfigPage page(nullptr);
        QVERIFY(time.elapsed() < 1500); // a benchmark is stricter
        compareRowsOfTheToolkit(page);
        const auto inventory = platform::queryHardware();
        QCOMPARE(value(page.cpuSection, "Name"),
                 page.valueOrUnknown(QString::fromStdString(inventory.processorName)));
        QCOMPARE(value(page.cpuSection, "Logical Processors"),
                 page.valueOrUnknown(QString::fromStdString(inventory.processorThreads)));
        QCOMPARE(value(page.motherboardSection, "Product"),
                 page.valueOrUnknown(QString::fromStdString(inventory.boardProduct)));
    }
};

QTEST_MAIN(RealInventoryTest)
#include "RealInventoryTest.moc"
