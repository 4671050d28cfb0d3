// The parsers of the hardware inventory of Linux.
#pragma once

#include "fuzz/Feeds.h"
#include "platform/linux/CpuInfo.h"
#include "platform/linux/InventoryText.h"
#include "platform/linux/MemoryModules.h"
#include "platform/linux/PciIds.h"

#include <algorithm>
#include <string>

namespace fuzz {

inline void requireShowable(const std::string &line)
{
    constexpr std::size_t kLongest = 256;
    require(line.size() <= kLongest, "a shown line is short");
    require(std::none_of(line.begin(),
                         line.end(),
                         [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }),
            "a shown line has no control characters");
    require(platform::inventory::trimmed(line) == line, "a shown line is trimmed");
}

inline void feedCpuInfo(std::string_view text)
{
    constexpr unsigned kMost = 100'000;
    const auto processor = platform::cpuinfo::parse(text);
    requireShowable(processor.name);
    requireShowable(processor.manufacturer);
    require(std::max({processor.cores, processor.threads, processor.listed, processor.megahertz})
                <= kMost,
            "numbers are plausible");
}

inline void feedMemoryTable(std::string_view table)
{
    constexpr unsigned kHighestType = 255;
    constexpr unsigned kHighestSpeed = 100'000;
    const auto module = platform::modules::firstInTable(table);
    require(!module || (module->type <= kHighestType && module->speed <= kHighestSpeed),
            "numbers are plausible");
}

inline void feedMemoryDatabase(std::string_view text)
{
    constexpr unsigned kHighestType = 35;
    constexpr unsigned kHighestSpeed = 100'000;
    const auto module = platform::modules::firstInDatabase(text);
    require(!module || (module->type <= kHighestType && module->speed <= kHighestSpeed),
            "numbers are plausible");
}

inline void feedPciIds(std::string_view text)
{
    constexpr unsigned kVendor = 0x8086;
    constexpr unsigned kDevice = 0x9bc4;
    constexpr std::size_t kLongest = 2 * 256 + 1;
    require(platform::pci::nameOf(text, kVendor, kDevice).size() <= kLongest, "names are short");
}

inline void feedAddressRanges(std::string_view text)
{
    constexpr unsigned long long kLargest = 1ULL << 48U;
    require(platform::pci::largestPrefetchable(text) <= kLargest, "sizes are plausible");
}

inline void feedPciDevice(std::string_view text)
{
    constexpr unsigned kHighest = 0xFFFF;
    const auto id = platform::pci::idIn(text);
    require(!id || (id->vendor <= kHighest && id->device <= kHighest), "numbers have 16 bits");
    requireShowable(platform::pci::modelIn(text));
}

inline void feedProcessorList(std::string_view text)
{
    constexpr std::size_t kMost = 8192;
    const auto list = platform::inventory::processorList(text);
    require(list.size() <= kMost, "there are not too many");
    require(std::all_of(list.begin(), list.end(), [](unsigned i) { return i < kMost; }),
            "numbers are plausible");
}

inline void feedProperty(std::string_view text)
{
    requireShowable(platform::inventory::property(text, "PCI_ID"));
    requireShowable(platform::inventory::cleanLine(text));
}

} // namespace fuzz
