#include "platform/linux/FileFacts.h"

#include <fcntl.h>
#include <sys/sysmacros.h>

namespace platform {

namespace {

std::optional<FileFacts> query(int folder, const char *name, int flags)
{
    struct statx answer
    { };
    constexpr unsigned kWanted =
        STATX_TYPE | STATX_MODE | STATX_UID | STATX_INO | STATX_SIZE | STATX_MNT_ID;
    if (::statx(folder, name, flags | AT_NO_AUTOMOUNT, kWanted, &answer) != 0) {
        return std::nullopt;
    }
    FileFacts facts;
    facts.id.device = makedev(answer.stx_dev_major, answer.stx_dev_minor);
    facts.id.inode = answer.stx_ino;
    facts.mount = (answer.stx_mask & STATX_MNT_ID) != 0 ? answer.stx_mnt_id : 0;
    facts.size = answer.stx_size;
    facts.owner = answer.stx_uid;
    facts.mode = answer.stx_mode;
    return facts;
}

} // namespace

std::optional<FileFacts> factsOf(int folder, const char *name)
{
    return query(folder, name, AT_SYMLINK_NOFOLLOW);
}

std::optional<FileFacts> factsOf(int descriptor)
{
    return query(descriptor, "", AT_EMPTY_PATH);
}

std::uint64_t sizeBehindLink(int folder, const char *name)
{
    const auto target = query(folder, name, 0);
    return target && target->isRegular() ? target->size : 0;
}

} // namespace platform
