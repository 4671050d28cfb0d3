// What only this system has: raw names, mounts, owners, and deep trees beyond any path.
#include "platform/FolderCleaner.h"
#include "platform/TestFiles.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace testfiles;
using platform::emptyFolder;

class CleanerLinux : public testing::Test
{
protected:
    Sandbox sandbox;
    Path folder = sandbox.folder();
};

TEST_F(CleanerLinux, loopOfLinksAsTheFolderIsThrown)
{
    ASSERT_TRUE(makeFolderLink(folder / "b", folder / "a"));
    ASSERT_TRUE(makeFolderLink(folder / "a", folder / "b"));
    EXPECT_THROW(emptyFolder(folder / "a"), std::filesystem::filesystem_error);
    EXPECT_THROW(emptyFolder(folder / "a" / "deeper"), std::filesystem::filesystem_error);
    EXPECT_EQ(emptyFolder(folder).removedCount, 2); // in the folder it is nothing but two links
    EXPECT_TRUE(isEmptyFolder(folder));
}

TEST_F(CleanerLinux, linkToNothingIsRemoved)
{
    ASSERT_TRUE(makeFolderLink(folder / "nowhere", folder / "link"));
    const auto cleaned = emptyFolder(folder);
    EXPECT_EQ(cleaned.removedCount, 1);
    EXPECT_EQ(cleaned.bytesFreed, 0U);
}

TEST_F(CleanerLinux, namesAreRawBytes)
{
    for (const char *name :
         {"line\nbreak", "quote\"'`$(x)", "\xff\xfe invalid", " ", "-rf", "*", "\\", "\t\x01"}) {
        makeFile(folder / name, "1");
        makeFolder(folder / (std::string(name) + "~"));
        makeFile(folder / (std::string(name) + "~") / name);
    }
    const auto cleaned = emptyFolder(folder);
    EXPECT_EQ(cleaned.removedCount, 16);
    EXPECT_EQ(cleaned.bytesFreed, 8U);
    EXPECT_TRUE(isEmptyFolder(folder));
}

TEST_F(CleanerLinux, fiveThousandLevelsWithFewDescriptors)
{
    int deepest = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < 5000; ++level) {
        ASSERT_EQ(::mkdirat(deepest, "directory", 0777), 0);
        ASSERT_EQ(::mkdirat(deepest, "zz beside", 0777), 0); // so that listings have to go on
        const int next = ::openat(deepest, "directory", O_RDONLY | O_DIRECTORY);
        ASSERT_EQ(::symlinkat("/", next, "link"), 0);
        ::close(deepest);
        deepest = next;
    }
    ::close(deepest);
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few{64, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    const auto cleaned = emptyFolder(folder);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(cleaned.removedCount, 2);
    EXPECT_TRUE(isEmptyFolder(folder));
}

TEST_F(CleanerLinux, deepTreeIsEmptiedAroundWhatStays)
{
    Path deepest = folder;
    for (int level = 0; level < 200; ++level) {
        deepest /= "d";
        makeFolder(deepest);
        makeFile(deepest / "file");
    }
    ASSERT_EQ(::mkfifo((deepest / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(emptyFolder(folder).removedCount, 1);
    EXPECT_TRUE(isThere(deepest / "pipe"));
    EXPECT_FALSE(isThere(deepest / "file"));
    EXPECT_FALSE(isThere(folder / "d" / "file"));
    ::unlink((deepest / "pipe").c_str());
}

TEST_F(CleanerLinux, entriesOfOtherUsersStay)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs the right to give files away";
    }
    makeFile(folder / "theirs");
    makeFolder(folder / "their folder");
    makeFile(folder / "their folder" / "mine");
    makeFolder(folder / "mine");
    makeFile(folder / "mine" / "theirs");
    makeFile(folder / "mine" / "file");
    for (const char *name : {"theirs", "their folder", "mine/theirs"}) {
        ASSERT_EQ(::chown((folder / name).c_str(), 12345, 12345), 0);
    }
    EXPECT_EQ(emptyFolder(folder).removedCount, 1); // "mine", in part
    EXPECT_TRUE(isThere(folder / "theirs"));
    EXPECT_TRUE(isThere(folder / "their folder" / "mine"));
    EXPECT_TRUE(isThere(folder / "mine" / "theirs"));
    EXPECT_FALSE(isThere(folder / "mine" / "file"));
    for (const char *name : {"theirs", "their folder", "mine/theirs"}) {
        ASSERT_EQ(::chown((folder / name).c_str(), 0, 0), 0);
    }
}

TEST_F(CleanerLinux, folderThatMayNotBeOpened)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs the right to become another user";
    }
    makeFile(folder / "file");
    ASSERT_EQ(::chmod(folder.c_str(), 0700), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const bool becameAnother = ::setuid(12345) == 0;
        const auto cleaned = emptyFolder(folder);
        ::_exit(becameAnother && cleaned.removedCount == 0 ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(isThere(folder / "file"));
}

// In a child with mounts of its own, so that the machine does not see them. Exit code 77: not allowed here.
int cleanAroundMounts(const Path &folder, const Path &canary)
{
    if (::unshare(CLONE_NEWNS) != 0
        || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || ::mount(canary.c_str(), (folder / "bind").c_str(), nullptr, MS_BIND, nullptr) != 0
        || ::mount(canary.c_str(), (folder / "sub" / "bind").c_str(), nullptr, MS_BIND, nullptr)
            != 0
        || ::mount("none", (folder / "memory").c_str(), "tmpfs", 0, nullptr) != 0) {
        return 77;
    }
    makeFile(folder / "memory" / "file");
    const auto cleaned = emptyFolder(folder);
    const bool isWell = isThere(folder / "memory" / "file") && Sandbox::isCanaryWell(canary)
        && !isThere(folder / "sub" / "file");
    return isWell && cleaned.removedCount == 1 ? 0 : 1;
}

TEST_F(CleanerLinux, mountedVolumesAreLeftAlone)
{
    const Path canary = sandbox.makeCanary();
    for (const char *name : {"bind", "memory", "sub", "sub/bind"}) {
        makeFolder(folder / name);
    }
    makeFile(folder / "sub" / "file");
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(cleanAroundMounts(folder, canary));
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 77) {
        GTEST_SKIP() << "nothing can be mounted here";
    }
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(Sandbox::isCanaryWell(canary));
}

} // namespace
