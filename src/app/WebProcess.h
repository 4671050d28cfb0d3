// One question to a web service, asked by a program that runs beside the window.
#pragma once

#include "platform/WebQuery.h"

#include <QProcess>

// Keeps the beginning of what the program prints, so that nothing that it prints can fill the memory. GUI thread.
class WebProcess : public QProcess
{
    Q_OBJECT

public:
    explicit WebProcess(QObject *parent);

    // Starts the program, found on PATH, without input. One that does not start deletes this object, silently; otherwise
    // `finished` comes, after everything that is kept has been read.
    void ask(const platform::WebQuery &question);

    // The answer as one line, trimmed; empty when there is none.
    QString answer(platform::WebTopic topic);

private:
    void keepOutput();

    platform::WebOutput kind = platform::WebOutput::Line;
    QByteArray output;
};
