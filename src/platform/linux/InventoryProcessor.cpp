#include "platform/linux/CpuInfo.h"
#include "platform/linux/InventoryReaders.h"
#include "platform/linux/InventoryText.h"
#include "platform/linux/SystemTree.h"

#include <algorithm>
#include <vector>

namespace platform::inventory {

namespace {

constexpr std::size_t kLongestCpuInfo = 1U << 20U; // hundreds of processors
constexpr std::size_t kLongestList = 1U << 16U;
constexpr const char *kProcessors = "sys/devices/system/cpu/";

std::string folderOf(unsigned processor)
{
    return kProcessors + ("cpu" + std::to_string(processor)) + "/";
}

// Longer than a line that a row could show: of every other processor, each is named.
std::vector<unsigned> listIn(const SystemTree &tree, const std::string &file)
{
    return processorList(tree.text(file, kLongestList));
}

// Recent kernels call the file by its first name, older ones by the second.
std::vector<unsigned>
listOf(const SystemTree &tree, const std::string &folder, const char *name, const char *oldName)
{
    const auto list = listIn(tree, folder + name);
    return list.empty() ? listIn(tree, folder + oldName) : list;
}

// The processors of the socket that the first one sits in.
std::vector<unsigned> firstSocket(const SystemTree &tree)
{
    const auto online = listIn(tree, kProcessors + std::string("online"));
    const unsigned first = online.empty() ? 0 : online.front();
    return listOf(tree, folderOf(first) + "topology/", "package_cpus_list", "core_siblings_list");
}

// A core is counted at the first of its threads.
unsigned coresOf(const SystemTree &tree, const std::vector<unsigned> &socket)
{
    return static_cast<unsigned>(
        std::count_if(socket.begin(), socket.end(), [&tree](unsigned processor) {
            const auto threads = listOf(
                tree, folderOf(processor) + "topology/", "core_cpus_list", "thread_siblings_list");
            return !threads.empty() && threads.front() == processor;
        }));
}

// In MHz, of the fastest core: the first one may be one of the small ones.
unsigned long long maxClock(const SystemTree &tree, std::vector<unsigned> socket)
{
    constexpr unsigned long long kKilohertz = 1000;
    constexpr unsigned long long kHighest = 100'000'000;
    if (socket.empty()) {
        socket.push_back(0);
    }
    unsigned long long highest = 0;
    for (const unsigned processor : socket) {
        const auto clock =
            tree.number(folderOf(processor) + "cpufreq/cpuinfo_max_freq").value_or(0);
        highest = std::max(highest, clock < kHighest ? clock : 0);
    }
    return (highest + kKilohertz / 2) / kKilohertz;
}

std::string textOf(unsigned long long number)
{
    return number == 0 ? std::string() : std::to_string(number);
}

unsigned long long firstKnown(std::initializer_list<unsigned long long> numbers)
{
    const auto *const known =
        std::find_if(numbers.begin(), numbers.end(), [](auto number) { return number != 0; });
    return known == numbers.end() ? 0 : *known;
}

} // namespace

void readProcessor(const SystemTree &tree, HardwareInventory &inventory)
{
    const auto told = cpuinfo::parse(tree.text("proc/cpuinfo", kLongestCpuInfo));
    const auto socket = firstSocket(tree);
    inventory.processorName = told.name;
    inventory.processorManufacturer = told.manufacturer;
    const unsigned single = told.listed == 1 ? 1 : 0;
    inventory.processorCores = textOf(firstKnown({told.cores, coresOf(tree, socket), single}));
    inventory.processorThreads = textOf(firstKnown({told.threads, socket.size(), told.listed}));
    inventory.processorMaxClock = textOf(firstKnown({maxClock(tree, socket), told.megahertz}));
}

} // namespace platform::inventory
