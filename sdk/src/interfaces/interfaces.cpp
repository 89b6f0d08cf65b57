/// Interfaces at ports, and the thread that moves frames between them.
///
/// The thread waits until interfaces have something to receive, takes the lock of units, lets a batch of each arrive
/// at its port, and lets what was sent go. It ends when there is no interface any more; the next attachment starts
/// another one. What is to be seen on an interface or a port, link and enabling, is compared when the host says something
/// of an interface, and ten times a second.
#include "begin.h"
#include "interface.h"
#include "l2.h"
#include "own_thread.h"
#include "path.h"
#include "refusal.h"
#include "sim_port.h"

#include <sim/cable.h>
#include <sim/interfaces.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

#include <fcntl.h>
#include <sched.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>

using namespace sim;

namespace {

/// An interface at a port.
struct Joint {
    Joint(int own_unit, int own_port, std::unique_ptr<Interface> joined)
        : unit(own_unit), port(own_port), interface(std::move(joined))
    {
    }

    const int unit, port;
    const std::unique_ptr<Interface> interface;
    std::uint64_t received = 0;
    bool is_plugged = false, has_gone = false;

    /// Makes port and interface show each other's state.
    void compare();
    void arrive(const unsigned char *frame, std::size_t length);
};

using Joints = std::array<std::array<std::shared_ptr<Joint>, port_max + 1>, unit_max>;

/// Everything here is worked on with units locked. Never destroyed: the thread may outlive main().
struct Loop {
    Joints joints;                             ///< by unit and port
    std::vector<std::shared_ptr<Joint>> list;  ///< the same ones
    bool is_running = false;
    bool has_heard_of_link = false;
    OwnThread thread;
    Descriptor poll, wake;

    void add(const std::shared_ptr<Joint> &joint);
    void remove(const std::shared_ptr<Joint> &joint);
    void wake_up() const;
    void prepare();
    void operator()();
    bool work(const UnitsLock &lock, const epoll_event *events, int event_count);
};

Loop &loop()
{
    static Loop &only = *new Loop;
    return only;
}

constexpr std::size_t batch = 256;
constexpr int most_events = 64;
constexpr auto comparison_interval = std::chrono::milliseconds(100);

thread_local bool is_loop =
    false;  ///< whether this is the thread, which hands over what was sent at the end of a batch
thread_local char problem[256];

void tell(const char *text)
{
    std::snprintf(problem, sizeof problem, "%s", text);
}

void plug(int unit, int port, bool in)
{
    constexpr int metres = 1;
    if (!in) {
        sim_cable_plug(unit, port, 0, metres);
    } else if (sim_cable_plug(unit, port, 1u << _SHR_PORT_MEDIUM_COPPER, metres) == BCM_E_PARAM) {
        sim_cable_plug(unit, port, 1u << _SHR_PORT_MEDIUM_FIBER, metres);
    }
}

void Joint::compare()
{
    interface->link.update();
    has_gone = has_gone || !interface->link.exists();
    const bool is_connected = !has_gone && interface->is_connected();
    // A switch that was made fresh has its cables plugged in.
    if (is_connected != is_plugged || !is_connected) {
        plug(unit, port, is_connected);
        is_plugged = is_connected;
    }
    int enabled = 0;
    if (!has_gone && sim_bcm_port_enable_get(unit, port, &enabled) == BCM_E_NONE) {
        interface->show(enabled != 0);
    }
}

void Joint::arrive(const unsigned char *frame, std::size_t length)
{
    bool has_arrived = false;
    try {
        Switch *sw = attached(unit);
        has_arrived =
            sw != nullptr && l2_of(*sw).initialised && sim::arrive(*sw, port, frame, length) == BCM_E_NONE;
    } catch (const std::bad_alloc &) {
    }
    ++(has_arrived ? received : interface->not_received);
}

FrameSink sink_of(Joint &joint)
{
    return {[](void *datum, const unsigned char *frame, std::size_t length) {
                static_cast<Joint *>(datum)->arrive(frame, length);
            },
            &joint};
}

Outlet outlet_of(Joint &joint)
{
    return {[](void *datum, const unsigned char *frame, std::size_t length) {
                Interface &interface = *static_cast<Joint *>(datum)->interface;
                interface.send(frame, length);
                if (!is_loop) {
                    interface.flush();
                }
            },
            &joint};
}

std::shared_ptr<Joint> *place_of(int unit, int port)
{
    const bool exists = unit >= 0 && unit < unit_max && port > cpu_port && port <= port_max;
    return exists ? &loop().joints[static_cast<std::size_t>(unit)][static_cast<std::size_t>(port)] : nullptr;
}

/// In an event, which joint it is about: its place, and whether the host says something of the interface.
constexpr std::uint64_t link_event = std::uint64_t{1} << 63;

std::uint64_t event_key(const Joint &joint)
{
    return static_cast<std::uint64_t>(joint.unit) << 32 | static_cast<std::uint64_t>(joint.port);
}

std::shared_ptr<Joint> joint_of(std::uint64_t key)
{
    const auto *place = place_of(static_cast<int>(key >> 32), static_cast<int>(key));
    return place != nullptr ? *place : nullptr;
}

constexpr std::uint64_t wake_key = 0;  // the CPU's port, which no joint has

void listen(int poll, int descriptor, std::uint64_t key)
{
    epoll_event event = {};
    event.events = EPOLLIN;
    event.data.u64 = key;
    require(epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event), "waiting for frames");
}

void Loop::add(const std::shared_ptr<Joint> &joint)
{
    if (!is_running) {
        prepare();
    }
    // Held until all is done: a thread that finds no interface ends.
    const UnitsLock lock;
    if (!is_running) {
        try {
            thread.start(*this);
        } catch (...) {
            own_units();
            throw;
        }
        is_running = true;
    }
    listen(poll.get(), joint->interface->descriptor(), event_key(*joint));
    listen(poll.get(), joint->interface->link.descriptor(), event_key(*joint) | link_event);
    list.push_back(joint);
    *place_of(joint->unit, joint->port) = joint;
    set_outlet(joint->unit, joint->port, outlet_of(*joint));
    joint->compare();
}

void Loop::remove(const std::shared_ptr<Joint> &joint)
{
    joint->has_gone = true;
    epoll_ctl(poll.get(), EPOLL_CTL_DEL, joint->interface->descriptor(), nullptr);
    epoll_ctl(poll.get(), EPOLL_CTL_DEL, joint->interface->link.descriptor(), nullptr);
    set_outlet(joint->unit, joint->port, {});
    plug(joint->unit, joint->port, joint->interface->link.exists());
    joint->interface->flush();
    list.erase(std::find(list.begin(), list.end(), joint));
    place_of(joint->unit, joint->port)->reset();
    wake_up();
}

void Loop::wake_up() const
{
    const std::uint64_t one = 1;
    const ssize_t written = write(wake.get(), &one, sizeof one);
    static_cast<void>(written);  // it is awake if its counter is full
}

/// The child of a fork has no such thread, and the interfaces are its parent's.
void forget_interfaces()
{
    Loop &child = loop();
    for (const std::shared_ptr<Joint> &joint : child.list) {
        set_outlet(joint->unit, joint->port, {});
        // What it would put back on the host is for its parent to put back.
        joint->interface->link.forget();
        place_of(joint->unit, joint->port)->reset();
    }
    child.list = {};
    child.poll = Descriptor();
    child.wake = Descriptor();
    new (&child) Loop;
}

void end_with_process()
{
    {
        const UnitsLock lock;
        while (!loop().list.empty()) {
            loop().remove(std::shared_ptr<Joint>(loop().list.back()));
        }
    }
    if (loop().thread.is_started()) {
        const Wait wait;
        loop().thread.join();
    }
}

void Loop::prepare()
{
    if (thread.is_started()) {
        const Wait wait;
        thread.join();
    }
    poll = Descriptor(require(epoll_create1(EPOLL_CLOEXEC), "waiting for frames"));
    wake = Descriptor(require(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "waiting for frames"));
    listen(poll.get(), wake.get(), wake_key);
    share_units();
    // After what the sharing itself registers, which comes first in a child.
    static const int registered =
        std::atexit(end_with_process) + pthread_atfork(nullptr, nullptr, forget_interfaces);
    static_cast<void>(registered);
}

/// False when there is nothing left to do.
bool Loop::work(const UnitsLock &lock, const epoll_event *events, int event_count)
{
    const SwitchesInUse in_use(lock);
    for (int i = 0; i < event_count; ++i) {
        if (events[i].data.u64 == wake_key) {
            std::uint64_t counter;
            const ssize_t size = read(wake.get(), &counter, sizeof counter);
            static_cast<void>(size);
        } else if (events[i].data.u64 & link_event) {
            has_heard_of_link = true;
        } else if (const std::shared_ptr<Joint> joint = joint_of(events[i].data.u64)) {
            joint->interface->receive(batch, sink_of(*joint));
        }
    }
    for (const std::shared_ptr<Joint> &joint : list) {
        joint->interface->flush();
    }
    return !list.empty();
}

void Loop::operator()()
{
    using Clock = std::chrono::steady_clock;
    is_loop = true;
    std::array<epoll_event, most_events> events;
    auto next_comparison = Clock::now();
    for (bool goes_on = true; goes_on;) {
        const int event_count =
            epoll_wait(poll.get(), events.data(), most_events, static_cast<int>(comparison_interval.count()));
        const UnitsLock lock;
        keep_up_with_time();
        goes_on = work(lock, events.data(), event_count);
        if (has_heard_of_link || Clock::now() >= next_comparison) {
            has_heard_of_link = false;
            next_comparison = Clock::now() + comparison_interval;
            // Who is told of a link may attach and detach.
            for (const std::shared_ptr<Joint> &joint : std::vector<std::shared_ptr<Joint>>(list)) {
                joint->compare();
                if (joint->has_gone && *place_of(joint->unit, joint->port) == joint) {
                    remove(joint);
                }
            }
            goes_on = !list.empty();
        }
        if (!goes_on) {
            is_running = false;
            own_units();
        }
    }
}

using Maker = std::unique_ptr<Interface> (*)(HostLink);

/// Made in that network namespace, which the calling thread does not enter.
std::unique_ptr<Interface> made(Maker make, const std::string &name, const char *netns)
{
    std::unique_ptr<Interface> interface;
    Refusal refusal = {BCM_E_NONE, {}};
    auto work = [&] {
        try {
            if (netns != nullptr) {
                const std::string step = std::string("the network namespace ") + netns;
                const Descriptor file(require(open(netns, O_RDONLY | O_CLOEXEC), step));
                require(setns(file.get(), CLONE_NEWNET), step);
            }
            interface = make(HostLink(name));
        } catch (const Refusal &reason) {
            refusal = reason;
        } catch (const std::bad_alloc &) {
            refusal = {BCM_E_MEMORY, "there is no memory for it"};
        }
    };
    if (netns != nullptr) {
        OwnThread thread;
        thread.start(work);
        thread.join();
    } else {
        work();
    }
    if (interface == nullptr) {
        throw Refusal{refusal};
    }
    return interface;
}

int attach_interface(int unit, int port, const char *name, const char *netns, Maker make)
{
    std::shared_ptr<Joint> *place = place_of(unit, port);
    if (place == nullptr) {
        return unit >= 0 && unit < unit_max ? BCM_E_PORT : BCM_E_UNIT;
    }
    try {
        if (name == nullptr || *name == '\0' || std::strlen(name) >= IFNAMSIZ
            || std::strchr(name, '/') != nullptr) {
            throw Refusal{BCM_E_PARAM, "the name of an interface has 1 to 15 characters"};
        }
        // A function that goes on after this would not have locked its unit.
        if (!loop().is_running && SwitchesInUse::any()) {
            throw Refusal{BCM_E_BUSY, "a function of the SDK that has not returned attaches it"};
        }
        if (*place != nullptr) {
            throw Refusal{BCM_E_BUSY, "the port has the interface " + (*place)->interface->link.name()};
        }
        std::unique_ptr<Interface> interface = made(make, name, netns);
        const auto joint = std::make_shared<Joint>(unit, port, std::move(interface));
        loop().add(joint);
        return BCM_E_NONE;
    } catch (const Refusal &refusal) {
        tell(refusal.problem.c_str());
        return refusal.status;
    } catch (const std::bad_alloc &) {
        tell("there is no memory for it");
        return BCM_E_MEMORY;
    }
}

}  // namespace

extern "C" {

int sim_interface_tap(int unit, int port, const char *name, const char *netns)
{
    return attach_interface(unit, port, name, netns, make_tap);
}

int sim_interface_packet(int unit, int port, const char *name, const char *netns)
{
    return attach_interface(unit, port, name, netns, make_packet_socket);
}

int sim_interface_detach(int unit, int port)
{
    const UnitsLock lock;
    std::shared_ptr<Joint> *place = place_of(unit, port);
    if (place == nullptr) {
        return unit >= 0 && unit < unit_max ? BCM_E_PORT : BCM_E_UNIT;
    }
    if (const std::shared_ptr<Joint> joint = *place) {
        loop().remove(joint);
        return BCM_E_NONE;
    }
    return BCM_E_NOT_FOUND;
}

const char *sim_interface_problem(void)
{
    return problem;
}

const char *sim_interface_name(int unit, int port)
{
    const UnitsLock lock;
    const std::shared_ptr<Joint> *place = place_of(unit, port);
    return place != nullptr && *place != nullptr ? (*place)->interface->link.name().c_str() : nullptr;
}

uint64 sim_interface_count(int unit, int port, sim_interface_counter_t counter)
{
    const UnitsLock lock;
    const std::shared_ptr<Joint> *place = place_of(unit, port);
    if (place == nullptr || *place == nullptr) {
        return 0;
    }
    const Interface &interface = *(*place)->interface;
    switch (counter) {
    case simInterfaceReceived:
        return (*place)->received;
    case simInterfaceSent:
        return interface.sent;
    case simInterfaceNotReceived:
        return interface.not_received;
    case simInterfaceNotSent:
        return interface.not_sent;
    default:
        return 0;
    }
}

void sim_wait_hooks_set(void *(*begins)(void), void (*ends)(void *state))
{
    set_wait_hooks({begins, ends});
}

}  // extern "C"
