// The fifteen questions of the inventory: the expression for PowerShell, and where the platform's own inventory has the
// answer.
#pragma once

#include "platform/HardwareInventory.h"

#include <string>

struct InventoryQuery
{
    const char *expression;
    std::string platform::HardwareInventory::*own;
};

namespace queries {

using Own = platform::HardwareInventory;

constexpr InventoryQuery kProcessorName{
    "(Get-CimInstance Win32_Processor | Select-Object -First 1 -ExpandProperty Name)",
    &Own::processorName};
constexpr InventoryQuery kProcessorManufacturer{
    "(Get-CimInstance Win32_Processor | Select-Object -First 1 -ExpandProperty Manufacturer)",
    &Own::processorManufacturer};
constexpr InventoryQuery kProcessorCores{
    "(Get-CimInstance Win32_Processor | Select-Object -First 1 -ExpandProperty NumberOfCores)",
    &Own::processorCores};
constexpr InventoryQuery kProcessorThreads{
    "(Get-CimInstance Win32_Processor | Select-Object -First 1 -ExpandProperty "
    "NumberOfLogicalProcessors)",
    &Own::processorThreads};
constexpr InventoryQuery kProcessorMaxClock{
    "(Get-CimInstance Win32_Processor | Select-Object -First 1 -ExpandProperty MaxClockSpeed)",
    &Own::processorMaxClock};

constexpr InventoryQuery kGraphicsName{
    "(Get-CimInstance Win32_VideoController | Select-Object -First 1 -ExpandProperty Name)",
    &Own::graphicsName};
constexpr InventoryQuery kGraphicsMemory{
    "(Get-CimInstance Win32_VideoController | Select-Object -First 1 -ExpandProperty AdapterRAM)",
    &Own::graphicsMemory};
constexpr InventoryQuery kGraphicsDriver{
    "(Get-CimInstance Win32_VideoController | Select-Object -First 1 -ExpandProperty "
    "DriverVersion)",
    &Own::graphicsDriver};

constexpr InventoryQuery kMemoryTotal{
    "(Get-CimInstance Win32_ComputerSystem | Select-Object -First 1 -ExpandProperty "
    "TotalPhysicalMemory)",
    &Own::memoryTotal};
constexpr InventoryQuery kMemoryAvailable{
    "[int64](Get-CimInstance Win32_OperatingSystem | Select-Object -First 1 -ExpandProperty "
    "FreePhysicalMemory) * 1024",
    &Own::memoryAvailable};
constexpr InventoryQuery kMemorySpeed{
    "(Get-CimInstance Win32_PhysicalMemory | Select-Object -First 1 -ExpandProperty Speed)",
    &Own::memorySpeed};
constexpr InventoryQuery kMemoryType{
    "(Get-CimInstance Win32_PhysicalMemory | Select-Object -First 1 -ExpandProperty "
    "SMBIOSMemoryType)",
    &Own::memoryType};

constexpr InventoryQuery kBoardManufacturer{
    "(Get-CimInstance Win32_BaseBoard | Select-Object -First 1 -ExpandProperty Manufacturer)",
    &Own::boardManufacturer};
constexpr InventoryQuery kBoardProduct{
    "(Get-CimInstance Win32_BaseBoard | Select-Object -First 1 -ExpandProperty Product)",
    &Own::boardProduct};
constexpr InventoryQuery kBoardSerial{
    "(Get-CimInstance Win32_BaseBoard | Select-Object -First 1 -ExpandProperty SerialNumber)",
    &Own::boardSerial};

} // namespace queries
