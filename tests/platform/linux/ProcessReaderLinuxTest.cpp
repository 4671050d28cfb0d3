// Processes with names, rights and fates of all kinds, read through /proc.
#include "platform/ProcessReader.h"

#include "platform/EndProcess.h"
#include "platform/linux/ForkedChild.h"
#include "platform/linux/KeptProcesses.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <vector>

namespace {

std::atomic<long> allocations = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

// Every allocation of this program is counted. Not inlined: the compiler would see malloc() meet delete.
[[gnu::noinline]] void *operator new(std::size_t size)
{
    ++allocations;
    if (void *memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void *memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void *memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace {

using platform::ProcessReader;
using testprocess::ForkedChild;
using testprocess::passesInFork;

constexpr uid_t kNobody = 65534;

struct Found
{
    std::string name;
    bool opens = false;
    std::uint64_t created = 0;
    int times = 0; // how often it was listed
};

std::optional<Found> find(ProcessReader &reader, pid_t id)
{
    std::optional<Found> found;
    if (!reader.begin()) {
        return found;
    }
    while (reader.next()) {
        if (reader.id() != static_cast<std::uint32_t>(id)) {
            continue;
        }
        if (!found) {
            found.emplace();
        }
        ++found->times;
        found->name = std::string(reader.name());
        found->opens = reader.open();
        if (const auto times = reader.times()) {
            found->created = times->created;
        }
    }
    return found;
}

int countProcesses(ProcessReader &reader)
{
    int count = 0;
    reader.begin();
    while (reader.next()) {
        ++count;
    }
    return count;
}

std::vector<std::unique_ptr<ForkedChild>> someChildren(std::size_t count)
{
    std::vector<std::unique_ptr<ForkedChild>> children(count);
    std::generate(
        children.begin(), children.end(), [] { return std::make_unique<ForkedChild>([] {}); });
    return children;
}

std::size_t openFiles()
{
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

// In a process of its own: lets no user see more of others' processes than that they are there, and becomes one.
bool hideProcesses()
{
    return ::unshare(CLONE_NEWNS) == 0
        && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("proc", "/proc", "proc", 0, "hidepid=1") == 0 && ::setgid(kNobody) == 0
        && ::setuid(kNobody) == 0;
}

TEST(ProcessReader, namesAsTheKernelHasThem)
{
    ProcessReader reader;
    for (const char *name : {"two words",
                             "a)b",
                             "((",
                             "line\nbreak",
                             "back\\slash",
                             "\\n",
                             "\xff\x80",
                             "<b>bold</b>",
                             " "}) {
        const ForkedChild child([name] { ::prctl(PR_SET_NAME, name); });
        const auto found = find(reader, child.id());
        ASSERT_TRUE(found.has_value()) << name;
        EXPECT_EQ(found->name, name);
        EXPECT_EQ(found->times, 1);
    }
}

TEST(ProcessReader, longNamesAreThoseOfTheExecutable)
{
    namespace fs = std::filesystem;
    const fs::path program = fs::temp_directory_path() / "a name of more than fifteen bytes";
    fs::copy_file("/bin/sleep", program, fs::copy_options::overwrite_existing);
    const pid_t id = ::fork();
    if (id == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::execl(program.c_str(), "sleep", "1000", nullptr);
        ::_exit(1);
    }
    ProcessReader reader;
    std::optional<Found> found;
    do { // until the other program has taken its place
        found = find(reader, id);
    } while (found && found->name != program.filename()
             && found->name == find(reader, ::getpid())->name);
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->name, program.filename());

    fs::remove(program);
    found = find(reader, id);
    EXPECT_EQ(found->name, program.filename()) << "its file is gone";
    ::kill(id, SIGKILL);
    ::waitpid(id, nullptr, 0);
}

TEST(ProcessReader, aChosenNameOfFifteenBytesStays)
{
    const ForkedChild child([] { ::prctl(PR_SET_NAME, "fifteen bytes!!"); });
    ProcessReader reader;
    EXPECT_EQ(find(reader, child.id())->name, "fifteen bytes!!");
}

TEST(ProcessReader, listIsLongerThanOneReadOfIt)
{
    const auto children = someChildren(1800);
    if (!children.back()->isRunning()) {
        GTEST_SKIP() << "so many processes are not allowed here";
    }
    ProcessReader reader;
    std::set<std::uint32_t> listed;
    ASSERT_TRUE(reader.begin());
    while (reader.next()) {
        EXPECT_TRUE(listed.insert(reader.id()).second) << reader.id();
    }
    for (const auto &child : children) {
        EXPECT_EQ(listed.count(static_cast<std::uint32_t>(child->id())), 1U);
    }
}

TEST(ProcessReader, endedProcessIsGoneFromTheNextPass)
{
    ForkedChild child([] {});
    const pid_t id = child.id();
    ProcessReader reader;
    EXPECT_TRUE(find(reader, id).has_value());
    child.end();
    EXPECT_FALSE(find(reader, id).has_value());
}

TEST(ProcessReader, nextOwnerOfAnIdentifierIsSomebodyElse)
{
    ProcessReader reader;
    ForkedChild first([] { ::prctl(PR_SET_NAME, "first"); });
    const pid_t id = first.id();
    const auto before = find(reader, id);
    ASSERT_TRUE(before.has_value());
    first.end();
    ::usleep(20'000); // one tick of the kernel's clock, so that the times differ
    const ForkedChild second([] { ::prctl(PR_SET_NAME, "second"); }, id);
    if (!second.isRunning()) {
        GTEST_SKIP() << "identifiers cannot be chosen here";
    }
    const auto after = find(reader, id);
    ASSERT_TRUE(after.has_value());
    EXPECT_EQ(after->name, "second");
    EXPECT_NE(after->created, before->created);

    const auto isFirst = [&before](const platform::ProcessIdentity &found) {
        return found.name == before->name && found.created == before->created;
    };
    EXPECT_EQ(platform::endProcess(static_cast<std::uint32_t>(id), isFirst),
              platform::EndOutcome::Unavailable);
    EXPECT_EQ(::kill(id, 0), 0) << "the second one lives";
}

TEST(ProcessReader, keepsFilesOpenWithinTheLimit)
{
    EXPECT_TRUE(passesInFork([] {
        constexpr rlim_t kLimit = 40;
        const std::size_t before = openFiles();
        const struct rlimit limit = {kLimit, kLimit};
        ::setrlimit(RLIMIT_NOFILE, &limit);
        const auto children = someChildren(60);
        ProcessReader reader;
        const int first = countProcesses(reader);
        const bool isSteady = countProcesses(reader) >= 60 && first >= 60;
        const std::size_t kept = openFiles() - before;
        return isSteady && kept > 5 && kept <= kLimit / 2 + 2;
    }));
}

TEST(ProcessReader, readsOnWhenSomebodyElseTakesTheLastFiles)
{
    EXPECT_TRUE(passesInFork([] {
        const auto children = someChildren(20);
        ProcessReader reader;
        const int before = countProcesses(reader);
        const auto newOnes = someChildren(3); // whose files are still to be opened
        while (::dup(0) >= 0) { }
        return before >= 21 && find(reader, newOnes.front()->id()).has_value()
            && find(reader, newOnes.back()->id()).has_value()
            && find(reader, children.back()->id()).has_value();
    }));
}

TEST(ProcessReader, allocatesNothingFromTheSecondPassOn)
{
    ProcessReader reader;
    countProcesses(reader);
    countProcesses(reader);
    const long before = allocations;
    reader.begin();
    while (reader.next()) {
        reader.name();
        reader.open();
        reader.residentBytes();
        reader.times();
        reader.transferredBytes();
    }
    EXPECT_LE(allocations - before, 2) << "room for a process that was not there before";
}

TEST(ProcessReader, zombieIsListedAndCannotBeEnded)
{
    const pid_t id = ::fork();
    if (id == 0) {
        ::_exit(0);
    }
    siginfo_t info{};
    ::waitid(P_PID, static_cast<id_t>(id), &info, WEXITED | WNOWAIT);
    ProcessReader reader;
    EXPECT_TRUE(find(reader, id).has_value());
    const auto anyone = [](const platform::ProcessIdentity & /*found*/) {
        return true;
    };
    EXPECT_EQ(platform::endProcess(static_cast<std::uint32_t>(id), anyone),
              platform::EndOutcome::Unavailable);
    ::waitpid(id, nullptr, 0);
}

TEST(ProcessReader, unreadableProcessIsListedAndNotOpened)
{
    if (!passesInFork(hideProcesses)) {
        GTEST_SKIP() << "needs a mount of its own";
    }
    const pid_t owner = ::getpid();
    EXPECT_TRUE(passesInFork([owner] {
        hideProcesses();
        ProcessReader reader;
        const auto found = find(reader, owner);
        return found.has_value() && found->name == "?" && !found->opens;
    }));
}

TEST(EndProcess, ofAnotherUserIsRefused)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs a second user";
    }
    const ForkedChild victim([] {});
    EXPECT_TRUE(passesInFork([&victim] {
        if (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0) {
            return false;
        }
        const auto anyone = [](const platform::ProcessIdentity & /*found*/) {
            return true;
        };
        return platform::endProcess(static_cast<std::uint32_t>(victim.id()), anyone)
            == platform::EndOutcome::Unavailable;
    }));
    EXPECT_EQ(::kill(victim.id(), 0), 0);
}

TEST(EndProcess, kernelThreadsAndTheFirstProcessAreRefused)
{
    const auto anyone = [](const platform::ProcessIdentity & /*found*/) {
        return true;
    };
    EXPECT_EQ(platform::endProcess(1, anyone), platform::EndOutcome::Unavailable);
    ProcessReader reader;
    if (const auto found = find(reader, 2); found && found->name == "kthreadd") {
        EXPECT_EQ(platform::endProcess(2, anyone), platform::EndOutcome::Unavailable);
    }
}

TEST(ProcessFiles, whatWasDeniedIsAskedForAgainOnlyAtARetry)
{
    const platform::FileDescriptor proc(::open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    platform::ProcessFiles files;
    files.id = static_cast<std::uint32_t>(::getpid());
    files.ioDenied = true;
    std::array<char, 4096> buffer{};
    EXPECT_FALSE(platform::readTransfer(proc.get(), files, buffer, false).has_value());
    EXPECT_TRUE(platform::readTransfer(proc.get(), files, buffer, true).has_value());
    EXPECT_FALSE(files.ioDenied);
    EXPECT_TRUE(platform::readTransfer(proc.get(), files, buffer, false).has_value());
}

TEST(KeptProcesses, closesWhatIsNotAskedForAnyMore)
{
    platform::KeptProcesses kept(10);
    const auto visit = [&kept](std::uint32_t id) {
        platform::ProcessFiles files = kept.take(id);
        const bool wasOpen = files.stat.isOpen();
        if (!wasOpen) {
            files.stat = platform::FileDescriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        }
        kept.giveBack(std::move(files));
        return wasOpen;
    };
    kept.beginPass();
    for (const std::uint32_t id : {3U, 5U, 9U}) {
        EXPECT_FALSE(visit(id));
    }
    kept.endPass();
    EXPECT_EQ(kept.openFiles(), 3U);

    kept.beginPass();
    EXPECT_FALSE(visit(4));
    EXPECT_TRUE(visit(5));
    kept.endPass();
    EXPECT_EQ(kept.openFiles(), 2U);

    kept.beginPass();
    EXPECT_TRUE(visit(4));
    kept.beginPass(); // broken off
    EXPECT_TRUE(visit(4));
    EXPECT_FALSE(visit(5));
    kept.endPass();
    EXPECT_EQ(kept.openFiles(), 2U);
}

TEST(KeptProcesses, keepsNoMoreThanItMay)
{
    platform::KeptProcesses kept(2);
    for (int pass = 0; pass < 3; ++pass) {
        kept.beginPass();
        for (std::uint32_t id = 1; id <= 5; ++id) {
            platform::ProcessFiles files = kept.take(id);
            if (!files.stat.isOpen()) {
                files.stat = platform::FileDescriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
            }
            kept.giveBack(std::move(files));
        }
        kept.endPass();
        EXPECT_EQ(kept.openFiles(), 2U);
    }
    kept.clear();
    EXPECT_EQ(kept.openFiles(), 0U);
}

} // namespace
