// The hardware inventory of captured machines, and of machines that tell nonsense.
#include "platform/HardwareInventory.h"
#include "platform/linux/CapturedMachines.h"
#include "platform/linux/InventoryReaders.h"
#include "platform/linux/SystemTree.h"

#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace {

using platform::HardwareInventory;
using platform::SystemTree;

HardwareInventory read(const testfiles::Path &root)
{
    const SystemTree tree(root);
    HardwareInventory inventory;
    platform::inventory::readProcessor(tree, inventory);
    platform::inventory::readGraphics(tree, inventory);
    platform::inventory::readMemory(tree, inventory);
    platform::inventory::readMemoryModule(tree, inventory);
    platform::inventory::readBoard(tree, inventory);
    return inventory;
}

HardwareInventory read(const captured::Machine &machine)
{
    const testfiles::Sandbox sandbox;
    machine.writeTo(sandbox.folder());
    return read(sandbox.folder());
}

constexpr const char *kQuick = "Example(R) Quick(TM) Q7-10750H CPU @ 2.60GHz";

TEST(Inventory, laptop)
{
    const auto inventory = read(captured::laptop());
    EXPECT_EQ(inventory.processorName, kQuick);
    EXPECT_EQ(inventory.processorManufacturer, "GenuineExample");
    EXPECT_EQ(inventory.processorCores, "2");
    EXPECT_EQ(inventory.processorThreads, "4");
    EXPECT_EQ(inventory.processorMaxClock, "5000");
    EXPECT_EQ(inventory.graphicsName, "Intel Corporation CometLake-H GT2 [UHD Graphics]");
    EXPECT_EQ(inventory.graphicsMemory, ""); // borrowed
    EXPECT_EQ(inventory.graphicsDriver, "i915 6.1.0-18-amd64");
    EXPECT_EQ(inventory.memoryTotal, "16777216000");
    EXPECT_EQ(inventory.memoryAvailable, "8388608000");
    EXPECT_EQ(inventory.memorySpeed, "2933");
    EXPECT_EQ(inventory.memoryType, "26");
    EXPECT_EQ(inventory.boardManufacturer, "Example Inc.");
    EXPECT_EQ(inventory.boardProduct, "0X1234");
    EXPECT_EQ(inventory.boardSerial, ""); // not for everyone
}

TEST(Inventory, serverWithTwoSockets)
{
    const auto inventory = read(captured::server());
    EXPECT_EQ(inventory.processorCores, "2"); // of the first socket only
    EXPECT_EQ(inventory.processorThreads, "2");
    EXPECT_EQ(inventory.processorMaxClock, "2600");
    EXPECT_EQ(inventory.graphicsName, "ASPEED Technology, Inc. Graphics Family");
    EXPECT_EQ(inventory.graphicsDriver, "");
    EXPECT_EQ(inventory.memorySpeed, "3200");
    EXPECT_EQ(inventory.memoryType, "26");
    EXPECT_EQ(inventory.boardManufacturer, "Example Servers");
    EXPECT_EQ(inventory.boardProduct, "S2-Board");
    EXPECT_EQ(inventory.boardSerial, "SN0001");
}

// The same where only the topology tells.
TEST(Inventory, socketsByTopology)
{
    auto machine = captured::server();
    machine.files["proc/cpuinfo"] = "processor\t: 0\nmodel name\t: Plain\n\n";
    const auto inventory = read(machine);
    EXPECT_EQ(inventory.processorName, "Plain");
    EXPECT_EQ(inventory.processorCores, "2");
    EXPECT_EQ(inventory.processorThreads, "2");
    EXPECT_EQ(inventory.processorMaxClock, "");
}

TEST(Inventory, longListsOfProcessorsAreReadWhole)
{
    captured::Machine machine;
    std::string list;
    for (int i = 0; i < 400; i += 2) {
        list += (i == 0 ? "" : ",") + std::to_string(i);
    }
    machine.files["sys/devices/system/cpu/online"] = list + "\n";
    machine.files["sys/devices/system/cpu/cpu0/topology/package_cpus_list"] = list + "\n";
    EXPECT_EQ(read(machine).processorThreads, "200");
}

TEST(Inventory, clocksAreRounded)
{
    captured::Machine machine;
    const char *file = "sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq";
    machine.files[file] = "2399500\n";
    EXPECT_EQ(read(machine).processorMaxClock, "2400");
    machine.files[file] = "2399499\n";
    EXPECT_EQ(read(machine).processorMaxClock, "2399");
}

TEST(Inventory, olderNamesOfTheTopology)
{
    captured::Machine machine;
    const std::string folder = "sys/devices/system/cpu/cpu";
    machine.files["sys/devices/system/cpu/online"] = "0-3\n";
    for (int i = 0; i < 4; ++i) {
        const std::string topology = folder + std::to_string(i) + "/topology/";
        machine.files[topology + "core_siblings_list"] = "0-3\n";
        machine.files[topology + "thread_siblings_list"] = i < 2 ? "0-1\n" : "2-3\n";
    }
    const auto inventory = read(machine);
    EXPECT_EQ(inventory.processorCores, "2");
    EXPECT_EQ(inventory.processorThreads, "4");
}

TEST(Inventory, armBoard)
{
    const auto inventory = read(captured::armBoard());
    EXPECT_EQ(inventory.processorName, "Cortex-A53");
    EXPECT_EQ(inventory.processorManufacturer, "ARM");
    EXPECT_EQ(inventory.processorCores, "6");
    EXPECT_EQ(inventory.processorThreads, "6");
    EXPECT_EQ(inventory.processorMaxClock, "1800");
    EXPECT_EQ(inventory.graphicsName, "example,board-vc");
    EXPECT_EQ(inventory.graphicsDriver, "vc4-drm 6.6.8-arm64");
    EXPECT_EQ(inventory.memoryType, "");
    EXPECT_EQ(inventory.boardManufacturer, "exampleboards");
    EXPECT_EQ(inventory.boardProduct, "Example Board 4 Rev 1.2");
    EXPECT_EQ(inventory.boardSerial, "10000000abcdef01");
}

TEST(Inventory, virtualMachine)
{
    const auto inventory = read(captured::virtualMachine());
    EXPECT_EQ(inventory.processorName, "Virtual CPU version 2.5+");
    EXPECT_EQ(inventory.processorCores, "1");
    EXPECT_EQ(inventory.processorThreads, "1");
    EXPECT_EQ(inventory.processorMaxClock, "2496");
    EXPECT_EQ(inventory.graphicsName, "QEMU graphics adapter");
    EXPECT_EQ(inventory.graphicsMemory, "16777216");
    EXPECT_EQ(inventory.graphicsDriver, "bochs-drm 5.10.0");
    EXPECT_EQ(inventory.memorySpeed, "");
    EXPECT_EQ(inventory.memoryType, "7");
    EXPECT_EQ(inventory.boardProduct, "");
}

TEST(Inventory, containerWithoutFirmware)
{
    const auto inventory = read(captured::container());
    EXPECT_EQ(inventory.processorName, kQuick);
    EXPECT_EQ(inventory.processorCores, "8");
    EXPECT_EQ(inventory.processorThreads, "16");
    EXPECT_EQ(inventory.processorMaxClock, "2600");
    EXPECT_EQ(inventory.graphicsName, "");
    EXPECT_EQ(inventory.boardManufacturer, "");
    EXPECT_EQ(inventory.boardSerial, "");
}

TEST(Inventory, nothingAtAll)
{
    const auto inventory = read(captured::Machine{});
    EXPECT_EQ(inventory.processorName + inventory.processorCores + inventory.processorThreads
                  + inventory.graphicsName + inventory.memoryType + inventory.boardProduct,
              "");
    EXPECT_EQ(read(testfiles::Path("/does/not/exist")).processorName, "");
}

TEST(Inventory, memoryOfItsOwnAndVersionOfItsDriver)
{
    captured::Machine machine;
    const std::string adapter = "sys/class/drm/card0/device/";
    machine.files[adapter + "uevent"] =
        "DRIVER=nvidia\nPCI_ID=10DE:1F12\nPCI_SLOT_NAME=0000:01:00.0\n";
    machine.files[adapter + "mem_info_vram_total"] = "8573157376\n";
    machine.files[adapter + "driver/module/version"] = "535.54.03\n";
    machine.files["proc/driver/nvidia/gpus/0000:01:00.0/information"] =
        "Model: \t\t NVIDIA GeForce RTX 2060\nIRQ:   \t\t 150\n";
    const auto inventory = read(machine);
    EXPECT_EQ(inventory.graphicsName, "NVIDIA GeForce RTX 2060");
    EXPECT_EQ(inventory.graphicsMemory, "8573157376");
    EXPECT_EQ(inventory.graphicsDriver, "nvidia 535.54.03");
}

// The adapter that the kernel shows is a device on top of the one on the bus.
TEST(Inventory, adapterOnTopOfAnother)
{
    captured::Machine machine;
    const std::string bus = "sys/devices/pci0000:00/0000:00:01.0/";
    machine.files[bus + "uevent"] = "DRIVER=virtio-pci\nPCI_ID=1AF4:1050\n";
    machine.files[bus + "boot_vga"] = "1\n";
    machine.files[bus + "virtio0/uevent"] = "DRIVER=virtio_gpu\nMODALIAS=virtio:d10v1AF4\n";
    machine.links["sys/class/drm/card0/device"] =
        "../../../devices/pci0000:00/0000:00:01.0/virtio0";
    const auto inventory = read(machine);
    EXPECT_EQ(inventory.graphicsName, "Virtio graphics adapter");
    EXPECT_EQ(inventory.graphicsDriver, "virtio_gpu");
}

// Every file of every machine cut short, filled with noise, replaced by a folder, or a pipe that nobody writes to.
// A pipe that nobody writes into would hang whoever opens it: the test would not end.
TEST(Inventory, hostileFilesAreSafe)
{
    std::mt19937 random(3);
    const auto put = [](const std::filesystem::path &file, const std::string &content) {
        std::filesystem::remove_all(file);
        std::ofstream(file, std::ios::binary) << content;
    };
    for (const auto &machine : {captured::laptop(),
                                captured::server(),
                                captured::armBoard(),
                                captured::virtualMachine()}) {
        const testfiles::Sandbox sandbox;
        machine.writeTo(sandbox.folder());
        for (const auto &[path, content] : machine.files) {
            const auto file = sandbox.folder() / path;
            put(file, content.substr(0, random() % content.size()));
            read(sandbox.folder());
            std::string noise = content;
            for (char &c : noise) {
                c = random() % 4 == 0 ? static_cast<char>(random()) : c;
            }
            put(file, noise);
            const auto inventory = read(sandbox.folder());
            EXPECT_LE(inventory.processorName.size(), 256U);
            EXPECT_LE(inventory.boardProduct.size(), 256U);
            std::filesystem::remove(file);
            ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
            read(sandbox.folder());
            std::filesystem::remove(file);
            std::filesystem::create_directory(file);
            read(sandbox.folder());
            put(file, content);
        }
    }
}

TEST(Inventory, endlessFilesAreCut)
{
    const testfiles::Sandbox sandbox;
    captured::Machine machine = captured::laptop();
    machine.files["proc/cpuinfo"] = std::string(50U << 20U, 'x');
    machine.files["sys/class/dmi/id/board_name"] = std::string(1U << 20U, 'b');
    machine.writeTo(sandbox.folder());
    const auto inventory = read(sandbox.folder());
    EXPECT_EQ(inventory.processorName, "");
    EXPECT_EQ(inventory.boardProduct, std::string(256, 'b'));
    EXPECT_LE(SystemTree(sandbox.folder()).text("proc/cpuinfo", 1000).size(), 1000U);
}

TEST(Inventory, thisMachine)
{
    const auto start = std::chrono::steady_clock::now();
    const auto inventory = platform::queryHardware();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_GT(std::stoull(inventory.memoryTotal), 64ULL << 20U);
    EXPECT_LE(std::stoull(inventory.memoryAvailable), std::stoull(inventory.memoryTotal));
    EXPECT_GE(std::stoul(inventory.processorThreads), 1U);
    EXPECT_EQ(platform::operatingSystemType(), "Linux");
}

} // namespace
