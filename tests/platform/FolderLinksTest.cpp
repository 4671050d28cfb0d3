// Links of every kind are removed themselves, and what they point to is untouched.
#include "platform/FolderCleaner.h"
#include "platform/TestFiles.h"

#include <gtest/gtest.h>
#include <iostream>

namespace {

using namespace testfiles;
using platform::emptyFolder;

class FolderLinks : public testing::Test
{
protected:
    void TearDown() override { EXPECT_TRUE(Sandbox::isCanaryWell(canary)); }

    // Under Wine links have to stay, and the log says so.
    void expectFoldersLinkGone(const Path &link, int count) const
    {
        const auto cleaned = emptyFolder(folder);
        if (!isWine()) {
            EXPECT_FALSE(isThere(link));
            EXPECT_EQ(cleaned.removedCount, count);
        } else {
            std::cout << "Wine cannot remove links: "
                      << (isThere(link) ? "this one stays" : "but this one is gone") << ", "
                      << cleaned.removedCount << " of " << count << " entries counted\n";
            EXPECT_LE(cleaned.removedCount, count);
        }
        EXPECT_TRUE(Sandbox::isCanaryWell(canary));
        removeLink(link);
    }

    Sandbox sandbox;
    Path folder = sandbox.folder();
    Path canary = sandbox.makeCanary();
};

TEST_F(FolderLinks, toAFolder)
{
    ASSERT_TRUE(makeFolderLink(canary, folder / "link"));
    expectFoldersLinkGone(folder / "link", 1);
}

TEST_F(FolderLinks, junction)
{
    if (!makeJunction(canary, folder / "junction")) {
        GTEST_SKIP() << "no junctions on this system";
    }
    expectFoldersLinkGone(folder / "junction", 1);
}

TEST_F(FolderLinks, toAFileCountsItsSize)
{
    ASSERT_TRUE(makeFileLink(canary / "song", folder / "link"));
    const auto cleaned = emptyFolder(folder);
    EXPECT_EQ(contentOf(canary / "song"), "tweet");
    EXPECT_EQ(isThere(folder / "link"), isWine());
    EXPECT_EQ(cleaned.removedCount, isWine() ? 0 : 1);
    EXPECT_EQ(cleaned.bytesFreed, isWine() ? 0U : 5U);
    removeLink(folder / "link");
}

TEST_F(FolderLinks, deepInside)
{
    makeFolder(folder / "a");
    makeFolder(folder / "a" / "b");
    makeFile(folder / "a" / "b" / "file");
    ASSERT_TRUE(makeFolderLink(canary, folder / "a" / "b" / "link"));
    expectFoldersLinkGone(folder / "a" / "b" / "link", 1);
    EXPECT_FALSE(isThere(folder / "a" / "b" / "file"));
}

TEST_F(FolderLinks, chainOutOfTheFolder)
{
    ASSERT_TRUE(makeFolderLink(canary, folder / "first"));
    ASSERT_TRUE(makeFolderLink(folder / "first", folder / "second"));
    expectFoldersLinkGone(folder / "second", 2);
    removeLink(folder / "first");
}

TEST_F(FolderLinks, toTheFolderItself)
{
    makeFolder(folder / "sub");
    ASSERT_TRUE(makeFolderLink(folder, folder / "sub" / "up"));
    makeFile(folder / "file");
    expectFoldersLinkGone(folder / "sub" / "up", 2);
}

TEST_F(FolderLinks, theFolderMayBeALinkItself)
{
    makeFile(folder / "file", "123");
    const Path link = sandbox.outside() / "way";
    ASSERT_TRUE(makeFolderLink(folder, link));
    const auto cleaned = emptyFolder(link);
    EXPECT_EQ(cleaned.removedCount, 1);
    EXPECT_EQ(cleaned.bytesFreed, 3U);
    EXPECT_TRUE(isThere(link));
    EXPECT_TRUE(isEmptyFolder(folder));
    removeLink(link);
}

} // namespace
