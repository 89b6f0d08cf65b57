/// Packets that look after links and paths: Ethernet OAM, the channel beside MPLS labels, BFD.
#include "field_key.h"
#include "packet.h"

#include <bcm/field_values.h>

#include <algorithm>

namespace sim {

namespace {

namespace at = field_places;

constexpr unsigned type_oam = 0x8902;
constexpr unsigned channel_bfd = 7;

struct Kind {
    unsigned number;
    int kind;
};

template <class Kinds>
int kind_of(const Kinds &kinds, unsigned number, int other)
{
    const auto found = std::find_if(std::begin(kinds), std::end(kinds),
                                    [number](const Kind &each) { return each.number == number; });
    return found != std::end(kinds) ? found->kind : other;
}

void put_kind(int kind, FieldKey &key)
{
    key.put(at::maintenance, FieldWord{1} << kind);
}

/// The first eight bytes of a message.
void put_message(const FieldRest &rest, FieldHeader header, FieldKey &key)
{
    if (rest.has(8)) {
        key.put(at::maintenance_bits, number_of(rest.data, 8));
        key.has(header);
        key.has(FieldHeader::maintenance);
    }
}

void put_session(FieldRest rest, FieldKey &key)
{
    constexpr std::size_t shortest = 24, before_other_side = 8;
    if (rest.has(shortest)) {
        key.put(at::bfd_discriminator, number_of(rest.data + before_other_side, 4));
        key.has(FieldHeader::bfd);
    }
}

int ethernet_kind(unsigned opcode)
{
    static constexpr Kind kinds[] = {
        {1, bcmFieldOamTypeEthernetCcm},
        {2, bcmFieldOamTypeEthernetLoopback},
        {3, bcmFieldOamTypeEthernetLoopback},
        {4, bcmFieldOamTypeEthernetLinktrace},
        {5, bcmFieldOamTypeEthernetLinktrace},
        {33, bcmFieldOamTypeEthernetAis},
        {35, bcmFieldOamTypeEthernetLock},
        {37, bcmFieldOamTypeEthernetTest},
        {42, bcmFieldOamTypeEthernetLossMeasurement},
        {43, bcmFieldOamTypeEthernetLossMeasurement},
        {45, bcmFieldOamTypeEthernetDelayMeasurement},
        {46, bcmFieldOamTypeEthernetDelayMeasurement},
        {47, bcmFieldOamTypeEthernetDelayMeasurement},
    };
    return kind_of(kinds, opcode, bcmFieldOamTypeEthernetOther);
}

void read_ethernet(const FieldRest &rest, FieldKey &key)
{
    put_message(rest, FieldHeader::ethernet_oam, key);
    if (key.is(FieldHeader::ethernet_oam)) {
        key.put(at::maintenance_level, rest.data[0] >> 5);
        put_kind(ethernet_kind(rest.data[1]), key);
    }
}

void read_udp(FieldRest rest, FieldKey &key)
{
    constexpr std::size_t udp_bytes = 8;
    const int one_hop = key.is(FieldHeader::ip6) ? bcmFieldOamTypeBfdIp6 : bcmFieldOamTypeBfdIp4;
    const Kind kinds[] = {
        {3784, one_hop}, {4784, bcmFieldOamTypeBfdMultihop}, {6784, bcmFieldOamTypeBfdMicro}};
    const int kind = kind_of(kinds, static_cast<unsigned>(key.get(at::destination_l4_port)), 0);
    if (kind != 0) {
        rest.skip(udp_bytes);
        put_session(rest, key);
        if (key.is(FieldHeader::bfd)) {
            put_kind(kind, key);
        }
    }
}

}  // namespace

void read_channel(FieldRest rest, bool is_labelled, FieldKey &key)
{
    constexpr unsigned of_loss[] = {10, 11};
    constexpr unsigned of_delay = 12;
    key.has(FieldHeader::channel);
    key.put(at::channel, number_of(rest.data, 4));
    const unsigned type = number_at(rest.data + 2);
    rest.skip(4);
    put_message(rest, FieldHeader::mpls_oam, key);
    if (type == channel_bfd) {
        put_session(rest, key);
    }
    if (!is_labelled) {
        put_kind(type == channel_bfd ? bcmFieldOamTypeBfdPseudowire : bcmFieldOamTypePseudowireControlWord,
                 key);
    } else if (type == type_oam && rest.has(2) && rest.data[1] == 1) {
        put_kind(bcmFieldOamTypeMplsTpCcm, key);
    } else {
        put_kind(type == channel_bfd                        ? bcmFieldOamTypeBfdMpls
                 : type == of_loss[0] || type == of_loss[1] ? bcmFieldOamTypeMplsTpLossMeasurement
                 : type == of_delay                         ? bcmFieldOamTypeMplsTpDelayMeasurement
                                                            : bcmFieldOamTypeMplsTpOther,
                 key);
    }
}

void read_maintenance(FieldKey &key)
{
    if (key.is(FieldHeader::ether_type) && key.get(at::ether_type) == type_oam) {
        read_ethernet(key.behind_type, key);
    } else if (key.is(FieldHeader::udp)) {
        read_udp(key.behind_ip, key);
    }
    if (key.get(at::maintenance) == 0) {
        put_kind(bcmFieldOamTypeNone, key);
    }
}

}  // namespace sim
