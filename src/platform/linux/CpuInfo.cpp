#include "platform/linux/CpuInfo.h"

#include "platform/linux/ArmParts.h"
#include "platform/linux/InventoryText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>

namespace platform::cpuinfo {

namespace {

using inventory::hexNumber;
using inventory::takeLine;
using inventory::trimmed;
using inventory::wholeNumber;

constexpr unsigned long long kMostProcessors = 65536;

std::optional<std::string_view> valueOf(std::string_view line, std::string_view key)
{
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || trimmed(line.substr(0, colon)) != key) {
        return std::nullopt;
    }
    return trimmed(line.substr(colon + 1));
}

std::string firstOf(std::string_view text, std::initializer_list<std::string_view> keys)
{
    for (const std::string_view key : keys) {
        if (std::string value = field(text, key); !value.empty()) {
            return value;
        }
    }
    return {};
}

unsigned count(std::string_view text, std::string_view key)
{
    const auto value = wholeNumber(field(text, key)).value_or(0);
    return value <= kMostProcessors ? static_cast<unsigned>(value) : 0;
}

unsigned listedProcessors(std::string_view text)
{
    unsigned listed = 0;
    while (const auto line = takeLine(text)) {
        const auto number = valueOf(*line, "processor");
        if (number && wholeNumber(*number) && listed < kMostProcessors) {
            ++listed;
        }
    }
    return listed;
}

// "2596.130" and "3800.000000MHz" alike.
unsigned clock(std::string_view text)
{
    constexpr double kHighest = 100'000;
    double value = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    const bool isPlausible = result.ec == std::errc() && value > 0 && value < kHighest;
    return isPlausible ? static_cast<unsigned>(std::lround(value)) : 0;
}

// "sifive,u74-mc" and the like lead with the maker.
std::string makerOf(const std::string &architecture)
{
    const auto comma = architecture.find(',');
    return comma == std::string::npos ? std::string()
                                      : inventory::cleanLine(architecture.substr(0, comma));
}

// ARM processors tell two numbers instead of names.
void nameArmProcessor(std::string_view text, Processor &processor)
{
    const auto implementer = hexNumber(field(text, "CPU implementer"));
    const auto part = hexNumber(field(text, "CPU part"));
    if (!implementer) {
        return;
    }
    processor.manufacturer = arm::implementerName(*implementer);
    const std::string name = part ? arm::partName(*implementer, *part) : std::string();
    if (!name.empty()) {
        processor.name = name;
    }
}

} // namespace

std::string field(std::string_view text, std::string_view key)
{
    while (const auto line = takeLine(text)) {
        if (const auto value = valueOf(*line, key); value && !value->empty()) {
            return inventory::cleanLine(*value);
        }
    }
    return {};
}

Processor parse(std::string_view text)
{
    Processor processor;
    processor.name =
        firstOf(text, {"model name", "Model Name", "cpu model", "Processor", "cpu", "uarch"});
    processor.manufacturer = firstOf(text, {"vendor_id"});
    processor.cores = count(text, "cpu cores");
    processor.threads = count(text, "siblings");
    processor.listed = listedProcessors(text);
    processor.megahertz = clock(firstOf(text, {"cpu MHz", "CPU MHz", "cpu MHz static", "clock"}));
    nameArmProcessor(text, processor);
    if (processor.manufacturer.empty()) {
        processor.manufacturer = makerOf(field(text, "uarch"));
    }
    return processor;
}

} // namespace platform::cpuinfo
