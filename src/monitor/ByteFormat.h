// How the program writes sizes. Thread: any.
#pragma once

#include <QString>

// "512 B", "2 KB", "1.5 MB", "15.9 GB", "1024.0 TB": steps of 1024 up to TB, which also takes everything larger; no
// decimals for B and KB, one above, rounded. The decimal sign is a point whatever the locale.
QString formatBytesULongLong(unsigned long long bytes);
