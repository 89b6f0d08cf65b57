/// What each qualifier is compared with, as data; and how values that an entry was given become a row of words.
#pragma once

#include "field_key.h"

#include <bcm/field_qualifiers.h>

#include <cstdint>
#include <map>
#include <string>

namespace sim {

/// Where packets meet entries.
enum class FieldStage : std::uint8_t {
    lookup,   ///< before the packet has a VLAN
    ingress,  ///< when it is known where it goes
    egress,   ///< for each copy, as it leaves
    count
};

constexpr std::size_t field_stages = static_cast<std::size_t>(FieldStage::count);

/// How the values of a qualifier stand for a place. Where there are two, the second is the mask.
enum class FieldLayout : std::uint8_t {
    number,         ///< as wide as the place, or one bit of it, or a MAC address; one value or two
    ip6,            ///< two words
    ip6_upper,      ///< the first eight bytes of an address
    ip6_lower,      ///< the last
    choice,         ///< the number of a bit; one value
    choices,        ///< a set of bits, of which the packet has one in the place
    ports,          ///< a bitmap, of which a port in the mask has to be in the value
    port,           ///< a gport of a port of the unit; one value
    module,         ///< a gport of a module, whose port does not count; one value
    module_number,  ///< of a module, and its mask
    gport,          ///< the same, or of a trunk
    module_port,    ///< module and its mask, port and its mask
    two_numbers,    ///< the upper and the lower half, then their masks
    snap,           ///< the members of a header
    payload,        ///< as many bytes as the caller said, from the first on
};

struct FieldQualifier {
    bcm_field_qualify_t qualifier;
    FieldLayout layout;
    FieldPlace place;
    FieldHeader header;
    std::uint8_t stages;  ///< a bit for each FieldStage that knows it
};

/// Null for what no packet has in this switch.
const FieldQualifier *field_qualifier(int qualifier);

/// What an entry is compared with.
struct FieldPattern {
    FieldKey value, mask;  ///< the headers of `value` are those that a packet has to have
    bool matches_none = false;

    void require(FieldPlace place, FieldWord number, FieldWord mask_bits);
    bool matches(const FieldKey &key) const;

    /// Whether packets have to be read further than most.
    bool looks_further() const;

    /// Whether one of those bits counts.
    bool asks_for(FieldPlace place) const { return mask.get(place) != 0; }
};

/// The values of a qualifier as the caller gave them, one behind another.
struct FieldValues {
    std::string bytes;
    unsigned count;

    /// Bytes of each, where all have as many.
    std::size_t size() const { return bytes.size() / count; }
};

/// What values are for: a qualifier, and of some that ask of several things, of which, as the caller said it: the
/// priority of a group, a set of ports.
struct FieldSubject {
    int qualifier;
    std::string of;

    bool operator<(const FieldSubject &other) const
    {
        return qualifier != other.qualifier ? qualifier < other.qualifier : of < other.of;
    }
};

/// The qualifiers of an entry.
using FieldQualified = std::map<FieldSubject, FieldValues>;

/// Adds what the values ask for. BCM_E_PARAM: a value is wider than the place; BCM_E_PORT.
int add_to_pattern(const FieldQualifier &qualifier, const FieldValues &values, FieldPattern &pattern);

/// The name, without what all have in common; "?" for what is none.
std::string field_qualifier_name(int qualifier);

}  // namespace sim
