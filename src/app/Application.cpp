#include "app/Application.h"

#include <QThread>
#include <exception>
#include <utility>

Application::Application(int &argc, char **argv)
    : QApplication(argc, argv)
{ }

void Application::setFailureReporter(std::function<void(const QString &)> newReporter)
{
    reporter = std::move(newReporter);
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception &failure) {
        report(QString::fromLocal8Bit(failure.what()));
    } catch (...) {
        report(QStringLiteral("unknown failure"));
    }
    return true;
}

void Application::report(const QString &what)
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(
            this, [this, what] { report(what); }, Qt::QueuedConnection);
    } else if (reporter) {
        reporter(what);
    }
}
