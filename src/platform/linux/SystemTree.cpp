#include "platform/linux/SystemTree.h"

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/InventoryText.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace platform {

namespace {

constexpr std::size_t kLongestLine = 4096; // an attribute of the kernel fills a page at most
constexpr std::size_t kMostNames = 4096;

bool isFile(int descriptor)
{
    struct stat facts
    { };
    return ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode);
}

} // namespace

SystemTree::SystemTree(std::filesystem::path folder)
    : root(std::move(folder))
{ }

std::string SystemTree::text(const std::string &path, std::size_t limit) const
{
    constexpr std::size_t kChunk = 65536;
    const FileDescriptor file(
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg)
        ::open((root / path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    std::string content;
    if (!file.isOpen() || !isFile(file.get())) {
        return content;
    }
    while (content.size() < limit) {
        const std::size_t start = content.size();
        content.resize(std::min(start + kChunk, limit));
        const auto length = ::read(file.get(), content.data() + start, content.size() - start);
        content.resize(start + static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
        if (length == 0 || (length < 0 && errno != EINTR)) {
            break;
        }
    }
    return content;
}

std::string SystemTree::line(const std::string &path) const
{
    return inventory::cleanLine(text(path, kLongestLine));
}

std::optional<unsigned long long> SystemTree::number(const std::string &path) const
{
    return inventory::wholeNumber(line(path));
}

std::vector<std::string> SystemTree::names(const std::string &folder) const
{
    std::vector<std::string> found;
    std::error_code error;
    std::filesystem::directory_iterator entry(root / folder, error);
    while (!error && entry != std::filesystem::directory_iterator() && found.size() < kMostNames) {
        found.push_back(entry->path().filename().string());
        entry.increment(error);
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string SystemTree::linkName(const std::string &path) const
{
    std::error_code error;
    return inventory::cleanLine(
        std::filesystem::read_symlink(root / path, error).filename().string());
}

} // namespace platform
