#include "soak/Resources.h"

#include "soak/ServerResources.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <malloc.h>

namespace {

double statusMiB(const QByteArray &name)
{
    constexpr double kKiBPerMiB = 1024;
    QFile file(QStringLiteral("/proc/self/status"));
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const auto value = text.mid(text.indexOf(name) + name.size());
    return value.left(value.indexOf("kB")).trimmed().toDouble() / kKiBPerMiB;
}

} // namespace

Resources Resources::now()
{
    constexpr double kMiB = 1024.0 * 1024.0;
    ::malloc_trim(0);
    Resources resources;
    resources.sharedMiB = statusMiB("RssShmem:");
    resources.residentMiB = statusMiB("RssAnon:") + resources.sharedMiB;
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
    constexpr auto kAllFolders = QDir::Dirs | QDir::NoDotAndDotDot;
    resources.threads =
        static_cast<int>(QDir(QStringLiteral("/proc/self/task")).entryList(kAllFolders).size());
    resources.onServer = serverResources();
    return resources;
}
