#include "path.h"

#include "begin.h"
#include "path_state.h"
#include "stages.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace sim {

namespace {

using PortOutlets = std::array<Outlet, port_max + 1>;

std::array<PortOutlets, unit_max> outlets;
PortSet with_outlet[unit_max];

/// Never destroyed, as units are.
std::vector<Tap *> &taps()
{
    static std::vector<Tap *> &all = *new std::vector<Tap *>;
    return all;
}

std::array<CpuReceiver, unit_max> cpu_receivers;

bool has_taps = false;
bool has_taps_or_outlets = false;

void update_has_taps()
{
    has_taps = !taps().empty();
    has_taps_or_outlets = has_taps
                          || std::any_of(std::begin(with_outlet), std::end(with_outlet),
                                         [](const PortSet &ports) { return !ports.empty(); });
}

struct Watcher {
    sim_packet_watcher_t call = nullptr;
    void *datum = nullptr;
};

Watcher watcher;

int storm_limit = 1000;
int storms = 0;

/// Goes through the stages until one does not say next.
template <Stage &...stages>
Onward run(Passage &passage)
{
    Onward onward = Onward::next;
    static_cast<void>(((onward = stages(passage), onward == Onward::next) && ...));
    return onward;
}

void tap(int unit, int port, Direction direction, ByteView frame)
{
    for (Tap *each : taps()) {
        each->passed(unit, port, direction, frame);
    }
}

/// The way of a packet at a port that does more than others with what arrives: no other stages, but some in between.
[[gnu::noinline]] void pass_with_extras(Passage &passage)
{
    const std::size_t undecided = undecided_counters(passage.sw);
    const Onward onward =
        run<arrive, copy_arrival, admit, classify_by_fields, copy_in_vlan, look_at_tree_by_fields,
            look_at_source_by_fields, police_arrival, copy_protocols, route_by_fields, find_destination>(
            passage);
    if (onward == Onward::decided) {
        run<limit_storms, look_up_fields, replicate_by_fields, edit, change_headers, leave>(passage);
    }
    settle_counters(passage, undecided);
}

/// What one arrival brings about: the packet's passage, and those of its copies at the other ends of cables.
class Journey {
public:
    explicit Journey(const Watcher &collector) : collector_(collector) {}

    /// That of what a CPU is given just now; null if it is given nothing.
    static Journey *at_cpu() { return at_cpu_; }

    /// The frame of *departures passes the unit.
    [[gnu::flatten]] void pass(Switch &sw, int port, Departures &departures)
    {
        if (has_taps) {
            tap(sw.unit, port, Direction::received, departures.frame.bytes());
        }
        Passage passage(sw, port, departures);
        if (passage.own().has_extras()) {
            pass_with_extras(passage);
        } else if (run<arrive, classify, look_at_tree, look_at_source, copy_protocols, route,
                       find_destination>(passage)
                   == Onward::decided) {
            run<replicate, edit, leave>(passage);
        }
        cross(sw, departures);
    }

    /// The frame of *departures, which the CPU sends, passes the unit as one that has arrived.
    void pass_from_cpu(Switch &sw, Departures &departures)
    {
        if (has_taps) {
            tap(sw.unit, cpu_port, Direction::received, departures.frame.bytes());
        }
        Passage passage(sw, cpu_port, departures);
        const std::size_t undecided = undecided_counters(sw);
        // The CPU is part of no tree, and nothing is learnt of what it sends.
        if (run<arrive, classify_by_fields, route_by_fields, find_destination>(passage) == Onward::decided) {
            run<look_up_fields, replicate_by_fields, edit, change_headers, leave>(passage);
        }
        settle_counters(passage, undecided);
        cross(sw, departures);
    }

    /// It leaves through the ports at once.
    void pass_to_ports(Switch &sw, Departures &departures, const PortSet &ports, const PortSet &without_tag)
    {
        Passage passage(sw, cpu_port, departures);
        passage.vid = passage.frame.vlan();
        send_through(passage, ports, without_tag);
        cross(sw, departures);
    }

    /// Gives what left to those who are to get it. They may call anything.
    void deliver(int unit, const Departures &departures)
    {
        ByteView frame;
        int written = -1;  // the head that stands there
        const Departures::Copy *const end = departures.copies.data() + departures.count;
        for (const Departures::Copy *copy = departures.copies.data(); copy != end; ++copy) {
            const int port = copy->port;
            if (copy->head != written) {
                written = copy->head;
                frame = departures.frame.written(departures.heads[copy->head]);
            }
            give(unit, port, frame, departures.cpu_copy);
        }
        if (departures.others != nullptr) {
            deliver_others(unit, departures);
        }
    }

    /// What leaves the unit goes over cables, or comes back by loopbacks, as far as there are any.
    void cross(Switch &sw, Departures &departures)
    {
        PhyUnit &phys = phys_of(sw);
        const PortSet crossing = std::as_const(phys).joined() | phys.looped();
        if (!crossing.empty()) {
            cross(sw, crossing, departures);
        }
    }

    /// What went over cables arrives, CPUs get theirs, and what that brings about, in this order.
    int go_on() { return crossings_ == nullptr ? static_cast<int>(BCM_E_NONE) : go_on_at_other_ends(); }

private:
    /// While there is one, the CPU is given something of a journey.
    class AtCpu {
    public:
        explicit AtCpu(Journey &journey) : outer_(std::exchange(at_cpu_, &journey)) {}
        ~AtCpu() { at_cpu_ = outer_; }
        AtCpu(const AtCpu &) = delete;
        AtCpu &operator=(const AtCpu &) = delete;

    private:
        Journey *const outer_;
    };

    struct Crossing {
        CableEnd to;  // or a unit's CPU port
        FrameBuffer frame;
        CpuCopy cpu_copy;
    };

    [[gnu::cold, gnu::noinline]] void deliver_others(int unit, const Departures &departures)
    {
        for (const Departures::Other &other : *departures.others) {
            give(unit, other.port, other.frame.bytes(), other.about);
        }
    }

    [[gnu::always_inline]] void give(int unit, int port, ByteView frame, const CpuCopy &about)
    {
        if (has_taps_or_outlets) {
            tap_and_let_out(unit, port, frame);
        }
        if (port == cpu_port) {
            keep_for_cpu(unit, frame, about);
        }
        if (collector_.call != nullptr) {
            collector_.call(unit, port, frame.data, static_cast<int>(frame.size), collector_.datum);
        }
        if (watcher.call != nullptr) {
            watcher.call(unit, port, frame.data, static_cast<int>(frame.size), watcher.datum);
        }
    }

    [[gnu::noinline]] static void tap_and_let_out(int unit, int port, ByteView frame)
    {
        if (has_taps) {
            tap(unit, port, Direction::sent, frame);
        }
        const auto at = static_cast<std::size_t>(unit);
        if (with_outlet[at].has(port)) {
            const Outlet &outlet = outlets[at][static_cast<std::size_t>(port)];
            outlet.send(outlet.datum, frame.data, frame.size);
        }
    }

    /// Until it can be called: once the journey of this packet is over.
    [[gnu::cold]] void keep_for_cpu(int unit, ByteView frame, const CpuCopy &about)
    {
        if (cpu_receivers[static_cast<std::size_t>(unit)] != nullptr) {
            FrameBuffer buffer;
            buffer.fill(frame);
            add_crossing({unit, cpu_port}, std::move(buffer)).cpu_copy = about;
        }
    }

    void give_to_cpu(int unit, const FrameBuffer &frame, const CpuCopy &about)
    {
        const CpuReceiver receiver = cpu_receivers[static_cast<std::size_t>(unit)];
        if (receiver != nullptr) {
            const AtCpu at_cpu(*this);
            receiver(unit, about, frame.bytes());
        }
    }

    Crossing &add_crossing(const CableEnd &to, FrameBuffer frame)
    {
        if (crossings_ == nullptr) {
            crossings_ = std::make_unique<std::vector<Crossing>>();
        }
        crossings_->push_back({to, std::move(frame), {}});
        return crossings_->back();
    }

    [[gnu::cold]] int go_on_at_other_ends()
    {
        std::vector<Crossing> &crossings = *crossings_;
        for (std::size_t i = 0; i < crossings.size(); ++i) {
            if (i >= static_cast<std::size_t>(storm_limit)) {
                return end_of_storm(crossings[i].to);
            }
            const CableEnd to = crossings[i].to;
            Departures departures;
            departures.frame = std::move(crossings[i].frame);
            if (to.port == cpu_port) {
                const CpuCopy about = crossings[i].cpu_copy;
                give_to_cpu(to.unit, departures.frame, about);
                continue;
            }
            begin(to.unit, ready<L2State>).then([&](Switch &sw, L2State &) {
                if (has_link(sw, to.port)) {
                    pass(sw, to.port, departures);
                }
            });
            deliver(to.unit, departures);
        }
        return BCM_E_NONE;
    }

    /// What goes over cables to other ports, or comes back: that does not leave.
    [[gnu::cold]] void cross(Switch &sw, const PortSet &crossing, Departures &departures)
    {
        const PortSet looped = phys_of(sw).looped();
        std::size_t leaving = 0;
        for (std::size_t i = 0; i < departures.count; ++i) {
            const Departures::Copy copy = departures.copies[i];
            if (crossing.has(copy.port)) {
                FrameBuffer frame;
                frame.fill(departures.frame.written(departures.heads[copy.head]));
                cross(sw, copy.port, looped.has(copy.port), std::move(frame));
            }
            if (!looped.has(copy.port)) {
                departures.copies[leaving++] = copy;
            }
        }
        departures.count = leaving;
        if (departures.others != nullptr) {
            std::vector<Departures::Other> &others = *departures.others;
            for (const Departures::Other &other : others) {
                if (crossing.has(other.port)) {
                    cross(sw, other.port, looped.has(other.port), other.frame);
                }
            }
            others.erase(std::remove_if(others.begin(), others.end(),
                                        [&](const auto &other) { return looped.has(other.port); }),
                         others.end());
        }
    }

    void cross(Switch &sw, int port, bool comes_back, FrameBuffer frame)
    {
        const CableEnd to =
            comes_back ? CableEnd{sw.unit, port} : *std::as_const(phys_of(sw)).of(port).cable.partner;
        if (is_traced && comes_back) {
            tell_at(sw.unit, simStageWire, port, simDropNone, "back by the loopback");
        } else if (is_traced) {
            tell_at(sw.unit, simStageWire, port, simDropNone, "over the cable to port %d of unit %d", to.port,
                    to.unit);
        }
        add_crossing(to, std::move(frame));
    }

    [[gnu::cold]] static int end_of_storm(const CableEnd &at)
    {
        ++storms;
        if (is_traced) {
            tell_at(at.unit, simStageWire, at.port, simDropStorm, "a storm: %d cables and CPUs passed",
                    storm_limit);
        }
        return BCM_E_RESOURCE;
    }

    static Journey *at_cpu_;

    Watcher collector_;
    std::unique_ptr<std::vector<Crossing>>
        crossings_;  // null as long as no cable was passed and no CPU reached
};

Journey *Journey::at_cpu_ = nullptr;

/// The frame comes to the port and passes the unit, if it can.
[[gnu::always_inline]] inline int enter(Switch &sw, int port, ByteView frame, Journey &journey,
                                        Departures &departures)
{
    if (frame.size < frame_header_bytes || frame.size > frame_longest - checksum_bytes) {
        return BCM_E_PARAM;
    }
    if (!has_link(sw, port)) {
        return BCM_E_DISABLED;
    }
    departures.frame.fill(frame);
    journey.pass(sw, port, departures);
    return BCM_E_NONE;
}

int send(int unit, bcm_port_t port, const unsigned char *frame, int length, const Watcher &collector)
{
    // What leaves takes memory that all threads share.
    const UnitsLock lock;
    Journey journey(collector);
    Departures departures;
    int status = begin(unit, ready<L2State>, given(frame)).then(lock, [&](Switch &sw, L2State &) -> int {
        int arrival;
        if (resolve_own_port(port, &arrival) != BCM_E_NONE || arrival == cpu_port) {
            return BCM_E_PORT;
        }
        // A negative length is too long.
        return enter(sw, arrival, {frame, static_cast<std::size_t>(length)}, journey, departures);
    });
    if (status == BCM_E_NONE) {
        journey.deliver(unit, departures);
        status = journey.go_on();
    }
    return status;
}

/// The CPU sends: pass(journey, departures). What it sends because of a packet belongs to the journey of that.
template <class Pass>
int from_cpu(Switch &sw, ByteView frame, Pass pass)
{
    Journey own({});
    Journey &journey = Journey::at_cpu() != nullptr ? *Journey::at_cpu() : own;
    Departures departures;
    departures.frame.fill(frame);
    const int unit = sw.unit;
    pass(journey, departures);
    journey.deliver(unit, departures);
    return own.go_on();
}

}  // namespace

void set_cpu_receiver(int unit, CpuReceiver receiver)
{
    const UnitsLock lock;
    cpu_receivers[static_cast<std::size_t>(unit)] = receiver;
}

int forward_from_cpu(Switch &sw, ByteView frame)
{
    return from_cpu(sw, frame,
                    [&](Journey &journey, Departures &departures) { journey.pass_from_cpu(sw, departures); });
}

int send_from_cpu(Switch &sw, ByteView frame, const PortSet &ports, const PortSet &without_tag)
{
    return from_cpu(sw, frame, [&](Journey &journey, Departures &departures) {
        journey.pass_to_ports(sw, departures, ports, without_tag);
    });
}

void set_outlet(int unit, int port, const Outlet &outlet)
{
    const UnitsLock lock;
    outlets[static_cast<std::size_t>(unit)][static_cast<std::size_t>(port)] = outlet;
    with_outlet[unit].put(port, outlet.send != nullptr);
    update_has_taps();
}

int arrive(Switch &sw, int port, const unsigned char *frame, std::size_t length)
{
    Journey journey({});
    Departures departures;
    const int unit = sw.unit;
    const int status = enter(sw, port, {frame, length}, journey, departures);
    if (status != BCM_E_NONE) {
        return status;
    }
    journey.deliver(unit, departures);
    return journey.go_on();
}

void send_what_waited(int unit, int port)
{
    Journey journey({});
    Departures departures;
    begin(unit).then([&](Switch &sw) {
        add_what_waited(sw, port, departures);
        journey.cross(sw, departures);
    });
    journey.deliver(unit, departures);
    journey.go_on();
}

void add_tap(Tap &tap)
{
    taps().push_back(&tap);
    update_has_taps();
}

void remove_tap(Tap &tap)
{
    taps().erase(std::remove(taps().begin(), taps().end(), &tap), taps().end());
    update_has_taps();
}

}  // namespace sim

using namespace sim;

extern "C" {

void sim_packet_watch(sim_packet_watcher_t call, void *datum)
{
    const sim::UnitsLock lock;
    watcher = {call, datum};
}

int sim_packet_arrive(int unit, bcm_port_t port, const unsigned char *frame, int length)
{
    return send(unit, port, frame, length, {});
}

int sim_packet_send(int unit, bcm_port_t port, const unsigned char *frame, int length,
                    sim_packet_watcher_t collector, void *datum)
{
    return send(unit, port, frame, length, {collector, datum});
}

int sim_storm_limit_set(int crossings)
{
    if (crossings < 0) {
        return BCM_E_PARAM;
    }
    storm_limit = crossings;
    return BCM_E_NONE;
}

int sim_storm_limit_get(void)
{
    return storm_limit;
}

int sim_storm_count(void)
{
    return storms;
}

}  // extern "C"
