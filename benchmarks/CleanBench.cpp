// Cleaning of 100,000 small files against `rm -rf` of the same tree, three rounds in turn: all in one folder, and in a
// hundred folders. Works in a folder of its own below the temporary folder. All trees are made before the first goes,
// since some file systems are slow to make files for minutes after so many were deleted.
#include "platform/FolderCleaner.h"
#include "platform/SpecialFolders.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kFiles = 100'000;
constexpr int kRounds = 3;

using Path = std::filesystem::path;

void makeFiles(const Path &folder, int count)
{
    std::filesystem::create_directories(folder);
    for (int i = 0; i < count; ++i) {
        const std::string name = (folder / ("file" + std::to_string(i))).string();
        const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        if (file < 0 || ::write(file, "small", 5) != 5) {
            std::perror(name.c_str());
        }
        ::close(file);
    }
}

void makeTree(const Path &folder, int folders)
{
    for (int i = 0; i < folders; ++i) {
        makeFiles(folders == 1 ? folder : folder / std::to_string(i), kFiles / folders);
    }
}

void removeByCommand(const Path &folder)
{
    std::string path = folder.string();
    std::array<char *, 4> arguments = {
        const_cast<char *>("rm"), const_cast<char *>("-rf"), path.data(), nullptr};
    pid_t child = 0;
    int status = 0;
    if (::posix_spawn(&child, "/bin/rm", nullptr, nullptr, arguments.data(), environ) == 0) {
        ::waitpid(child, &status, 0);
    }
}

template<typename Action>
double milliseconds(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

Path treeOf(const Path &root, int folders, const char *whose, int round)
{
    return root / (std::to_string(folders) + whose + std::to_string(round));
}

void compare(const Path &root, int folders)
{
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < kRounds; ++round) {
        const Path tree = treeOf(root, folders, "ours", round);
        theirs.push_back(
            milliseconds([&] { removeByCommand(treeOf(root, folders, "theirs", round)); }));
        ours.push_back(milliseconds([&] { platform::emptyFolder(tree); }));
        std::error_code ignored;
        std::filesystem::remove(tree, ignored);
    }
    std::printf(
        "%d files in %d folder(s), median of %d: rm -rf %.0f ms, cleaning %.0f ms, ratio %.2f\n",
        kFiles,
        folders,
        kRounds,
        median(theirs),
        median(ours),
        median(ours) / median(theirs));
}

} // namespace

int main()
{
    const Path root =
        platform::temporaryFolder() / ("veltra-clean-bench-" + std::to_string(::getpid()));
    for (const int folders : {1, 100}) {
        for (int round = 0; round < kRounds; ++round) {
            makeTree(treeOf(root, folders, "theirs", round), folders);
            makeTree(treeOf(root, folders, "ours", round), folders);
        }
    }
    ::sync(); // the writing is nobody's time
    compare(root, 1);
    compare(root, 100);
    std::error_code ignored;
    std::filesystem::remove(root, ignored);
    return 0;
}
