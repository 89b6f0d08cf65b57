/// Data qualifiers: bytes that no named qualifier reaches, by where they are in the packet.
#pragma once

#include "field_key.h"
#include "field_qualifier.h"

#include <bcm/field_types.h>

#include <map>
#include <string>
#include <vector>

namespace sim {

constexpr int field_data_longest = 16;      // bytes
constexpr int field_data_offset_max = 127;  // bytes

struct FieldDataQualifier {
    bcm_field_data_qualifier_t settings = {};
    std::string name;
    unsigned word;  ///< the first of its words in the key, of those for data
    // The packets for which it holds; all if nothing is said.
    std::vector<bcm_field_data_ethertype_t> types;
    std::vector<bcm_field_data_ip_protocol_t> protocols;
    std::vector<bcm_field_data_packet_format_t> formats;

    unsigned words() const { return (static_cast<unsigned>(settings.length) + 7) / 8; }
};

using FieldDataQualifiers = std::map<int, FieldDataQualifier>;

/// What an entry asks of one.
struct FieldData {
    std::string value, mask;
};

/// That the packet has the bytes, as far as the mask says.
void add_to_pattern(const FieldDataQualifier &qualifier, const FieldData &data, FieldPattern &pattern);

/// Puts the bytes of all that hold for the packet. After all headers.
void put_data(const FieldDataQualifiers &qualifiers, ByteView frame, FieldKey &key);

}  // namespace sim
