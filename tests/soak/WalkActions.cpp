// The buttons of a soak run's walk. What they open are stand-ins, or nothing.
#include "soak/Walk.h"

#include "app/MainWindow.h"
#include "pcconfig/PCConfigPage.h"

#include <QDir>
#include <QFile>
#include <QPushButton>

namespace {

struct Press
{
    QPushButton *button;
    BlockWatch::Kind kind;
    QStringList lines = {}; // that it leaves in the log
};

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

// Those with Usual ask, and get a No, or start something beside the window.
QList<Press> pressesOf(const MainWindow &window)
{
    using Kind = BlockWatch::Kind;
    const auto &buttons = window.cleaner.buttons;
    const QStringList flush{QStringLiteral("Flush DNS: Running..."),
                            QStringLiteral("Flush DNS: Done")};
    const QString noStartup = QStringLiteral("Failed opening Startup Apps settings.");
    return {
        {buttons.at(1), Kind::Usual},
        {buttons.at(2), Kind::Usual, flush},
        {buttons.at(3), Kind::Usual},
        {buttons.at(4), Kind::ByDesign, {QStringLiteral("Failed opening Storage Sense.")}},
        {buttons.at(5), Kind::ByDesign, {QStringLiteral("Opened TEMP folder.")}},
        {buttons.at(6), Kind::ByDesign},
        {buttons.at(7), Kind::ByDesign, {QStringLiteral("Failed opening browser cache helper.")}},
        {buttons.at(8), Kind::Usual, {QStringLiteral("Renew IP: Running...")}},
        {buttons.at(9), Kind::Usual},
        {buttons.at(10), Kind::ByDesign, {noStartup}},
        {buttons.at(11), Kind::ByDesign, {QStringLiteral("Failed opening Windows Security.")}},
        {window.network.flushDns, Kind::Usual, flush},
        {window.network.reset, Kind::Usual},
        {window.startup.openSettings, Kind::ByDesign, {noStartup}},
        {window.exportLogsButton, Kind::ByDesign}, // the file dialog waits for a thread of its own
        {window.pcConfigPage->copyButton, Kind::Usual},
    };
}

} // namespace

// Pressed from the event loop: the press is a handler, and may ask.
void Walk::press(QPushButton *button, BlockWatch::Kind kind, const QStringList &lines)
{
    for (const QString &line : lines) {
        log.expect(line);
    }
    pressing = true;
    QTimer::singleShot(0, button, [this, button, kind] {
        watch.setKind(kind);
        watch.setAction(button->text());
        button->click();
        pressing = false;
        QTimer::singleShot(0, this, [this] { watch.setKind(BlockWatch::Kind::Usual); });
    });
}

void Walk::pressSomeButton()
{
    const auto presses = pressesOf(window);
    const Press &chosen = presses.at(random.bounded(static_cast<int>(presses.size())));
    press(chosen.button, chosen.kind, chosen.lines);
}

void Walk::refreshInventory()
{
    press(window.pcConfigPage->refreshButton, BlockWatch::Kind::ByDesign, {});
}

void Walk::pressCleaning(int items)
{
    ++cleanings;
    press(window.cleaner.buttons.at(0),
          BlockWatch::Kind::ByDesign,
          {QStringLiteral("Cleaning temp files..."),
           QStringLiteral("Temp cleaned. Deleted %1 items.").arg(items)});
}

void Walk::cleanTemp()
{
    makeTempFiles();
    pressCleaning(3);
}

void Walk::cleanFullTemp()
{
    if (smallVolume.isEmpty()) {
        return;
    }
    watch.setKind(BlockWatch::Kind::Ignored); // the filling is the run's own
    makeTempFiles();
    fill(QDir::tempPath());
    ++fullTemps;
    pressCleaning(4);
}

void Walk::exportToFullDisk()
{
    if (smallVolume.isEmpty()) {
        return;
    }
    watch.setAction(QStringLiteral("full disk"));
    watch.setKind(BlockWatch::Kind::Ignored);
    const QString path = smallVolume + QStringLiteral("/log.txt");
    QFile::remove(path);
    fill(smallVolume);
    log.expect(QStringLiteral("Logs exported: ") + path); // only opening is checked
    window.exportLogsTo(path);
    QFile::remove(smallVolume + QStringLiteral("/filler"));
    log.expect(QStringLiteral("Logs exported: ") + path);
    window.exportLogsTo(path);
    ++fullDisks;
}
