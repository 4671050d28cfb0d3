// What the rows of a screen say. GUI thread.
#pragma once

#include <QSize>
#include <QString>

class QScreen;

struct DisplayTexts
{
    QString name;
    QString resolution; // "2560 x 1440", in logical pixels
    QString refresh; // "60.0 Hz"
    QString scale; // "1.25x"

    bool operator==(const DisplayTexts &) const = default;
};

// `size` in logical pixels, `scale` in device pixels for each of them. Every number is shown as it comes, 0 included: the
// toolkit has no value for "not known".
DisplayTexts displayTexts(const QString &name, const QSize &size, double hertz, double scale);

// The screen as it is now; all four "Unknown" for none (null).
DisplayTexts displayTexts(const QScreen *screen);
