// How the values of the inventory that are numbers are shown. Any thread.
#pragma once

#include <QString>

namespace valuetexts {

// "4.0 GB" for a number of bytes. What is no number, or 0, is shown as it came.
QString size(const QString &output);

// "3200 MHz" for "3200"; empty stays empty.
QString speed(const QString &output);

} // namespace valuetexts
