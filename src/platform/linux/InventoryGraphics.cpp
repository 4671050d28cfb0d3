#include "platform/linux/InventoryReaders.h"
#include "platform/linux/InventoryText.h"
#include "platform/linux/PciIds.h"
#include "platform/linux/SystemTree.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace platform::inventory {

namespace {

constexpr std::size_t kLongestUevent = 4096;
constexpr std::size_t kLongestIds = 8U << 20U;

struct PciAddress
{
    pci::DeviceId id;
    std::string slot; // "0000:01:00.0"
};

std::string ueventOf(const SystemTree &tree, const std::string &folder)
{
    return tree.text(folder + "uevent", kLongestUevent);
}

// From the device itself, or from the one that it sits on: a virtual adapter is a device on a PCI device.
std::optional<PciAddress> pciAddress(const SystemTree &tree, const std::string &folder)
{
    for (const std::string &place : {folder, folder + "../"}) {
        const std::string uevent = ueventOf(tree, place);
        if (const auto id = pci::idIn(uevent)) {
            return PciAddress{*id, property(uevent, "PCI_SLOT_NAME")};
        }
    }
    return std::nullopt;
}

bool isCard(const std::string &name)
{
    constexpr std::string_view kPrefix = "card";
    return name.starts_with(kPrefix) && wholeNumber(name.substr(kPrefix.size())).has_value();
}

bool isDisplayController(const SystemTree &tree, const std::string &folder)
{
    return tree.line(folder + "class").starts_with("0x03");
}

// The folders of the adapters, each with a slash at its end: those that have a driver for screens, else all on the bus.
std::vector<std::string> adapters(const SystemTree &tree)
{
    std::vector<std::string> folders;
    for (const std::string &name : tree.names("sys/class/drm")) {
        const std::string folder = "sys/class/drm/" + name + "/device/";
        if (isCard(name) && !ueventOf(tree, folder).empty()) {
            folders.push_back(folder);
        }
    }
    if (!folders.empty()) {
        return folders;
    }
    for (const std::string &name : tree.names("sys/bus/pci/devices")) {
        const std::string folder = "sys/bus/pci/devices/" + name + "/";
        if (isDisplayController(tree, folder)) {
            folders.push_back(folder);
        }
    }
    return folders;
}

// The one that the firmware showed its messages on, else the first; empty when there is none.
std::string mainAdapter(const SystemTree &tree)
{
    const auto folders = adapters(tree);
    const auto found =
        std::find_if(folders.begin(), folders.end(), [&tree](const std::string &folder) {
            return tree.number(folder + "boot_vga") == 1ULL
                || tree.number(folder + "../boot_vga") == 1ULL;
        });
    if (found != folders.end()) {
        return *found;
    }
    return folders.empty() ? std::string() : folders.front();
}

std::string nameInLists(const SystemTree &tree, const pci::DeviceId &id)
{
    for (const char *file : {"usr/share/hwdata/pci.ids", "usr/share/misc/pci.ids"}) {
        std::string name = pci::nameOf(tree.text(file, kLongestIds), id.vendor, id.device);
        if (!name.empty()) {
            return name;
        }
    }
    return {};
}

// The makers that are met most, for machines without the list of names.
std::string makerOf(unsigned vendor)
{
    struct Maker
    {
        unsigned vendor = 0;
        const char *name = "";
    };
    constexpr std::array<Maker, 9> kMakers{{{0x1002, "AMD"},
                                            {0x10de, "NVIDIA"},
                                            {0x1234, "QEMU"},
                                            {0x1414, "Microsoft"},
                                            {0x15ad, "VMware"},
                                            {0x1af4, "Virtio"},
                                            {0x1b36, "QXL"},
                                            {0x8086, "Intel"},
                                            {0x80ee, "VirtualBox"}}};
    const auto *const found = std::find_if(
        kMakers.begin(), kMakers.end(), [=](const Maker &maker) { return maker.vendor == vendor; });
    return found == kMakers.end() ? "" : found->name;
}

std::string pciName(const SystemTree &tree, const PciAddress &address)
{
    constexpr std::size_t kLongestInformation = 4096;
    std::string model = pci::modelIn(
        tree.text("proc/driver/nvidia/gpus/" + address.slot + "/information", kLongestInformation));
    if (!model.empty()) {
        return model;
    }
    std::string name = nameInLists(tree, address.id);
    const std::string maker = makerOf(address.id.vendor);
    return name.empty() && !maker.empty() ? maker + " graphics adapter" : name;
}

std::string nameOf(const SystemTree &tree, const std::string &folder)
{
    if (const auto address = pciAddress(tree, folder)) {
        return pciName(tree, *address);
    }
    return property(ueventOf(tree, folder), "OF_COMPATIBLE_0"); // "brcm,bcm2711-vc5"
}

// Only where a driver tells: what is borrowed from the main memory has no size of its own.
std::string memoryOf(const SystemTree &tree, const std::string &folder, const std::string &driver)
{
    constexpr std::array<const char *, 5> kEmulated = {
        "bochs-drm", "cirrus", "qxl", "vboxvideo", "vmwgfx"};
    constexpr std::size_t kLongestResource = 4096;
    auto bytes = tree.number(folder + "mem_info_vram_total").value_or(0);
    if (bytes == 0 && std::find(kEmulated.begin(), kEmulated.end(), driver) != kEmulated.end()) {
        bytes = pci::largestPrefetchable(tree.text(folder + "resource", kLongestResource));
    }
    return bytes == 0 ? std::string() : std::to_string(bytes);
}

// A driver that comes with the kernel has the kernel's version.
std::string driverText(const SystemTree &tree, const std::string &folder, const std::string &driver)
{
    if (driver.empty()) {
        return {};
    }
    std::string version = tree.line(folder + "driver/module/version");
    if (version.empty()) {
        version = tree.line("proc/sys/kernel/osrelease");
    }
    return version.empty() ? driver : driver + ' ' + version;
}

} // namespace

void readGraphics(const SystemTree &tree, HardwareInventory &inventory)
{
    const std::string folder = mainAdapter(tree);
    if (folder.empty()) {
        return;
    }
    std::string driver = property(ueventOf(tree, folder), "DRIVER");
    if (driver.empty()) {
        driver = tree.linkName(folder + "driver");
    }
    inventory.graphicsName = nameOf(tree, folder);
    inventory.graphicsMemory = memoryOf(tree, folder, driver);
    inventory.graphicsDriver = driverText(tree, folder, driver);
}

} // namespace platform::inventory
