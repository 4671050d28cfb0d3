#include "platform/linux/ArmParts.h"

#include <algorithm>
#include <array>

namespace platform::arm {

namespace {

struct Implementer
{
    unsigned long long number = 0;
    const char *name = "";
};

struct Part
{
    unsigned long long implementer = 0;
    unsigned long long number = 0;
    const char *name = "";
};

constexpr unsigned long long kArm = 0x41;

constexpr std::array<Implementer, 12> kImplementers{{
    {kArm, "ARM"},
    {0x42, "Broadcom"},
    {0x43, "Cavium"},
    {0x46, "Fujitsu"},
    {0x48, "HiSilicon"},
    {0x4e, "NVIDIA"},
    {0x50, "APM"},
    {0x51, "Qualcomm"},
    {0x53, "Samsung"},
    {0x56, "Marvell"},
    {0x61, "Apple"},
    {0xc0, "Ampere"},
}};

constexpr std::array<Part, 33> kParts{{
    {kArm, 0xb76, "ARM1176"},     {kArm, 0xc05, "Cortex-A5"},   {kArm, 0xc07, "Cortex-A7"},
    {kArm, 0xc08, "Cortex-A8"},   {kArm, 0xc09, "Cortex-A9"},   {kArm, 0xc0e, "Cortex-A17"},
    {kArm, 0xc0f, "Cortex-A15"},  {kArm, 0xd03, "Cortex-A53"},  {kArm, 0xd04, "Cortex-A35"},
    {kArm, 0xd05, "Cortex-A55"},  {kArm, 0xd07, "Cortex-A57"},  {kArm, 0xd08, "Cortex-A72"},
    {kArm, 0xd09, "Cortex-A73"},  {kArm, 0xd0a, "Cortex-A75"},  {kArm, 0xd0b, "Cortex-A76"},
    {kArm, 0xd0c, "Neoverse-N1"}, {kArm, 0xd0d, "Cortex-A77"},  {kArm, 0xd40, "Neoverse-V1"},
    {kArm, 0xd41, "Cortex-A78"},  {kArm, 0xd44, "Cortex-X1"},   {kArm, 0xd46, "Cortex-A510"},
    {kArm, 0xd47, "Cortex-A710"}, {kArm, 0xd48, "Cortex-X2"},   {kArm, 0xd49, "Neoverse-N2"},
    {kArm, 0xd4a, "Neoverse-E1"}, {kArm, 0xd4b, "Cortex-A78C"}, {kArm, 0xd4d, "Cortex-A715"},
    {kArm, 0xd4e, "Cortex-X3"},   {kArm, 0xd4f, "Neoverse-V2"}, {0x46, 0x001, "A64FX"},
    {0x48, 0xd01, "Kunpeng-920"}, {0x4e, 0x004, "Carmel"},      {0xc0, 0xac3, "Ampere-1"},
}};

} // namespace

std::string implementerName(unsigned long long implementer)
{
    const auto *const found =
        std::find_if(kImplementers.begin(), kImplementers.end(), [=](const Implementer &entry) {
            return entry.number == implementer;
        });
    return found == kImplementers.end() ? "" : found->name;
}

std::string partName(unsigned long long implementer, unsigned long long part)
{
    const auto *const found = std::find_if(kParts.begin(), kParts.end(), [=](const Part &entry) {
        return entry.implementer == implementer && entry.number == part;
    });
    return found == kParts.end() ? "" : found->name;
}

} // namespace platform::arm
