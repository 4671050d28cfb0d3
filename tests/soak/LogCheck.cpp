#include "soak/LogCheck.h"

#include "app/MainWindow.h"

#include <QRegularExpression>
#include <QTextEdit>

namespace {

constexpr int kTimeLength = 11; // "[12:34:56] "
const QString kMark = QStringLiteral("Mark ");

} // namespace

LogCheck::LogCheck(MainWindow &checked)
    : window(checked)
{ }

void LogCheck::mark()
{
    window.log(kMark + QString::number(nextMark++));
}

void LogCheck::expect(const QString &line, int times)
{
    expected[line] += times;
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
    int mark = firstMark;
    const QStringList all = history.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : all) {
        const QString message = line.mid(kTimeLength);
        if (!time.match(line).hasMatch()) {
            complaints.append(QStringLiteral("no time: ") + line);
        }
        if (message.startsWith(kMark) && message.mid(kMark.size()).toInt() != mark++) {
            complaints.append(QStringLiteral("out of order: ") + line);
        }
        ++found[message];
    }
    if (mark != nextMark) {
        complaints.append(QStringLiteral("%1 of %2 marks").arg(mark).arg(nextMark));
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
    firstMark = nextMark;
    window.activityLogView->clear();
    window.historyLogView->clear();
    return complaints;
}
