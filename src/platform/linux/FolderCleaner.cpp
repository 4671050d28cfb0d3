#include "platform/FolderCleaner.h"

#include "platform/linux/TreeRemover.h"

#include <cerrno>
#include <fcntl.h>

namespace platform {

namespace {

// Unlike what is in it, the folder itself may be reached by a link.
FolderListing openTarget(const std::filesystem::path &folder)
{
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;
    return FolderListing(FileDescriptor(
        ::open(folder.c_str(), kFlags))); // NOLINT(cppcoreguidelines-pro-type-vararg)
}

std::uint64_t sizeToCount(int folder, const char *name, const FileFacts &facts)
{
    if (facts.isLink()) {
        return sizeBehindLink(folder, name);
    }
    return facts.isRegular() ? facts.size : 0;
}

void cleanEntry(const FolderListing &listing,
                const char *name,
                TreeRemover &remover,
                CleanedFolder &result)
{
    const auto facts = factsOf(listing.folder(), name);
    if (!facts) {
        return;
    }
    const std::uint64_t size = sizeToCount(listing.folder(), name, *facts);
    const Removal removal = remover.remove(name, *facts);
    if (removal == Removal::Gone || removal == Removal::Partly) {
        ++result.removedCount;
        result.bytesFreed += size;
    }
}

} // namespace

CleanedFolder emptyFolder(const std::filesystem::path &folder)
{
    CleanedFolder result{};
    if (!std::filesystem::exists(folder)) {
        return result;
    }
    FolderListing listing = openTarget(folder);
    if (!listing.isOpen()) {
        return result;
    }
    const auto inUse = InUse::snapshot();
    if (!inUse) {
        return result; // nothing can be judged
    }
    const RemovalRules rules{::geteuid(), &*inUse};
    TreeRemover remover(listing, rules);
    while (const char *name = listing.next()) {
        cleanEntry(listing, name, remover, result);
    }
    if (errno != 0) {
        throw std::filesystem::filesystem_error(
            "cannot list the folder", folder, std::error_code(errno, std::generic_category()));
    }
    return result;
}

} // namespace platform
