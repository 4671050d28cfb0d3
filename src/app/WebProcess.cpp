#include "app/WebProcess.h"

#include "app/ChildProgram.h"
#include "app/WebAnswer.h"

namespace {

constexpr qsizetype kMostOutput = 1 << 20; // bytes; the longest answer takes some 50,000

} // namespace

WebProcess::WebProcess(QObject *parent)
    : QProcess(parent)
{
    setStandardInputFile(nullDevice());
    setStandardErrorFile(nullDevice());
    connect(this, &QProcess::readyReadStandardOutput, this, &WebProcess::keepOutput);
    connect(this, &QProcess::errorOccurred, this, [this](ProcessError error) {
        if (error == FailedToStart) {
            deleteLater();
        }
    });
}

void WebProcess::ask(const platform::WebQuery &question)
{
    kind = question.output;
    start(childprogram::fileOf(QString::fromStdString(question.command.program)),
          childprogram::argumentsOf(question.command),
          QIODevice::ReadOnly);
}

QString WebProcess::answer(platform::WebTopic topic)
{
    keepOutput();
    const QString line = kind == platform::WebOutput::Json ? webanswer::lineOfJson(topic, output)
                                                           : QString::fromLocal8Bit(output);
    return line.trimmed();
}

// What goes on beyond the limit is no answer, and might never end.
void WebProcess::keepOutput()
{
    output += read(kMostOutput - output.size());
    if (bytesAvailable() > 0) {
        skip(bytesAvailable());
        closeReadChannel(StandardOutput);
        kill();
    }
}
