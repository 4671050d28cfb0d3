// The collection behind the "PC Config" page.
#include "pcconfig/PCConfigPage.h"

#include "pcconfig/DisplayTexts.h"
#include "pcconfig/InventoryQueries.h"
#include "pcconfig/ValueTexts.h"
#include "platform/Command.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QOperatingSystemVersion>
#include <QProcess>
#include <QScopedValueRollback>
#include <QStorageInfo>
#include <QSysInfo>
#include <chrono>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kExpressionLimit = 2500ms;
constexpr std::chrono::milliseconds kKillLimit = 1000ms;
constexpr qint64 kMostOutput = 16 << 20; // bytes; an answer has some 30

// Its file; empty when there is none. A path that is no valid text comes out as one that cannot be started.
QString powerShell()
{
    const auto file = platform::findOnPath("powershell");
    return file ? QFileInfo(*file).filePath() : QString();
}

// One that never ends would fill the memory long before its time is over. It is killed then, and the returned flag set.
std::shared_ptr<bool> killWhenTooMuch(QProcess &process)
{
    auto wasKilled = std::make_shared<bool>(false);
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [&process, wasKilled] {
        if (process.bytesAvailable() > kMostOutput) {
            *wasKilled = true;
            process.kill();
        }
    });
    QObject::connect(&process, &QProcess::readyReadStandardError, &process, [&process] {
        process.readAllStandardError(); // nobody reads it
    });
    return wasKilled;
}

// Some systems have no type by which the toolkit knows them.
QString systemTypeName()
{
    const QString name = QOperatingSystemVersion::current().name();
    return name.isEmpty() ? QString::fromStdString(platform::operatingSystemType()) : name;
}

} // namespace

// Asks PowerShell where there is one; else the platform, once for all questions.
class PCConfigPage::Answers
{
public:
    explicit Answers(const PCConfigPage &asking)
        : page(asking)
    {
        if (powerShell().isEmpty()) {
            own = platform::queryHardware();
        }
    }

    QString to(const InventoryQuery &query) const
    {
        return own ? QString::fromStdString((*own).*query.own)
                   : page.runPowerShell(QString::fromLatin1(query.expression));
    }

private:
    const PCConfigPage &page;
    std::optional<platform::HardwareInventory> own;
};

QString PCConfigPage::runPowerShell(const QString &command) const
{
    QProcess process;
    const auto wasTooMuch = killWhenTooMuch(process);
    process.start(powerShell(),
                  {u"-NoProfile"_s, u"-ExecutionPolicy"_s, u"Bypass"_s, u"-Command"_s, command},
                  QIODevice::ReadWrite);
    if (!process.waitForFinished(static_cast<int>(kExpressionLimit.count())) || *wasTooMuch) {
        process.kill();
        process.waitForFinished(static_cast<int>(kKillLimit.count()));
        return {};
    }
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

void PCConfigPage::refreshInfo()
{
    if (collecting) {
        return;
    }
    const QScopedValueRollback<bool> guard(collecting, true);
    collectOs();
    const Answers answers(*this);
    collectProcessor(answers);
    collectGraphics(answers);
    collectMemory(answers);
    collectStorage();
    collectMotherboard(answers);
    collectDisplay();
}

void PCConfigPage::collectOs()
{
    setValue(osSection, u"Name"_s, QSysInfo::prettyProductName());
    setValue(osSection, u"Version"_s, systemTypeName());
    setValue(osSection, u"Build"_s, QSysInfo::kernelVersion());
    setValue(osSection, u"Kernel"_s, QSysInfo::kernelType());
    setValue(osSection, u"Machine"_s, QSysInfo::currentCpuArchitecture());
}

void PCConfigPage::collectProcessor(const Answers &answers)
{
    const QString name = answers.to(queries::kProcessorName);
    const QString manufacturer = answers.to(queries::kProcessorManufacturer);
    const QString cores = answers.to(queries::kProcessorCores);
    const QString threads = answers.to(queries::kProcessorThreads);
    const QString maxClock = answers.to(queries::kProcessorMaxClock);
    setValue(cpuSection, u"Name"_s, name);
    setValue(cpuSection, u"Manufacturer"_s, manufacturer);
    setValue(cpuSection, u"Cores"_s, cores);
    setValue(cpuSection, u"Logical Processors"_s, threads);
    setValue(cpuSection, u"Max Clock (MHz)"_s, maxClock);
}

void PCConfigPage::collectGraphics(const Answers &answers)
{
    const QString name = answers.to(queries::kGraphicsName);
    const QString memory = answers.to(queries::kGraphicsMemory);
    const QString driver = answers.to(queries::kGraphicsDriver);
    setValue(gpuSection, u"Name"_s, name);
    setValue(gpuSection, u"VRAM"_s, valuetexts::size(memory));
    setValue(gpuSection, u"Driver"_s, driver);
}

void PCConfigPage::collectMemory(const Answers &answers)
{
    const QString total = answers.to(queries::kMemoryTotal);
    const QString available = answers.to(queries::kMemoryAvailable);
    const QString speed = answers.to(queries::kMemorySpeed);
    const QString type = answers.to(queries::kMemoryType);
    setValue(ramSection, u"Total"_s, valuetexts::size(total));
    setValue(ramSection, u"Available"_s, valuetexts::size(available));
    setValue(ramSection, u"Speed"_s, valuetexts::speed(speed));
    setValue(ramSection, u"Type"_s, type);
}

void PCConfigPage::collectStorage()
{
    const QStorageInfo root = QStorageInfo::root();
    const auto size = [&root](qint64 bytes) {
        return root.isValid() ? formatBytes(static_cast<unsigned long long>(bytes)) : QString();
    };
    setValue(storageSection, u"System Drive"_s, root.rootPath());
    setValue(storageSection, u"Total"_s, size(root.bytesTotal()));
    setValue(storageSection, u"Free"_s, size(root.bytesAvailable()));
    setValue(storageSection, u"Filesystem"_s, QString::fromLatin1(root.fileSystemType()));
}

void PCConfigPage::collectMotherboard(const Answers &answers)
{
    const QString manufacturer = answers.to(queries::kBoardManufacturer);
    const QString product = answers.to(queries::kBoardProduct);
    const QString serial = answers.to(queries::kBoardSerial);
    setValue(motherboardSection, u"Manufacturer"_s, manufacturer);
    setValue(motherboardSection, u"Product"_s, product);
    setValue(motherboardSection, u"Serial"_s, serial);
}

void PCConfigPage::collectDisplay()
{
    const DisplayTexts display = displayTexts(QGuiApplication::primaryScreen());
    setValue(displaySection, u"Primary"_s, display.name);
    setValue(displaySection, u"Resolution"_s, display.resolution);
    setValue(displaySection, u"Refresh"_s, display.refresh);
    setValue(displaySection, u"Scale"_s, display.scale);
    setValue(gpuSection, u"Resolution"_s, display.resolution);
}
