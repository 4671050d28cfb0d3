#include "platform/windows/FolderBatch.h"

#include <string_view>

namespace platform {

namespace {

constexpr std::size_t kBufferBytes = 65536; // what remote file systems take at most

FolderEntry entryOf(const FILE_ID_BOTH_DIR_INFO &info)
{
    FolderEntry entry;
    entry.name.assign(&info.FileName[0], info.FileNameLength / sizeof(wchar_t));
    entry.attributes = info.FileAttributes;
    entry.id = static_cast<std::uint64_t>(info.FileId.QuadPart);
    return entry;
}

} // namespace

FolderBatch::FolderBatch()
    : buffer(kBufferBytes / sizeof(std::uint64_t))
{ }

bool FolderBatch::read(HANDLE folder, std::vector<FolderEntry> &entries)
{
    return query(folder, FileIdBothDirectoryInfo, entries);
}

bool FolderBatch::readFirst(HANDLE folder, std::vector<FolderEntry> &entries)
{
    return query(folder, FileIdBothDirectoryRestartInfo, entries);
}

bool FolderBatch::query(HANDLE folder,
                        FILE_INFO_BY_HANDLE_CLASS kind,
                        std::vector<FolderEntry> &entries)
{
    entries.clear();
    if (GetFileInformationByHandleEx(folder, kind, buffer.data(), kBufferBytes) == 0) {
        return false;
    }
    const auto *position = reinterpret_cast<const std::byte *>(buffer.data());
    while (true) {
        const auto *info = reinterpret_cast<const FILE_ID_BOTH_DIR_INFO *>(position);
        FolderEntry entry = entryOf(*info);
        if (entry.name != L"." && entry.name != L"..") {
            entries.push_back(std::move(entry));
        }
        if (info->NextEntryOffset == 0) {
            return true;
        }
        position += info->NextEntryOffset;
    }
}

} // namespace platform
