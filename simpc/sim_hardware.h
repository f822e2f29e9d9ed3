// The parts of a simulated PC that a hardware probe sees. Plain data.
#pragma once

#include <QString>

#include <optional>
#include <vector>

struct SimAdapter
{
    quint32 vendorId = 0; // PCI identifiers
    quint32 deviceId = 0;
    QString name;
    quint64 memory = 0; // dedicated, in bytes
};

struct SimDirect3D
{
    quint32 result = 0;            // of every try to make a device; 0: made
    quint32 highestLevel = 0xb000; // that a device reaches, 0xb000 for 11_0
};

struct SimDriver
{
    QString manufacturer;
    quint64 version = 0; // four fields of 16 bits, the most significant first
};

struct SimDisplayDevice
{
    bool listsDrivers = true; // whether the question for its drivers succeeds
    std::vector<SimDriver> drivers;
};

struct SimHardware
{
    std::vector<SimAdapter> adapters;
    SimDirect3D direct3D;
    // Nothing: the question fails.
    std::optional<std::vector<SimDisplayDevice>> displayDevices = std::vector<SimDisplayDevice>();
};
