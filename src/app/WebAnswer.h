// What the web services' answers say. Whatever they send, what comes of it is one line of plain text. Any thread.
#pragma once

#include "platform/WebQuery.h"

#include <QByteArray>
#include <QString>

namespace webanswer {

// The service's own answer (UTF-8) as the line that PowerShell would print: "city|region|country" or "12C, Sunny".
// Numbers and texts alike are taken; what is missing or of another type is empty. Empty when it is no JSON, when there
// is nothing of the place, or when either half of the weather is missing.
QString lineOfJson(platform::WebTopic topic, const QByteArray &json);

// "Location: Dublin, Leinster Ireland" for "Dublin|Leinster|Ireland"; "Location: Unknown" where fewer than three parts
// are given, or no city, or the city "Unknown".
QString locationText(const QString &line);

// "Weather: 12C, Sunny" for "12C, Sunny"; "Weather: Unavailable" for nothing.
QString weatherText(const QString &line);

} // namespace webanswer
