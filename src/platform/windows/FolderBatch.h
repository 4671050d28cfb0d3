// The listing of an open folder, some hundred entries at a time. Deleting what has been listed is fine.
// Thread: one at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <windows.h>

namespace platform {

struct FolderEntry
{
    std::wstring name;
    DWORD attributes = 0;
    std::uint64_t id = 0; // of the file on its volume; 0 where the file system does not tell

    bool isFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    bool isLink() const { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
};

class FolderBatch
{
public:
    FolderBatch();

    // The next entries; "." and ".." are left out, so there may be none in it. False at the end, with GetLastError()
    // being ERROR_NO_MORE_FILES, and on failure, with another error.
    bool read(HANDLE folder, std::vector<FolderEntry> &entries);
    // The same from the first entry on.
    bool readFirst(HANDLE folder, std::vector<FolderEntry> &entries);

private:
    bool query(HANDLE folder, FILE_INFO_BY_HANDLE_CLASS kind, std::vector<FolderEntry> &entries);

    std::vector<std::uint64_t> buffer; // aligned as the system wants it
};

} // namespace platform
