// The operations on the real platform, in the sandbox that every test runs in.
#include "core/OptimizerCore.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

void setTemp(const std::string &value)
{
#ifdef VELTRA_ON_WINDOWS
    _putenv_s("TEMP", value.c_str());
#else
    setenv("TEMP", value.c_str(), 1);
#endif
}

class RealCore : public testing::Test
{
protected:
    void SetUp() override
    {
        oldTemp = fs::temp_directory_path().string();
        root = fs::temp_directory_path() / "veltra-real-core";
        fs::remove_all(root);
        fs::create_directories(root / "temp" / "folder" / "deep");
        std::ofstream(root / "temp" / "file.bin") << std::string(1000, 'x');
        std::ofstream(root / "temp" / "folder" / "deep" / "other.bin") << std::string(500, 'y');
        std::ofstream(root / "outside.txt") << "stays";
        setTemp((root / "temp").string());
    }

    void TearDown() override
    {
        setTemp(oldTemp);
        fs::remove_all(root);
    }

    fs::path root;
    std::string oldTemp;
};

TEST_F(RealCore, cleansTheTemporaryFolderAndNothingElse)
{
    const TempCleanResult result = OptimizerCore::cleanTemp();
    EXPECT_GE(result.removedCount, 2); // on Windows there is the system's own folder, too
    EXPECT_GE(result.bytesFreed, 1000U);
#ifndef VELTRA_ON_WINDOWS
    EXPECT_EQ(result.removedCount, 2);
    EXPECT_EQ(result.bytesFreed, 1000U);
#endif
    EXPECT_TRUE(fs::is_directory(root / "temp"));
    EXPECT_TRUE(fs::is_empty(root / "temp"));
    EXPECT_TRUE(fs::exists(root / "outside.txt"));
    EXPECT_EQ(OptimizerCore::cleanTemp().removedCount, 0); // nothing left
}

TEST_F(RealCore, memoryFiguresArePlausible)
{
    const MemoryPressureInfo info = OptimizerCore::getMemoryPressureInfo();
    EXPECT_GT(info.totalPhys, 64ULL << 20);
    EXPECT_LE(info.availPhys, info.totalPhys);
    EXPECT_LE(info.memoryLoad, 100U);
}

TEST_F(RealCore, missingTemporaryFolderDoesNotOpen)
{
    setTemp((root / "missing").string());
    EXPECT_FALSE(OptimizerCore::openTempFolder());
    EXPECT_EQ(OptimizerCore::cleanTemp().bytesFreed, 0U);
}

#ifdef VELTRA_ON_WINDOWS
TEST_F(RealCore, unsetTemporaryFolderIsNotOpened)
{
    setTemp("");
    EXPECT_FALSE(OptimizerCore::openTempFolder());
}

// Only here: elsewhere it would reach the trash of mounted volumes, outside any sandbox.
TEST_F(RealCore, emptyBinGivesTheShellsAnswer)
{
    const bool first = OptimizerCore::emptyRecycleBin();
    EXPECT_EQ(OptimizerCore::emptyRecycleBin(), first);
}
#endif

} // namespace
