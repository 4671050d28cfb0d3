// Starting other programs beside the window, and letting go of them. GUI thread.
#pragma once

#include "platform/Command.h"

#include <QProcess>
#include <QStringList>

namespace childprogram {

// The file on PATH; empty, which fails to start, when there is none. A bare name would also be looked for in the current
// folder and beside this program. A complete path, which names one file only, stays as it is.
QString fileOf(const QString &program);

QStringList argumentsOf(const platform::CommandLine &command);

// Lets a running program go on without the window that owns its process object: destroying that would kill it in the
// middle of its work. The object deletes itself when the program ends. What still runs when this program ends is left
// alone on purpose.
void abandon(QProcess *process);

// Kills programs that nobody needs any more, and deletes their process objects. Waits for their end, which is quick;
// one that is stuck in the system is abandoned instead.
void end(const QList<QProcess *> &processes);

} // namespace childprogram
