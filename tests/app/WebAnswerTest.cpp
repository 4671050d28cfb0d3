// What is made of the web services' answers, hostile ones included.
#include "app/WebAnswer.h"

#include <QRandomGenerator>
#include <QTest>

using platform::WebTopic;

namespace {

const QByteArray kPlace =
    R"({"status":"success","country":"Ireland","regionName":"Leinster","city":"Dublin","zip":"D02"})";
const QByteArray kSky =
    R"({"current_condition":[{"FeelsLikeC":"9","temp_C":"12","weatherDesc":[{"value":"Partly cloudy"}]}],"weather":[]})";

QByteArray conditions(const char *temperature, const char *description)
{
    return QByteArray(R"({"current_condition":[{"temp_C":)") + temperature + R"(,"weatherDesc":)"
        + description + "}]}";
}

// What every text that is shown must be.
bool isOneSensibleLine(const QString &text)
{
    for (const QChar character : text) {
        const bool turnsText = (character.unicode() >= 0x202a && character.unicode() <= 0x202e)
            || (character.unicode() >= 0x2066 && character.unicode() <= 0x2069);
        if (character.unicode() < 32 || (character.unicode() >= 127 && character.unicode() < 160)
            || character.unicode() == 0x2028 || character.unicode() == 0x2029 || turnsText) {
            return false;
        }
    }
    return text.size() <= 200;
}

// Bytes changed, taken out, put in, doubled; or the end cut off.
QByteArray mutated(QByteArray text, QRandomGenerator &random)
{
    const int changes = random.bounded(1, 6);
    for (int i = 0; i < changes && !text.isEmpty(); ++i) {
        const int place = random.bounded(static_cast<int>(text.size()));
        switch (random.bounded(5)) {
        case 0:
            text[place] = static_cast<char>(random.bounded(256));
            break;
        case 1:
            text.remove(place, random.bounded(1, 9));
            break;
        case 2:
            text.insert(place,
                        QByteArray(random.bounded(1, 400),
                                   "{}[]\",:|\\\n\xff"
                                   "0"[random.bounded(12)]));
            break;
        case 3:
            text.insert(place, text.mid(place, random.bounded(1, 60)));
            break;
        default:
            text.truncate(place);
            break;
        }
    }
    return text;
}

} // namespace

class WebAnswerTest : public QObject
{
    Q_OBJECT

private slots:
    void placeJson_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *name, const QByteArray &json, const char *line) {
            QTest::newRow(name) << json << QString::fromUtf8(line);
        };
        row("usual", kPlace, "Dublin|Leinster|Ireland");
        row("byte order mark", "\xef\xbb\xbf" + kPlace, "Dublin|Leinster|Ireland");
        row("beyond ASCII",
            R"({"city":"Zürich","regionName":"\u00d6st","country":"瑞士"})",
            "Zürich|Öst|瑞士");
        row("numbers", R"({"city":7,"regionName":1.5,"country":-2})", "7|1.5|-2");
        row("no city", R"({"regionName":"x","country":"y"})", "|x|y");
        row("wrong types", R"({"city":["a"],"regionName":{"b":1},"country":true})", "");
        row("null", R"({"city":null,"regionName":null,"country":"y"})", "||y");
        row("failure", R"({"status":"fail","message":"reserved range"})", "");
        row("other case", R"({"City":"a","regionname":"b","COUNTRY":"c"})", "");
        row("empty", "", "");
        row("empty object", "{}", "");
        row("array", "[1,2,3]", "");
        row("scalar", "\"Dublin\"", "");
        row("truncated", kPlace.chopped(1), "");
        row("two documents", kPlace + kPlace, "");
        row("invalid UTF-8", "{\"city\":\"D\xff\xfe\",\"regionName\":\"x\",\"country\":\"y\"}", "");
        QTest::newRow("a NUL") << QByteArray("{\"city\":\"a\0b\"}", 14)
                               << QString::fromLatin1("a\0b||", 5);
        row("deep", QByteArray(100000, '[') + QByteArray(100000, ']'), "");
        row("deep objects", QByteArray("{\"city\":").repeated(100000) + "1", "");
    }

    void placeJson()
    {
        QFETCH(QByteArray, json);
        QTEST(webanswer::lineOfJson(WebTopic::Location, json), "line");
    }

    void weatherJson_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *name, const QByteArray &json, const char *line) {
            QTest::newRow(name) << json << QString::fromUtf8(line);
        };
        const char *sun = R"([{"value":"Sun"}])";
        row("usual", kSky, "12C, Partly cloudy");
        row("number", conditions("12", sun), "12C, Sun");
        row("negative", conditions("-3", sun), "-3C, Sun");
        row("fraction", conditions("12.5", sun), "12.5C, Sun");
        row("huge number", conditions("1e300", sun), "1e+300C, Sun");
        row("number that is none", conditions("1e999", sun), "");
        row("text", conditions("\"-0\"", sun), "-0C, Sun");
        row("blanks", conditions("\" 4 \"", R"([{"value":" Light rain "}])"), "4C, Light rain");
        row("two descriptions",
            conditions("1", R"([{"value":"Sun"},{"value":"Rain"}])"),
            "1C, Sun");
        row("number for a description", conditions("1", R"([{"value":2}])"), "1C, 2");
        row("temperature missing",
            R"({"current_condition":[{"weatherDesc":[{"value":"Sun"}]}]})",
            "");
        row("temperature is an object", conditions("{}", sun), "");
        row("temperature is true", conditions("true", sun), "");
        row("description missing", R"({"current_condition":[{"temp_C":"1"}]})", "");
        row("description is no list", conditions("1", R"({"value":"Sun"})"), "");
        row("description is empty", conditions("1", R"([{"value":""}])"), "");
        row("no description", conditions("1", "[]"), "");
        row("no conditions", R"({"current_condition":[]})", "");
        row("conditions are no list", R"({"current_condition":{"temp_C":1}})", "");
        row("list of lists", R"({"current_condition":[[1]]})", "");
        row("empty", "", "");
        row("truncated", kSky.chopped(3), "");
    }

    void weatherJson()
    {
        QFETCH(QByteArray, json);
        QTEST(webanswer::lineOfJson(WebTopic::Weather, json), "line");
    }

    void location_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const char *line, const char *text) {
            QTest::newRow(name) << QString::fromUtf8(line) << QString::fromUtf8(text);
        };
        row("usual", "Paris|Ile-de-France|France", "Location: Paris, Ile-de-France France");
        row("no city", "|Region|Country", "Location: Unknown");
        row("blank city", " \t |Region|Country", "Location: Unknown");
        row("Unknown", "Unknown|x|y", "Location: Unknown");
        row("Unknown between blanks", " Unknown |x|y", "Location: Unknown");
        row("unknown", "unknown|x|y", "Location: unknown, x y");
        row("UNKNOWN", "UNKNOWN|x|y", "Location: UNKNOWN, x y");
        row("one part", "Paris", "Location: Unknown");
        row("two parts", "Paris|France", "Location: Unknown");
        row("four parts", "a|b|c|d", "Location: a, b c");
        row("parts trimmed", " a | b | c ", "Location: a, b c");
        row("empty parts", "a||", "Location: a,  ");
        row("only separators", "||", "Location: Unknown");
        row("empty", "", "Location: Unknown");
        row("placeholders", "%1|%2|%3", "Location: %1, %2 %3");
        row("controls", "a\x01z|b\nc|d\te", "Location: a z, b c d e");
        QTest::newRow("a NUL") << QString::fromLatin1("a\0b|c|d", 7)
                               << QStringLiteral("Location: a b, c d");
        row("a city of controls", "\x01\x02|b|c", "Location: Unknown");
        row("direction marks", "\u202eabc\u2066|b|c", "Location: abc, b c");
        row("line separators", "a\u2028b|c\u2029d|e", "Location: a b, c d e");
        row("right to left", "تهران|البرز|ایران", "Location: تهران, البرز ایران");
    }

    void location()
    {
        QFETCH(QString, line);
        QTEST(webanswer::locationText(line), "text");
    }

    void weather_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QString &line, const QString &text) {
            QTest::newRow(name) << line << text;
        };
        const auto latin = [](const char *text) {
            return QString::fromUtf8(text);
        };
        row("usual", latin("12C, Partly cloudy"), latin("Weather: 12C, Partly cloudy"));
        row("empty", QString(), latin("Weather: Unavailable"));
        row("blank", latin(" \n "), latin("Weather: Unavailable"));
        row("controls", latin("\x1b[31m12C\x7f"), latin("Weather: [31m12C"));
        row("two lines", latin("12C\r\nSun"), latin("Weather: 12C  Sun"));
        row("longest", QString(191, u'a'), latin("Weather: ") + QString(191, u'a'));
        row("too long",
            QString(192, u'a'),
            latin("Weather: ") + QString(190, u'a') + QChar(0x2026));
        const QString sun = QString::fromUcs4(U"\U0001f31e", 1);
        row("half a character",
            QStringLiteral("12C, ") + QChar(0xd83c) + u'!',
            latin("Weather: 12C, ?!"));
        row("never half a character",
            QString(189, u'a') + sun.repeated(5),
            latin("Weather: ") + QString(189, u'a') + QChar(0x2026));
    }

    void weather()
    {
        QFETCH(QString, line);
        QTEST(webanswer::weatherText(line), "text");
    }

    // Each run the same mutations; what comes of them is one line, whatever it says.
    void mutations()
    {
        QRandomGenerator random(20261121);
        int understood = 0;
        for (int i = 0; i < 40000; ++i) {
            const WebTopic topic = i % 2 == 0 ? WebTopic::Location : WebTopic::Weather;
            const QByteArray json = mutated(topic == WebTopic::Location ? kPlace : kSky, random);
            const QString line = webanswer::lineOfJson(topic, json);
            understood += line.isEmpty() ? 0 : 1;
            QVERIFY(isOneSensibleLine(webanswer::locationText(line)));
            QVERIFY(isOneSensibleLine(webanswer::weatherText(line)));
            const QString raw =
                QString::fromLocal8Bit(mutated(QByteArray("Paris|Ile-de-France|France\n"), random));
            const QString place = webanswer::locationText(raw);
            QVERIFY(isOneSensibleLine(place));
            QVERIFY(place.startsWith(QLatin1String("Location: ")) && place.size() > 10);
            QVERIFY(isOneSensibleLine(webanswer::weatherText(raw)));
        }
        QVERIFY(understood > 1000); // many changes leave it readable
    }
};

QTEST_APPLESS_MAIN(WebAnswerTest)
#include "WebAnswerTest.moc"
