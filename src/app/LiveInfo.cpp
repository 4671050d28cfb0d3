// Where this machine is, and the weather there, as web services tell.
#include "app/ChildProgram.h"
#include "app/MainWindow.h"
#include "app/WebAnswer.h"
#include "app/WebProcess.h"

#include <QLabel>

namespace {

void setTextOf(QLabel *label, const QString &text)
{
    if (label != nullptr) {
        label->setText(text);
    }
}

} // namespace

// Both questions are asked at once, and each answer is shown when it comes.
void MainWindow::refreshLiveLocationWeather()
{
    setTextOf(dashboard.location, QStringLiteral("Location: Resolving..."));
    setTextOf(dashboard.weather, QStringLiteral("Weather: Resolving..."));
    askWeb(platform::WebTopic::Location, [this](const QString &line) {
        setTextOf(dashboard.location, webanswer::locationText(line));
    });
    askWeb(platform::WebTopic::Weather, [this](const QString &line) {
        setTextOf(dashboard.weather, webanswer::weatherText(line));
    });
}

// How the program ended does not matter: what it printed does.
void MainWindow::askWeb(platform::WebTopic topic,
                        const std::function<void(const QString &)> &answered)
{
    auto *process = new WebProcess(this);
    connect(process, &QProcess::finished, this, [process, topic, answered] {
        answered(process->answer(topic));
        process->deleteLater();
    });
    process->ask(platform::webQuery(topic));
}

void MainWindow::endWebQueries()
{
    QList<QProcess *> processes;
    const auto queries = findChildren<WebProcess *>(QString(), Qt::FindDirectChildrenOnly);
    for (WebProcess *query : queries) {
        query->disconnect(this);
        processes.append(query);
    }
    childprogram::end(processes);
}
