/// Fields of memories that show where packets go: the rows of addresses, members of trunks and next hops.
#pragma once

#include "chip_words.h"
#include "switch.h"

namespace sim {

/// A destination as a field has it: its kind above 16 bits for its number. 0 is a port, 1 a trunk, 2 a group, 3 nowhere,
/// 4 another module, which cannot be written.

/// By row (l2_rows.h).
namespace address_memory {
bool get_mac(Switch &sw, int row, Words *value);
bool get_vlan(Switch &sw, int row, Words *value);
bool get_destination(Switch &sw, int row, Words *value);
bool get_static(Switch &sw, int row, Words *value);
bool get_hit(Switch &sw, int row, Words *value);
bool get_valid(Switch &sw, int row, Words *value);
void set(Switch &sw, int row, const Words &entry);
}  // namespace address_memory

/// Eight rows for each of the first 128 trunks: its first members.
namespace trunk_memory {
bool get_port(Switch &sw, int row, Words *value);
bool get_valid(Switch &sw, int row, Words *value);
void set(Switch &sw, int row, const Words &entry);
}  // namespace trunk_memory

/// By id of the egress object, in both memories.
namespace hop_memory {
bool get_destination(Switch &sw, int id, Words *value);
bool get_encapsulation(Switch &sw, int id, Words *value);
bool get_type(Switch &sw, int id, Words *value);
bool get_mac(Switch &sw, int id, Words *value);
void set_destination(Switch &sw, int id, const Words &value);
void set_mac(Switch &sw, int id, const Words &value);
}  // namespace hop_memory

}  // namespace sim
