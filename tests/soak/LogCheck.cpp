#include "soak/LogCheck.h"

#include "app/MainWindow.h"
#include "soak/ShiftedClock.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTextEdit>

namespace {

constexpr int kTimeLength = 11; // "[12:34:56] "
const QString kMark = QStringLiteral("Mark ");

// Does without what it checks: the program's idea of the present time.
QString timeOfLine()
{
    using namespace std::chrono;
    const auto seconds =
        duration_cast<std::chrono::seconds>(shiftedclock::now().time_since_epoch());
    return QDateTime::fromSecsSinceEpoch(seconds.count()).toString(QStringLiteral("[hh:mm:ss] "));
}

} // namespace

LogCheck::LogCheck(MainWindow &checked)
    : window(checked)
{ }

void LogCheck::mark()
{
    const QString before = timeOfLine();
    window.log(kMark + QString::number(nextMark));
    timesOfMarks.insert(nextMark, {before, timeOfLine()});
    ++nextMark;
}

void LogCheck::expect(const QString &line, int times)
{
    expected[line] += times;
}

void LogCheck::checkMark(const QString &line, QStringList &complaints)
{
    const int mark = line.mid(kTimeLength + kMark.size()).toInt();
    if (mark != foundMark) {
        complaints.append(QStringLiteral("out of order: ") + line);
    }
    if (!timesOfMarks.value(mark).contains(line.left(kTimeLength))) {
        complaints.append(QStringLiteral("not the time: %1 instead of %2")
                              .arg(line, timesOfMarks.value(mark).join(u'/')));
    }
    foundMark = mark + 1;
}

QStringList LogCheck::verify()
{
    static const QRegularExpression time(QStringLiteral("^\\[\\d\\d:\\d\\d:\\d\\d\\] "));
    QStringList complaints;
    const QString history = window.historyLogView->toPlainText();
    if (window.activityLogView->toPlainText() != history) {
        complaints.append(QStringLiteral("the two views differ"));
    }
    QMap<QString, int> found;
    const QStringList all = history.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : all) {
        const QString message = line.mid(kTimeLength);
        if (!time.match(line).hasMatch()) {
            complaints.append(QStringLiteral("no time: ") + line);
        }
        if (message.startsWith(kMark)) {
            checkMark(line, complaints);
        }
        if (message.startsWith(QLatin1String("Unexpected error"))) {
            complaints.append(line);
        }
        ++found[message];
    }
    if (foundMark != nextMark) {
        complaints.append(QStringLiteral("%1 of %2 marks").arg(foundMark).arg(nextMark));
    }
    for (auto line = expected.cbegin(); line != expected.cend(); ++line) {
        if (found.value(line.key()) != line.value()) {
            complaints.append(QStringLiteral("%1 times instead of %2: %3")
                                  .arg(found.value(line.key()))
                                  .arg(line.value())
                                  .arg(line.key()));
        }
    }
    lines += all.size();
    expected.clear();
    timesOfMarks.clear();
    window.activityLogView->clear();
    window.historyLogView->clear();
    return complaints;
}
