#include "platform/linux/MountInfo.h"

#include "platform/linux/OctalEscapes.h"

#include <algorithm>
#include <array>

namespace platform::mounts {

namespace {

constexpr std::array<std::string_view, 28> kPseudo = {
    "autofs",     "binfmt_misc", "bpf",       "cgroup",     "cgroup2",    "configfs",
    "debugfs",    "devpts",      "devtmpfs",  "efivarfs",   "fusectl",    "fuse.gvfsd-fuse",
    "fuse.lxcfs", "fuse.portal", "hugetlbfs", "mqueue",     "nfsd",       "nsfs",
    "proc",       "pstore",      "ramfs",     "rpc_pipefs", "securityfs", "selinuxfs",
    "squashfs",   "sysfs",       "tracefs",   "usbfs",
};

std::string_view takeField(std::string_view &line)
{
    const auto end = std::min(line.find(' '), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return field;
}

// "id parent device root mountpoint options [optional...] - type source superoptions"; empty when nothing of interest.
std::string_view mountPoint(std::string_view line)
{
    for (int skipped = 0; skipped < 4; ++skipped) {
        takeField(line);
    }
    const std::string_view point = takeField(line);
    while (!line.empty() && takeField(line) != "-") { }
    const std::string_view type = takeField(line);
    const bool isPseudo = std::find(kPseudo.begin(), kPseudo.end(), type) != kPseudo.end();
    return type.empty() || isPseudo || !point.starts_with('/') ? std::string_view() : point;
}

} // namespace

std::vector<std::string> parse(std::string_view text)
{
    std::vector<std::string> points;
    while (!text.empty()) {
        const auto end = text.find('\n');
        if (end == std::string_view::npos) {
            break; // cut
        }
        const std::string_view point = mountPoint(text.substr(0, end));
        text.remove_prefix(end + 1);
        if (!point.empty()) {
            points.push_back(withoutOctalEscapes(point));
        }
    }
    return points;
}

} // namespace platform::mounts
