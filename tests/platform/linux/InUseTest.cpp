// What running processes use stays and is not counted.
#include "platform/linux/InUse.h"

#include "platform/FolderCleaner.h"
#include "platform/TestFiles.h"

#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string_view>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace testfiles;
using platform::emptyFolder;

class InUseEntries : public testing::Test
{
protected:
    void SetUp() override { makeFile(folder / "free", "12"); }

    void expectKept(const Path &entry) const
    {
        const auto cleaned = emptyFolder(folder);
        EXPECT_EQ(cleaned.removedCount, 1);
        EXPECT_EQ(cleaned.bytesFreed, 2U);
        EXPECT_TRUE(isThere(entry));
        EXPECT_FALSE(isThere(folder / "free"));
    }

    Sandbox sandbox;
    Path folder = sandbox.folder();
};

// A process that does something and then only waits to be ended.
class Child
{
public:
    template<typename Action>
    explicit Child(Action action)
    {
        std::array<int, 2> ready{};
        EXPECT_EQ(::pipe2(ready.data(), O_CLOEXEC), 0);
        id = ::fork();
        if (id == 0) {
            action();
            EXPECT_EQ(::write(ready[1], "r", 1), 1);
            ::pause();
            ::_exit(0);
        }
        ::close(ready[1]);
        char byte = 0;
        EXPECT_GE(::read(ready[0], &byte, 1), 0); // 0 bytes: another program has taken its place
        ::close(ready[0]);
    }
    ~Child()
    {
        ::kill(id, SIGKILL);
        ::waitpid(id, nullptr, 0);
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

private:
    pid_t id = -1;
};

TEST_F(InUseEntries, openFile)
{
    makeFile(folder / "open");
    const Child child([this] { ::open((folder / "open").c_str(), O_RDONLY); });
    expectKept(folder / "open");
}

TEST_F(InUseEntries, mappedFileThatIsClosed)
{
    makeFile(folder / "mapped\n file");
    const Child child([this] {
        const int file = ::open((folder / "mapped\n file").c_str(), O_RDONLY);
        EXPECT_NE(::mmap(nullptr, 1, PROT_READ, MAP_PRIVATE, file, 0), MAP_FAILED);
        ::close(file);
    });
    expectKept(folder / "mapped\n file");
}

TEST_F(InUseEntries, workingFolder)
{
    makeFolder(folder / "work");
    makeFile(folder / "work" / "file");
    const Child child([this] { EXPECT_EQ(::chdir((folder / "work").c_str()), 0); });
    expectKept(folder / "work");
    EXPECT_TRUE(isThere(folder / "work" / "file"));
}

TEST_F(InUseEntries, runningProgram)
{
    std::filesystem::copy_file("/bin/sleep", folder / "program");
    const Child child(
        [this] { ::execl((folder / "program").c_str(), "program", "1000", nullptr); });
    expectKept(folder / "program");
}

TEST_F(InUseEntries, boundSocket)
{
    const Path previous = std::filesystem::current_path();
    std::filesystem::current_path(sandbox.outside()); // the name of a socket must be short
    const int bound = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    constexpr std::string_view kName = "../target/socket";
    std::copy(kName.begin(), kName.end(), std::begin(address.sun_path));
    EXPECT_EQ(::bind(bound, reinterpret_cast<sockaddr *>(&address), sizeof(address)), 0);
    std::filesystem::current_path(previous);
    expectKept(folder / "socket");
    ::close(bound);
    ::unlink((folder / "socket").c_str());
}

TEST_F(InUseEntries, pipe)
{
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    expectKept(folder / "pipe");
    ::unlink((folder / "pipe").c_str());
}

TEST_F(InUseEntries, folderIsEmptiedAroundThemAndCounts)
{
    makeFolder(folder / "sub");
    makeFile(folder / "sub" / "open");
    makeFile(folder / "sub" / "free");
    makeFolder(folder / "sub" / "work");
    const Child child([this] {
        ::open((folder / "sub" / "open").c_str(), O_RDONLY);
        EXPECT_EQ(::chdir((folder / "sub" / "work").c_str()), 0);
    });
    const auto cleaned = emptyFolder(folder);
    EXPECT_EQ(cleaned.removedCount, 2);
    EXPECT_EQ(cleaned.bytesFreed, 2U);
    EXPECT_TRUE(isThere(folder / "sub" / "open"));
    EXPECT_TRUE(isThere(folder / "sub" / "work"));
    EXPECT_FALSE(isThere(folder / "sub" / "free"));
}

TEST_F(InUseEntries, goOnceTheProcessHasEnded)
{
    makeFile(folder / "open");
    {
        const Child child([this] { ::open((folder / "open").c_str(), O_RDONLY); });
    }
    EXPECT_EQ(emptyFolder(folder).removedCount, 2);
}

TEST_F(InUseEntries, otherNamesOfTheFileAreInUseToo)
{
    makeFile(sandbox.outside() / "open");
    ASSERT_TRUE(makeHardLink(sandbox.outside() / "open", folder / "link"));
    const Child child([this] { ::open((sandbox.outside() / "open").c_str(), O_RDONLY); });
    expectKept(folder / "link");
}

TEST_F(InUseEntries, snapshotKnowsThisProgram)
{
    const auto inUse = platform::InUse::snapshot();
    ASSERT_TRUE(inUse.has_value());
    const int self = ::open("/proc/self/exe", O_PATH);
    const auto facts = platform::factsOf(self);
    ::close(self);
    ASSERT_TRUE(facts.has_value());
    EXPECT_TRUE(inUse->contains(facts->id));
    EXPECT_FALSE(inUse->contains({facts->id.device, facts->id.inode + 1000000}));
}

// Of so many descriptors that this program may have open, some suffice for the list of processes, but not for a look into
// each. Then nothing is known, instead of a file in use that is taken for free.
TEST_F(InUseEntries, snapshotWithTooFewDescriptorsIsNone)
{
    makeFile(folder / "open");
    const Child child([this] { ::open((folder / "open").c_str(), O_RDONLY); });
    const int next = ::dup(STDERR_FILENO);
    ::close(next);
    struct rlimit usual
    { };
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
    constexpr int kEnough = 64; // 3 are needed: the list, one process, one thing in it
    for (const int room : {0, 1, 2, kEnough}) {
        const struct rlimit few
        {
            static_cast<rlim_t>(next + room), usual.rlim_max
        };
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
        const bool isKnown = platform::InUse::snapshot().has_value();
        const int removed = room < kEnough ? emptyFolder(folder).removedCount : 0;
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &usual), 0);
        EXPECT_EQ(isKnown, room == kEnough) << room;
        EXPECT_EQ(removed, 0) << room;
        EXPECT_TRUE(isThere(folder / "open"));
    }
}

} // namespace
