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
    // Empty when the processes cannot be listed at all. Thread: any.
    static std::optional<InUse> snapshot();

    bool contains(const FileId &file) const { return files.contains(file); }

private:
    void addProcess(int processFolder);
    void addTarget(int folder, const char *link);
    void addOpenFiles(int processFolder);
    void addMappedFiles(int processFolder);

    std::unordered_set<FileId, FileIdHash> files;
};

} // namespace platform
