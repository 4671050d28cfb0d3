// The files that running processes use. Unlike Windows, this kernel would let one delete them.
#pragma once

#include "platform/linux/FileFacts.h"

#include <optional>
#include <unordered_set>

namespace platform {

class InUse
{
public:
    // One pass over all processes: what they have open, mapped, as program, as working folder or as root. Processes that
    // end meanwhile are passed over, and so are those of other users that may not be looked into.
    // Empty when the processes cannot be listed, or not be looked into for want of descriptors or memory: what is not known
    // to be free must stay. Thread: any.
    static std::optional<InUse> snapshot();

    bool contains(const FileId &file) const { return files.contains(file); }

private:
    // False when this process lacks the means to look.
    bool addProcess(int processFolder);
    bool addOpenFiles(int processFolder);
    bool addMappedFiles(int processFolder);
    void addTarget(int folder, const char *link);

    std::unordered_set<FileId, FileIdHash> files;
};

} // namespace platform
