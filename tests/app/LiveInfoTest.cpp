// The dashboard's place and weather, with stand-ins for the programs that ask the web.
#include "app/MainWindow.h"
#include "app/WebAnswers.h"
#include "app/WindowProbes.h"
#include "platform/WebQuery.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QScrollArea>
#include <filesystem>
#include <memory>

namespace {

const QString kLocation = QStringLiteral("location");
const QString kWeather = QStringLiteral("weather");
const QString kPowershell = QStringLiteral("powershell");
const QString kCurl = QStringLiteral("curl");
const QString kResolvingPlace = QStringLiteral("Location: Resolving...");
const QString kResolvingWeather = QStringLiteral("Weather: Resolving...");

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

std::unique_ptr<MainWindow> createWindow()
{
    auto window = std::make_unique<MainWindow>(nullptr);
    window->timers.locationWeather->stop();
    return window;
}

} // namespace

class LiveInfoTest : public QObject
{
    Q_OBJECT

private slots:
    // The window's own first refresh is over before anything is tested; it finds no program.
    void initTestCase()
    {
        QVERIFY(QFile::exists(WebAnswers::helperFile()));
        const WebAnswers none;
        QElapsedTimer time; // the window's timer starts while it is built, which may take its time
        time.start();
        window = createWindow();
        window->show();
        window->dashboard.location->setText(latin("not yet asked"));
        QTRY_COMPARE(window->dashboard.location->text(), kResolvingPlace);
        QVERIFY(time.elapsed() > 1000);
        QTRY_VERIFY(processes().isEmpty()); // what did not start is gone, too
    }

    void cleanupTestCase() { window.reset(); }

    void init()
    {
        web = std::make_unique<WebAnswers>();
        window->dashboard.location->clear();
        window->dashboard.weather->clear();
    }

    void cleanup()
    {
        web->write(latin("go"), "");
        QTRY_VERIFY_WITH_TIMEOUT(processes().isEmpty(), 20000);
        web.reset();
    }

    void location_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const char *output, const char *text) {
            QTest::newRow(name) << QByteArray(output) << QString::fromUtf8(text);
        };
        row("usual", "Paris|Ile-de-France|France\n", "Location: Paris, Ile-de-France France");
        row("no city", "|Region|Country\n", "Location: Unknown");
        row("Unknown", "Unknown|x|y\n", "Location: Unknown");
        row("unknown", "unknown|x|y\n", "Location: unknown, x y");
        row("two parts", "Paris|France\n", "Location: Unknown");
        row("more parts", "a|b|c|d|e\n", "Location: a, b c");
        row("blank lines",
            "\r\n\r\n Dublin | Leinster | Ireland \r\n\r\n",
            "Location: Dublin, Leinster Ireland");
        row("nothing", "", "Location: Unknown");
        row("only blanks", " \n\t\n ", "Location: Unknown");
        row("city alone", "Paris||\n", "Location: Paris,  ");
        row("markup", "<b>Paris</b>|&amp;|%1\n", "Location: <b>Paris</b>, &amp; %1");
    }

    void location()
    {
        QFETCH(QByteArray, output);
        QFETCH(QString, text);
        web->plant(kPowershell);
        web->answer(kLocation, output);
        web->answer(kWeather, "12C, Sunny\n");
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.location->text(), text);
        QTRY_COMPARE(window->dashboard.weather->text(), latin("Weather: 12C, Sunny"));
        QCOMPARE(window->dashboard.location->textFormat(), Qt::PlainText);
    }

    void weather_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const char *output, const char *text) {
            QTest::newRow(name) << QByteArray(output) << QString::fromUtf8(text);
        };
        row("usual", "12C, Partly cloudy\r\n", "Weather: 12C, Partly cloudy");
        row("blank lines", "\n\n  -3C, Snow \n\n", "Weather: -3C, Snow");
        row("nothing", "", "Weather: Unavailable");
        row("only blanks", "\r\n \r\n", "Weather: Unavailable");
        row("blanks inside", "12C,  Light  rain", "Weather: 12C,  Light  rain");
        row("markup", "<img src='x'> &lt;", "Weather: <img src='x'> &lt;");
    }

    void weather()
    {
        QFETCH(QByteArray, output);
        QFETCH(QString, text);
        web->plant(kPowershell);
        web->answer(kLocation, "a|b|c");
        web->answer(kWeather, output);
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.weather->text(), text);
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: a, b c"));
        QCOMPARE(window->dashboard.weather->textFormat(), Qt::PlainText);
    }

    void commandLinesAreExact()
    {
        web->plant(kPowershell);
        window->refreshLiveLocationWeather();
        QTRY_VERIFY(processes().isEmpty());
        const QByteArray common = QByteArray("-NoProfile") + '\0' + "-ExecutionPolicy" + '\0'
            + "Bypass" + '\0' + "-Command" + '\0';
        QCOMPARE(web->read(latin("location.arguments")),
                 common
                     + "$i=Invoke-RestMethod 'http://" VELTRA_LOCATION_HOST
                       "/json'; \"$($i.city)|$($i.regionName)|$($i.country)\""
                     + '\0');
        QCOMPARE(web->read(latin("weather.arguments")),
                 common
                     + "$w=Invoke-RestMethod 'https://" VELTRA_WEATHER_HOST
                       "/?format=j1'; $c=$w.current_condition[0]; "
                       "\"$($c.temp_C)C, $($c.weatherDesc[0].value)\""
                     + '\0');
    }

    // Each waits for the other to have begun.
    void bothRunAtOnce()
    {
        web->plant(kPowershell);
        web->write(latin("place"), "a|b|c");
        web->write(latin("sky"), "1C, Sun");
        web->plan(kLocation, "mark one\nawait two\nprint place\n");
        web->plan(kWeather, "mark two\nawait one\nprint sky\n");
        QElapsedTimer time;
        time.start();
        window->refreshLiveLocationWeather();
        QVERIFY(time.elapsed() < 1000);
        QCOMPARE(window->dashboard.location->text(), kResolvingPlace);
        QCOMPARE(window->dashboard.weather->text(), kResolvingWeather);
        QCOMPARE(processes().size(), 2);
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: a, b c"));
        QTRY_COMPARE(window->dashboard.weather->text(), latin("Weather: 1C, Sun"));
    }

    void theLinesAreIndependent_data()
    {
        QTest::addColumn<QString>("slow");
        QTest::newRow("location first") << kWeather;
        QTest::newRow("weather first") << kLocation;
    }

    void theLinesAreIndependent()
    {
        QFETCH(QString, slow);
        const bool isWeatherSlow = slow == kWeather;
        web->plant(kPowershell);
        web->answer(isWeatherSlow ? kLocation : kWeather, "a|b|c");
        web->plan(slow, "await go\nexit 1\n");
        window->refreshLiveLocationWeather();
        const auto &page = window->dashboard;
        if (isWeatherSlow) {
            QTRY_COMPARE(page.location->text(), latin("Location: a, b c"));
            QCOMPARE(page.weather->text(), kResolvingWeather);
        } else {
            QTRY_COMPARE(page.weather->text(), latin("Weather: a|b|c"));
            QCOMPARE(page.location->text(), kResolvingPlace);
        }
        web->write(latin("go"), "");
        QTRY_COMPARE(isWeatherSlow ? page.weather->text() : page.location->text(),
                     latin(isWeatherSlow ? "Weather: Unavailable" : "Location: Unknown"));
        QCOMPARE(isWeatherSlow ? page.location->text() : page.weather->text(),
                 latin(isWeatherSlow ? "Location: a, b c" : "Weather: a|b|c"));
    }

    void howItEndsDoesNotMatter()
    {
        web->plant(kPowershell);
        web->write(latin("place"), "a|b|c");
        web->write(latin("sky"), "1C, Sun");
        web->plan(kLocation, "print place\nexit 3\n");
        web->plan(kWeather, "complain 300000\ninput\nprint sky\nexit 255\n");
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: a, b c"));
        QTRY_COMPARE(window->dashboard.weather->text(), latin("Weather: 1C, Sun"));
    }

    void failuresAreNotReported()
    {
        web->plant(kPowershell);
        web->plan(kLocation, "complain 100\nexit 1\n");
        web->plan(kWeather, "complain 100\nexit 1\n");
        const QString before = window->historyLogView->toPlainText();
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: Unknown"));
        QTRY_COMPARE(window->dashboard.weather->text(), latin("Weather: Unavailable"));
        QCOMPARE(window->historyLogView->toPlainText(), before);
        QVERIFY(probes::toasts().isEmpty());
    }

    // Also when one lies in the current folder.
    void missingProgramLeavesTheLinesResolving()
    {
        const QString oldFolder = QDir::currentPath();
        const QTemporaryDir trap;
        for (const QString &program : {kPowershell, kCurl}) {
            QVERIFY(QFile::copy(WebAnswers::helperFile(), trap.filePath(program)));
            QVERIFY(QFile::copy(WebAnswers::helperFile(), trap.filePath(program + latin(".exe"))));
        }
        QVERIFY(QDir::setCurrent(trap.path()));
        window->refreshLiveLocationWeather();
        QTRY_VERIFY(processes().isEmpty());
        QVERIFY(QDir::setCurrent(oldFolder));
        QCOMPARE(window->dashboard.location->text(), kResolvingPlace);
        QCOMPARE(window->dashboard.weather->text(), kResolvingWeather);
        QVERIFY(!QFile::exists(trap.filePath(latin("location.runs"))));

        web->plant(kPowershell); // a later refresh succeeds
        web->answer(kLocation, "a|b|c");
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: a, b c"));
    }

    void folderWhoseNameIsNoText()
    {
        if (WebAnswers::helperFile().endsWith(latin(".exe"))) {
            QSKIP("file names are text here");
        }
        web->plant(kPowershell);
        const std::filesystem::path folder = web->file(latin("not-\xe9")).toLatin1().toStdString();
        std::filesystem::create_directory(folder);
        std::filesystem::rename(web->file(kPowershell).toStdString(), folder / "powershell");
        qputenv("PATH", QByteArray::fromStdString(folder.string()));
        window->refreshLiveLocationWeather();
        QTRY_VERIFY(processes().isEmpty());
        std::filesystem::remove_all(folder); // the toolkit cannot
        QCOMPARE(window->dashboard.location->text(), kResolvingPlace);
    }

    void anEarlierRefreshGoesOn()
    {
        web->plant(kPowershell);
        web->write(latin("early"), "early|b|c");
        web->plan(kLocation, "mark begun\nawait go\nprint early\n");
        window->refreshLiveLocationWeather();
        QTRY_VERIFY(web->has(latin("begun")));
        web->answer(kLocation, "late|b|c");
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: late, b c"));
        QTRY_COMPARE(processes().size(), 1);
        web->write(latin("go"), "");
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: early, b c"));
        QCOMPARE(web->runs(kLocation), 2);
        QCOMPARE(web->runs(kWeather), 2);
    }

    void tooMuchOutputIsCut_data()
    {
        QTest::addColumn<QByteArray>("steps");
        QTest::addColumn<bool>("mayFinish");
        // Where pipes are read ahead, it may be through before it can be ended.
        QTest::newRow("megabytes") << QByteArray("print start\nfill 9000000\n") << true;
        QTest::newRow("gigabytes") << QByteArray("print start\nfill 4000000000\n") << false;
        QTest::newRow("without end") << QByteArray("print start\nflood\n") << false;
    }

    // It is ended as soon as it has said more than any answer.
    void tooMuchOutputIsCut()
    {
        QFETCH(QByteArray, steps);
        QFETCH(bool, mayFinish);
        web->plant(kPowershell);
        web->write(latin("start"), "Paris|b|c");
        web->plan(kLocation, steps);
        web->plan(kWeather, steps);
        window->refreshLiveLocationWeather();
        QTRY_VERIFY_WITH_TIMEOUT(window->dashboard.weather->text() != kResolvingWeather, 20000);
        QTRY_VERIFY_WITH_TIMEOUT(window->dashboard.location->text() != kResolvingPlace, 20000);
        QTRY_VERIFY(processes().isEmpty());
        QVERIFY(mayFinish || !web->has(latin("weather.done")));
        QVERIFY(window->dashboard.location->text().startsWith(latin("Location: Paris, b cxxx")));
        QVERIFY(window->dashboard.weather->text().startsWith(latin("Weather: Paris|b|cxxx")));
        for (const QLabel *label : {window->dashboard.location, window->dashboard.weather}) {
            QCOMPARE(label->text().size(), 200);
            QVERIFY(label->text().endsWith(QChar(0x2026)));
        }
    }

    void longLinesWidenNothing()
    {
        const auto *page = qobject_cast<QScrollArea *>(window->dashboard.page);
        QVERIFY(page != nullptr);
        web->plant(kPowershell);
        web->answer(kLocation, "a|b|" + QByteArray(100000, 'W'));
        web->answer(kWeather, QByteArray(100000, 'W'));
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.weather->text().size(), 200);
        QTRY_COMPARE(window->dashboard.location->text().size(), 200);
        QCoreApplication::processEvents();
        QCOMPARE(window->size(), QSize(1100, 680));
        QCOMPARE(page->widget()->width(), page->viewport()->width());
        QVERIFY(window->dashboard.weather->width() < page->viewport()->width());
    }

    // Nobody waits for it, and nothing of it is left.
    void closingEndsTheQuestions()
    {
        auto other = createWindow(); // first: its inventory would ask that program, too
        web->plant(kPowershell);
        web->plan(kLocation, "pulse\n");
        web->plan(kWeather, "pulse\n");
        other->refreshLiveLocationWeather();
        QTRY_VERIFY(web->has(latin("location.pulse")) && web->has(latin("weather.pulse")));
        QElapsedTimer time;
        time.start();
        other.reset();
        QVERIFY2(time.elapsed() < 1000, qPrintable(QString::number(time.elapsed())));
        QTRY_VERIFY(web->isDead(kLocation) && web->isDead(kWeather));
    }

    void closingRightAfterTheQuestion()
    {
        auto other = createWindow();
        web->plant(kPowershell);
        web->plan(kLocation, "pulse\n");
        web->plan(kWeather, "flood\n");
        other->refreshLiveLocationWeather();
        other->refreshLiveLocationWeather();
        other.reset();
        QVERIFY(
            QApplication::topLevelWidgets().contains(window.get())); // and the other one lives on
    }

    void closingWithoutThePrograms()
    {
        auto other = createWindow();
        other->refreshLiveLocationWeather();
        other.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void withoutLabels()
    {
        web->plant(kPowershell);
        web->answer(kLocation, "a|b|c");
        web->answer(kWeather, "1C, Sun");
        QLabel *location = std::exchange(window->dashboard.location, nullptr);
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.weather->text(), latin("Weather: 1C, Sun"));
        QLabel *weather = std::exchange(window->dashboard.weather, nullptr);
        window->dashboard.location = location;
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.location->text(), latin("Location: a, b c"));
        QTRY_VERIFY(processes().isEmpty());
        window->dashboard.weather = weather;
    }

    // Where there is no PowerShell.
    void curlAnswers_data()
    {
        QTest::addColumn<QByteArray>("place");
        QTest::addColumn<QByteArray>("sky");
        QTest::addColumn<QString>("location");
        QTest::addColumn<QString>("weather");
        QTest::newRow("usual")
            << QByteArray(
                   R"({"status":"success","country":"Ireland","regionName":"Leinster","city":"Dublin"})")
            << QByteArray(
                   R"({"current_condition":[{"temp_C":"12","weatherDesc":[{"value":"Partly cloudy"}]}]})")
            << latin("Location: Dublin, Leinster Ireland") << latin("Weather: 12C, Partly cloudy");
        QTest::newRow("nothing") << QByteArray() << QByteArray() << latin("Location: Unknown")
                                 << latin("Weather: Unavailable");
        QTest::newRow("a page") << QByteArray("<html>blocked</html>")
                                << QByteArray("<html>blocked</html>") << latin("Location: Unknown")
                                << latin("Weather: Unavailable");
        QTest::newRow("a line, as PowerShell prints it")
            << QByteArray("a|b|c") << QByteArray("1C, Sun") << latin("Location: Unknown")
            << latin("Weather: Unavailable");
        QTest::newRow("more than fits")
            << QByteArray("{\"city\":\"") + QByteArray(2'000'000, 'x') + "\"}"
            << QByteArray("[") + QByteArray(2'000'000, ' ') + "]" << latin("Location: Unknown")
            << latin("Weather: Unavailable");
    }

    void curlAnswers()
    {
#ifdef VELTRA_ON_WINDOWS
        QSKIP("Windows has PowerShell.");
#endif
        QFETCH(QByteArray, place);
        QFETCH(QByteArray, sky);
        QFETCH(QString, location);
        QFETCH(QString, weather);
        web->plant(kCurl);
        web->answer(kLocation, place);
        web->answer(kWeather, sky);
        window->refreshLiveLocationWeather();
        QTRY_COMPARE(window->dashboard.location->text(), location);
        QTRY_COMPARE(window->dashboard.weather->text(), weather);
    }

    void curlIsAskedForBoth()
    {
#ifdef VELTRA_ON_WINDOWS
        QSKIP("Windows has PowerShell.");
#endif
        web->plant(kCurl);
        window->refreshLiveLocationWeather();
        QTRY_VERIFY(processes().isEmpty());
        for (const auto &[question, topic] : {std::pair(kLocation, platform::WebTopic::Location),
                                              std::pair(kWeather, platform::WebTopic::Weather)}) {
            QByteArray expected;
            const auto query =
                platform::curlWebQuery(platform::webAddress(topic, platform::webHost(topic)));
            for (const std::string &argument : query.command.arguments) {
                expected += QByteArray::fromStdString(argument) + '\0';
            }
            QCOMPARE(web->read(question + latin(".arguments")), expected);
        }
    }

private:
    QList<QProcess *> processes() const
    {
        return window->findChildren<QProcess *>();
    }

    std::unique_ptr<MainWindow> window;
    std::unique_ptr<WebAnswers> web;
};

QTEST_MAIN(LiveInfoTest)
#include "LiveInfoTest.moc"
