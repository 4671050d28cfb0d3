#include "platform/linux/CapturedMachines.h"

#include <filesystem>
#include <fstream>

namespace captured {

namespace {

// One processor of an x86 machine.
std::string x86Processor(int number, int socket, int core, const std::string &counts)
{
    return "processor\t: " + std::to_string(number)
        + "\n"
          "vendor_id\t: GenuineExample\n"
          "cpu family\t: 6\n"
          "model\t\t: 165\n"
          "model name\t: Example(R) Quick(TM) Q7-10750H CPU @ 2.60GHz\n"
          "stepping\t: 2\n"
          "cpu MHz\t\t: 2600.000\n"
          "cache size\t: 12288 KB\n"
          "physical id\t: "
        + std::to_string(socket) + "\n" + counts + "core id\t\t: " + std::to_string(core)
        + "\n"
          "flags\t\t: fpu vme de pse tsc msr\n"
          "power management:\n\n";
}

constexpr const char *kIds = "#\n"
                             "# List of names\n"
                             "#\n"
                             "10dd  Evans Example Inc\n"
                             "10de  NVIDIA Corporation\n"
                             "\t1f12  TU106M [GeForce RTX 2060 Max-Q]\n"
                             "8086  Intel Corporation\n"
                             "\t9bc4  CometLake-H GT2 [UHD Graphics]\n"
                             "\t\t1028 0a31  Something built in\n"
                             "\t9bc5  CometLake-S GT2 [UHD Graphics 630]\n"
                             "ffff  Illegal Vendor ID\n"
                             "C 03  Display controller\n"
                             "\t00  VGA compatible controller\n";

void addCpu(Machine &machine, int number, const std::string &socket, const std::string &core)
{
    const std::string folder = "sys/devices/system/cpu/cpu" + std::to_string(number) + "/topology/";
    machine.files[folder + "package_cpus_list"] = socket + "\n";
    machine.files[folder + "core_cpus_list"] = core + "\n";
}

void addClock(Machine &machine, int number, int kilohertz)
{
    machine.files["sys/devices/system/cpu/cpu" + std::to_string(number)
                  + "/cpufreq/cpuinfo_max_freq"] = std::to_string(kilohertz) + "\n";
}

std::string word(unsigned value)
{
    return {static_cast<char>(value & 0xFFU), static_cast<char>(value >> 8U)};
}

} // namespace

void Machine::writeTo(const testfiles::Path &root) const
{
    for (const auto &[path, content] : files) {
        std::filesystem::create_directories((root / path).parent_path());
        std::ofstream(root / path, std::ios::binary) << content;
    }
    for (const auto &[path, target] : links) {
        std::filesystem::create_directories((root / path).parent_path());
        std::filesystem::create_symlink(target, root / path);
    }
}

std::string structure(unsigned char type, const std::string &facts, const std::string &texts)
{
    const auto length = static_cast<char>(4 + facts.size());
    return std::string{static_cast<char>(type), length, '\1', '\0'} + facts + texts
        + std::string(texts.empty() ? 2 : 1, '\0');
}

std::string memoryDevice(unsigned size, unsigned type, unsigned speed)
{
    std::string facts(0x28 - 4, '\0');
    facts.replace(0x0C - 4, 2, word(size));
    facts[0x12 - 4] = static_cast<char>(type);
    facts.replace(0x15 - 4, 2, word(speed));
    return structure(17, facts, std::string("DIMM_A1\0Example\0", 16));
}

std::string memoryTable()
{
    return structure(0, std::string(20, '\1'), std::string("Example BIOS\0", 13))
        + structure(16, std::string(19, '\3'), "") + memoryDevice(0, 2, 0)
        + memoryDevice(16384, 26, 3200) + memoryDevice(16384, 24, 1600) + structure(127, "", "");
}

Machine laptop()
{
    const std::string counts = "siblings\t: 4\ncpu cores\t: 2\n";
    Machine machine;
    auto &files = machine.files;
    files["proc/cpuinfo"] = x86Processor(0, 0, 0, counts) + x86Processor(1, 0, 1, counts)
        + x86Processor(2, 0, 0, counts) + x86Processor(3, 0, 1, counts);
    files["proc/meminfo"] = "MemTotal:       16384000 kB\nMemFree:         1234567 kB\n"
                            "MemAvailable:    8192000 kB\n";
    files["proc/sys/kernel/osrelease"] = "6.1.0-18-amd64\n";
    files["sys/devices/system/cpu/online"] = "0-3\n";
    for (int i = 0; i < 4; ++i) {
        addCpu(machine, i, "0-3", i % 2 == 0 ? "0,2" : "1,3");
        addClock(machine, i, 5000000 - 300000 * (i % 2));
    }

    const std::string second = "sys/class/drm/card0/device/";
    files[second + "uevent"] = "DRIVER=nvidia\nPCI_CLASS=30000\nPCI_ID=10DE:1F12\n"
                               "PCI_SLOT_NAME=0000:01:00.0\n";
    files[second + "boot_vga"] = "0\n";
    const std::string first = "sys/class/drm/card1/device/";
    files[first + "uevent"] = "DRIVER=i915\nPCI_CLASS=30000\nPCI_ID=8086:9BC4\n"
                              "PCI_SUBSYS_ID=1028:0A31\nPCI_SLOT_NAME=0000:00:02.0\n";
    files[first + "boot_vga"] = "1\n";
    machine.links[first + "driver"] = "../../../bus/pci/drivers/i915";
    files["sys/class/drm/card1-eDP-1/status"] = "connected\n";
    files["sys/class/drm/renderD128/dev"] = "226:128\n";
    files["usr/share/misc/pci.ids"] = kIds;

    files["run/udev/data/+dmi:id"] = "I:4815162342\n"
                                     "E:ID_VENDOR=Example\n"
                                     "E:MEMORY_ARRAY_NUM_DEVICES=2\n"
                                     "E:MEMORY_DEVICE_0_PRESENT=0\n"
                                     "E:MEMORY_DEVICE_0_TYPE=Unknown\n"
                                     "E:MEMORY_DEVICE_1_SIZE=17179869184\n"
                                     "E:MEMORY_DEVICE_1_TYPE=DDR4\n"
                                     "E:MEMORY_DEVICE_1_TYPE_DETAIL=Synchronous\n"
                                     "E:MEMORY_DEVICE_1_SPEED_MTS=2933\n"
                                     "G:systemd\n";
    files["sys/class/dmi/id/board_vendor"] = "Example Inc.\n";
    files["sys/class/dmi/id/board_name"] = "0X1234\n";
    return machine;
}

Machine server()
{
    const std::string counts = "siblings\t: 2\ncpu cores\t: 2\n";
    Machine machine;
    auto &files = machine.files;
    files["proc/cpuinfo"] = x86Processor(0, 0, 0, counts) + x86Processor(1, 1, 0, counts)
        + x86Processor(2, 0, 1, counts) + x86Processor(3, 1, 1, counts);
    files["sys/devices/system/cpu/online"] = "0-3\n";
    for (int i = 0; i < 4; ++i) {
        addCpu(machine, i, i % 2 == 0 ? "0,2" : "1,3", std::to_string(i));
    }
    const std::string adapter = "sys/bus/pci/devices/0000:03:00.0/";
    files[adapter + "class"] = "0x030000\n";
    files[adapter + "uevent"] = "PCI_CLASS=30000\nPCI_ID=1A03:2000\nPCI_SLOT_NAME=0000:03:00.0\n";
    files["sys/bus/pci/devices/0000:00:1f.0/class"] = "0x060100\n";
    files["usr/share/hwdata/pci.ids"] = "1a03  ASPEED Technology, Inc.\n\t2000  Graphics Family\n";
    files["sys/firmware/dmi/tables/DMI"] = memoryTable();
    files["sys/class/dmi/id/board_vendor"] = "Example Servers\n";
    files["sys/class/dmi/id/board_name"] = "S2-Board \n";
    files["sys/class/dmi/id/board_serial"] = "SN0001\n";
    return machine;
}

Machine armBoard()
{
    Machine machine;
    auto &files = machine.files;
    for (int i = 0; i < 6; ++i) {
        files["proc/cpuinfo"] += "processor\t: " + std::to_string(i)
            + "\nBogoMIPS\t: 48.00\nFeatures\t: fp asimd evtstrm\nCPU implementer\t: 0x41\n"
              "CPU architecture: 8\nCPU variant\t: 0x0\nCPU part\t: "
            + (i < 4 ? "0xd03" : "0xd08") + "\nCPU revision\t: 4\n\n";
        addCpu(machine, i, "0-5", std::to_string(i));
        addClock(machine, i, i < 4 ? 1416000 : 1800000);
    }
    files["proc/cpuinfo"] += "Serial\t\t: 0123456789abcdef\n";
    files["proc/sys/kernel/osrelease"] = "6.6.8-arm64\n";
    files["sys/devices/system/cpu/online"] = "0-5\n";
    files["sys/class/drm/card0/device/uevent"] =
        "DRIVER=vc4-drm\nOF_NAME=gpu\nOF_FULLNAME=/gpu\nOF_COMPATIBLE_0=example,board-vc\n"
        "OF_COMPATIBLE_N=1\n";
    const std::string tree = "sys/firmware/devicetree/base/";
    files[tree + "model"] = std::string("Example Board 4 Rev 1.2\0", 24);
    files[tree + "compatible"] = std::string("exampleboards,board-4\0example,soc\0", 34);
    files[tree + "serial-number"] = std::string("10000000abcdef01\0", 17);
    return machine;
}

Machine virtualMachine()
{
    Machine machine;
    auto &files = machine.files;
    files["proc/cpuinfo"] = "processor\t: 0\n"
                            "vendor_id\t: AuthenticExample\n"
                            "model name\t: Virtual CPU version 2.5+\n"
                            "cpu MHz\t\t: 2495.998\n"
                            "fpu\t\t: yes\n\n";
    files["proc/sys/kernel/osrelease"] = "5.10.0\n";
    const std::string adapter = "sys/class/drm/card0/device/";
    files[adapter + "uevent"] = "DRIVER=bochs-drm\nPCI_ID=1234:1111\n";
    files[adapter + "resource"] = "0x00000000fd000000 0x00000000fdffffff 0x0000000000042208\n"
                                  "0x0000000000000000 0x0000000000000000 0x0000000000000000\n"
                                  "0x00000000febf0000 0x00000000febf0fff 0x0000000000040200\n";
    files["sys/firmware/dmi/tables/DMI"] = memoryDevice(2048, 7, 0);
    return machine;
}

Machine container()
{
    Machine machine;
    const std::string counts = "siblings\t: 16\ncpu cores\t: 8\n";
    machine.files["proc/cpuinfo"] = x86Processor(3, 0, 3, counts);
    machine.files["sys/devices/system/cpu/online"] = "3\n";
    return machine;
}

} // namespace captured
