// Outside text that ends up on the screen: the answers of the web, values of the inventory, names of processes.
#pragma once

#include "app/WebAnswer.h"
#include "fuzz/Feeds.h"
#include "monitor/ProcessName.h"
#include "pcconfig/ValueTexts.h"

#include <QByteArray>
#include <QString>
#include <algorithm>

namespace fuzz {

inline QByteArray bytesOf(std::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

inline bool breaksLines(QChar c)
{
    return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line
        || c.category() == QChar::Separator_Paragraph;
}

inline void requireOneLine(const QString &shown)
{
    require(std::none_of(shown.begin(), shown.end(), breaksLines), "it is one line");
}

inline void requireLabel(const QString &shown, QLatin1String start)
{
    constexpr qsizetype kLongest = 200;
    requireOneLine(shown);
    require(shown.startsWith(start) && shown.size() > start.size(), "it says something");
    require(shown.size() <= kLongest, "it is short");
    require(shown.isValidUtf16(), "there are no half characters");
}

inline void feedWebLine(std::string_view text)
{
    for (const QString &line :
         {QString::fromUtf8(bytesOf(text)), QString::fromLatin1(bytesOf(text))}) {
        requireLabel(webanswer::locationText(line), QLatin1String("Location: "));
        requireLabel(webanswer::weatherText(line), QLatin1String("Weather: "));
    }
}

inline void feedWebJson(std::string_view text)
{
    using platform::WebTopic;
    const QByteArray json = bytesOf(text);
    const QString place = webanswer::lineOfJson(WebTopic::Location, json);
    require(place.isEmpty() || place.count(u'|') >= 2, "a place has three parts");
    requireLabel(webanswer::locationText(place), QLatin1String("Location: "));
    const QString weather = webanswer::lineOfJson(WebTopic::Weather, json);
    require(weather.isEmpty() || weather.contains(QLatin1String("C, ")), "weather has two halves");
    requireLabel(webanswer::weatherText(weather), QLatin1String("Weather: "));
}

inline void feedInventoryValue(std::string_view text)
{
    const QString output = QString::fromUtf8(bytesOf(text));
    const QString size = valuetexts::size(output);
    require(size == output || size.endsWith(u'B'), "a size has a unit, or is shown as it came");
    require(valuetexts::speed(output).isEmpty() == output.isEmpty(), "no number, no unit");
    require(valuetexts::speed(output).startsWith(output), "the speed is shown as it came");
}

inline void feedProcessName(std::string_view text)
{
    const QString name = processNameFrom(text);
    requireOneLine(name);
    require(name.isEmpty() == text.empty(), "a name is shown");
}

} // namespace fuzz
