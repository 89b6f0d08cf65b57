#include "mirror.h"

#include <algorithm>
#include <climits>

namespace sim {

namespace {

bool is_meant(uint32 flags, uint32 direction, bool is_sampled)
{
    const uint32 directions = flags & (mirrors_in | mirrors_out);
    return (directions == 0 || (directions & direction)) && (is_sampled || !(flags & BCM_MIRROR_PORT_SFLOW));
}

bool has_priority(const MirrorUse &use)
{
    return use.options.flags & BCM_MIRROR_OPTION_PRIORITY;
}

/// Whether the share that the use, or else the destination, asks for has this packet.
bool is_in_share(MirrorUse &use, MirrorDestination &destination)
{
    if (use.options.flags & BCM_MIRROR_OPTION_SAMPLE) {
        return use.share.takes(use.options.sample_rate_dividend, use.options.sample_rate_divisor);
    }
    const bcm_mirror_destination_t &settings = destination.settings;
    return settings.sample_rate_divisor == 0
           || destination.share.takes(settings.sample_rate_dividend, settings.sample_rate_divisor);
}

class Copier {
public:
    Copier(Switch &sw, int port, uint32 direction, bool is_sampled, ByteView frame)
        : mirrors_(mirrors_of(sw)),
          own_(mirrors_.ports[static_cast<std::size_t>(port)]),
          direction_(direction),
          is_sampled_(is_sampled),
          frame_(frame)
    {
    }

    /// To the unit's mirroring port and the port's own.
    void copy_to_ports()
    {
        const bool is_for_unit = mirrors_.mode == BCM_MIRROR_L2 || mirrors_.mode == BCM_MIRROR_L2_L3;
        if (is_for_unit && (direction_ & mirrors_in ? own_.is_in : own_.is_out)) {
            own_.to.each([&](int port) { copy_to({Destination::Kind::port, own_module, port}, nullptr); });
        }
        if (own_.own_flags != 0 && is_meant(own_.own_flags, direction_, is_sampled_)) {
            copy_to(own_.own_to, nullptr);
        }
    }

    void copy_by(std::vector<MirrorUse> &uses)
    {
        int highest = INT_MIN;
        for (const MirrorUse &use : uses) {
            if (has_priority(use) && is_meant(use.flags, direction_, is_sampled_)) {
                highest = std::max(highest, use.options.priority);
            }
        }
        for (MirrorUse &use : uses) {
            if (!is_meant(use.flags, direction_, is_sampled_)
                || (has_priority(use) && use.options.priority != highest)) {
                continue;
            }
            MirrorDestination &destination = mirrors_.destinations.at(use.destination);
            if (destination.is_on && is_in_share(use, destination)) {
                copy_to(destination.to, &destination);
            }
        }
    }

    std::vector<MirrorCopy> copies;

private:
    void copy_to(const Destination &to, MirrorDestination *destination)
    {
        const ByteView frame = tagged();
        std::vector<unsigned char> copy =
            destination != nullptr ? wrapped(*destination, frame)
                                   : std::vector<unsigned char>(frame.data, frame.data + frame.size);
        const bool is_wrapped = destination != nullptr && (destination->settings.flags & mirror_tunnels);
        if (to.kind == Destination::Kind::port && !is_wrapped) {
            const MirrorTag &tag = mirrors_.ports[static_cast<std::size_t>(to.id)].tag;
            if (tag.type != 0) {
                copy = with_tag(tag, {copy.data(), copy.size()});
            }
        }
        copies.push_back({to, std::move(copy), destination});
    }

    /// With the tag that copies of the port's packets get.
    ByteView tagged()
    {
        const bcm_mirror_port_info_t &info = own_.info;
        if (info.tpid == 0
            || !is_meant(info.flags & ~uint32{BCM_MIRROR_PORT_SFLOW}, direction_, is_sampled_)) {
            return frame_;
        }
        if (tagged_.empty()) {
            tagged_ = with_tag({info.tpid, info.vlan, info.vlan_prio}, frame_);
        }
        return {tagged_.data(), tagged_.size()};
    }

    MirrorState &mirrors_;
    PortMirrors &own_;
    const uint32 direction_;
    const bool is_sampled_;
    const ByteView frame_;
    std::vector<unsigned char> tagged_;
};

}  // namespace

bool Share::takes(uint32 dividend, uint32 divisor)
{
    due_ += dividend;
    if (due_ < divisor || divisor == 0) {
        return false;
    }
    due_ -= divisor;
    return true;
}

bool Sampling::takes(int rate)
{
    if (rate <= 0) {
        return false;
    }
    state_ += 0x9e3779b97f4a7c15u;
    std::uint64_t drawn = state_;
    drawn = (drawn ^ drawn >> 30) * 0xbf58476d1ce4e5b9u;
    drawn = (drawn ^ drawn >> 27) * 0x94d049bb133111ebu;
    return (drawn >> 32) * static_cast<std::uint64_t>(rate) >> 32 == 0;
}

void Sampling::sow(int seed)
{
    seed_ = seed;
    state_ = static_cast<std::uint64_t>(static_cast<uint32>(seed)) << 32;
}

void MirrorState::reset()
{
    initialised = true;
    mode = BCM_MIRROR_DESTINATIONS;
    to = cpu_port;
    destinations.clear();
    of_vlans.clear();
    for (PortMirrors &port : ports) {
        PortMirrors fresh;
        fresh.sample_in = port.sample_in;
        fresh.sample_out = port.sample_out;
        port = fresh;
    }
}

void update_copies(Switch &sw)
{
    const MirrorState &mirrors = mirrors_of(sw);
    const bool is_on = mirrors.initialised && mirrors.mode != BCM_MIRROR_DISABLE;
    const bool is_for_unit = is_on && mirrors.mode != BCM_MIRROR_DESTINATIONS;
    const auto says = [](const std::vector<MirrorUse> &uses, uint32 direction) {
        return std::any_of(uses.begin(), uses.end(),
                           [&](const MirrorUse &use) { return is_meant(use.flags, direction, true); });
    };
    PortSet &copies_out = sw.of<PortState>().copies_out;
    for (int port = 0; port <= port_max; ++port) {
        const PortMirrors &own = mirrors.ports[static_cast<std::size_t>(port)];
        const auto has = [&](uint32 direction, bool by_unit) {
            return (is_for_unit && by_unit)
                   || (is_on && own.own_flags != 0 && is_meant(own.own_flags, direction, true))
                   || (is_on && says(own.uses, direction));
        };
        Port &settings = port_of(sw, port);
        settings.copies_in = own.sample_in != 0 || has(mirrors_in, own.is_in);
        settings.copies_of_vlans = false;
        copies_out.put(port, own.sample_out != 0 || has(mirrors_out, own.is_out));
    }
    if (is_on) {
        for (const auto &[where, uses] : mirrors.of_vlans) {
            port_of(sw, where.first).copies_of_vlans |= says(uses, mirrors_in);
            if (says(uses, mirrors_out)) {
                copies_out.add(where.first);
            }
        }
    }
    sw.of<PortState>().update_special_out();
}

int sample_rate(Switch &sw, int port, Direction direction)
{
    const PortMirrors &own = mirrors_of(sw).ports[static_cast<std::size_t>(port)];
    return direction == Direction::received ? own.sample_in : own.sample_out;
}

std::vector<MirrorCopy> mirror_copies(Switch &sw, int port, bcm_vlan_t vlan, uint32 direction,
                                      bool is_sampled, ByteView frame)
{
    MirrorState &mirrors = mirrors_of(sw);
    Copier copier(sw, port, direction, is_sampled, frame);
    if (!mirrors.initialised || mirrors.mode == BCM_MIRROR_DISABLE) {
        return {};
    }
    if (vlan == 0) {
        copier.copy_to_ports();
        copier.copy_by(mirrors.ports[static_cast<std::size_t>(port)].uses);
    } else {
        const auto of_vlan = mirrors.of_vlans.find({port, vlan});
        if (of_vlan != mirrors.of_vlans.end()) {
            copier.copy_by(of_vlan->second);
        }
    }
    return std::move(copier.copies);
}

std::vector<MirrorCopy> mirror_copy(Switch &sw, int port, int destination, uint32 direction, ByteView frame)
{
    const MirrorState &mirrors = mirrors_of(sw);
    if (!mirrors.initialised || mirrors.mode == BCM_MIRROR_DISABLE
        || mirrors.destinations.count(destination) == 0) {
        return {};
    }
    Copier copier(sw, port, direction, false, frame);
    std::vector<MirrorUse> use(1);
    use[0].destination = destination;
    use[0].flags = direction;
    copier.copy_by(use);
    return std::move(copier.copies);
}

}  // namespace sim
