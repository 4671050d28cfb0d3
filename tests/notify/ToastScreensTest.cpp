// Several screens, and none. The windowless platform takes its screens from a file.
#include "notify/ToastInput.h"
#include "ui/TestInput.h"

#include <QCursor>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

using toastinput::bury;
using toastinput::show;

namespace {

constexpr QRect kRight(0, 0, 1920, 1080);
QRect withoutScreens; // found out before the application with two screens started

constexpr QRect kLeft(-1280, 40, 1280, 1024);

QByteArray screen(const char *name, const QRect &geometry)
{
    return QStringLiteral("{\"name\":\"%1\",\"x\":%2,\"y\":%3,\"width\":%4,\"height\":%5,"
                          "\"logicalDpi\":96,\"logicalBaseDpi\":96,\"dpr\":1}")
        .arg(QString::fromLatin1(name))
        .arg(geometry.x())
        .arg(geometry.y())
        .arg(geometry.width())
        .arg(geometry.height())
        .toUtf8();
}

void useScreens(const QTemporaryDir &folder, const QByteArray &screens)
{
    QFile file(folder.filePath(QStringLiteral("screens.json")));
    if (file.open(QIODevice::WriteOnly)) {
        file.write("{\"screens\":[" + screens + "]}");
    }
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
}

} // namespace

class ToastScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(QGuiApplication::screens().size(), 2); }

    void cursorChoosesTheScreen()
    {
        const DesktopToastManager manager(nullptr);
        QCursor::setPos(kRight.center());
        QCOMPARE(manager.activeScreenGeometry(), kRight);
        QCursor::setPos(kLeft.topLeft());
        QCOMPARE(manager.activeScreenGeometry(), kLeft);
        QCursor::setPos(kLeft.bottomRight());
        QCOMPARE(manager.activeScreenGeometry(), kLeft);
    }

    void noScreenUnderTheCursor()
    {
        const DesktopToastManager manager(nullptr);
        QCursor::setPos(QPoint(-100, 0)); // above the left screen, beside the right one
        if (QCursor::pos() != QPoint(-100, 0)) {
            QSKIP("The platform keeps the cursor on its screens.");
        }
        QCOMPARE(manager.activeScreenGeometry(), QGuiApplication::primaryScreen()->geometry());
    }

    void noScreenAtAll() { QCOMPARE(withoutScreens, QRect(0, 0, 1920, 1080)); }

    void toastsAppearUnderTheCursorAndFollowIt()
    {
        QCursor::setPos(kLeft.center());
        DesktopToastManager manager(nullptr);
        DesktopToast *first = show(manager);
        QCOMPARE(testinput::animationOf(first, "pos")->endValue().toPoint(),
                 QPoint(-1 - 330 - 16, 40 + 16));
        QTRY_COMPARE(first->windowOpacity(), 1.0);
        QCursor::setPos(kRight.center());
        DesktopToast *second = show(manager);
        QCOMPARE(testinput::animationOf(second, "pos")->endValue().toPoint(),
                 QPoint(1573, 16 + first->height() + 10));
        QCOMPARE(first->x(), -1 - 330 - 16); // stays until the stack is laid out again
        toastinput::closeButton(second)->click();
        QCOMPARE(first->pos(), QPoint(1573, 16));
        bury();
    }
};

namespace {

QRect geometryWithoutScreens(const QTemporaryDir &folder, int argc, char **argv)
{
    useScreens(folder, {});
    const QGuiApplication application(argc, argv);
    return QGuiApplication::screens().isEmpty()
        ? DesktopToastManager(nullptr).activeScreenGeometry()
        : QRect();
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    withoutScreens = geometryWithoutScreens(folder, argc, argv);
    useScreens(folder, screen("Left", kLeft) + "," + screen("Right", kRight));
    const QApplication application(argc, argv);
    ToastScreensTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "ToastScreensTest.moc"
