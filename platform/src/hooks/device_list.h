// The chip devices found and added, by unit number.
#pragma once

#include "quorel_api/integers.h"

#include <string>
#include <vector>

/// As many units as the SDK can attach.
constexpr int unit_max = 16;

/// The identities of chips whose registers cannot be asked.
constexpr U32 sand_device_id = 0x4a10, sand_revision_id = 0x11;
constexpr U32 fabric_device_id = 0x4a20, fabric_revision_id = 0x02;

struct PciAddress {
    unsigned int domain, bus, slot, function;

    bool isValid() const { return slot <= 31 && function <= 7; }
    std::string text() const;
};

bool operator==(const PciAddress &a, const PciAddress &b);

struct Device {
    PciAddress address;
    U32 deviceId, revisionId;
    bool mapped;
    bool fake = false;  ///< no hardware behind it
};

class DeviceList {
public:
    /// The board's own chip alone.
    DeviceList() { clear(); }
    void clear();

    int size() const { return static_cast<int>(devices_.size()); }

    /// Null if there is no such unit.
    Device *at(int unit);

    /// The unit, or BCM_E_PARAM, BCM_E_EXISTS, BCM_E_FULL.
    int add(const Device &device);

    /// BCM_E_NONE, BCM_E_UNIT, BCM_E_PARAM, BCM_E_EXISTS.
    int move(int unit, const PciAddress &address);

private:
    const Device *find(const PciAddress &address) const;

    std::vector<Device> devices_;
};

DeviceList &deviceList();
