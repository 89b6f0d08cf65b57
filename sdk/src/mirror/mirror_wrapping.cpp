/// How copies are wrapped on their way to another network.
#include "mirror.h"

#include <algorithm>
#include <cstring>

namespace sim {

namespace {

constexpr unsigned protocol_udp = 17;
constexpr unsigned protocol_gre = 47;
constexpr unsigned type_session = 0x88be;  // of GRE: a session's header follows, as of type II there
constexpr std::size_t ip4_bytes = 20;
constexpr std::size_t ip6_bytes = 40;
constexpr std::size_t udp_bytes = 8;

class Bytes {
public:
    explicit Bytes(std::vector<unsigned char> &bytes) : bytes_(bytes) {}

    void add8(unsigned number) { bytes_.push_back(static_cast<unsigned char>(number)); }
    void add16(unsigned number)
    {
        add8(number >> 8);
        add8(number);
    }
    void add32(uint32 number)
    {
        add16(number >> 16);
        add16(number & 0xffff);
    }
    void add(const unsigned char *bytes, std::size_t count)
    {
        bytes_.insert(bytes_.end(), bytes, bytes + count);
    }

private:
    std::vector<unsigned char> &bytes_;
};

/// Adds up words of 16 bits as Internet checksums do; the end of an odd number is filled with zeros.
std::uint64_t sum_of(const unsigned char *bytes, std::size_t size)
{
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < size; i += 2) {
        sum += static_cast<unsigned>(bytes[i] << 8 | (i + 1 < size ? bytes[i + 1] : 0));
    }
    return sum;
}

unsigned checksum(std::uint64_t sum)
{
    while (sum >> 16 != 0) {
        sum = (sum & 0xffff) + (sum >> 16);
    }
    return static_cast<unsigned>(~sum & 0xffff);
}

/// What is between the IP header and the frame.
std::vector<unsigned char> inner_header(MirrorDestination &destination, std::size_t frame_size)
{
    const bcm_mirror_destination_t &settings = destination.settings;
    std::vector<unsigned char> header;
    Bytes bytes(header);
    if (settings.flags & BCM_MIRROR_DEST_TUNNEL_UDP) {
        bytes.add16(settings.udp_src_port);
        bytes.add16(settings.udp_dst_port);
        bytes.add16(static_cast<unsigned>(udp_bytes + frame_size));
        bytes.add16(0);
        return header;
    }
    const bool has_session = settings.span_id != 0;
    const bool has_sequence = has_session || settings.sequence_number != 0;
    constexpr unsigned sequence_present = 0x1000;
    bytes.add16(has_sequence ? sequence_present : 0);
    bytes.add16(settings.gre_protocol != 0 ? settings.gre_protocol : type_session);
    if (has_sequence) {
        bytes.add32(destination.sequence++);
    }
    if (has_session) {
        constexpr unsigned version = 1;
        bytes.add16(version << 12 | settings.vlan_id);
        bytes.add16(static_cast<unsigned>(settings.vlan_prio) << 13 | settings.span_id);
        bytes.add32(0);
    }
    return header;
}

void add_ip4(Bytes &bytes, MirrorDestination &destination, unsigned protocol, std::size_t payload)
{
    const bcm_mirror_destination_t &settings = destination.settings;
    std::vector<unsigned char> header;
    Bytes words(header);
    constexpr unsigned version_and_words = 0x45, do_not_fragment = 0x4000;
    words.add8(version_and_words);
    words.add8(settings.tos);
    words.add16(static_cast<unsigned>(ip4_bytes + payload));
    words.add16(destination.datagram++);
    words.add16(settings.df ? do_not_fragment : 0);
    words.add8(settings.ttl != 0 ? settings.ttl : 255);
    words.add8(protocol);
    words.add16(0);
    words.add32(settings.src_addr);
    words.add32(settings.dst_addr);
    put_number(header.data() + 10, checksum(sum_of(header.data(), header.size())));
    bytes.add(header.data(), header.size());
}

void add_ip6(Bytes &bytes, const bcm_mirror_destination_t &settings, unsigned protocol, std::size_t payload)
{
    bytes.add32(uint32{6} << 28 | static_cast<uint32>(settings.tos) << 20 | (settings.flow_label & 0xfffff));
    bytes.add16(static_cast<unsigned>(payload));
    bytes.add8(protocol);
    bytes.add8(settings.hop_limit != 0 ? settings.hop_limit : 255);
    bytes.add(settings.src6_addr, sizeof settings.src6_addr);
    bytes.add(settings.dst6_addr, sizeof settings.dst6_addr);
}

/// UDP over IPv6 has to have a checksum, over IPv4 it can do without.
void put_udp6_checksum(std::vector<unsigned char> &packet, std::size_t udp_at)
{
    const std::size_t size = packet.size() - udp_at;
    constexpr std::size_t addresses = 2 * sizeof(bcm_ip6_t);
    const std::uint64_t sum =
        sum_of(packet.data() + udp_at - addresses, addresses + size) + size + protocol_udp;
    const unsigned found = checksum(sum);
    put_number(packet.data() + udp_at + 6, found != 0 ? found : 0xffff);
}

std::vector<unsigned char> over_ip(MirrorDestination &destination, ByteView frame)
{
    const bcm_mirror_destination_t &settings = destination.settings;
    const bool is_udp = settings.flags & BCM_MIRROR_DEST_TUNNEL_UDP;
    const bool is_ip6 = settings.version == 6;
    const unsigned protocol = is_udp ? protocol_udp : protocol_gre;
    const std::vector<unsigned char> inner = inner_header(destination, frame.size);
    const std::size_t payload = inner.size() + frame.size;

    std::vector<unsigned char> packet;
    packet.reserve(frame_header_bytes + tag_bytes + ip6_bytes + payload);
    Bytes bytes(packet);
    bytes.add(settings.dst_mac, address_bytes);
    bytes.add(settings.src_mac, address_bytes);
    if (settings.vlan_id != 0) {
        bytes.add16(settings.tpid != 0 ? settings.tpid : type_vlan);
        bytes.add16(static_cast<unsigned>(settings.vlan_prio) << 13 | settings.vlan_id);
    }
    bytes.add16(is_ip6 ? type_ip6 : type_ip4);
    if (is_ip6) {
        add_ip6(bytes, settings, protocol, payload);
    } else {
        add_ip4(bytes, destination, protocol, payload);
    }
    const std::size_t inner_at = packet.size();
    bytes.add(inner.data(), inner.size());
    bytes.add(frame.data, frame.size);
    if (is_udp && is_ip6) {
        put_udp6_checksum(packet, inner_at);
    }
    return packet;
}

}  // namespace

std::vector<unsigned char> with_tag(const MirrorTag &tag, ByteView frame)
{
    std::vector<unsigned char> tagged;
    tagged.reserve(frame.size + tag_bytes);
    Bytes bytes(tagged);
    bytes.add(frame.data, addresses_bytes);
    bytes.add16(tag.type);
    bytes.add16(static_cast<unsigned>(tag.priority) << 13 | tag.vlan);
    bytes.add(frame.data + addresses_bytes, frame.size - addresses_bytes);
    return tagged;
}

std::vector<unsigned char> wrapped(MirrorDestination &destination, ByteView frame)
{
    const bcm_mirror_destination_t &settings = destination.settings;
    if (settings.truncate_length != 0) {
        const auto most = std::max(static_cast<std::size_t>(settings.truncate_length), frame_header_bytes);
        frame.size = std::min(frame.size, most);
    }
    if (settings.flags & (BCM_MIRROR_DEST_TUNNEL_IP_GRE | BCM_MIRROR_DEST_TUNNEL_UDP)) {
        return over_ip(destination, frame);
    }
    if (settings.flags & BCM_MIRROR_DEST_TUNNEL_L2) {
        return with_tag({settings.tpid != 0 ? settings.tpid : static_cast<bcm_tpid_t>(type_vlan),
                         settings.vlan_id, settings.vlan_prio},
                        frame);
    }
    return {frame.data, frame.data + frame.size};
}

}  // namespace sim
