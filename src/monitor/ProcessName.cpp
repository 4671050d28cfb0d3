#include "monitor/ProcessName.h"

#include <algorithm>

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

bool controlsDisplay(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

} // namespace

QString processNameFrom(std::string_view bytes)
{
    QString name = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    if (bytes.starts_with(kByteOrderMark)) { // which the toolkit has taken for no part of the text
        name.prepend(QChar(QChar::ByteOrderMark));
    }
    if (std::any_of(name.cbegin(), name.cend(), controlsDisplay)) {
        std::replace_if(
            name.begin(), name.end(), controlsDisplay, QChar(QChar::ReplacementCharacter));
    }
    return name;
}
