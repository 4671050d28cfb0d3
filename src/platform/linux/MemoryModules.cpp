#include "platform/linux/MemoryModules.h"

#include "platform/linux/InventoryText.h"

#include <algorithm>
#include <array>
#include <string>

namespace platform::modules {

namespace {

constexpr unsigned kUnknownSpeed = 0;
constexpr unsigned kHighestSpeed = 100'000;

// What the table's structures begin with, and where a memory device has its facts.
constexpr std::size_t kLengthAt = 1;
constexpr std::size_t kHeader = 4;
constexpr unsigned kMemoryDevice = 17;
constexpr unsigned kEndOfTable = 127;
constexpr std::size_t kSizeAt = 0x0C;
constexpr std::size_t kTypeAt = 0x12;
constexpr std::size_t kSpeedAt = 0x15;
constexpr std::size_t kExtendedSpeedAt = 0x54;
constexpr unsigned kSpeedIsExtended = 0xFFFF;

unsigned byteAt(std::string_view bytes, std::size_t place)
{
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0;
}

// Little-endian; what lies beyond the structure is 0.
unsigned wordAt(std::string_view bytes, std::size_t place)
{
    constexpr unsigned kByte = 8;
    return byteAt(bytes, place) | byteAt(bytes, place + 1) << kByte;
}

unsigned longAt(std::string_view bytes, std::size_t place)
{
    constexpr unsigned kWord = 16;
    return wordAt(bytes, place) | wordAt(bytes, place + 2) << kWord;
}

unsigned plausibleSpeed(unsigned long long speed)
{
    return speed <= kHighestSpeed ? static_cast<unsigned>(speed) : kUnknownSpeed;
}

Module moduleIn(std::string_view structure)
{
    unsigned speed = wordAt(structure, kSpeedAt);
    if (speed == kSpeedIsExtended) {
        speed = longAt(structure, kExtendedSpeedAt);
    }
    return {byteAt(structure, kTypeAt), plausibleSpeed(speed)};
}

// Takes one structure without its texts off the table; empty at the end.
std::string_view takeStructure(std::string_view &table)
{
    constexpr std::string_view kEndOfTexts("\0\0", 2);
    const std::size_t length = byteAt(table, kLengthAt);
    if (length < kHeader || length > table.size()) {
        return {};
    }
    const std::string_view structure = table.substr(0, length);
    table.remove_prefix(length);
    const auto end = table.find(kEndOfTexts);
    table.remove_prefix(end == std::string_view::npos ? table.size() : end + kEndOfTexts.size());
    return structure;
}

struct TypeName
{
    const char *name = "";
    unsigned code = 0;
};

constexpr std::array<TypeName, 31> kTypes{{
    {"Other", 1},   {"Unknown", 2}, {"DRAM", 3},   {"EDRAM", 4},  {"VRAM", 5},
    {"SRAM", 6},    {"RAM", 7},     {"ROM", 8},    {"Flash", 9},  {"EEPROM", 10},
    {"FEPROM", 11}, {"EPROM", 12},  {"CDRAM", 13}, {"3DRAM", 14}, {"SDRAM", 15},
    {"SGRAM", 16},  {"RDRAM", 17},  {"DDR", 18},   {"DDR2", 19},  {"DDR2 FB-DIMM", 20},
    {"DDR3", 24},   {"FBD2", 25},   {"DDR4", 26},  {"LPDDR", 27}, {"LPDDR2", 28},
    {"LPDDR3", 29}, {"LPDDR4", 30}, {"HBM", 32},   {"HBM2", 33},  {"DDR5", 34},
    {"LPDDR5", 35},
}};

} // namespace

unsigned typeCode(std::string_view name)
{
    const auto *const found = std::find_if(
        kTypes.begin(), kTypes.end(), [=](const TypeName &type) { return name == type.name; });
    return found == kTypes.end() ? 0 : found->code;
}

std::optional<Module> firstInTable(std::string_view table)
{
    for (;;) {
        const std::string_view structure = takeStructure(table);
        if (structure.empty() || byteAt(structure, 0) == kEndOfTable) {
            return std::nullopt;
        }
        const bool isPresent =
            byteAt(structure, 0) == kMemoryDevice && wordAt(structure, kSizeAt) != 0;
        if (isPresent) {
            return moduleIn(structure);
        }
    }
}

std::optional<Module> firstInDatabase(std::string_view text)
{
    constexpr int kMostModules = 64;
    for (int index = 0; index < kMostModules; ++index) {
        const std::string prefix = "E:MEMORY_DEVICE_" + std::to_string(index) + '_';
        const std::string type = inventory::property(text, prefix + "TYPE");
        if (type.empty() || inventory::property(text, prefix + "PRESENT") == "0") {
            continue;
        }
        const auto speed = inventory::wholeNumber(inventory::property(text, prefix + "SPEED_MTS"));
        return Module{typeCode(type), plausibleSpeed(speed.value_or(0))};
    }
    return std::nullopt;
}

} // namespace platform::modules
