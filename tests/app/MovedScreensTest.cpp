// The window on screens of different scales: what it keeps is made anew. The windowless platform takes its screens from a
// file.
#include "app/MainWindow.h"

#include "fakes/ScriptedPlatform.h"
#include "ui/CachedShadow.h"
#include "ui/PictureDifference.h"

#include <QApplication>
#include <QFile>
#include <QScreen>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <memory>

namespace {

const QByteArray &screensFile()
{
    static const QByteArray text = R"({"screens":[
        {"name":"plain","x":0,"y":0,"width":1600,"height":900,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1},
        {"name":"fine","x":1600,"y":0,"width":3200,"height":1800,"logicalDpi":96,"logicalBaseDpi":96,"dpr":2},
        {"name":"between","x":4800,"y":0,"width":2400,"height":1350,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1.5}
    ]})";
    return text;
}

} // namespace

class MovedScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void eachScreenGetsItsOwnPicture()
    {
        fakes::scriptedPlatform() = {};
        MainWindow window;
        window.show();
        QTRY_VERIFY(window.pageStack->currentWidget()->graphicsEffect() == nullptr);
        const auto timers = window.findChildren<QTimer *>();
        for (QTimer *timer : timers) {
            timer->stop();
        }
        const auto screens = QGuiApplication::screens();
        QCOMPARE(screens.size(), 3);
        for (const int number : {0, 1, 2, 1, 0}) {
            QScreen *screen = screens.at(number);
            window.windowHandle()->setScreen(screen);
            window.move(screen->geometry().topLeft() + QPoint(20, 20));
            QTRY_COMPARE(window.devicePixelRatio(), screen->devicePixelRatio());
            QCoreApplication::processEvents();
            const QImage picture = window.grab().toImage();
            QCOMPARE(picture.size(), window.size() * screen->devicePixelRatio());
            QVERIFY(!keepsOthers(window, picture));
        }
    }

private:
    // Whether the picture depends on what was kept from the screen before: after hiding nothing is.
    static bool keepsOthers(MainWindow &window, const QImage &picture)
    {
        auto *shadow = qobject_cast<CachedShadow *>(window.windowSurface->graphicsEffect());
        const bool kept = shadow->holdsPictures();
        window.hide();
        window.show();
        QCoreApplication::processEvents();
        return !kept || largestDifference(window.grab().toImage(), picture) > 1;
    }
};

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("screens.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(screensFile()) < 0) {
        return 1;
    }
    file.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
    const QApplication application(argc, argv);
    MovedScreensTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "MovedScreensTest.moc"
