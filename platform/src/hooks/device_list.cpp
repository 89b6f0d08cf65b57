#include "device_list.h"

#include "vey/string8.h"

#include <algorithm>
#include <tuple>

extern "C" {
#include <bcm/error.h>
}

namespace {

constexpr PciAddress own_chip = {0, 1, 0, 0};

}  // namespace

std::string PciAddress::text() const
{
    return Vey::format("%04x:%02x:%02x.%x", domain, bus, slot, function).data();
}

bool operator==(const PciAddress &a, const PciAddress &b)
{
    return std::tie(a.domain, a.bus, a.slot, a.function) == std::tie(b.domain, b.bus, b.slot, b.function);
}

void DeviceList::clear()
{
    devices_ = {Device{own_chip, sand_device_id, sand_revision_id, true}};
}

Device *DeviceList::at(int unit)
{
    return unit >= 0 && unit < size() ? &devices_[static_cast<std::size_t>(unit)] : nullptr;
}

const Device *DeviceList::find(const PciAddress &address) const
{
    auto found = std::find_if(devices_.begin(), devices_.end(),
                              [&](const Device &device) { return device.address == address; });
    return found == devices_.end() ? nullptr : &*found;
}

int DeviceList::add(const Device &device)
{
    if (!device.address.isValid()) {
        return BCM_E_PARAM;
    }
    if (find(device.address)) {
        return BCM_E_EXISTS;
    }
    if (size() == unit_max) {
        return BCM_E_FULL;
    }
    devices_.push_back(device);
    return size() - 1;
}

int DeviceList::move(int unit, const PciAddress &address)
{
    Device *device = at(unit);
    if (!device) {
        return BCM_E_UNIT;
    }
    if (!address.isValid()) {
        return BCM_E_PARAM;
    }
    const Device *there = find(address);
    if (there && there != device) {
        return BCM_E_EXISTS;
    }
    device->address = address;
    return BCM_E_NONE;
}

DeviceList &deviceList()
{
    static DeviceList &list = *new DeviceList;
    return list;
}
