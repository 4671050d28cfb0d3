// Deletes files and whole trees beneath an open folder, and never anything beside them: links are removed themselves,
// mounted volumes are left alone, every step starts from an open folder whose identity was checked. However deep the
// tree, only a few folders are open at a time and nothing recurses.
// Thread: one at a time.
#pragma once

#include "platform/linux/FileFacts.h"
#include "platform/linux/FolderListing.h"
#include "platform/linux/InUse.h"

#include <optional>
#include <string>
#include <vector>

namespace platform {

// What may be deleted: entries of this user; and where `inUse` is given, only regular files, folders and links that are
// not in it.
struct RemovalRules
{
    std::uint32_t owner = 0;
    const InUse *inUse = nullptr;

    bool allow(const FileFacts &entry) const;
};

enum class Removal {
    Gone, // with all its contents
    Partly, // a folder that could not be removed, or not whole; perhaps its contents went
    Kept, // not touched: not allowed, on another mount, or the system said no
    Missing, // somebody else was faster
};

class TreeRemover
{
public:
    // Both must outlive the remover.
    TreeRemover(const FolderListing &inFolder, const RemovalRules &removalRules);

    // `facts` are those of the entry `name` of the folder.
    Removal remove(const char *name, const FileFacts &facts);

private:
    // A folder on the way down. All but the last few are closed; `position` is where to go on when reopened.
    struct Level
    {
        std::string name;
        FileFacts facts;
        FolderListing listing;
        long position = 0;
        int listings = 1; // how often it has been listed, this time included
        bool keeps = false; // something in it stays
    };

    bool enter(int parent, const char *name, const FileFacts &expected);
    void closeFarthest();
    void step();
    bool removeEntry(Level &level, const char *name);
    void leave();
    bool reopenParent();
    bool listAgain(Level &level, int error) const;

    const FolderListing &top;
    const RemovalRules &rules;
    std::optional<FileFacts> topFacts;
    std::vector<Level> levels;
    Removal result = Removal::Kept;
};

} // namespace platform
