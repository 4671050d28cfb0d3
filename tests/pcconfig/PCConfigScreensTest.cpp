// The display rows on a machine with a screen of its own kind, and on one without any. The windowless platform takes its
// screens from a file.
#include "pcconfig/PCConfigPage.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

using Rows = QStringList; // the four of the display, and the one of the graphics adapter

std::optional<Rows> rowsWithoutScreens; // found out before the application with a screen started

Rows rowsOf(const PCConfigPage &page)
{
    const auto &labels = page.displaySection.labels;
    return {labels.value(text("Primary"))->text(),
            labels.value(text("Resolution"))->text(),
            labels.value(text("Refresh"))->text(),
            labels.value(text("Scale"))->text(),
            page.gpuSection.labels.value(text("Resolution"))->text()};
}

void useScreens(const QTemporaryDir &folder, const QByteArray &screens)
{
    QFile file(folder.filePath(text("screens.json")));
    if (file.open(QIODevice::WriteOnly)) {
        file.write("{\"screens\":[" + screens + "]}");
    }
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
}

} // namespace

class PCConfigScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void noScreen()
    {
        QVERIFY2(rowsWithoutScreens, "The platform had a screen nevertheless.");
        const QString unknown = text("Unknown");
        QCOMPARE(*rowsWithoutScreens, (Rows{unknown, unknown, unknown, unknown, unknown}));
    }

    void screenOfItsOwnKind()
    {
        const QScreen *screen = QGuiApplication::primaryScreen();
        QCOMPARE(screen->size(), QSize(2560, 1440));
        QCOMPARE(screen->devicePixelRatio(), 1.5);
        const PCConfigPage page(nullptr);
        const QString refresh = QString::number(screen->refreshRate(), 'f', 1) + text(" Hz");
        QCOMPARE(
            rowsOf(page),
            (Rows{text("Wide"), text("2560 x 1440"), refresh, text("1.50x"), text("2560 x 1440")}));
    }
};

namespace {

std::optional<Rows> rowsWithout(const QTemporaryDir &folder, int argc, char **argv)
{
    useScreens(folder, {});
    const QApplication application(argc, argv);
    return QGuiApplication::screens().isEmpty() ? std::optional(rowsOf(PCConfigPage(nullptr)))
                                                : std::nullopt;
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    qputenv("PATH", folder.path().toUtf8());
    rowsWithoutScreens = rowsWithout(folder, argc, argv);
    useScreens(folder,
               "{\"name\":\"Wide\",\"x\":0,\"y\":0,\"width\":2560,\"height\":1440,"
               "\"logicalDpi\":96,\"logicalBaseDpi\":96,\"dpr\":1.5}");
    const QApplication application(argc, argv);
    PCConfigScreensTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "PCConfigScreensTest.moc"
