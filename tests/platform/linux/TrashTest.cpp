// The desktop's trash, in folders of the test's own.
#include "platform/linux/Trash.h"

#include "platform/TestFiles.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace testfiles;
namespace trash = platform::trash;

const std::string &user()
{
    static const std::string id = std::to_string(::geteuid());
    return id;
}

void fill(const Path &folder)
{
    makeFolder(folder);
    for (const char *part : {"files", "info", "expunged"}) {
        makeFolder(folder / part);
    }
    makeFile(folder / "files" / "letter");
    makeFile(folder / "info" / "letter.trashinfo", "[Trash Info]");
    makeFolder(folder / "files" / "album");
    makeFile(folder / "files" / "album" / "photo");
    makeFile(folder / "info" / "album.trashinfo");
    makeFile(folder / "info" / "orphan.trashinfo");
    makeFolder(folder / "expunged" / "12345");
    makeFile(folder / "expunged" / "12345" / "rest");
    makeFile(folder / "directorysizes");
}

void expectEmpty(const Path &folder)
{
    for (const char *part : {"files", "info", "expunged"}) {
        EXPECT_TRUE(isThere(folder / part)) << part;
        EXPECT_TRUE(isEmptyFolder(folder / part)) << part;
    }
    EXPECT_FALSE(isThere(folder / "directorysizes"));
}

class Trash : public testing::Test
{
protected:
    Sandbox sandbox;
    Path home = sandbox.folder() / "Trash";
    Path volume = sandbox.outside();
};

TEST_F(Trash, ofTheHomeIsEmptied)
{
    fill(home);
    EXPECT_TRUE(trash::empty(home, {}));
    expectEmpty(home);
    EXPECT_TRUE(trash::empty(home, {}));
}

TEST_F(Trash, thatIsMissingIsFine)
{
    EXPECT_TRUE(trash::empty(home, {volume, volume / "none"}));
    EXPECT_TRUE(trash::empty({}, {}));
    makeFolder(home);
    EXPECT_TRUE(trash::empty(home, {}));
    EXPECT_TRUE(isEmptyFolder(home));
}

TEST_F(Trash, onAVolume)
{
    fill(volume / (".Trash-" + user()));
    makeFolder(volume / ".Trash");
    ASSERT_EQ(::chmod((volume / ".Trash").c_str(), 01777), 0);
    fill(volume / ".Trash" / user());
    EXPECT_TRUE(trash::empty(home, {volume}));
    expectEmpty(volume / (".Trash-" + user()));
    expectEmpty(volume / ".Trash" / user());
}

TEST_F(Trash, commonFolderWithoutStickyBitIsPassedOver)
{
    makeFolder(volume / ".Trash");
    fill(volume / ".Trash" / user());
    EXPECT_TRUE(trash::empty(home, {volume}));
    EXPECT_TRUE(isThere(volume / ".Trash" / user() / "files" / "letter"));
}

TEST_F(Trash, thatIsALinkIsRefused)
{
    fill(volume / "elsewhere");
    ASSERT_TRUE(makeFolderLink(volume / "elsewhere", home));
    EXPECT_FALSE(trash::empty(home, {}));
    ASSERT_TRUE(makeFolderLink(volume / "elsewhere", volume / (".Trash-" + user())));
    ASSERT_TRUE(makeFolderLink(volume / "elsewhere", volume / ".Trash"));
    EXPECT_TRUE(trash::empty({}, {volume}));
    EXPECT_TRUE(isThere(volume / "elsewhere" / "files" / "letter"));
}

TEST_F(Trash, partThatIsALinkIsNotEntered)
{
    const Path canary = sandbox.makeCanary();
    makeFolder(home);
    makeFolder(home / "info");
    makeFile(home / "info" / "song.trashinfo");
    ASSERT_TRUE(makeFolderLink(canary, home / "files"));
    EXPECT_FALSE(trash::empty(home, {}));
    EXPECT_TRUE(Sandbox::isCanaryWell(canary));
    EXPECT_TRUE(isThere(home / "info" / "song.trashinfo"));
}

TEST_F(Trash, linksInItAreRemovedThemselves)
{
    const Path canary = sandbox.makeCanary();
    fill(home);
    ASSERT_TRUE(makeFolderLink(canary, home / "files" / "link"));
    ASSERT_TRUE(makeFolderLink(canary, home / "files" / "album" / "link"));
    EXPECT_TRUE(trash::empty(home, {}));
    expectEmpty(home);
    EXPECT_TRUE(Sandbox::isCanaryWell(canary));
}

TEST_F(Trash, specialFilesGoToo)
{
    fill(home);
    ASSERT_EQ(::mkfifo((home / "files" / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(trash::empty(home, {}));
    expectEmpty(home);
}

TEST_F(Trash, ofAnotherUserIsRefused)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs the right to give files away";
    }
    fill(home);
    ASSERT_EQ(::chown(home.c_str(), 12345, 12345), 0);
    EXPECT_FALSE(trash::empty(home, {}));
    EXPECT_TRUE(isThere(home / "files" / "letter"));
    ASSERT_EQ(::chown(home.c_str(), 0, 0), 0);
}

TEST_F(Trash, entriesOfOthersStayWithTheirDescription)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs the right to give files away";
    }
    fill(home);
    ASSERT_EQ(::chown((home / "files" / "letter").c_str(), 12345, 12345), 0);
    EXPECT_FALSE(trash::empty(home, {}));
    EXPECT_TRUE(isThere(home / "files" / "letter"));
    EXPECT_TRUE(isThere(home / "info" / "letter.trashinfo"));
    EXPECT_FALSE(isThere(home / "files" / "album"));
    ASSERT_EQ(::chown((home / "files" / "letter").c_str(), 0, 0), 0);
}

TEST_F(Trash, isFoundByTheEnvironment)
{
    const char *data = std::getenv("XDG_DATA_HOME");
    const std::string before = data == nullptr ? "" : data;
    ::setenv("HOME", "/sandbox/home", 1);
    ::setenv("XDG_DATA_HOME", "/sandbox/data", 1);
    EXPECT_EQ(trash::inHome(), "/sandbox/data/Trash");
    ::setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(trash::inHome(), "/sandbox/home/.local/share/Trash");
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(trash::inHome(), "/sandbox/home/.local/share/Trash");
    ::unsetenv("HOME");
    EXPECT_EQ(trash::inHome(), "");
    ::setenv("XDG_DATA_HOME", before.c_str(), 1);
}

} // namespace
