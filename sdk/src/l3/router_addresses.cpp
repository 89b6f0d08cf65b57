#include "router_addresses.h"

#include "vlan.h"

#include <algorithm>

namespace sim {

void RouterAddresses::work_out(const L3Objects &objects, const VirtualRouters &virtual_routers)
{
    const auto &[ip4, ip6] = virtual_routers.of_version;
    std::size_t slots = 16;
    while (slots < 2 * (objects.interfaces.size() + ip4.size() + ip6.size())) {
        slots *= 2;
    }
    std::vector<Slot>(slots).swap(slots_);
    mask_ = slots - 1;
    of_vlans_.assign(objects.interfaces.empty() ? 0 : VlanTable::id_max + 1, nullptr);
    for (const auto &[id, interface] : objects.interfaces) {
        const bcm_l3_intf_t &record = interface.record;
        if (of_vlans_[record.l3a_vid] == nullptr) {
            of_vlans_[record.l3a_vid] = &interface;
        }
        static constexpr unsigned char no_address[address_bytes] = {};
        if (!std::equal(no_address, no_address + address_bytes, record.l3a_mac_addr)) {
            add(l2_key(record.l3a_mac_addr, record.l3a_vid),
                {takes_ip4 | takes_ip6 | takes_rest, &interface});
        }
    }
    for (unsigned version = 0; version < 2; ++version) {
        for (const auto &[vid, number] : virtual_routers.of_version[version]) {
            // The addresses that the standard gives to virtual routers.
            const unsigned char mac[] = {
                0, 0, 0x5e, 0, static_cast<unsigned char>(1 + version), static_cast<unsigned char>(number)};
            add(l2_key(mac, vid), {(version == 0 ? takes_ip4 : takes_ip6) | takes_rest, of_vlan(vid)});
        }
    }
}

void RouterAddresses::add(L2Key key, const Match &match)
{
    std::size_t slot = home(key);
    while (slots_[slot].key != 0 && slots_[slot].key != key) {
        slot = (slot + 1) & mask_;
    }
    if (slots_[slot].key == 0) {  // else an interface has it
        slots_[slot] = {key, match};
    }
}

}  // namespace sim
