/// What the CPU sends.
///
/// Nothing happens between calls: a packet has left when the call returns, and who asked to be told has been told by
/// then.
#include "begin.h"
#include "callers_memory.h"
#include "cpu.h"
#include "crc32.h"
#include "l2.h"
#include "packets.h"
#include "sim_tx.h"
#include "vlan.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

using namespace sim;

namespace {

bcm_tx_cpu_tunnel_f cpu_tunnel = nullptr;

/// Whether there is a record. What it says is not looked at.
bool is_packet(const bcm_pkt_t *packet)
{
    bcm_pkt_t copy;
    return read_callers(packet, &copy, sizeof copy);
}

/// Whether nobody is to be told, or somebody can be.
bool can_tell(bcm_pkt_cb_f told)
{
    return told == nullptr || can_be_called(told);
}

/// A packet that can be sent.
struct Outgoing {
    bcm_pkt_t *packet;
    std::vector<unsigned char> frame;
};

/// Headers of other chips, time stamps, other ways than the switch's own, and frames that break Ethernet's rules.
bool asks_for_more(const bcm_pkt_t &packet)
{
    constexpr uint32 known = BCM_PKT_F_NO_VTAG | BCM_PKT_F_TRUNK | BCM_PKT_F_ROUTED | BCM_TX_CRC_APPEND
                             | BCM_TX_CRC_REGEN | BCM_TX_CRC_NONE | BCM_TX_ETHER | BCM_TX_PRIO_INT;
    return (packet.flags & ~known) != 0 || packet.trans_ptr != nullptr || !PortSet(packet.tx_l3pbmp).empty();
}

/// Whether the bitmap has no bit but those of a unit's ports.
bool has_own_ports_only(const bcm_pbmp_t &ports)
{
    bcm_pbmp_t rest = ports;
    rest.pbits[0] = 0;
    rest.pbits[1] = 0;
    rest.pbits[2] &= ~uint32{1};
    return std::all_of(std::begin(rest.pbits), std::end(rest.pbits), [](uint32 word) { return word == 0; });
}

/// Takes off the checksum, if the data has one. BCM_E_UNAVAIL: a wrong one, which no port here can send.
int take_off_checksum(uint32 flags, std::vector<unsigned char> *frame)
{
    const uint32 kind = flags & (BCM_TX_CRC_APPEND | BCM_TX_CRC_REGEN | BCM_TX_CRC_NONE);
    if ((kind & (kind - 1)) != 0) {
        return BCM_E_PARAM;
    }
    if (kind == 0 || kind == BCM_TX_CRC_APPEND) {
        return BCM_E_NONE;
    }
    if (frame->size() < frame_header_bytes + checksum_bytes) {
        return BCM_E_PARAM;
    }
    const std::size_t size = frame->size() - checksum_bytes;
    const std::uint32_t checksum = crc32(frame->data(), size);
    if (kind == BCM_TX_CRC_NONE && std::memcmp(frame->data() + size, &checksum, checksum_bytes) != 0) {
        return BCM_E_UNAVAIL;
    }
    frame->resize(size);
    return BCM_E_NONE;
}

void put_tag(const bcm_pkt_t &packet, unsigned char *to)
{
    put_number(to, type_vlan);
    put_number(to + 2, static_cast<unsigned>(packet.vlan_pri << 13 | packet.vlan_cfi << 12 | packet.vlan));
}

/// Makes it the frame that leaves a port with tag, or arrives.
int frame_of(bcm_pkt_t *packet, std::vector<unsigned char> *frame)
{
    if (!gather(*packet, frame) || frame->size() < frame_header_bytes || !can_tell(packet->call_back)) {
        return BCM_E_PARAM;
    }
    const bool goes_to_ports = !(packet->flags & BCM_TX_ETHER);
    if (goes_to_ports && !has_own_ports_only(packet->tx_pbmp)) {
        return BCM_E_PORT;
    }
    const bool adds_tag = (packet->flags & BCM_PKT_F_NO_VTAG) && (goes_to_ports || packet->vlan != 0);
    if ((goes_to_ports && PortSet(packet->tx_pbmp).empty())
        || (adds_tag && (!VlanTable::valid(packet->vlan) || packet->vlan_pri > 7 || packet->vlan_cfi > 1))) {
        return BCM_E_PARAM;
    }
    if (asks_for_more(*packet)) {
        return BCM_E_UNAVAIL;
    }
    const int rc = take_off_checksum(packet->flags, frame);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    if (adds_tag) {
        unsigned char tag[tag_bytes];
        put_tag(*packet, tag);
        frame->insert(frame->begin() + addresses_bytes, std::begin(tag), std::end(tag));
    }
    if (frame->size() > frame_longest - checksum_bytes) {
        return BCM_E_PARAM;
    }
    frame->resize(std::max(frame->size(), frame_min - checksum_bytes));
    return BCM_E_NONE;
}

int send(Switch &sw, const Outgoing &outgoing)
{
    const bcm_pkt_t &packet = *outgoing.packet;
    const ByteView frame = {outgoing.frame.data(), outgoing.frame.size()};
    TxCounts &sent = cpu_of(sw).sent;
    if (packet.flags & BCM_TX_ETHER) {
        ++sent.forwarded;
        return forward_from_cpu(sw, frame);
    }
    ++sent.to_ports;
    return send_from_cpu(sw, frame, PortSet(packet.tx_pbmp), PortSet(packet.tx_upbmp));
}

/// All of them, or none if one cannot be sent; then tells who asked for it, in order.
int send_all(int unit, const std::vector<bcm_pkt_t *> &packets, bcm_pkt_cb_f all_done, void *cookie)
{
    return begin(unit, ready<L2State>).then([&](Switch &sw, L2State &) -> int {
        if (!can_tell(all_done)) {
            return BCM_E_PARAM;
        }
        std::vector<Outgoing> all(packets.size());
        for (std::size_t i = 0; i < packets.size(); ++i) {
            all[i].packet = packets[i];
            const int rc =
                is_packet(packets[i]) ? frame_of(packets[i], &all[i].frame) : static_cast<int>(BCM_E_PARAM);
            if (rc != BCM_E_NONE) {
                ++cpu_of(sw).sent.refused;
                return rc;
            }
        }
        int status = BCM_E_NONE;
        for (const Outgoing &one : all) {
            // Who saw the one before may have done anything.
            if (attached(unit) != &sw) {
                return BCM_E_UNIT;
            }
            const int rc = send(sw, one);
            status = status == BCM_E_NONE ? rc : status;
            if (one.packet->call_back != nullptr) {
                one.packet->call_back(
                    unit, one.packet,
                    all_done == nullptr && packets.size() == 1 ? cookie : one.packet->cookie);
            }
        }
        if (all_done != nullptr) {
            all_done(unit, packets.front(), cookie);
        }
        return status;
    });
}

}  // namespace

extern "C" {

int sim_bcm_tx_init(int unit)
{
    return begin(unit).then([](Switch &sw) { cpu_of(sw).sent = {}; });
}

int sim_bcm_tx(int unit, bcm_pkt_t *tx_pkt, void *cookie)
{
    return send_all(unit, {tx_pkt}, nullptr, cookie);
}

int sim_bcm_tx_array(int unit, bcm_pkt_t **pkt, int count, bcm_pkt_cb_f all_done_cb, void *cookie)
{
    return begin(unit, given(pkt)).then([&]() -> int {
        constexpr int packets_max = 65536;
        if (count < 1 || count > packets_max) {
            return BCM_E_PARAM;
        }
        std::vector<bcm_pkt_t *> packets(static_cast<std::size_t>(count));
        return read_callers(pkt, packets.data(), packets.size() * sizeof *pkt)
                   ? send_all(unit, packets, all_done_cb, cookie)
                   : static_cast<int>(BCM_E_PARAM);
    });
}

int sim_bcm_tx_list(int unit, bcm_pkt_t *pkt, bcm_pkt_cb_f all_done_cb, void *cookie)
{
    return begin(unit, given(pkt)).then([&]() -> int {
        std::vector<bcm_pkt_t *> packets;
        for (bcm_pkt_t *one = pkt; one != nullptr; one = one->next) {
            // A list that leads back into itself, or nowhere.
            if (!is_packet(one) || std::find(packets.begin(), packets.end(), one) != packets.end()) {
                return BCM_E_PARAM;
            }
            packets.push_back(one);
        }
        return send_all(unit, packets, all_done_cb, cookie);
    });
}

int sim_bcm_tx_pkt_setup(int unit, bcm_pkt_t *tx_pkt)
{
    return begin(unit, given(tx_pkt)).then([&]() -> int {
        std::vector<unsigned char> frame;
        const int rc = frame_of(tx_pkt, &frame);
        if (rc == BCM_E_NONE) {
            put_tag(*tx_pkt, tx_pkt->_vtag);
        }
        return rc;
    });
}

int sim_bcm_tx_pkt_l2_map(int unit, bcm_pkt_t *pkt, bcm_mac_t dest_mac, bcm_vlan_t vid)
{
    return begin(unit, ready<L2State>, given(pkt, dest_mac), existing_vlan(vid))
        .then([&](Switch &sw, L2State &l2, const Vlan &vlan) -> int {
            const std::size_t position = l2.addresses.find(l2_key(dest_mac, vid));
            Destination to = {};
            PortSet ports;
            pkt->dest_mod = own_module;
            pkt->dest_port = -1;
            if (position == L2Table::none) {
                ports = PortSet(vlan.members);
            } else if (l2_destination(l2.addresses, position, &to) != BCM_E_NONE) {
                return BCM_E_NOT_FOUND;
            } else if (to.kind == Destination::Kind::port) {
                pkt->dest_mod = to.module;
                pkt->dest_port = to.id;
                ports = is_own_port(to) ? PortSet::one(to.id) : PortSet();
            } else if (to.kind == Destination::Kind::trunk) {
                const SendingTrunk *trunk = trunks_of(sw).ports().find(to.id);
                const PortSet able = trunk != nullptr ? trunk->senders & linked_ports(sw) : PortSet();
                ports = able.empty() ? able : PortSet::one(able.lowest());
                pkt->dest_port = able.empty() ? -1 : able.lowest();
            } else if (to.kind == Destination::Kind::group) {
                const auto line = l2.multicast.find(to.id);
                ports = line != l2.multicast.end() ? PortSet(line->second) : PortSet();
            }
            ports.remove(cpu_port);
            pkt->tx_pbmp = {};
            ports.each([&](int port) { BCM_PBMP_PORT_ADD(pkt->tx_pbmp, port); });
            pkt->tx_upbmp = {};
            (ports & PortSet(vlan.untagged)).each([&](int port) { BCM_PBMP_PORT_ADD(pkt->tx_upbmp, port); });
            return BCM_E_NONE;
        });
}

int sim_bcm_tx_cpu_tunnel_get(bcm_tx_cpu_tunnel_f *f)
{
    const UnitsLock lock;
    if (f == nullptr) {
        return BCM_E_PARAM;
    }
    *f = cpu_tunnel;
    return BCM_E_NONE;
}

int sim_bcm_tx_cpu_tunnel_set(bcm_tx_cpu_tunnel_f f)
{
    const UnitsLock lock;
    cpu_tunnel = f;
    return BCM_E_NONE;
}

int sim_bcm_tx_cpu_tunnel(bcm_pkt_t *pkt, int dest_unit, int remote_port, uint32 flags,
                          bcm_cpu_tunnel_mode_t mode)
{
    const UnitsLock lock;
    if (dest_unit < 0 || dest_unit >= unit_max) {
        return BCM_E_UNIT;
    }
    return pkt == nullptr          ? static_cast<int>(BCM_E_PARAM)
           : cpu_tunnel == nullptr ? static_cast<int>(BCM_E_UNAVAIL)
                                   : cpu_tunnel(pkt, dest_unit, remote_port, flags, mode);
}

int sim_bcm_tx_show(int unit)
{
    return begin(unit).then([&](Switch &sw) {
        const TxCounts &sent = cpu_of(sw).sent;
        std::printf(
            "the CPU of unit %d sent %llu packets to be forwarded and %llu to ports; %llu were refused\n",
            unit, static_cast<unsigned long long>(sent.forwarded),
            static_cast<unsigned long long>(sent.to_ports), static_cast<unsigned long long>(sent.refused));
    });
}

}  // extern "C"
