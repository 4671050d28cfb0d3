// Deletes files and whole trees beneath an open folder, and never anything beside them: links and junctions are removed
// themselves, every step starts from an open folder, and folders stay open while something in them is being deleted.
// However deep the tree, nothing recurses.
// Thread: one at a time.
#pragma once

#include "platform/windows/FileHandle.h"
#include "platform/windows/FolderBatch.h"

#include <optional>
#include <vector>

namespace platform {

enum class Removal {
    Gone, // with all its contents
    Partly, // a folder that could not be removed, or not whole; perhaps its contents went
    Kept, // not touched: in use, not allowed, or not what it was when listed
    Missing, // somebody else was faster
};

class TreeRemover
{
public:
    // Removes the entry, as it was just listed, of an open folder.
    Removal remove(HANDLE parent, const FolderEntry &entry);

private:
    // A folder on the way down.
    struct Level
    {
        FileHandle folder;
        std::vector<FolderEntry> folders; // listed and not yet entered
        bool keeps = false; // it must stay, or something in it stays
        int listings = 0; // how often it has been listed, this time included
    };

    std::optional<Removal> enter(HANDLE parent, const FolderEntry &entry);
    void step();
    void removeFiles(Level &level);
    bool nextBatch(Level &level);
    void leave();

    FolderBatch batch; // for all levels, one after another
    std::vector<FolderEntry> entries; // of the last batch
    std::vector<Level> levels;
    Removal result = Removal::Kept;
};

} // namespace platform
