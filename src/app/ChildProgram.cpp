#include "app/ChildProgram.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <chrono>

namespace childprogram {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestEnd = 500ms; // for all of them together

} // namespace

QString fileOf(const QString &program)
{
    if (QDir::isAbsolutePath(program)) {
        return program;
    }
    const auto file = platform::findOnPath(program.toStdString());
    return file ? QFileInfo(*file).filePath() : QString(); // the path may be no valid text
}

QStringList argumentsOf(const platform::CommandLine &command)
{
    QStringList arguments;
    for (const std::string &argument : command.arguments) {
        arguments.append(QString::fromStdString(argument));
    }
    return arguments;
}

void abandon(QProcess *process)
{
    static auto &abandoned = *new QList<QProcess *>; // never destroyed, like what it holds
    process->setParent(nullptr);
    abandoned.append(process);
    QObject::connect(process, &QProcess::finished, process, [process] {
        abandoned.removeOne(process);
        process->deleteLater();
    });
}

void end(const QList<QProcess *> &processes)
{
    for (QProcess *process : processes) {
        process->kill();
    }
    const QDeadlineTimer deadline(kLongestEnd);
    for (QProcess *process : processes) {
        const bool hasEnded = process->state() == QProcess::NotRunning
            || process->waitForFinished(static_cast<int>(deadline.remainingTime()));
        if (hasEnded) {
            delete process;
        } else {
            abandon(process);
        }
    }
}

} // namespace childprogram
