// While the folder is cleaned again and again, another thread swaps its subfolders for links to a tree outside. For 30
// seconds, or VELTRA_STRESS_SECONDS.
#include "platform/FolderCleaner.h"
#include "platform/TestFiles.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <thread>

namespace {

using namespace testfiles;

constexpr int kVictims = 4;

Path victim(const Path &folder, int number)
{
    return folder / ("sub" + std::to_string(number));
}

// The names are those of the canary, so that a walk led astray would hit it. Made aside and moved in, lest something be
// written by way of a link.
void makeVictims(const Path &aside, const Path &folder)
{
    std::error_code ignored;
    for (int i = 0; i < kVictims; ++i) {
        std::filesystem::create_directories(aside / "inner", ignored);
        std::ofstream(aside / "song") << "mine";
        std::ofstream(aside / "inner" / "egg") << "mine";
        std::filesystem::rename(aside, victim(folder, i), ignored);
    }
}

// All by way of an open folder: the swapping must not be led astray by its own links.
int exchange(int folder, const std::string &name, const Path &link)
{
    return ::renameat2(folder, name.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
}

class SwapStress : public testing::Test
{
protected:
    void swapUntilTold(const Path &link, bool isInner)
    {
        while (!isOver) {
            for (int i = 0; i < kVictims; ++i) {
                const Path sub = victim(folder, i);
                const Path place = isInner ? sub : folder;
                const int open = ::open(place.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW);
                swapAndBack(open, isInner ? "inner" : sub.filename().string(), link);
                ::close(open);
            }
        }
    }

    void swapAndBack(int open, const std::string &name, const Path &link)
    {
        std::error_code ignored;
        if (exchange(open, name, link) == 0) {
            ++swaps;
            std::this_thread::yield();
            exchange(open, name, link);
        }
        if (!std::filesystem::is_symlink(link, ignored)) {
            const std::string number = std::to_string(lost++); // the link has been deleted
            std::filesystem::rename(link, sandbox.outside() / ("lost" + number), ignored);
            std::filesystem::create_directory_symlink(canary, link, ignored);
        }
    }

    Sandbox sandbox;
    Path folder = sandbox.folder();
    Path canary = sandbox.makeCanary();
    std::atomic<bool> isOver = false;
    std::atomic<long> swaps = 0;
    std::atomic<long> lost = 0;
};

TEST_F(SwapStress, whatTheLinksPointToIsUntouched)
{
    const char *given = std::getenv("VELTRA_STRESS_SECONDS");
    const auto end = std::chrono::steady_clock::now()
        + std::chrono::seconds(given != nullptr ? std::atoi(given) : 30);
    std::thread outer([this] { swapUntilTold(sandbox.outside() / "link", false); });
    std::thread inner([this] { swapUntilTold(sandbox.outside() / "link2", true); });
    long removed = 0;
    while (std::chrono::steady_clock::now() < end && Sandbox::isCanaryWell(canary)) {
        makeVictims(sandbox.outside() / "aside", folder);
        removed += platform::emptyFolder(folder).removedCount;
    }
    isOver = true;
    outer.join();
    inner.join();
    EXPECT_TRUE(Sandbox::isCanaryWell(canary));
    EXPECT_GT(removed, 100);
    EXPECT_GT(swaps, 100);
    std::cout << removed << " entries removed, " << swaps << " swaps\n";
}

} // namespace
