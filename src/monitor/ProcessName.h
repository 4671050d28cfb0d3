// Names of processes, which anybody may choose.
#pragma once

#include <QString>
#include <string_view>

// The name as it is shown: UTF-8 decoded, and what is invalid or would control the display (line breaks, changes of the
// writing direction) replaced by U+FFFD. Thread: any.
QString processNameFrom(std::string_view bytes);
