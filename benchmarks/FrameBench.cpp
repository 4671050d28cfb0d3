// CPU per frame of the real window on each page, with the cached shadows and with the toolkit's own in their place, at device
// pixel ratios 1 and 2; what actions cost; what the program takes at rest. Prints tables, and writes all of it as JSON to the
// file that is named as the first argument; --with-memory adds ten minutes. Needs a display, and a window manager for what
// happens when minimised.
#include "FrameScenes.h"
#include "RestShare.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <cstdio>

namespace {

constexpr auto kFramesOnly = "--frames";
constexpr auto kRestOnly = "--rest";
constexpr auto kMemoryOnly = "--memory";
constexpr auto kWithMemory = "--with-memory";
constexpr int kPages = 8;

QJsonObject pairOf(double stock, double ours)
{
    return {{"stock", stock}, {"ours", ours}};
}

QJsonObject measureFrames(FrameMeter &meter)
{
    QJsonArray pages;
    for (int page = 0; page < kPages; ++page) {
        const PageCosts ours = measurePage(meter, page, false);
        const PageCosts stock = measurePage(meter, page, true);
        pages.append(QJsonObject{{"animated", pairOf(stock.animated, ours.animated)},
                                 {"label", pairOf(stock.label, ours.label)}});
    }
    return {{"floor", floorOfAFrame()},
            {"pages", pages},
            {"tick", pairOf(measureTick(meter, true), measureTick(meter, false))},
            {"actions", measureActions(meter)}};
}

int printJson(const QJsonObject &object)
{
    std::puts(QJsonDocument(object).toJson(QJsonDocument::Compact).constData());
    return 0;
}

// A program has one ratio, from its start on.
QJsonObject measureInChild(const char *part, int ratio)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(ratio));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(part)});
    child.waitForFinished(-1);
    return QJsonDocument::fromJson(child.readAllStandardOutput()).object();
}

double printPair(const QJsonValue &pair)
{
    const double stock = pair["stock"].toDouble();
    const double ours = pair["ours"].toDouble();
    std::printf(" %8.2f / %6.2f = %5.1f", stock, ours, stock / ours);
    return ours;
}

void printFrames(const QJsonObject &frames, int ratio)
{
    const double floor = frames["floor"].toDouble();
    std::printf("\nDevice pixel ratio %d, ms of CPU; two blends of the window's size: %.2f\n",
                ratio,
                floor);
    std::printf("%-8s %24s %10s %24s\n",
                "page",
                "animated: stock / ours",
                "of blends",
                "label: stock / ours");
    const QJsonArray pages = frames["pages"].toArray();
    for (int page = 0; page < kPages; ++page) {
        std::printf("%-8d", page);
        const double animated = printPair(pages[page]["animated"]);
        std::printf(" %9.1fx", animated / floor);
        printPair(pages[page]["label"]);
        std::puts("");
    }
    std::printf("statistics tick on the Dashboard:");
    printPair(frames["tick"]);
    std::puts("\n95th percentile of a frame:");
    const QJsonObject actions = frames["actions"].toObject();
    for (auto action = actions.begin(); action != actions.end(); ++action) {
        std::printf("  %-20s %6.2f ms\n", qPrintable(action.key()), action->toDouble());
    }
}

void printFigures(const char *title, const QJsonObject &figures)
{
    std::printf("\n%s\n", title);
    for (auto figure = figures.begin(); figure != figures.end(); ++figure) {
        std::printf("  %-20s %8.2f\n", qPrintable(figure.key()), figure->toDouble());
    }
}

QJsonObject measureEverything(bool withMemory)
{
    QJsonObject all;
    for (const int ratio : {1, 2}) {
        const QJsonObject frames = measureInChild(kFramesOnly, ratio);
        printFrames(frames, ratio);
        all[QStringLiteral("frames at ratio %1").arg(ratio)] = frames;
    }
    const QJsonObject rest = measureInChild(kRestOnly, 1);
    printFigures("Share of one core at rest, over 10 s, in per cent", rest);
    all["rest"] = rest;
    if (withMemory) {
        const QJsonObject memory = measureInChild(kMemoryOnly, 1);
        printFigures("Resident size in \"High\", in MiB", memory);
        all["memory"] = memory;
    }
    return all;
}

bool writeJson(const QString &path, const QJsonObject &object)
{
    QFile file(path);
    const QByteArray text = QJsonDocument(object).toJson();
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

} // namespace

int main(int argc, char **argv)
{
    FrameMeter application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.contains(kFramesOnly)) {
        return printJson(measureFrames(application));
    }
    if (arguments.contains(kRestOnly)) {
        return printJson(measureRest());
    }
    if (arguments.contains(kMemoryOnly)) {
        return printJson(measureMemory());
    }
    const QJsonObject all = measureEverything(arguments.contains(kWithMemory));
    return arguments.size() < 2 || writeJson(arguments[1], all) ? 0 : 1;
}
