#include "soak/ClockCheck.h"

#include "app/MainWindow.h"
#include "soak/BlockWatch.h"
#include "soak/ShiftedClock.h"

#include <QDateTime>
#include <QLabel>
#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr auto kBetweenJumps = 7s;
constexpr auto kBetweenLooks = 250ms;
constexpr std::chrono::minutes kFarthestJump = 36h;
constexpr std::chrono::seconds kOften = 2s; // the labels follow every second
constexpr double kLongestWrong = 5000; // ms: a hundred toasts come first

} // namespace

ClockCheck::ClockCheck(MainWindow &checked, const BlockWatch &watching)
    : window(checked)
    , watch(watching)
{
    connect(&jumping, &QTimer::timeout, this, &ClockCheck::jump);
    connect(&looking, &QTimer::timeout, this, &ClockCheck::look);
}

void ClockCheck::start()
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    shiftedclock::setShift(kFarthestJump);
    isClockOurs = before.secsTo(QDateTime::currentDateTimeUtc())
        >= std::chrono::seconds(kFarthestJump).count();
    clock.start();
    lastRight = ownTime();
    jumping.start(kBetweenJumps);
    looking.start(kBetweenLooks);
}

void ClockCheck::jump()
{
    const int farthest = static_cast<int>(kFarthestJump.count());
    shiftedclock::setShift(std::chrono::minutes(random.bounded(-farthest, farthest + 1)));
    ++jumps;
}

void ClockCheck::look()
{
    if (isShownRight()) {
        lastRight = ownTime();
    }
    longestWrong = std::max(longestWrong, ownTime() - lastRight);
}

double ClockCheck::ownTime() const
{
    return static_cast<double>(clock.elapsed()) - watch.waitedForProcessor();
}

bool ClockCheck::isShownRight() const
{
    const QString shown = window.dashboard.date->text() + u' ' + window.dashboard.time->text();
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(shiftedclock::now().time_since_epoch());
    const QDateTime now = QDateTime::fromSecsSinceEpoch(seconds.count());
    for (auto age = 0s; age <= kOften; age += 1s) {
        if (now.addSecs(-age.count()).toString(QStringLiteral("dddd, MMMM d, yyyy hh:mm:ss AP"))
            == shown) {
            return true;
        }
    }
    return false;
}

QStringList ClockCheck::complaints() const
{
    QStringList all;
    if (!isClockOurs) {
        all.append(QStringLiteral("the clock could not be set"));
    }
    if (longestWrong > kLongestWrong) {
        all.append(QStringLiteral("time and date were wrong for %1 ms").arg(longestWrong));
    }
    return all;
}
