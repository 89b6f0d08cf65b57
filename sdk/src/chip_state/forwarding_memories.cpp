#include "forwarding_memories.h"

#include "l2.h"
#include "l2_destination.h"
#include "l3.h"
#include "sim_l2.h"
#include "sim_l3.h"
#include "sim_trunk.h"
#include "vlan.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace sim {

namespace {

uint64 number_in(const Words &entry, int memory, soc_field_t field)
{
    return low_64(field_of(entry, *memory_at(memory)->layout.find(field)));
}

constexpr unsigned id_bits = 16;
constexpr uint64 id_mask = (1u << id_bits) - 1;

enum class Code : unsigned { port, trunk, group, nowhere, elsewhere };

constexpr uint64 code(Code kind, uint64 id)
{
    return static_cast<uint64>(kind) << id_bits | (id & id_mask);
}

uint64 code_of(const Destination &to)
{
    const bool is_elsewhere = to.kind == Destination::Kind::port && !is_own_port(to);
    return code(is_elsewhere ? Code::elsewhere : static_cast<Code>(to.kind), static_cast<uint64>(to.id));
}

/// False if the unit has no such place.
bool decode(uint64 coded, Destination *to)
{
    const auto kind = static_cast<Code>(coded >> id_bits);
    const int id = static_cast<int>(coded & id_mask);
    *to = {static_cast<Destination::Kind>(kind), 0, kind == Code::nowhere ? 0 : id};
    return kind == Code::port    ? id <= port_max
           : kind == Code::trunk ? id <= BCM_TRUNK_MAX
                                 : kind <= Code::nowhere;
}

/// An address as a number, its first byte highest: as the table's key has it above the VLAN.
constexpr unsigned vlan_bits = 16;

uint64 number_of(const unsigned char *mac)
{
    return l2_key(mac, 0) >> vlan_bits;
}

}  // namespace

namespace address_memory {

namespace {

constexpr uint32 hit_flags = BCM_L2_SRC_HIT | BCM_L2_DES_HIT;

/// False if the row is free.
bool read(Switch &sw, int row, bcm_l2_addr_t *address)
{
    L2State &l2 = l2_of(sw);
    const std::size_t position = l2.rows.position(l2.addresses, static_cast<std::size_t>(row));
    if (position != L2Table::none) {
        *address = l2.addresses.record(position);
    }
    return position != L2Table::none;
}

/// part(address) of the row's.
template <class Part>
bool get(Switch &sw, int row, Words *value, Part part)
{
    bcm_l2_addr_t address;
    const bool is_there = read(sw, row, &address);
    if (is_there) {
        *value = words_of(static_cast<uint64>(part(address)));
    }
    return is_there;
}

}  // namespace

bool get_mac(Switch &sw, int row, Words *value)
{
    return get(sw, row, value, [](const bcm_l2_addr_t &address) { return number_of(address.mac); });
}

bool get_vlan(Switch &sw, int row, Words *value)
{
    return get(sw, row, value, [](const bcm_l2_addr_t &address) { return address.vid; });
}

bool get_destination(Switch &sw, int row, Words *value)
{
    return get(sw, row, value, [](const bcm_l2_addr_t &address) {
        Destination to;
        return resolve_address(address, &to) == BCM_E_NONE ? code_of(to) : code(Code::elsewhere, 0);
    });
}

bool get_static(Switch &sw, int row, Words *value)
{
    return get(sw, row, value,
               [](const bcm_l2_addr_t &address) { return (address.flags & BCM_L2_STATIC) != 0; });
}

bool get_hit(Switch &sw, int row, Words *value)
{
    return get(sw, row, value, [](const bcm_l2_addr_t &address) { return (address.flags & hit_flags) != 0; });
}

bool get_valid(Switch &sw, int row, Words *value)
{
    return get(sw, row, value, [](const bcm_l2_addr_t &) { return 1; });
}

/// The row's address goes, becomes another, or comes. One that cannot be changes nothing.
void set(Switch &sw, int row, const Words &entry)
{
    const auto of = [&](soc_field_t field) { return number_in(entry, IHP_MAC_TABLEm, field); };
    bcm_l2_addr_t before = {};
    const bool was_there = read(sw, row, &before);
    bcm_l2_addr_t address = before;
    split_l2_key(of(ADDRESSf) << vlan_bits | of(VSIf), address.mac, &address.vid);
    address.flags &= ~(hit_flags | uint32{BCM_L2_STATIC});
    address.flags |= (of(STATICf) != 0 ? uint32{BCM_L2_STATIC} : 0) | (of(HITf) != 0 ? hit_flags : 0);
    Destination to;
    const bool is_valid = of(VALIDf) != 0;
    if (is_valid && (!decode(of(DESTINATIONf), &to) || !vlans_of(sw).has(address.vid))) {
        return;
    }
    const L2Key key = l2_key(address.mac, address.vid);
    if (was_there && (!is_valid || key != l2_key(before.mac, before.vid))) {
        sim_bcm_l2_addr_delete(sw.unit, before.mac, before.vid);
    }
    if (is_valid) {
        set_destination(&address, to);
        L2State &l2 = l2_of(sw);
        // Who is told of addresses may have had the unit detached.
        const int unit = sw.unit;
        if (sim_bcm_l2_addr_add(unit, &address) == BCM_E_NONE && attached(unit) == &sw
            && l2.addresses.find(key) != L2Table::none) {
            l2.rows.put(l2.addresses, key, static_cast<std::size_t>(row));
        }
    }
}

}  // namespace address_memory

namespace trunk_memory {

namespace {

constexpr int members_shown = 8;

/// Null if there is none.
const Trunk *trunk_at(Switch &sw, int row)
{
    const auto &trunks = std::as_const(trunks_of(sw)).trunks();
    const auto found = trunks.find(row / members_shown);
    return found != trunks.end() ? &found->second : nullptr;
}

/// False if it has fewer members than that.
bool read(Switch &sw, int row, bcm_trunk_member_t *member)
{
    const Trunk *trunk = trunk_at(sw, row);
    const auto number = static_cast<std::size_t>(row % members_shown);
    const bool is_there = trunk != nullptr && number < trunk->members.size();
    if (is_there) {
        *member = trunk->members[number];
    }
    return is_there;
}

}  // namespace

bool get_port(Switch &sw, int row, Words *value)
{
    bcm_trunk_member_t member;
    Destination to;
    const bool is_there =
        read(sw, row, &member) && resolve(own_module, member.gport, &to) == BCM_E_NONE && is_own_port(to);
    if (is_there) {
        *value = words_of(static_cast<uint64>(to.id));
    }
    return is_there;
}

bool get_valid(Switch &sw, int row, Words *value)
{
    bcm_trunk_member_t member;
    *value = words_of(read(sw, row, &member));
    return trunk_at(sw, row) != nullptr;
}

/// The trunk's member becomes another or goes, and those behind it move up; or one more comes, behind all others.
void set(Switch &sw, int row, const Words &entry)
{
    const Trunk *trunk = trunk_at(sw, row);
    const uint64 port = number_in(entry, IHB_LAG_MEMBERm, SYSTEM_PORTf);
    const bool is_valid = number_in(entry, IHB_LAG_MEMBERm, VALIDf) != 0;
    if (trunk == nullptr || (is_valid && port > port_max)) {
        return;
    }
    std::vector<bcm_trunk_member_t> members = trunk->members;
    const auto number = static_cast<std::size_t>(row % members_shown);
    if (number < members.size() && !is_valid) {
        members.erase(members.begin() + static_cast<std::ptrdiff_t>(number));
    } else if (is_valid) {
        bcm_trunk_member_t member = number < members.size() ? members[number] : bcm_trunk_member_t{};
        BCM_GPORT_LOCAL_SET(member.gport, static_cast<int>(port));
        if (number < members.size()) {
            members[number] = member;
        } else {
            members.push_back(member);
        }
    }
    bcm_trunk_info_t info = trunk->info;
    sim_bcm_trunk_set(sw.unit, row / members_shown, &info, static_cast<int>(members.size()), members.data());
}

}  // namespace trunk_memory

namespace hop_memory {

namespace {

/// What an egress object is made of, and its place where it is made again; null if there is none.
const L3Egress *object_of(Switch &sw, int id)
{
    return l3_of(sw).objects.egress_object(id);
}

void replace(Switch &sw, int id, bcm_l3_egress_t record)
{
    bcm_if_t same = id;
    sim_bcm_l3_egress_create(sw.unit, BCM_L3_REPLACE | BCM_L3_WITH_ID, &record, &same);
}

}  // namespace

bool get_destination(Switch &sw, int id, Words *value)
{
    const L3Egress *object = object_of(sw, id);
    if (object != nullptr) {
        const bool is_discard = object->record.flags & BCM_L3_DST_DISCARD;
        *value = words_of(is_discard ? code(Code::nowhere, 0) : code_of(object->hop.to));
    }
    return object != nullptr;
}

bool get_encapsulation(Switch &sw, int id, Words *value)
{
    *value = words_of(static_cast<uint64>(id));
    return object_of(sw, id) != nullptr;
}

bool get_type(Switch &sw, int id, Words *value)
{
    *value = words_of(1);  // Ethernet
    return object_of(sw, id) != nullptr;
}

bool get_mac(Switch &sw, int id, Words *value)
{
    const L3Egress *object = object_of(sw, id);
    if (object != nullptr) {
        *value = words_of(number_of(object->record.mac_addr));
    }
    return object != nullptr;
}

void set_destination(Switch &sw, int id, const Words &value)
{
    const L3Egress *object = object_of(sw, id);
    Destination to;
    if (object == nullptr || !decode(value[0], &to) || to.kind == Destination::Kind::group) {
        return;
    }
    bcm_l3_egress_t record = object->record;
    record.flags &= ~uint32{BCM_L3_TGID | BCM_L3_DST_DISCARD};
    if (to.kind == Destination::Kind::discard) {
        record.flags |= BCM_L3_DST_DISCARD;
    } else if (to.kind == Destination::Kind::trunk) {
        record.flags |= BCM_L3_TGID;
        record.trunk = to.id;
    } else {
        record.module = own_module;
        record.port = to.id;
    }
    replace(sw, id, record);
}

void set_mac(Switch &sw, int id, const Words &value)
{
    if (const L3Egress *object = object_of(sw, id)) {
        bcm_l3_egress_t record = object->record;
        bcm_vlan_t none;
        split_l2_key(low_64(value) << vlan_bits, record.mac_addr, &none);
        replace(sw, id, record);
    }
}

}  // namespace hop_memory

}  // namespace sim
