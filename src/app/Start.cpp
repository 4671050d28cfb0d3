#include "app/Start.h"

#include "app/Application.h"
#include "app/MainWindow.h"

#include <QCursor>
#include <memory>

int qMain(int argc, char **argv)
{
    Application application(argc, argv);
    QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    std::unique_ptr<MainWindow> window(new MainWindow(nullptr));
    application.setFailureReporter([&window](const QString &what) { window->reportFailure(what); });
    QApplication::restoreOverrideCursor();
    window->show();
    const int result = QApplication::exec();
    application.setFailureReporter({}); // the window goes first
    window.reset();
    QCoreApplication::sendPostedEvents(
        nullptr, QEvent::DeferredDelete); // notifications that were still standing
    return result;
}
