/// What memories of the chip show: VLANs by their id, ports and spanning tree groups by their number, and where packets
/// go.
#include "chip_state.h"

#include "forwarding_memories.h"
#include "l2.h"
#include "port.h"
#include "sim_stg.h"
#include "sim_vlan.h"
#include "vlan.h"

#include <iterator>

namespace sim {

namespace {

constexpr int word_bits = 32;
constexpr int state_bits = 2;  // of a port in a spanning tree group

bool bit(const Words &words, int number)
{
    return words[static_cast<std::size_t>(number / word_bits)] >> number % word_bits & 1;
}

void put_bit(Words *words, int number)
{
    (*words)[static_cast<std::size_t>(number / word_bits)] |= uint32{1} << number % word_bits;
}

const Vlan *vlan_at(Switch &sw, int vid)
{
    return vlans_of(sw).has(vid) ? &vlans_of(sw).at(static_cast<bcm_vlan_t>(vid)) : nullptr;
}

// Bit n of the members is port n, the CPU among them; bit n of the untagged ones is port n + 1.

bool get_members(Switch &sw, int vid, Words *value)
{
    const Vlan *vlan = vlan_at(sw, vid);
    if (vlan != nullptr) {
        PortSet(vlan->members).each([&](int port) { put_bit(value, port); });
    }
    return vlan != nullptr;
}

bool get_untagged(Switch &sw, int vid, Words *value)
{
    const Vlan *vlan = vlan_at(sw, vid);
    if (vlan != nullptr) {
        PortSet untagged(vlan->untagged);
        untagged.remove(cpu_port);
        untagged.each([&](int port) { put_bit(value, port - 1); });
    }
    return vlan != nullptr;
}

/// The bitmap's ports become members, or go. Who stays keeps its tag or has none.
void set_members(Switch &sw, int vid, const Words &value)
{
    const Vlan *vlan = vlan_at(sw, vid);
    if (vlan == nullptr) {
        return;
    }
    bcm_pbmp_t added = {}, removed = {};
    const bcm_pbmp_t none = {};
    for (int port = 0; port <= port_max; ++port) {
        const bool is_member = BCM_PBMP_MEMBER(vlan->members, port);
        if (bit(value, port) && !is_member) {
            BCM_PBMP_PORT_ADD(added, port);
        } else if (!bit(value, port) && is_member) {
            BCM_PBMP_PORT_ADD(removed, port);
        }
    }
    const auto id = static_cast<bcm_vlan_t>(vid);
    sim_bcm_vlan_port_remove(sw.unit, id, removed);
    sim_bcm_vlan_port_add(sw.unit, id, added, none);
}

/// Of the members only.
void set_untagged(Switch &sw, int vid, const Words &value)
{
    const Vlan *vlan = vlan_at(sw, vid);
    if (vlan == nullptr) {
        return;
    }
    bcm_pbmp_t untagged = {};
    for (int port = cpu_port + 1; port <= port_max; ++port) {
        if (bit(value, port - 1) && BCM_PBMP_MEMBER(vlan->members, port)) {
            BCM_PBMP_PORT_ADD(untagged, port);
        }
    }
    if (BCM_PBMP_MEMBER(vlan->untagged, cpu_port)) {
        BCM_PBMP_PORT_ADD(untagged, cpu_port);
    }
    sim_bcm_vlan_port_add(sw.unit, static_cast<bcm_vlan_t>(vid), vlan->members, untagged);
}

bool get_exists(Switch &sw, int vid, Words *value)
{
    *value = words_of(vlan_at(sw, vid) != nullptr);
    return VlanTable::valid(vid);
}

/// The default VLAN stays.
void set_exists(Switch &sw, int vid, const Words &value)
{
    const auto id = static_cast<bcm_vlan_t>(vid);
    if (!VlanTable::valid(vid)) {
        return;
    }
    if (value[0] == 0) {
        sim_bcm_vlan_destroy(sw.unit, id);
    } else {
        sim_bcm_vlan_create(sw.unit, id);
    }
}

/// The instance of a VLAN has its number.
bool get_instance(Switch &sw, int vid, Words *value)
{
    *value = words_of(static_cast<uint64>(vid));
    return vlan_at(sw, vid) != nullptr;
}

bool get_learns(Switch &sw, int vid, Words *value)
{
    const Vlan *vlan = vlan_at(sw, vid);
    *value = words_of(vlan != nullptr && vlan->learns());
    return vlan != nullptr;
}

void set_learns(Switch &sw, int vid, const Words &value)
{
    bcm_vlan_control_vlan_t settings = {};
    const auto id = static_cast<bcm_vlan_t>(vid);
    if (sim_bcm_vlan_control_vlan_get(sw.unit, id, &settings) == BCM_E_NONE) {
        settings.flags &= ~uint32{BCM_VLAN_LEARN_DISABLE};
        settings.flags |= value[0] != 0 ? 0 : uint32{BCM_VLAN_LEARN_DISABLE};
        sim_bcm_vlan_control_vlan_set(sw.unit, id, settings);
    }
}

bool get_group(Switch &sw, int vid, Words *value)
{
    const Vlan *vlan = vlan_at(sw, vid);
    *value = words_of(vlan != nullptr ? static_cast<uint64>(vlan->group) : 0);
    return vlan != nullptr;
}

void set_group(Switch &sw, int vid, const Words &value)
{
    sim_bcm_stg_vlan_add(sw.unit, static_cast<bcm_stg_t>(value[0]), static_cast<bcm_vlan_t>(vid));
}

bool is_port(int place)
{
    return place >= cpu_port && place <= port_max;
}

bool get_default_vlan(Switch &sw, int port, Words *value)
{
    *value = words_of(is_port(port) ? port_of(sw, port).untagged_vlan : 0);
    return is_port(port);
}

void set_default_vlan(Switch &sw, int port, const Words &value)
{
    if (is_port(port) && VlanTable::valid(static_cast<int>(value[0]))) {
        port_of(sw, port).untagged_vlan = static_cast<bcm_vlan_t>(value[0]);
    }
}

template <uint32 direction>
bool get_filter(Switch &sw, int port, Words *value)
{
    *value = words_of(is_port(port) && (port_of(sw, port).vlan_filter & direction) != 0);
    return is_port(port);
}

template <uint32 direction>
void set_filter(Switch &sw, int port, const Words &value)
{
    if (is_port(port)) {
        uint32 &filter = port_of(sw, port).vlan_filter;
        filter = value[0] != 0 ? filter | direction : filter & ~direction;
    }
}

// Two bits say less than a state: 0 disabled, 1 blocking or listening, 2 learning, 3 forwarding.

constexpr uint32 codes[] = {0, 1, 1, 2, 3};
constexpr int states[] = {BCM_STG_STP_DISABLE, BCM_STG_STP_BLOCK, BCM_STG_STP_LEARN, BCM_STG_STP_FORWARD};

uint32 code_at(const Words &words, int port)
{
    return (bit(words, state_bits * port + 1) ? 2u : 0u) | (bit(words, state_bits * port) ? 1u : 0u);
}

bool get_states(Switch &sw, int group, Words *value)
{
    const StgGroup *found = groups_of(sw).find(group);
    for (int port = 0; found != nullptr && port <= port_max; ++port) {
        const uint32 code = codes[found->state(port)];
        for (int i = 0; i < state_bits; ++i) {
            if (code >> i & 1) {
                put_bit(value, state_bits * port + i);
            }
        }
    }
    return found != nullptr;
}

void set_states(Switch &sw, int group, const Words &value)
{
    Words now = {};
    if (!get_states(sw, group, &now)) {
        return;
    }
    for (int port = 0; port <= port_max; ++port) {
        const uint32 code = code_at(value, port);
        if (code != code_at(now, port)) {
            sim_bcm_stg_stp_set(sw.unit, group, port, states[code]);
        }
    }
}

constexpr uint32 ingress = BCM_PORT_VLAN_MEMBER_INGRESS;
constexpr uint32 egress = BCM_PORT_VLAN_MEMBER_EGRESS;

constexpr StateField fields[] = {
    {EGQ_VLAN_MEMBERSHIPm, MEMBERSf, get_members, set_members},
    {EGQ_VLAN_MEMBERSHIPm, UNTAGGEDf, get_untagged, set_untagged},
    {EGQ_PORT_CONFIGm, EGRESS_FILTERf, get_filter<egress>, set_filter<egress>},
    {IHB_LAG_MEMBERm, SYSTEM_PORTf, trunk_memory::get_port, nullptr, trunk_memory::set},
    {IHB_LAG_MEMBERm, VALIDf, trunk_memory::get_valid, nullptr, trunk_memory::set},
    {IHB_FEC_ENTRYm, DESTINATIONf, hop_memory::get_destination, hop_memory::set_destination},
    {IHB_FEC_ENTRYm, OUT_LIFf, hop_memory::get_encapsulation, nullptr},
    {IHP_MAC_TABLEm, ADDRESSf, address_memory::get_mac, nullptr, address_memory::set},
    {IHP_MAC_TABLEm, VSIf, address_memory::get_vlan, nullptr, address_memory::set},
    {IHP_MAC_TABLEm, DESTINATIONf, address_memory::get_destination, nullptr, address_memory::set},
    {IHP_MAC_TABLEm, STATICf, address_memory::get_static, nullptr, address_memory::set},
    {IHP_MAC_TABLEm, HITf, address_memory::get_hit, nullptr, address_memory::set},
    {IHP_MAC_TABLEm, VALIDf, address_memory::get_valid, nullptr, address_memory::set},
    {IHP_VSI_CONFIGm, LEARN_ENABLEf, get_learns, set_learns},
    {IHP_VSI_CONFIGm, STP_INSTANCEf, get_group, set_group},
    {IHP_VLAN_PORT_INFOm, DEFAULT_VLANf, get_default_vlan, set_default_vlan},
    {IHP_VLAN_PORT_INFOm, INGRESS_FILTERf, get_filter<ingress>, set_filter<ingress>},
    {IHP_VLAN_TO_VSI_MAPm, VALIDf, get_exists, set_exists},
    {IHP_VLAN_TO_VSI_MAPm, VSIf, get_instance, nullptr},
    {IHP_SPANNING_TREE_STATEm, PORT_STATEf, get_states, set_states},
    {EPE_ENCAPSULATIONm, ENCAPSULATION_TYPEf, hop_memory::get_type, nullptr},
    {EPE_ENCAPSULATIONm, ADDRESSf, hop_memory::get_mac, hop_memory::set_mac},
};
static_assert(are_in_order(fields));

}  // namespace

const StateFields memory_state = {fields, std::size(fields)};

}  // namespace sim
