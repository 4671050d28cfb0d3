#include "platform/RecycleBin.h"

#include <windows.h>

#include <shellapi.h>

namespace platform {

bool emptyRecycleBin()
{
    constexpr DWORD kQuietly = SHERB_NOCONFIRMATION | SHERB_NOPROGRESSUI | SHERB_NOSOUND;
    return SHEmptyRecycleBinW(nullptr, nullptr, kQuietly) >= 0;
}

} // namespace platform
