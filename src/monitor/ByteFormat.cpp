#include "monitor/ByteFormat.h"

#include <array>

QString formatBytesULongLong(unsigned long long bytes)
{
    static constexpr std::array<const char *, 5> kUnits{"B", "KB", "MB", "GB", "TB"};
    constexpr double kStep = 1024.0;
    constexpr std::size_t kFirstUnitWithDecimals = 2;

    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (value >= kStep && unit + 1 < kUnits.size()) {
        value /= kStep;
        ++unit;
    }
    const int decimals = unit < kFirstUnitWithDecimals ? 0 : 1;
    return QString::number(value, 'f', decimals) + QLatin1Char(' ')
        + QLatin1String(kUnits.at(unit));
}
