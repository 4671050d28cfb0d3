#include "pcconfig/ValueTexts.h"

#include "monitor/ByteFormat.h"

using namespace Qt::StringLiterals;

namespace valuetexts {

QString size(const QString &output)
{
    const unsigned long long bytes = output.trimmed().toULongLong();
    return bytes == 0 ? output : formatBytesULongLong(bytes);
}

QString speed(const QString &output)
{
    return output.isEmpty() ? output : output + u" MHz"_s;
}

} // namespace valuetexts
