// Deletion of a file or an empty folder by its open handle, so that it is certain what goes.
// Thread: any.
#pragma once

#include <windows.h>

namespace platform {

// What `deleteOpen` needs the handle for; the second where the file is marked read-only.
constexpr ACCESS_MASK kToDelete = DELETE | FILE_READ_ATTRIBUTES;
constexpr ACCESS_MASK kToDeleteReadOnly = kToDelete | FILE_WRITE_ATTRIBUTES;

// Deletes what the handle stands for, read-only or not; the name goes at once where the system can do that, else with
// the last handle. False, with GetLastError() set, when it stays; its attributes are then what they were.
bool deleteOpen(HANDLE file);

} // namespace platform
