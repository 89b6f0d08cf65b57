/// What the tags of packets are looked up in: the tables that the rules keep, in a form for packets.
#pragma once

#include "destination.h"
#include "packet_tags.h"

#include <bcm/port.h>
#include <bcm/vlan.h>

#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

namespace sim {

class RuleStore;

using TagAction = bcm_vlan_action_set_t;

/// The IPv4 address that stands for IPv6 in the key of a subnet; its mask is 0.
constexpr bcm_ip_t ip6_mark = 0xffffffff;

/// What a type of key (bcmVlanTranslateKey*) takes of the tags.
enum class KeyPart { none, both_vlans, outer_vlan, inner_vlan, outer_tag, inner_tag, outer_priority };

/// Where it is looked up.
enum class KeyPlace { anywhere, port, port_class };

struct KeyType {
    KeyPart part;
    KeyPlace place;
};

/// `none` is the part of what is no key here.
KeyType key_type_of(int type);

/// What is looked up, with zeros for what the part leaves out.
void mask_key(KeyPart part, bcm_vlan_t &outer, bcm_vlan_t &inner);

/// Classes of a port for the field processor, which come by the functions of those that choose translations.
struct LookupClasses {
    std::uint32_t lookup = 0, ingress = 0, processing = 0;
};

class TagTables {
public:
    /// Empty.
    TagTables();

    explicit TagTables(const RuleStore &store);

    /// The names of the rules' tables that are read.
    static const std::vector<const char *> &sources();

    /// For what arrives with these tags; null if there is none, or the port does not look.
    const TagAction *translation(int port, const PacketTags &tags) const;

    /// By source address, subnet or protocol of a packet that brought no VLAN id; `by` says which.
    const TagAction *assignment(int port, ByteView frame, std::size_t payload_from, const char **by) const;

    const TagAction *translation_to_send(int port, const PacketTags &tags) const;

    /// For what has no translation.
    const TagAction *default_of(int port) const { return first(defaults_[at(port)]); }
    const TagAction *default_to_send(int port) const { return first(defaults_to_send_[at(port)]); }

    /// What all packets leave with.
    struct Forced {
        uint32 flags;  // BCM_PORT_FORCE_VLAN_*
        bcm_vlan_t vlan;
        unsigned priority;
    };
    const Forced &forced(int port) const { return forced_[at(port)]; }

    /// Controls of the VLAN family that have an effect.
    struct Controls {
        bool translates = true, translates_to_send = true;
        bool drops_missed = false, drops_found = false, drops_missed_to_send = false;
        bool by_address = true, by_subnet = true, by_protocol = true, subnet_first = false;
        std::array<int, 2> key_types = {};  // those looked up, in order; all if none is set
    };
    const Controls &controls(int port) const { return controls_[at(port)]; }

    const LookupClasses &lookup_classes(int port) const { return lookup_classes_[at(port)]; }

    /// Whether the port looks anything up on arrival, or when it sends.
    bool reads(int port) const;
    bool writes(int port) const;

private:
    struct Range {
        bcm_vlan_t outer_low, outer_high, inner_low, inner_high;  // of no VLANs: not looked at
        TagAction action;
    };
    struct Subnet {
        unsigned type;  // Ethernet type
        std::array<unsigned char, 16> address, mask;
        int length;
        TagAction action;
    };
    struct Protocol {
        int frame, type;
        TagAction action;
    };
    template <class T>
    using PerPort = std::array<T, port_max + 1>;
    using Actions = std::vector<TagAction>;  // one or none

    static std::size_t at(int port) { return static_cast<std::size_t>(port); }
    static const TagAction *first(const Actions &actions)
    {
        return actions.empty() ? nullptr : actions.data();
    }

    void add_translations(const RuleStore &store);
    void add_ranges(const RuleStore &store);
    void add_tags_of_customers(const RuleStore &store);
    void add_assignments(const RuleStore &store);
    void add_translations_to_send(const RuleStore &store);
    void add_settings(const RuleStore &store);

    const TagAction *find(int type, int port, const PacketTags &tags) const;

    std::unordered_map<std::uint64_t, TagAction> translations_, translations_to_send_;
    std::uint32_t types_anywhere_ = 0;   // of keys in use, by bit
    PerPort<std::uint32_t> types_ = {};  // the same at a port
    PerPort<std::map<bcm_vlan_t, TagAction>> by_vlan_, by_inner_vlan_, by_vlan_to_send_;
    PerPort<std::vector<Range>> ranges_, inner_ranges_;  // the narrowest first

    std::unordered_map<std::uint64_t, TagAction> by_address_;
    std::vector<Subnet> by_subnet_;  // the longest first
    PerPort<std::vector<Protocol>> by_protocol_;

    PerPort<Actions> defaults_, defaults_to_send_;
    PerPort<Forced> forced_ = {};
    PerPort<Controls> controls_;
    PerPort<std::uint32_t> classes_ = {}, classes_to_send_ = {};
    PerPort<LookupClasses> lookup_classes_;
};

}  // namespace sim
