// /proc/PID/maps and /proc/self/mountinfo as the kernel writes them, cut short, and hostile.
#include "platform/linux/MountInfo.h"
#include "platform/linux/OctalEscapes.h"
#include "platform/linux/ProcessMaps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <sys/sysmacros.h>

namespace {

using testing::ElementsAre;

constexpr const char *kMaps =
    "559d61c00000-559d61c02000 r--p 00000000 fd:01 131   /usr/bin/cat\n"
    "559d61c02000-559d61c07000 r-xp 00002000 fd:01 131   /usr/bin/cat\n"
    "559d62b3f000-559d62b60000 rw-p 00000000 00:00 0     [heap]\n"
    "7f1a5a000000-7f1a5a021000 rw-p 00000000 00:00 0 \n"
    "7f1a5a400000-7f1a5a6e7000 r--p 00000000 103:2a 18446744073709551615   /tmp/a b\\012c "
    "(deleted)\n"
    "ffffffffff600000-ffffffffff601000 --xp 00000000 00:00 0  [vsyscall]\n";

TEST(ProcessMaps, filesWithDeviceInodeAndPath)
{
    const auto files = platform::maps::parse(kMaps);
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].id, (platform::FileId{makedev(0xfd, 1), 131}));
    EXPECT_EQ(files[0].path, "/usr/bin/cat");
    EXPECT_EQ(files[1].id, (platform::FileId{makedev(0x103, 0x2a), 18446744073709551615ULL}));
    EXPECT_EQ(files[1].path, "/tmp/a b\nc (deleted)");
}

TEST(ProcessMaps, malformedLinesArePassedOver)
{
    for (const char *text : {"",
                             "\n",
                             "\n\n",
                             "1-2 r--p 0 fd:01 131 /cut",
                             "1-2 r--p 0 fd01 131 /x\n",
                             "1-2 r--p 0 fd:zz 131 /x\n",
                             "1-2 r--p 0 fd:01 -1 /x\n",
                             "1-2 r--p 0 fd:01 99999999999999999999 /x\n",
                             "1-2 r--p 0 fd:01 12x /x\n",
                             "1-2 r--p 0\n",
                             "/path only\n"}) {
        EXPECT_TRUE(platform::maps::parse(text).empty()) << text;
    }
}

TEST(ProcessMaps, namesThatLookLikeLines)
{
    const auto files = platform::maps::parse("1-2 r--p 0 8:1 5 /x\\0121-2 r--p 0 8:1 6 /y\n");
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].id.inode, 5U);
    EXPECT_EQ(files[0].path, "/x\n1-2 r--p 0 8:1 6 /y");
}

TEST(OctalEscapes, areTheCharactersThemselves)
{
    using platform::withoutOctalEscapes;
    EXPECT_EQ(withoutOctalEscapes("a\\040b\\134\\011\\377"), "a b\\\t\xff");
    EXPECT_EQ(withoutOctalEscapes("\\04"), "\\04");
    EXPECT_EQ(withoutOctalEscapes("\\400\\089\\"), "\\400\\089\\");
    EXPECT_EQ(withoutOctalEscapes(""), "");
}

constexpr const char *kMounts =
    "22 1 254:1 / / rw,relatime shared:1 - ext4 /dev/vda1 rw\n"
    "23 22 0:21 / /proc rw,nosuid - proc proc rw\n"
    "24 22 0:22 / /sys rw - sysfs sysfs rw\n"
    "25 22 0:23 / /media/my\\040disk\\134x rw master:3 propagate_from:2 - vfat /dev/sdb1 rw\n"
    "26 22 0:24 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
    "27 22 0:25 /sub /home rw - btrfs /dev/sdc rw,subvol=/sub\n";

TEST(MountInfo, volumesOfUsers)
{
    EXPECT_THAT(platform::mounts::parse(kMounts), ElementsAre("/", "/media/my disk\\x", "/home"));
}

TEST(MountInfo, malformedLinesArePassedOver)
{
    for (const char *text : {"",
                             "\n",
                             "22 1 254:1 / / rw - ext4 /dev/vda1 rw",
                             "22 1 254:1 / / rw ext4 /dev/vda1 rw\n",
                             "22 1 254:1 / relative rw - ext4 x rw\n",
                             "22 1\n",
                             "- - - - - - - - -\n"}) {
        EXPECT_TRUE(platform::mounts::parse(text).empty()) << text;
    }
}

TEST(ProcText, cutsAndNoiseAreSafe)
{
    for (const std::string_view text : {kMaps, kMounts}) {
        for (std::size_t length = 0; length < text.size(); ++length) {
            EXPECT_LE(platform::maps::parse(text.substr(0, length)).size(), 2U);
            EXPECT_LE(platform::mounts::parse(text.substr(0, length)).size(), 3U);
        }
    }
    std::mt19937 random(1);
    const std::string alphabet = "/-: \n\\0123456789abcdefrwxp";
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto i = random() % 120; i > 0; --i) {
            text += random() % 50 == 0 ? static_cast<char>(random())
                                       : alphabet[random() % alphabet.size()];
        }
        EXPECT_LE(platform::maps::parse(text).size(), text.size());
        EXPECT_LE(platform::mounts::parse(text).size(), text.size());
    }
}

} // namespace
