#include "app/WebAnswer.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <algorithm>
#include <array>

namespace webanswer {

namespace {

constexpr qsizetype kLongestLine = 200; // characters; an ordinary answer has some 30

// Line breaks and their like, and the marks that turn the direction of the text that follows.
bool isControl(QChar character)
{
    const bool turnsText = (character >= u'\u202a' && character <= u'\u202e')
        || (character >= u'\u2066' && character <= u'\u2069');
    const QChar::Category category = character.category();
    return turnsText || category == QChar::Other_Control || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph;
}

// Half characters, which only an escape in the answer can make, become question marks.
QString withoutControls(QString text)
{
    if (!text.isValidUtf16()) {
        text = QString::fromUtf8(text.toUtf8());
    }
    std::replace_if(text.begin(), text.end(), isControl, u' ');
    return text.trimmed();
}

// One that is too long ends in an ellipsis, and never in half a character.
QString cut(QString text)
{
    if (text.size() <= kLongestLine) {
        return text;
    }
    text.truncate(kLongestLine - 1);
    if (text.back().isHighSurrogate()) {
        text.chop(1);
    }
    return text + u'\u2026';
}

QString scalar(const QJsonValue &value)
{
    return value.isString() || value.isDouble() ? value.toVariant().toString() : QString();
}

QString locationLine(const QJsonObject &place)
{
    const QString city = scalar(place[u"city"]);
    const QString region = scalar(place[u"regionName"]);
    const QString country = scalar(place[u"country"]);
    const bool isEmpty = city.isEmpty() && region.isEmpty() && country.isEmpty();
    return isEmpty ? QString() : city + u'|' + region + u'|' + country;
}

QString weatherLine(const QJsonObject &weather)
{
    const QJsonValue now = weather[u"current_condition"][0];
    const QString degrees = scalar(now[u"temp_C"]).trimmed();
    const QString description = scalar(now[u"weatherDesc"][0][u"value"]).trimmed();
    const bool isComplete = !degrees.isEmpty() && !description.isEmpty();
    return isComplete ? degrees + QStringLiteral("C, ") + description : QString();
}

} // namespace

QString lineOfJson(platform::WebTopic topic, const QByteArray &json)
{
    const QJsonObject root = QJsonDocument::fromJson(json).object();
    return topic == platform::WebTopic::Location ? locationLine(root) : weatherLine(root);
}

QString locationText(const QString &line)
{
    const QString text = withoutControls(line);
    std::array<QString, 3> parts; // city, region, country
    std::size_t count = 0;
    for (const QStringView part : QStringView(text).tokenize(u'|')) {
        parts.at(count) = part.trimmed().toString();
        if (++count == parts.size()) {
            break;
        }
    }
    const auto &[city, region, country] = parts;
    const bool isKnown =
        count == parts.size() && !city.isEmpty() && city != QLatin1String("Unknown");
    return isKnown ? cut(QStringLiteral("Location: %1, %2 %3").arg(city, region, country))
                   : QStringLiteral("Location: Unknown");
}

QString weatherText(const QString &line)
{
    const QString text = withoutControls(line);
    return text.isEmpty() ? QStringLiteral("Weather: Unavailable")
                          : cut(QStringLiteral("Weather: ") + text);
}

} // namespace webanswer
