// The parsers of the hardware inventory, one by one.
#include "platform/linux/InventoryText.h"
#include "platform/linux/CapturedMachines.h"
#include "platform/linux/CpuInfo.h"
#include "platform/linux/MemoryModules.h"
#include "platform/linux/PciIds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace platform;

TEST(InventoryText, linesThatCanBeShown)
{
    EXPECT_EQ(inventory::cleanLine(" \t Board \x01name\t2 \r\nsecond"), "Board name 2");
    EXPECT_EQ(inventory::cleanLine(std::string_view("a\0b", 3)), "a");
    EXPECT_EQ(inventory::cleanLine("\x1b[31mred\x7f"), "[31mred");
    EXPECT_EQ(inventory::cleanLine(" \n x"), "");
    EXPECT_EQ(inventory::cleanLine(""), "");
    EXPECT_EQ(inventory::cleanLine(std::string(300, 'x')).size(), 256U);
    // A character of two bytes that would be cut is left out.
    EXPECT_EQ(inventory::cleanLine(std::string(255, 'x') + "\xc3\xa9"), std::string(255, 'x'));
    EXPECT_EQ(inventory::cleanLine(std::string(500, '\x80')), "");
}

TEST(InventoryText, numbers)
{
    EXPECT_EQ(inventory::wholeNumber("0042"), 42U);
    EXPECT_EQ(inventory::hexNumber("0x1aF4"), 0x1AF4U);
    EXPECT_EQ(inventory::hexNumber("1af4"), 0x1AF4U);
    for (const char *text : {"", " 1", "1 ", "-1", "+1", "1.0", "x", "99999999999999999999"}) {
        EXPECT_FALSE(inventory::wholeNumber(text).has_value()) << text;
    }
    for (const char *text : {"", "0x", "0xg", "0x0x1", "0x10000000000000000"}) {
        EXPECT_FALSE(inventory::hexNumber(text).has_value()) << text;
    }
}

TEST(InventoryText, properties)
{
    EXPECT_EQ(inventory::property("A=1\nAB=2\nA=3\n", "A"), "1");
    EXPECT_EQ(inventory::property("A=1\nAB=2\n", "AB"), "2");
    EXPECT_EQ(inventory::property("A=x=y\n", "A"), "x=y");
    EXPECT_EQ(inventory::property("A=cut", "A"), "");
    EXPECT_EQ(inventory::property("A\nA =1\n", "A"), "");
}

TEST(InventoryText, processorLists)
{
    EXPECT_THAT(inventory::processorList("0\n"), ElementsAre(0));
    EXPECT_THAT(inventory::processorList("0-2,5,8-9\n"), ElementsAre(0, 1, 2, 5, 8, 9));
    EXPECT_EQ(inventory::processorList("0-8191").size(), 8192U);
    for (const char *text : {"",
                             "\n",
                             "-1",
                             "1-",
                             "3-2",
                             "0,,1",
                             "0-x",
                             "0-4294967295",
                             "0-8191,0",
                             "8192",
                             "0-18446744073709551615",
                             "0 1"}) {
        EXPECT_THAT(inventory::processorList(text), IsEmpty()) << text;
    }
}

TEST(CpuInfo, otherArchitectures)
{
    const auto power = cpuinfo::parse("processor\t: 0\ncpu\t\t: POWER9, altivec supported\n"
                                      "clock\t\t: 3800.000000MHz\n\ntimebase\t: 512000000\n");
    EXPECT_EQ(power.name, "POWER9, altivec supported");
    EXPECT_EQ(power.megahertz, 3800U);
    const auto riscv =
        cpuinfo::parse("processor\t: 0\nhart\t\t: 1\nisa\t\t: rv64gc\nuarch\t\t: maker,u7\n");
    EXPECT_EQ(riscv.name, "maker,u7");
    EXPECT_EQ(riscv.manufacturer, "maker");
    const auto old = cpuinfo::parse("Processor\t: ARMv7 Processor rev 4 (v7l)\nprocessor\t: 0\n"
                                    "processor\t: 1\n\nCPU implementer\t: 0x41\n"
                                    "CPU part\t: 0xfff\nHardware\t: Board\n");
    EXPECT_EQ(old.name, "ARMv7 Processor rev 4 (v7l)");
    EXPECT_EQ(old.manufacturer, "ARM");
    EXPECT_EQ(old.listed, 2U);
    const auto mainframe =
        cpuinfo::parse("vendor_id       : IBM/S390\n# processors    : 4\n"
                       "processor 0: version = FF,  identification = 0F,  machine = 8561\n"
                       "cpu MHz static\t: 5200\n");
    EXPECT_EQ(mainframe.manufacturer, "IBM/S390");
    EXPECT_EQ(mainframe.megahertz, 5200U);
    const auto loong = cpuinfo::parse("processor\t\t: 0\nModel Name\t\t: Loong-3\n"
                                      "CPU MHz\t\t\t: 2500.00\n");
    EXPECT_EQ(loong.name, "Loong-3");
    EXPECT_EQ(loong.megahertz, 2500U);
}

TEST(CpuInfo, implausibleNumbersAreLeftOut)
{
    for (const char *clock : {"nan", "inf", "-5", "1e5", "0", "", "999999999", "x"}) {
        const auto processor = cpuinfo::parse("cpu MHz : " + std::string(clock) + "\n");
        EXPECT_LE(processor.megahertz, 1U) << clock;
    }
    const auto processor =
        cpuinfo::parse("cpu cores : 99999999\nsiblings : -1\nprocessor : x\nprocessor :\n");
    EXPECT_EQ(processor.cores, 0U);
    EXPECT_EQ(processor.threads, 0U);
    EXPECT_EQ(processor.listed, 0U);
}

TEST(CpuInfo, everyPrefixIsSafe)
{
    const std::string text = captured::laptop().files.at("proc/cpuinfo");
    const auto whole = cpuinfo::parse(text);
    for (std::size_t length = 0; length < text.size(); ++length) {
        const auto part = cpuinfo::parse(text.substr(0, length));
        EXPECT_TRUE(part.name.empty() || part.name == whole.name);
        EXPECT_TRUE(part.threads == 0 || part.threads == whole.threads);
        EXPECT_LE(part.listed, whole.listed);
    }
}

TEST(MemoryModules, firstOneThatIsThere)
{
    EXPECT_EQ(modules::firstInTable(captured::memoryTable()), (modules::Module{26, 3200}));
    EXPECT_FALSE(modules::firstInTable(captured::memoryDevice(0, 26, 3200)).has_value());
    EXPECT_FALSE(modules::firstInTable("").has_value());
    // Nothing counts behind the end of the table.
    EXPECT_FALSE(modules::firstInTable(captured::structure(127, "", "")
                                       + captured::memoryDevice(1, 26, 3200))
                     .has_value());
}

TEST(MemoryModules, olderAndNewerStructures)
{
    // Of the first version, which had no speed.
    const std::string old = captured::memoryDevice(512, 19, 0).substr(0, 0x15);
    std::string table = old + std::string(2, '\0');
    table[1] = 0x15;
    EXPECT_EQ(modules::firstInTable(table), (modules::Module{19, 0}));
    // A speed that does not fit into its old place.
    std::string facts(0x5C - 4, '\0');
    facts[0x0C - 4] = '\1';
    facts[0x12 - 4] = 34;
    facts.replace(0x15 - 4, 2, "\xff\xff");
    facts.replace(0x54 - 4, 4, std::string("\x40\x1f\x01\x00", 4)); // 73536
    EXPECT_EQ(modules::firstInTable(captured::structure(17, facts, "")),
              (modules::Module{34, 73536}));
}

TEST(MemoryModules, everyCutOfTheTableIsSafe)
{
    const std::string table = captured::memoryTable();
    for (std::size_t length = 0; length < table.size(); ++length) {
        const auto module = modules::firstInTable(table.substr(0, length));
        if (module) {
            EXPECT_EQ(*module, (modules::Module{26, 3200}));
        }
    }
}

TEST(MemoryModules, database)
{
    EXPECT_EQ(modules::firstInDatabase("E:MEMORY_DEVICE_0_TYPE=DDR5\n"), (modules::Module{34, 0}));
    EXPECT_EQ(modules::firstInDatabase("E:MEMORY_DEVICE_3_TYPE=<OUT OF SPEC>\n"
                                       "E:MEMORY_DEVICE_3_SPEED_MTS=4800\n"),
              (modules::Module{0, 4800}));
    EXPECT_EQ(modules::firstInDatabase("E:MEMORY_DEVICE_0_TYPE=DDR3\n"
                                       "E:MEMORY_DEVICE_0_SPEED_MTS=99999999999\n"),
              (modules::Module{24, 0}));
    EXPECT_FALSE(modules::firstInDatabase("E:MEMORY_DEVICE_0_TYPE=cut").has_value());
    EXPECT_FALSE(modules::firstInDatabase("E:ID_VENDOR=x\n").has_value());
}

TEST(PciIds, names)
{
    const std::string ids = captured::laptop().files.at("usr/share/misc/pci.ids");
    EXPECT_EQ(pci::nameOf(ids, 0x8086, 0x9bc5),
              "Intel Corporation CometLake-S GT2 [UHD Graphics 630]");
    EXPECT_EQ(pci::nameOf(ids, 0x8086, 0x1028), "Intel Corporation"); // no device, but a subsystem
    EXPECT_EQ(pci::nameOf(ids, 0x8086, 0x1f12), "Intel Corporation"); // another vendor's
    EXPECT_EQ(pci::nameOf(ids, 0x9bc4, 0x9bc4), ""); // a device is no vendor
    EXPECT_EQ(pci::nameOf(ids, 0xc, 3), "");
    EXPECT_EQ(pci::nameOf("", 1, 1), "");
    EXPECT_EQ(pci::nameOf("8086  Intel", 0x8086, 1), ""); // cut
}

TEST(PciIds, whatTheKernelCallsADevice)
{
    const auto id = pci::idIn("DRIVER=i915\nPCI_CLASS=30000\nPCI_ID=8086:9BC4\n");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->vendor, 0x8086U);
    EXPECT_EQ(id->device, 0x9bc4U);
    for (const char *text : {"",
                             "PCI_ID=8086:9BC4",
                             "PCI_ID=\n",
                             "PCI_ID=8086\n",
                             "PCI_ID=:9BC4\n",
                             "PCI_ID=8086:\n",
                             "PCI_ID=8086:9BC4:1\n",
                             "PCI_ID=10000:1\n",
                             "PCI_ID=1:10000\n",
                             "PCI_ID=-1:1\n",
                             "SUB_PCI_ID=8086:9BC4\n"}) {
        EXPECT_FALSE(pci::idIn(text)) << text;
    }
}

TEST(PciIds, modelOfAnAdapter)
{
    EXPECT_EQ(pci::modelIn("Model: \t GeForce RTX 2060\nIRQ: 1\n"), "GeForce RTX 2060");
    EXPECT_EQ(pci::modelIn("IRQ: 1\nModel:\n"), "");
    EXPECT_EQ(pci::modelIn("Model: cut"), "");
    EXPECT_EQ(pci::modelIn(" Model: other\n"), "");
}

TEST(PciIds, addressRanges)
{
    EXPECT_EQ(pci::largestPrefetchable("0x1000 0x1fff 0x2200\n0x100000 0x1fffff 0x42208\n"
                                       "0x0 0xffffffff 0x40200\n0xc000 0xc07f 0x40101\n"),
              0x100000U);
    for (const char *text : {"",
                             "\n",
                             "x y z\n",
                             "0x2 0x1 0x2200\n",
                             "0x0 0xffffffffffffffff 0x2200\n",
                             "0x1000 0x1fff 0x2200"}) {
        EXPECT_EQ(pci::largestPrefetchable(text), 0U) << text;
    }
}

} // namespace
