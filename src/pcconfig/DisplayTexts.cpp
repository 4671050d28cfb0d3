#include "pcconfig/DisplayTexts.h"

#include <QScreen>

using namespace Qt::StringLiterals;

DisplayTexts displayTexts(const QString &name, const QSize &size, double hertz, double scale)
{
    constexpr int kRefreshDecimals = 1;
    constexpr int kScaleDecimals = 2;
    return {name,
            u"%1 x %2"_s.arg(size.width()).arg(size.height()),
            QString::number(hertz, 'f', kRefreshDecimals) + u" Hz"_s,
            QString::number(scale, 'f', kScaleDecimals) + QLatin1Char('x')};
}

DisplayTexts displayTexts(const QScreen *screen)
{
    if (screen == nullptr) {
        const QString unknown = u"Unknown"_s;
        return {unknown, unknown, unknown, unknown};
    }
    return displayTexts(
        screen->name(), screen->size(), screen->refreshRate(), screen->devicePixelRatio());
}
