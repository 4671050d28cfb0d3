#include "platform/linux/InventoryReaders.h"
#include "platform/linux/InventoryText.h"
#include "platform/linux/SystemTree.h"

namespace platform::inventory {

namespace {

constexpr const char *kFirmware = "sys/class/dmi/id/";
constexpr const char *kDeviceTree = "sys/firmware/devicetree/base/";

// "raspberrypi,4-model-b" leads with the maker.
std::string makerIn(const std::string &compatible)
{
    const auto comma = compatible.find(',');
    return comma == std::string::npos ? std::string() : cleanLine(compatible.substr(0, comma));
}

} // namespace

// Boards without such firmware describe themselves in a device tree.
void readBoard(const SystemTree &tree, HardwareInventory &inventory)
{
    const std::string firmware = kFirmware;
    inventory.boardManufacturer = tree.line(firmware + "board_vendor");
    inventory.boardProduct = tree.line(firmware + "board_name");
    inventory.boardSerial = tree.line(firmware + "board_serial"); // for the administrator only
    if (!inventory.boardManufacturer.empty() || !inventory.boardProduct.empty()) {
        return;
    }
    const std::string device = kDeviceTree;
    inventory.boardManufacturer = makerIn(tree.line(device + "compatible"));
    inventory.boardProduct = tree.line(device + "model");
    inventory.boardSerial = tree.line(device + "serial-number");
}

} // namespace platform::inventory
