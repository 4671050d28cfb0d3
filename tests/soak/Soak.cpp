// The real window for so many seconds: Soak SECONDS [SMALL-VOLUME]. Started by scripts/soak.sh, which makes the sandbox;
// without its mark in the temporary folder's parent nothing is done.
#include "app/MainWindow.h"
#include "soak/SoakRun.h"

#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <memory>

int main(int argc, char **argv)
{
    constexpr int kFailed = 1;
    constexpr int kNoSandbox = 2;
    constexpr auto kStartUp = std::chrono::seconds(3);

    const QString mark = QDir::tempPath() + QStringLiteral("/../veltra-soak-sandbox");
    if (argc < 2 || !QFileInfo::exists(mark) || qEnvironmentVariable("TEMP") != QDir::tempPath()) {
        std::fprintf(stderr,
                     "This presses buttons that delete. Please start it with scripts/soak.sh.\n");
        return kNoSandbox;
    }
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    BlockWatch application(argc, argv);
    const auto window = std::make_unique<MainWindow>();
    SoakRun run(*window, application, std::chrono::seconds(QByteArray(argv[1]).toInt()));
    application.setFailureReporter([&window](const QString &what) { window->reportFailure(what); });
    run.walk.smallVolume = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    window->show();
    QTimer::singleShot(kStartUp, &run, &SoakRun::start);
    QApplication::exec();
    return run.report() ? 0 : kFailed;
}
