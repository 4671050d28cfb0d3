// What goes, what stays, and what is counted, on the real file system.
#include "platform/FolderCleaner.h"

#include "platform/TestFiles.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace testfiles;
using platform::emptyFolder;

class FolderCleaner : public testing::Test
{
protected:
    // Expects these figures, and that nothing is left.
    void expectEmptied(int count, std::uint64_t bytes) const
    {
        const auto cleaned = emptyFolder(folder);
        EXPECT_EQ(cleaned.removedCount, count);
        EXPECT_EQ(cleaned.bytesFreed, bytes);
        EXPECT_TRUE(isEmptyFolder(folder));
    }

    Sandbox sandbox;
    Path folder = sandbox.folder();
};

TEST_F(FolderCleaner, countsEntriesAndSizesOfFilesDirectlyInside)
{
    makeFile(folder / "file", std::string(1000, 'x'));
    makeFolder(folder / "sub");
    makeFile(folder / "sub" / "inner", std::string(500, 'x'));
    expectEmptied(2, 1000);
}

TEST_F(FolderCleaner, emptyFolderHasNothingToCount)
{
    expectEmptied(0, 0);
}

TEST_F(FolderCleaner, emptyFilesAndFoldersCountToo)
{
    makeFile(folder / "empty", "");
    makeFolder(folder / "hollow");
    expectEmptied(2, 0);
}

TEST_F(FolderCleaner, missingFolderIsNoFailure)
{
    EXPECT_EQ(emptyFolder(folder / "none").removedCount, 0);
    EXPECT_EQ(emptyFolder(folder / "none" / "deeper").removedCount, 0);
    EXPECT_EQ(emptyFolder({}).removedCount, 0);
}

TEST_F(FolderCleaner, fileInsteadOfAFolderStays)
{
    makeFile(folder / "file");
    EXPECT_EQ(emptyFolder(folder / "file").removedCount, 0);
    EXPECT_EQ(emptyFolder(folder / "file" / "below").removedCount, 0);
    EXPECT_TRUE(isThere(folder / "file"));
}

TEST_F(FolderCleaner, readOnlyEntriesGo)
{
    makeFile(folder / "file", "12345");
    makeReadOnly(folder / "file");
    makeFolder(folder / "sub");
    makeFile(folder / "sub" / "inner");
    makeReadOnly(folder / "sub" / "inner");
    expectEmptied(2, 5);
}

TEST_F(FolderCleaner, neighboursStay)
{
    const Path canary = sandbox.makeCanary();
    makeFile(folder / "file");
    expectEmptied(1, 1);
    EXPECT_TRUE(Sandbox::isCanaryWell(canary));
}

TEST_F(FolderCleaner, hardLinkLeavesTheOtherNameItsContent)
{
    makeFile(sandbox.outside() / "kept", "content");
    ASSERT_TRUE(makeHardLink(sandbox.outside() / "kept", folder / "name"));
    expectEmptied(1, 7);
    EXPECT_EQ(contentOf(sandbox.outside() / "kept"), "content");
}

TEST_F(FolderCleaner, thousandLevels)
{
    const int levels = isWine() ? 250 : 1000;
    Path deepest = folder;
    for (int level = 0; level < levels; ++level) {
        deepest /= "d";
        makeFolder(deepest);
    }
    makeFile(deepest / "f");
    expectEmptied(1, 0);
}

TEST_F(FolderCleaner, pathsOfFourThousandCharacters)
{
    constexpr std::size_t kLength = 4000;
    Path deepest = folder;
    while (deepest.native().size() + 102 < kLength - 40) {
        deepest /= std::string(100, 'n');
        makeFolder(deepest);
    }
    makeFile(deepest / std::string(kLength - 40 - deepest.native().size(), 'f'));
    expectEmptied(1, 0);
}

TEST_F(FolderCleaner, manyEntriesInFlatMemory)
{
    const int files = isWine() ? 2000 : 20000;
    for (int i = 0; i < files; ++i) {
        makeFile(folder / std::to_string(i), "ab");
    }
    const auto before = residentBytes();
    expectEmptied(files, static_cast<std::uint64_t>(files) * 2);
    if (kFreedMemoryGoes) {
        EXPECT_LT(residentBytes(), before + (4U << 20U));
    }
}

TEST_F(FolderCleaner, manyEntriesInASubfolder)
{
    const int files = isWine() ? 500 : 5000;
    makeFolder(folder / "sub");
    for (int i = 0; i < files; ++i) {
        const Path entry = folder / "sub" / std::to_string(i);
        i % 10 == 0 ? makeFolder(entry) : makeFile(entry);
    }
    expectEmptied(1, 0);
}

TEST_F(FolderCleaner, entriesMayVanishMeanwhile)
{
    const int folders = isWine() ? 300 : 3000;
    for (int i = 0; i < folders; ++i) {
        const Path entry = folder / std::to_string(i);
        makeFolder(entry);
        makeFile(entry / "file");
    }
    std::atomic<int> othersRemoved = 0;
    std::thread other([&] {
        std::error_code ignored;
        for (int i = folders - 1; i >= 0; --i) {
            std::filesystem::remove(folder / std::to_string(i) / "file", ignored);
            othersRemoved += std::filesystem::remove(folder / std::to_string(i), ignored) ? 1 : 0;
        }
    });
    const auto cleaned = emptyFolder(folder);
    other.join();
    EXPECT_LE(cleaned.removedCount, folders);
    EXPECT_GE(cleaned.removedCount + othersRemoved, folders);
    emptyFolder(folder); // what was gone for a moment only
    EXPECT_TRUE(isEmptyFolder(folder));
}

} // namespace
