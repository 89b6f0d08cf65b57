#include "mirror.h"
#include "stages.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace sim {

namespace {

/// Where a copy leaves; -1 if it cannot.
int port_to(Passage &passage, const Destination &to)
{
    if (to.kind == Destination::Kind::port) {
        return to.id;
    }
    const SendingTrunk *trunk = trunks_of(passage.sw).ports().find(to.id);
    const PortSet able = trunk != nullptr ? trunk->senders & linked_ports(passage.sw) : PortSet();
    return able.empty() ? -1 : select_by_criterion(passage.sw, *trunk, able, {passage.frame, passage.port});
}

/// What the CPU is told of a copy that it gets for that reason.
CpuCopy about_copy(const Passage &passage, bcm_rx_reason_t reason)
{
    CpuCopy about = CpuCopy::of_nothing_known();
    about.port = passage.port;
    about.vid = passage.vlan != nullptr ? passage.vid : passage.frame.vlan();
    about.came_tagged = passage.frame.is_tagged();
    about.is_for_many = passage.is_for_many;
    about.reasons.add(reason);
    about.color = passage.color();
    return about;
}

/// Whether it leaves. Spanning trees and VLANs are nothing to it.
bool send_copy(Passage &passage, int port, std::vector<unsigned char> &bytes, bcm_rx_reason_t reason,
               const char *what)
{
    bytes.resize(std::max(bytes.size(), frame_min - checksum_bytes));
    const ByteView frame = {bytes.data(), bytes.size()};
    const std::size_t length = length_with_checksum(frame);
    if (!has_link(passage.sw, port)) {
        passage.drop_at(port, Discard::no_link);
        return false;
    }
    if (length > std::min(static_cast<std::size_t>(port_of(passage.sw, port).frame_max), frame_longest)) {
        passage.drop_at(port, Discard::too_long_to_send);
        return false;
    }
    FrameCounts(frame).sent(passage.counters_at(port));
    if (is_traced) {
        tell_step(passage, simStageLeave, port, "%zu bytes, %s", length, what);
    }
    FrameBuffer copy;
    copy.fill(frame);
    passage.departures.add(port, std::move(copy), about_copy(passage, reason));
    return true;
}

void send_mirrored(Passage &passage, uint32 direction, std::vector<MirrorCopy> copies)
{
    for (MirrorCopy &copy : copies) {
        const std::size_t length = copy.frame.size() + checksum_bytes;
        const int to = port_to(passage, copy.to);
        const bool arrives = direction & mirrors_in;
        const bool left =
            to >= 0
            && send_copy(passage, to, copy.frame, arrives ? bcmRxReasonMirror : bcmRxReasonEgressMirror,
                         arrives ? "a mirrored copy of what arrived" : "a mirrored copy of what leaves");
        passage.is_mirrored |= left;
        if (copy.destination != nullptr) {
            copy.destination->count(left, length);
        }
    }
}

void send_mirrored(Passage &passage, int port, bcm_vlan_t vlan, uint32 direction, bool is_sampled,
                   ByteView frame)
{
    send_mirrored(passage, direction, mirror_copies(passage.sw, port, vlan, direction, is_sampled, frame));
}

/// Takes the packet as a sample if the port's rate says so. Whether it is one for mirrors.
bool sample(Passage &passage, int port, Direction direction, ByteView frame)
{
    Sampling &sampling = sampling_of(passage.sw, direction);
    if (!sampling.takes(sample_rate(passage.sw, port, direction))) {
        return false;
    }
    send_sample(passage, direction, frame);
    return sampling.to_mirrors;
}

[[gnu::cold, gnu::noinline]] void copy_what_arrives(Passage &passage)
{
    const ByteView frame = passage.frame.bytes;
    passage.is_sampled = sample(passage, passage.port, Direction::received, frame);
    send_mirrored(passage, passage.port, 0, mirrors_in, passage.is_sampled, frame);
}

}  // namespace

[[gnu::cold, gnu::noinline]] void send_sample(Passage &passage, Direction direction, ByteView frame)
{
    const Sampling &sampling = sampling_of(passage.sw, direction);
    if (!sampling.to_cpu) {
        return;
    }
    const std::size_t size = sampling.bytes != 0 ? std::min(frame.size, sampling.bytes) : frame.size;
    std::vector<unsigned char> bytes(frame.data, frame.data + size);
    const bool arrives = direction == Direction::received;
    send_copy(passage, cpu_port, bytes, arrives ? bcmRxReasonSampleSource : bcmRxReasonSampleDest,
              arrives ? "a sample of what arrived" : "a sample of what leaves");
}

Onward copy_arrival(Passage &passage)
{
    if (passage.own().copies_in) {
        copy_what_arrives(passage);
    }
    return Onward::next;
}

Onward copy_in_vlan(Passage &passage)
{
    if (passage.own().copies_of_vlans) {
        send_mirrored(passage, passage.port, passage.vid, mirrors_in, passage.is_sampled,
                      passage.frame.bytes);
    }
    return Onward::next;
}

[[gnu::cold, gnu::noinline]] void copy_departure(Passage &passage, int port, ByteView sent)
{
    // The beginning of another copy is written to the same place.
    const std::vector<unsigned char> bytes(sent.data, sent.data + sent.size);
    const ByteView frame = {bytes.data(), bytes.size()};
    const bool is_sampled = sample(passage, port, Direction::sent, frame);
    send_mirrored(passage, port, 0, mirrors_out, is_sampled, frame);
    send_mirrored(passage, port, passage.vid, mirrors_out, is_sampled, frame);
}

[[gnu::cold, gnu::noinline]] void mirror_arrival(Passage &passage, int destination)
{
    send_mirrored(passage, mirrors_in,
                  mirror_copy(passage.sw, passage.port, destination, mirrors_in, passage.frame.bytes));
}

[[gnu::cold, gnu::noinline]] void mirror_departure(Passage &passage, int port, ByteView sent, int destination)
{
    send_mirrored(passage, mirrors_out, mirror_copy(passage.sw, port, destination, mirrors_out, sent));
}

[[gnu::cold, gnu::noinline]] void sample_arrival(Passage &passage, const Sample &sample)
{
    if (!sampling_of(passage.sw, Direction::received).takes(sample.rate)) {
        return;
    }
    if (sample.destination != 0) {
        mirror_arrival(passage, sample.destination);
    } else {
        send_sample(passage, Direction::received, passage.frame.bytes);
    }
}

[[gnu::cold, gnu::noinline]] void sample_departure(Passage &passage, int port, ByteView sent,
                                                   const Sample &sample)
{
    if (!sampling_of(passage.sw, Direction::sent).takes(sample.rate)) {
        return;
    }
    if (sample.destination != 0) {
        mirror_departure(passage, port, sent, sample.destination);
    } else {
        send_sample(passage, Direction::sent, sent);
    }
}

}  // namespace sim
