// The application object.
#pragma once

#include <QApplication>
#include <functional>

// An ordinary QApplication whose event dispatch outlives a handler that throws: the failure is handed on as one line of
// text, and the program goes on with the next event.
class Application : public QApplication
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);

    // Gets what went wrong, once per failure, on the GUI thread. Without one, failures are only swallowed.
    void setFailureReporter(std::function<void(const QString &)> newReporter);

    bool notify(QObject *receiver, QEvent *event) override;

private:
    void report(const QString &what); // from any thread

    std::function<void(const QString &)> reporter;
};
