#include "platform/linux/TreeRemover.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::size_t kOpenLevels = 32;
constexpr int kMostListings = 8; // of a folder that others fill while it is being emptied

bool wasMissing()
{
    return errno == ENOENT;
}

bool isSame(const std::optional<FileFacts> &found, const FileFacts &expected)
{
    return found && found->id == expected.id && found->mount == expected.mount;
}

} // namespace

bool RemovalRules::allow(const FileFacts &entry) const
{
    if (entry.owner != owner) {
        return false;
    }
    const bool isHarmless = entry.isRegular() || entry.isFolder() || entry.isLink();
    return inUse == nullptr || (isHarmless && !inUse->contains(entry.id));
}

TreeRemover::TreeRemover(const FolderListing &inFolder, const RemovalRules &removalRules)
    : top(inFolder)
    , rules(removalRules)
    , topFacts(factsOf(inFolder.folder()))
{ }

Removal TreeRemover::remove(const char *name, const FileFacts &facts)
{
    if (!topFacts || !facts.isOnMountOf(*topFacts) || !rules.allow(facts)) {
        return Removal::Kept;
    }
    if (!facts.isFolder()) {
        if (::unlinkat(top.folder(), name, 0) == 0) {
            return Removal::Gone;
        }
        return wasMissing() ? Removal::Missing : Removal::Kept;
    }
    if (!enter(top.folder(), name, facts)) {
        return wasMissing() ? Removal::Missing : Removal::Partly;
    }
    result = Removal::Partly;
    while (!levels.empty()) {
        step();
    }
    return result;
}

// Fails, with errno set, unless the folder is still the one that was judged.
bool TreeRemover::enter(int parent, const char *name, const FileFacts &expected)
{
    FileDescriptor folder = openFolder(parent, name);
    if (!folder.isOpen()) {
        return false;
    }
    if (!isSame(factsOf(folder.get()), expected)) {
        errno = ELOOP;
        return false;
    }
    Level level;
    level.listing = FolderListing(std::move(folder));
    if (!level.listing.isOpen()) {
        return false;
    }
    level.name = name;
    level.facts = expected;
    levels.push_back(std::move(level));
    closeFarthest();
    return true;
}

void TreeRemover::closeFarthest()
{
    if (levels.size() <= kOpenLevels) {
        return;
    }
    Level &farthest = levels[levels.size() - 1 - kOpenLevels];
    if (farthest.listing.isOpen()) {
        farthest.position = farthest.listing.position();
        farthest.listing = FolderListing();
    }
}

void TreeRemover::step()
{
    Level &level = levels.back();
    const char *name = level.listing.next();
    if (name == nullptr) {
        level.keeps = level.keeps || errno != 0;
        leave();
        return;
    }
    const auto depth = levels.size();
    if (!removeEntry(level, name) && !wasMissing()) {
        levels[depth - 1].keeps = true; // a new level may have moved the others
    }
}

// Removes one entry, or enters it when it is a folder. False when it stays; errno is ENOENT when it vanished.
bool TreeRemover::removeEntry(Level &level, const char *name)
{
    const int folder = level.listing.folder();
    const auto facts = factsOf(folder, name);
    if (!facts) {
        return false;
    }
    if (!facts->isOnMountOf(level.facts) || !rules.allow(*facts)) {
        errno = EPERM;
        return false;
    }
    return facts->isFolder() ? enter(folder, name, *facts) : ::unlinkat(folder, name, 0) == 0;
}

// The last folder has been listed to its end: removes it, or leaves it where something in it stays.
void TreeRemover::leave()
{
    if (levels.size() > 1 && !reopenParent()) {
        levels.clear(); // somebody moved the folder; nothing more is certain
        return;
    }
    Level &level = levels.back();
    const bool isFirst = levels.size() == 1;
    const int parent = isFirst ? top.folder() : levels[levels.size() - 2].listing.folder();
    const bool isGone =
        !level.keeps && (::unlinkat(parent, level.name.c_str(), AT_REMOVEDIR) == 0 || wasMissing());
    if (!isGone && listAgain(level, errno)) {
        return;
    }
    levels.pop_back();
    if (isFirst) {
        result = isGone ? Removal::Gone : Removal::Partly;
    } else if (!isGone) {
        levels.back().keeps = true;
    }
}

// Nothing in it was kept and yet it is not empty: others filled it, or its listing left something out.
bool TreeRemover::listAgain(Level &level, int error) const
{
    if (level.keeps || (error != ENOTEMPTY && error != EEXIST) || level.listings == kMostListings) {
        return false;
    }
    ++level.listings;
    level.listing.startOver();
    return true;
}

// "..", believed only when it is the folder that the walk came from.
bool TreeRemover::reopenParent()
{
    Level &parent = levels[levels.size() - 2];
    if (parent.listing.isOpen()) {
        return true;
    }
    FileDescriptor folder = openFolder(levels.back().listing.folder(), "..");
    if (!folder.isOpen() || !isSame(factsOf(folder.get()), parent.facts)) {
        return false;
    }
    parent.listing = FolderListing(std::move(folder));
    if (!parent.listing.isOpen()) {
        return false;
    }
    parent.listing.goOnFrom(parent.position);
    return true;
}

} // namespace platform
