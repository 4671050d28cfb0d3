#include "platform/linux/PciIds.h"

#include "platform/linux/InventoryText.h"

#include <algorithm>
#include <array>

namespace platform::pci {

namespace {

using inventory::hexNumber;
using inventory::takeLine;

constexpr std::size_t kDigits = 4;

// The name in "1234  NAME", when the number is the wanted one.
std::optional<std::string> nameIn(std::string_view line, unsigned wanted)
{
    const bool isEntry = line.size() > kDigits && line[kDigits] == ' ';
    if (!isEntry || hexNumber(line.substr(0, kDigits)) != wanted) {
        return std::nullopt;
    }
    return inventory::cleanLine(line.substr(kDigits));
}

bool isVendor(std::string_view line)
{
    return !line.empty() && line[0] != '\t' && line[0] != '#';
}

// Below the vendor: a tab before each of its devices, two before what they are built into.
std::string deviceName(std::string_view text, unsigned device)
{
    while (const auto line = takeLine(text)) {
        if (isVendor(*line)) {
            break;
        }
        const auto entry = line->substr(line->starts_with('\t') ? 1 : line->size());
        if (const auto name = nameIn(entry, device)) {
            return *name;
        }
    }
    return {};
}

// "START END FLAGS"
std::array<unsigned long long, 3> numbersOf(std::string_view line)
{
    std::array<unsigned long long, 3> numbers{};
    for (auto &number : numbers) {
        const auto end = std::min(line.find(' '), line.size());
        number = hexNumber(line.substr(0, end)).value_or(0);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return numbers;
}

} // namespace

std::optional<DeviceId> idIn(std::string_view uevent)
{
    constexpr unsigned long long kHighest = 0xFFFF;
    const std::string text = inventory::property(uevent, "PCI_ID");
    const std::string_view id = text;
    const auto colon = std::min(id.find(':'), id.size());
    const auto vendor = hexNumber(id.substr(0, colon)).value_or(kHighest + 1);
    const auto device = hexNumber(id.substr(std::min(colon + 1, id.size()))).value_or(kHighest + 1);
    if (vendor > kHighest || device > kHighest) {
        return std::nullopt;
    }
    return DeviceId{static_cast<unsigned>(vendor), static_cast<unsigned>(device)};
}

std::string modelIn(std::string_view information)
{
    constexpr std::string_view kKey = "Model:";
    while (const auto line = takeLine(information)) {
        if (line->starts_with(kKey)) {
            return inventory::cleanLine(line->substr(kKey.size()));
        }
    }
    return {};
}

std::string nameOf(std::string_view ids, unsigned vendor, unsigned device)
{
    while (const auto line = takeLine(ids)) {
        if (!isVendor(*line)) {
            continue;
        }
        if (const auto name = nameIn(*line, vendor)) {
            const std::string model = deviceName(ids, device);
            return model.empty() ? *name : *name + ' ' + model;
        }
    }
    return {};
}

unsigned long long largestPrefetchable(std::string_view resource)
{
    constexpr unsigned long long kMemory = 0x200;
    constexpr unsigned long long kPrefetchable = 0x2000;
    constexpr unsigned long long kLargest = 1ULL << 48U;
    unsigned long long largest = 0;
    while (const auto line = takeLine(resource)) {
        const auto [start, end, flags] = numbersOf(*line);
        const bool isMemory = (flags & kMemory) != 0 && (flags & kPrefetchable) != 0;
        if (isMemory && end > start && end - start < kLargest) {
            largest = std::max(largest, end - start + 1);
        }
    }
    return largest;
}

} // namespace platform::pci
