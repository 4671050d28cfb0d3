// Whether the log has everything that happened, in its order.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

class MainWindow;

// The run numbers lines of its own among those of the actions, remembers what time it was, and says what lines its actions
// must have left. Then the log is compared with all of it, and emptied. GUI thread.
class LogCheck
{
public:
    explicit LogCheck(MainWindow &checked);

    void mark(); // logs the next number
    void expect(const QString &line, int times = 1); // exactly this text, without its time

    // Complaints; none when all is well. Afterwards the log is empty, and nothing is expected.
    QStringList verify();

    qsizetype lines = 0; // that were verified so far

private:
    void checkMark(const QString &line, QStringList &complaints);

    MainWindow &window;
    int nextMark = 0;
    int foundMark = 0; // the next to be found
    QMap<int, QStringList> timesOfMarks; // per mark: right before and after it
    QMap<QString, int> expected;
};
