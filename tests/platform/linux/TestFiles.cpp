#include "platform/TestFiles.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace testfiles {

namespace {

void check(bool succeeded, const char *what)
{
    if (!succeeded) {
        throw std::runtime_error(what);
    }
}

} // namespace

void makeFolder(const Path &path)
{
    check(::mkdir(path.c_str(), 0777) == 0, "mkdir");
}

void makeFile(const Path &path, const std::string &content)
{
    std::ofstream file(path, std::ios::binary);
    file << content;
    check(file.good(), "write");
}

void makeReadOnly(const Path &path)
{
    check(::chmod(path.c_str(), 0444) == 0, "chmod");
}

bool isThere(const Path &path)
{
    struct stat status
    { };
    return ::lstat(path.c_str(), &status) == 0;
}

std::string contentOf(const Path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool makeFileLink(const Path &target, const Path &link)
{
    return ::symlink(target.c_str(), link.c_str()) == 0;
}

bool makeFolderLink(const Path &target, const Path &link)
{
    return makeFileLink(target, link);
}

bool makeJunction(const Path & /*target*/, const Path & /*link*/)
{
    return false;
}

bool makeHardLink(const Path &target, const Path &link)
{
    return ::link(target.c_str(), link.c_str()) == 0;
}

bool removeLink(const Path &link)
{
    return ::unlink(link.c_str()) == 0;
}

bool isWine()
{
    return false;
}

bool isEmptyFolder(const Path &path)
{
    return std::filesystem::is_empty(path);
}

std::uint64_t residentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::uint64_t total = 0;
    std::uint64_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

std::uint64_t freshNumber()
{
    static std::atomic<std::uint64_t> next = 0;
    return static_cast<std::uint64_t>(::getpid()) * 10000 + next++;
}

} // namespace testfiles
