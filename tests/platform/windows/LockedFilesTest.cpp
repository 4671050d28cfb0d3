// What others have open without leave to delete it stays and is not counted.
#include "platform/FolderCleaner.h"
#include "platform/RecycleBin.h"
#include "platform/TestFiles.h"

#include <gtest/gtest.h>
#include <iostream>
#include <windows.h>

#include <shellapi.h>

namespace {

using namespace testfiles;
using platform::emptyFolder;

class Held
{
public:
    Held(const Path &path, DWORD access, DWORD share)
        : handle(CreateFileW(path.c_str(),
                             access,
                             share,
                             nullptr,
                             OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS,
                             nullptr))
    {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    }
    ~Held() { CloseHandle(handle); }
    Held(const Held &) = delete;
    Held &operator=(const Held &) = delete;

private:
    HANDLE handle;
};

constexpr DWORD kAllButDelete = FILE_SHARE_READ | FILE_SHARE_WRITE;

class LockedFiles : public testing::Test
{
protected:
    void SetUp() override { makeFile(folder / "free", "12"); }

    void expectOnlyFreeRemoved() const
    {
        const auto cleaned = emptyFolder(folder);
        EXPECT_EQ(cleaned.removedCount, 1);
        EXPECT_EQ(cleaned.bytesFreed, 2U);
        EXPECT_FALSE(isThere(folder / "free"));
        EXPECT_TRUE(isThere(folder / "locked"));
    }

    Sandbox sandbox;
    Path folder = sandbox.folder();
};

TEST_F(LockedFiles, openWithoutSharing)
{
    makeFile(folder / "locked", "content");
    {
        const Held held(folder / "locked", GENERIC_READ, 0);
        expectOnlyFreeRemoved();
    }
    EXPECT_EQ(contentOf(folder / "locked"), "content");
}

TEST_F(LockedFiles, openWithoutDeleteSharing)
{
    makeFile(folder / "locked", "content");
    const Held held(folder / "locked", GENERIC_READ, kAllButDelete);
    expectOnlyFreeRemoved();
    EXPECT_EQ(contentOf(folder / "locked"), "content");
}

TEST_F(LockedFiles, readOnlyOnesStayReadOnly)
{
    makeFile(folder / "locked");
    makeReadOnly(folder / "locked");
    const Held held(folder / "locked", GENERIC_READ, kAllButDelete);
    expectOnlyFreeRemoved();
    EXPECT_NE(GetFileAttributesW((folder / "locked").c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST_F(LockedFiles, openWithDeleteSharingGoes)
{
    makeFile(folder / "shared");
    {
        const Held held(folder / "shared", GENERIC_READ, kAllButDelete | FILE_SHARE_DELETE);
        EXPECT_EQ(emptyFolder(folder).removedCount, 2);
    }
    EXPECT_TRUE(isEmptyFolder(folder));
}

TEST_F(LockedFiles, folderIsEmptiedAroundThemAndCounts)
{
    makeFolder(folder / "sub");
    makeFile(folder / "sub" / "locked");
    makeFile(folder / "sub" / "free");
    const Held held(folder / "sub" / "locked", GENERIC_READ, kAllButDelete);
    const auto cleaned = emptyFolder(folder);
    EXPECT_EQ(cleaned.removedCount, 2);
    EXPECT_EQ(cleaned.bytesFreed, 2U);
    EXPECT_TRUE(isThere(folder / "sub" / "locked"));
    EXPECT_FALSE(isThere(folder / "sub" / "free"));
}

TEST_F(LockedFiles, lockedFolderIsEmptiedAndCounts)
{
    makeFolder(folder / "locked");
    makeFile(folder / "locked" / "inner");
    const Held held(folder / "locked", FILE_LIST_DIRECTORY, kAllButDelete);
    EXPECT_EQ(emptyFolder(folder).removedCount, 2);
    EXPECT_TRUE(isThere(folder / "locked"));
    EXPECT_FALSE(isThere(folder / "locked" / "inner"));
}

TEST_F(LockedFiles, oddNamesGo)
{
    for (const wchar_t *name :
         {L"two  blanks", L"quote's`$(x)", L"CON", L"\x00e4\x4e2d\xd83d\xde00"}) {
        makeFile(folder / name, "1");
    }
    const auto cleaned = emptyFolder(folder);
    EXPECT_EQ(cleaned.removedCount, 5);
    EXPECT_EQ(cleaned.bytesFreed, 6U);
    EXPECT_TRUE(isEmptyFolder(folder));
}

TEST_F(LockedFiles, loopOfLinksAsTheFolder)
{
    const bool isMade = makeFolderLink(folder / "b", folder / "a");
    if ((!makeFolderLink(folder / "a", folder / "b") || !isMade) && !isWine()) {
        GTEST_SKIP() << "no links on this system";
    }
    try {
        const auto cleaned = emptyFolder(folder / "a");
        EXPECT_EQ(cleaned.removedCount, 0);
        EXPECT_TRUE(isWine());
        std::cout << "Wine takes a loop of links for nothing at all\n";
    } catch (const std::filesystem::filesystem_error &error) {
        std::cout << error.what() << '\n';
    }
    removeLink(folder / "a");
    removeLink(folder / "b");
}

// Only where the bin is the sandbox's own.
TEST(RecycleBin, passesOnWhatTheShellSays)
{
    if (!isWine()) {
        GTEST_SKIP() << "this bin is somebody's";
    }
    constexpr DWORD kQuietly = 7;
    const bool first = platform::emptyRecycleBin();
    const HRESULT answer = SHEmptyRecycleBinW(nullptr, nullptr, kQuietly);
    std::cout << "The shell says " << answer << " about a bin that is empty\n";
    EXPECT_EQ(platform::emptyRecycleBin(), answer >= 0);
    EXPECT_EQ(first, answer >= 0);
}

} // namespace
