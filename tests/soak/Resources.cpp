#include "soak/Resources.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <malloc.h>
#include <unistd.h>

Resources Resources::now()
{
    constexpr double kMiB = 1024.0 * 1024.0;
    ::malloc_trim(0);
    Resources resources;
    QFile file(QStringLiteral("/proc/self/statm"));
    if (file.open(QIODevice::ReadOnly)) {
        const auto pages = file.readAll().split(' ').value(1).toDouble();
        resources.residentMiB = pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / kMiB;
        file.close();
    }
    const auto heap = ::mallinfo2();
    resources.heapMiB = static_cast<double>(heap.uordblks + heap.hblkhd) / kMiB;
    const QFileInfoList open =
        QDir(QStringLiteral("/proc/self/fd"))
            .entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &descriptor : open) {
        const bool isKept = descriptor.symLinkTarget().startsWith(QLatin1String("/proc/"))
            && !descriptor.symLinkTarget().endsWith(QLatin1String("/fd"));
        ++(isKept ? resources.processFiles : resources.descriptors);
    }
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    resources.processes =
        static_cast<int>(std::count_if(entries.begin(), entries.end(), [](const QString &name) {
            return name.front().isDigit();
        }));
    return resources;
}
