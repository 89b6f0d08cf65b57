#include "field_data.h"

#include "field.h"
#include "sim_field.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace sim {

namespace {

namespace at = field_places;

/// The bytes that follow the base in a packet; none if it has no such header.
std::optional<FieldRest> rest_from(bcm_field_data_offset_base_t base, ByteView frame, const FieldKey &key)
{
    constexpr std::size_t udp_bytes = 8, icmp_bytes = 8;
    FieldRest rest = key.behind_ip;
    const auto behind = [&](FieldHeader header, std::size_t bytes) -> std::optional<FieldRest> {
        if (!key.is(header) || !rest.has(bytes)) {
            return std::nullopt;
        }
        rest.skip(bytes);
        return rest;
    };
    switch (base) {
    case bcmFieldDataOffsetBasePacketStart:
    case bcmFieldDataOffsetBaseL2Header:
        return FieldRest{frame.data, frame.size};
    case bcmFieldDataOffsetBaseOuterL3Header:
        return key.is(FieldHeader::ether_type) ? std::optional<FieldRest>(key.behind_type) : std::nullopt;
    case bcmFieldDataOffsetBaseMplsHeader:
        return key.is(FieldHeader::label1) ? std::optional<FieldRest>(key.behind_type) : std::nullopt;
    case bcmFieldDataOffsetBaseOuterL4Header:
        return rest.data != nullptr ? std::optional<FieldRest>(rest) : std::nullopt;
    case bcmFieldDataOffsetBaseTcpPayload:
        return behind(FieldHeader::tcp, std::size_t{4} * key.get(at::tcp_header));
    case bcmFieldDataOffsetBaseUdpPayload:
        return behind(FieldHeader::udp, udp_bytes);
    case bcmFieldDataOffsetBaseIcmpPayload:
        return behind(FieldHeader::icmp, icmp_bytes);
    default:
        return std::nullopt;
    }
}

bool is_base(bcm_field_data_offset_base_t base)
{
    switch (base) {
    case bcmFieldDataOffsetBasePacketStart:
    case bcmFieldDataOffsetBaseL2Header:
    case bcmFieldDataOffsetBaseOuterL3Header:
    case bcmFieldDataOffsetBaseMplsHeader:
    case bcmFieldDataOffsetBaseOuterL4Header:
    case bcmFieldDataOffsetBaseTcpPayload:
    case bcmFieldDataOffsetBaseUdpPayload:
    case bcmFieldDataOffsetBaseIcmpPayload:
        return true;
    default:
        return false;
    }
}

/// A kind, 0 for any.
bool is_of(FieldPlace place, int kind, const FieldKey &key)
{
    return kind == 0 || (key.get(place) >> kind & 1) != 0;
}

bool has_tags(bcm_field_data_vlan_tag_t tags, const FieldKey &key)
{
    const int count = key.is(FieldHeader::outer_tag) + key.is(FieldHeader::inner_tag);
    return tags == bcmFieldDataVlanTagAny || count == tags - bcmFieldDataVlanTagNone;
}

bool holds(const bcm_field_data_ethertype_t &packets, const FieldKey &key)
{
    return key.is(FieldHeader::ether_type) && key.get(at::ether_type) == packets.ethertype
           && is_of(at::l2_format, packets.l2, key) && has_tags(packets.vlan_tag, key);
}

bool holds(const bcm_field_data_ip_protocol_t &packets, const FieldKey &key)
{
    return key.is(FieldHeader::ip) && key.get(at::protocol) == packets.ip
           && is_of(at::l2_format, packets.l2, key) && has_tags(packets.vlan_tag, key);
}

bool holds(const bcm_field_data_packet_format_t &packets, const FieldKey &key)
{
    const int labels =
        key.is(FieldHeader::label1) + key.is(FieldHeader::label2) + key.is(FieldHeader::label3);
    return is_of(at::l2_format, packets.l2, key) && has_tags(packets.vlan_tag, key)
           && is_of(at::ip_type, packets.outer_ip, key) && is_of(at::inner_ip_type, packets.inner_ip, key)
           && is_of(at::tunnel_type, packets.tunnel, key) && (packets.mpls < 0 || packets.mpls == labels);
}

/// The offset for the packet; none if the qualifier does not hold for it.
std::optional<int> offset_for(const FieldDataQualifier &qualifier, const FieldKey &key)
{
    const int offset = qualifier.settings.offset;
    if (qualifier.types.empty() && qualifier.protocols.empty() && qualifier.formats.empty()) {
        return offset;
    }
    const auto among = [&](const auto &all) -> std::optional<int> {
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const auto &packets) { return holds(packets, key); });
        return found != all.end() ? std::optional<int>(offset + found->relative_offset) : std::nullopt;
    };
    std::optional<int> found = among(qualifier.types);
    found = found ? found : among(qualifier.protocols);
    return found ? found : among(qualifier.formats);
}

FieldPlace has_data(const FieldDataQualifier &qualifier)
{
    return {at::data_holds.word, static_cast<std::uint8_t>(at::data_holds.shift + qualifier.word), 1};
}

FieldPlace byte_place(const FieldDataQualifier &qualifier, std::size_t number)
{
    return at::byte_of(at::data, number + std::size_t{8} * qualifier.word);
}

}  // namespace

void add_to_pattern(const FieldDataQualifier &qualifier, const FieldData &data, FieldPattern &pattern)
{
    bool is_asked = false;
    for (std::size_t i = 0; i < data.value.size(); ++i) {
        const auto mask = static_cast<unsigned char>(data.mask[i]);
        is_asked = is_asked || mask != 0;
        pattern.require(byte_place(qualifier, i), static_cast<unsigned char>(data.value[i]), mask);
    }
    if (is_asked) {
        pattern.require(has_data(qualifier), 1, 1);
    }
}

void put_data(const FieldDataQualifiers &qualifiers, ByteView frame, FieldKey &key)
{
    for (const auto &[id, qualifier] : qualifiers) {
        const auto from = rest_from(qualifier.settings.offset_base, frame, key);
        const auto offset = from ? offset_for(qualifier, key) : std::nullopt;
        const auto length = static_cast<std::size_t>(qualifier.settings.length);
        if (!offset || *offset < 0 || !from->has(static_cast<std::size_t>(*offset) + length)) {
            continue;
        }
        key.put(has_data(qualifier), 1);
        for (std::size_t i = 0; i < length; ++i) {
            key.put(byte_place(qualifier, i), from->data[static_cast<std::size_t>(*offset) + i]);
        }
    }
}

namespace {

auto existing_data(int id)
{
    return [id](Switch &sw, auto next) -> int {
        auto &all = fields_of(sw).data_qualifiers;
        const auto found = all.find(id);
        return found != all.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

bool is_in_set(const bcm_field_qset_t &qset, int id)
{
    return has_qualifier(qset, bcmFieldQualifyCount + id);
}

bool is_used(const FieldState &state, int id)
{
    return std::any_of(state.groups.begin(), state.groups.end(),
                       [id](const auto &each) { return is_in_set(each.second.qset, id); });
}

/// The first of so many words that no other has; none if there are not so many.
std::optional<unsigned> free_words(const FieldDataQualifiers &all, unsigned count)
{
    std::array<bool, field_places::data_words> taken = {};
    for (const auto &[id, qualifier] : all) {
        std::fill_n(taken.begin() + qualifier.word, qualifier.words(), true);
    }
    for (unsigned word = 0; word + count <= taken.size(); ++word) {
        if (std::none_of(taken.begin() + word, taken.begin() + word + count,
                         [](bool each) { return each; })) {
            return word;
        }
    }
    return std::nullopt;
}

int make_data_qualifier(FieldState &state, bcm_field_data_qualifier_t &settings)
{
    const bool has_id = (settings.flags & BCM_FIELD_DATA_QUALIFIER_WITH_ID) != 0;
    const bool is_wrong = (settings.flags & ~uint32{BCM_FIELD_DATA_QUALIFIER_WITH_ID}) != 0
                          || static_cast<unsigned>(settings.offset_base) >= bcmFieldDataOffsetBaseCount
                          || static_cast<unsigned>(settings.stage) >= bcmFieldStageCount
                          || settings.offset < 0 || settings.offset > field_data_offset_max
                          || settings.length < 1 || settings.length > field_data_longest;
    int id = has_id ? settings.qual_id : 1;
    if (is_wrong || id < 0 || id >= BCM_FIELD_USER_UDF_MAX) {
        return BCM_E_PARAM;
    }
    if (!is_base(settings.offset_base)) {
        return BCM_E_UNAVAIL;
    }
    if (has_id && state.data_qualifiers.count(id) != 0) {
        return BCM_E_EXISTS;
    }
    while (!has_id && state.data_qualifiers.count(id) != 0) {
        ++id;
    }
    FieldDataQualifier made;
    made.settings = settings;
    const auto word = free_words(state.data_qualifiers, made.words());
    if (!word) {
        return BCM_E_RESOURCE;
    }
    made.word = *word;
    made.name = settings.name != nullptr ? settings.name : "";
    made.settings.qual_id = id;
    FieldDataQualifier &kept = state.data_qualifiers[id] = std::move(made);
    kept.settings.name = settings.name != nullptr ? kept.name.data() : nullptr;
    settings.qual_id = id;
    return BCM_E_NONE;
}

bool is_one(bcm_field_L2Format_t l2, bcm_field_data_vlan_tag_t tags, uint32 flags)
{
    return static_cast<unsigned>(l2) < bcmFieldL2FormatCount
           && static_cast<unsigned>(tags) <= bcmFieldDataVlanTagDouble && flags == 0;
}

/// BCM_E_PARAM: no such packets; BCM_E_UNAVAIL: none that are told from others.
int check_packets(const bcm_field_data_ethertype_t &packets)
{
    return is_one(packets.l2, packets.vlan_tag, packets.flags) ? BCM_E_NONE : BCM_E_PARAM;
}

int check_packets(const bcm_field_data_ip_protocol_t &packets)
{
    return is_one(packets.l2, packets.vlan_tag, packets.flags) ? BCM_E_NONE : BCM_E_PARAM;
}

int check_packets(const bcm_field_data_packet_format_t &packets)
{
    const bool is_right = is_one(packets.l2, packets.vlan_tag, packets.flags)
                          && static_cast<unsigned>(packets.outer_ip) < bcmFieldIpTypeCount
                          && static_cast<unsigned>(packets.inner_ip) < bcmFieldIpTypeCount
                          && static_cast<unsigned>(packets.tunnel) < bcmFieldTunnelTypeCount
                          && packets.mpls >= -1 && packets.mpls <= 3;
    const bool asks_for_more =
        packets.fibre_chan_outer != bcmFieldFibreChanAny || packets.fibre_chan_inner != bcmFieldFibreChanAny;
    return !is_right ? BCM_E_PARAM : asks_for_more ? BCM_E_UNAVAIL : BCM_E_NONE;
}

bool is_same(const bcm_field_data_ethertype_t &a, const bcm_field_data_ethertype_t &b)
{
    return a.ethertype == b.ethertype && a.l2 == b.l2 && a.vlan_tag == b.vlan_tag;
}

bool is_same(const bcm_field_data_ip_protocol_t &a, const bcm_field_data_ip_protocol_t &b)
{
    return a.ip == b.ip && a.l2 == b.l2 && a.vlan_tag == b.vlan_tag;
}

bool is_same(const bcm_field_data_packet_format_t &a, const bcm_field_data_packet_format_t &b)
{
    return a.l2 == b.l2 && a.vlan_tag == b.vlan_tag && a.outer_ip == b.outer_ip && a.inner_ip == b.inner_ip
           && a.tunnel == b.tunnel && a.mpls == b.mpls;
}

template <class Packets>
using PacketsMember = std::vector<Packets> FieldDataQualifier::*;

template <class Packets>
int add_packets(int unit, int id, const Packets *packets, PacketsMember<Packets> member)
{
    return begin(unit, ready<FieldState>, given(packets), existing_data(id))
        .then([&](FieldState &, FieldDataQualifier &found) -> int {
            auto &all = found.*member;
            const int status = check_packets(*packets);
            if (status == BCM_E_NONE && std::any_of(all.begin(), all.end(), [&](const Packets &each) {
                    return is_same(each, *packets);
                })) {
                return BCM_E_EXISTS;
            }
            if (status == BCM_E_NONE) {
                all.push_back(*packets);
            }
            return status;
        });
}

template <class Packets>
int delete_packets(int unit, int id, const Packets *packets, PacketsMember<Packets> member)
{
    return begin(unit, ready<FieldState>, given(packets), existing_data(id))
        .then([&](FieldState &, FieldDataQualifier &found) -> int {
            auto &all = found.*member;
            const auto at_place = std::find_if(all.begin(), all.end(),
                                               [&](const Packets &each) { return is_same(each, *packets); });
            if (at_place == all.end()) {
                return BCM_E_NOT_FOUND;
            }
            all.erase(at_place);
            return BCM_E_NONE;
        });
}

}  // namespace

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_data_qualifier_create(int unit, bcm_field_data_qualifier_t *data_qualifier)
{
    return begin(unit, ready<FieldState>, given(data_qualifier)).then([&](FieldState &state) {
        return make_data_qualifier(state, *data_qualifier);
    });
}

int sim_bcm_field_data_qualifier_multi_get(int unit, int max_count,
                                           bcm_field_data_qualifier_t *data_qualifier_arr, int *count)
{
    return begin(unit, ready<FieldState>, given(data_qualifier_arr, count))
        .then([&](FieldState &state) -> int {
            if (max_count < 0) {
                return BCM_E_PARAM;
            }
            int written = 0;
            for (const auto &[id, qualifier] : state.data_qualifiers) {
                if (written < max_count) {
                    data_qualifier_arr[written++] = qualifier.settings;
                }
            }
            *count = static_cast<int>(state.data_qualifiers.size());
            return BCM_E_NONE;
        });
}

int sim_bcm_field_data_qualifier_get(int unit, int qual_id, bcm_field_data_qualifier_t *data_qualifier)
{
    return begin(unit, ready<FieldState>, given(data_qualifier), existing_data(qual_id))
        .then([&](FieldState &, const FieldDataQualifier &found) { *data_qualifier = found.settings; });
}

int sim_bcm_field_data_qualifier_destroy(int unit, int qual_id)
{
    return begin(unit, ready<FieldState>, existing_data(qual_id))
        .then([&](FieldState &state, const FieldDataQualifier &) -> int {
            if (is_used(state, qual_id)) {
                return BCM_E_BUSY;
            }
            state.data_qualifiers.erase(qual_id);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_data_qualifier_destroy_all(int unit)
{
    return begin(unit, ready<FieldState>).then([&](FieldState &state) -> int {
        const auto &all = state.data_qualifiers;
        if (std::any_of(all.begin(), all.end(),
                        [&](const auto &each) { return is_used(state, each.first); })) {
            return BCM_E_BUSY;
        }
        state.data_qualifiers.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_field_data_qualifier_ethertype_add(int unit, int qual_id, bcm_field_data_ethertype_t *etype)
{
    return add_packets(unit, qual_id, etype, &FieldDataQualifier::types);
}

int sim_bcm_field_data_qualifier_ethertype_delete(int unit, int qual_id, bcm_field_data_ethertype_t *etype)
{
    return delete_packets(unit, qual_id, etype, &FieldDataQualifier::types);
}

int sim_bcm_field_data_qualifier_ip_protocol_add(int unit, int qual_id,
                                                 bcm_field_data_ip_protocol_t *ip_protocol)
{
    return add_packets(unit, qual_id, ip_protocol, &FieldDataQualifier::protocols);
}

int sim_bcm_field_data_qualifier_ip_protocol_delete(int unit, int qual_id,
                                                    bcm_field_data_ip_protocol_t *ip_protocol)
{
    return delete_packets(unit, qual_id, ip_protocol, &FieldDataQualifier::protocols);
}

int sim_bcm_field_data_qualifier_packet_format_add(int unit, int qual_id,
                                                   bcm_field_data_packet_format_t *packet_format)
{
    return add_packets(unit, qual_id, packet_format, &FieldDataQualifier::formats);
}

int sim_bcm_field_data_qualifier_packet_format_delete(int unit, int qual_id,
                                                      bcm_field_data_packet_format_t *packet_format)
{
    return delete_packets(unit, qual_id, packet_format, &FieldDataQualifier::formats);
}

int sim_bcm_field_qset_data_qualifier_add(int unit, bcm_field_qset_t *qset, int qual_id)
{
    return begin(unit, ready<FieldState>, given(qset), existing_data(qual_id))
        .then([&](FieldState &, const FieldDataQualifier &) {
            SHR_BITSET(qset->w, static_cast<unsigned>(bcmFieldQualifyCount + qual_id));
            SHR_BITSET(qset->udf_map, static_cast<unsigned>(qual_id));
        });
}

int sim_bcm_field_qset_data_qualifier_delete(int unit, bcm_field_qset_t *qset, int qual_id)
{
    return begin(unit, ready<FieldState>, given(qset), existing_data(qual_id))
        .then([&](FieldState &, const FieldDataQualifier &) -> int {
            if (!is_in_set(*qset, qual_id)) {
                return BCM_E_NOT_FOUND;
            }
            SHR_BITCLR(qset->w, static_cast<unsigned>(bcmFieldQualifyCount + qual_id));
            SHR_BITCLR(qset->udf_map, static_cast<unsigned>(qual_id));
            return BCM_E_NONE;
        });
}

int sim_bcm_field_qset_data_qualifier_get(int unit, bcm_field_qset_t qset, int qual_max, int *qual_arr,
                                          int *qual_count)
{
    return begin(unit, ready<FieldState>, given(qual_arr, qual_count)).then([&](FieldState &) -> int {
        if (qual_max < 0) {
            return BCM_E_PARAM;
        }
        *qual_count = 0;
        for (int id = 0; id < BCM_FIELD_USER_UDF_MAX; ++id) {
            if (is_in_set(qset, id)) {
                if (*qual_count < qual_max) {
                    qual_arr[*qual_count] = id;
                }
                ++*qual_count;
            }
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_field_qualify_data(int unit, bcm_field_entry_t entry, int qual_id, uint8 *data, uint8 *mask,
                               uint16 length)
{
    return begin(unit, ready<FieldState>, given(data, mask), field_entry(entry), existing_data(qual_id))
        .then([&](FieldState &state, FieldEntry &found, const FieldDataQualifier &qualifier) -> int {
            if (length != qualifier.settings.length
                || !is_in_set(state.groups.at(found.group).qset, qual_id)) {
                return BCM_E_PARAM;
            }
            found.data[qual_id] = {std::string(data, data + length), std::string(mask, mask + length)};
            return BCM_E_NONE;
        });
}

int sim_bcm_field_qualify_data_get(int unit, bcm_field_entry_t entry, int qual_id, uint8 *data, uint8 *mask,
                                   uint16 *length)
{
    return begin(unit, ready<FieldState>, given(data, mask, length), field_entry(entry),
                 existing_data(qual_id))
        .then([&](FieldState &, const FieldEntry &found, const FieldDataQualifier &) -> int {
            const auto place = found.data.find(qual_id);
            if (place == found.data.end()) {
                return BCM_E_NOT_FOUND;
            }
            const FieldData &kept = place->second;
            const std::size_t written = std::min<std::size_t>(*length, kept.value.size());
            std::memcpy(data, kept.value.data(), written);
            std::memcpy(mask, kept.mask.data(), written);
            *length = static_cast<uint16>(written);
            return BCM_E_NONE;
        });
}

}  // extern "C"
