/// The room of the packet path: the stages of a packet's way through a unit, and what becomes of what leaves it.
///
/// A packet that leaves a port is given to the port's outlet, to those who watch, and to the port at the other end
/// of its cable, where it arrives when those that arrived before are done: all that one packet brings about is
/// over when its arrival returns.
#pragma once

#include "cpu_copy.h"
#include "packet.h"
#include "port.h"

#include <sim/trace.h>
#include <sim/traffic.h>

#include <cstddef>

namespace sim {

/// Who is given each frame that leaves a port, right when it leaves; the frame holds for the call.
struct Outlet {
    void (*send)(void *datum, const unsigned char *frame, std::size_t length) = nullptr;
    void *datum = nullptr;
};

/// The outlet of a port; one without function: none. It stays when the unit is detached.
void set_outlet(int unit, int port, const Outlet &outlet);

/// A frame arrives at a front port of a unit that is attached, initialised and in use, as by sim_packet_arrive,
/// which checks that first. BCM_E_NONE; nothing happens: BCM_E_DISABLED, the port has no link, BCM_E_PARAM, no length
/// of a frame; BCM_E_RESOURCE: the limit of a storm.
int arrive(Switch &sw, int port, const unsigned char *frame, std::size_t length);

/// Who takes what comes to the CPU of a unit: called when all that left the unit with it has been given away, in the
/// order in which it came. What it sends meanwhile is part of what the arrival brings about.
using CpuReceiver = void (*)(int unit, const CpuCopy &about, ByteView frame);

/// The receiver of a unit's CPU; null: nobody takes it. It stays when the unit is detached.
void set_cpu_receiver(int unit, CpuReceiver receiver);

/// The CPU has a frame forwarded as one that has arrived; one without tag belongs to its port's untagged VLAN.
/// BCM_E_NONE, whatever became of it; BCM_E_RESOURCE: the limit of a storm.
int forward_from_cpu(Switch &sw, ByteView frame);

/// The CPU sends a frame through ports, whatever tables say: those of `without_tag` take its tag off.
/// BCM_E_NONE, although a port may have no link; BCM_E_RESOURCE: the limit of a storm.
int send_from_cpu(Switch &sw, ByteView frame, const PortSet &ports, const PortSet &without_tag);

/// Who sees every frame that comes to a port or leaves it, of any unit. It must not call the SDK.
class Tap {
public:
    virtual ~Tap() = default;
    virtual void passed(int unit, int port, Direction direction, ByteView frame) = 0;
};

void add_tap(Tap &tap);
void remove_tap(Tap &tap);

}  // namespace sim
