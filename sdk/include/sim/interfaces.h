/*
 * Ports of a simulated switch that are joined to interfaces of the Linux host it runs on. Not part of the SDK
 * proper.
 *
 * From the first attachment on a thread of the simulated switch moves frames between interfaces and ports, many at
 * a time, until the last has gone. While there is it, threads that call the SDK wait for each other and for it; the
 * SDK's handlers are called by it too. Nothing of this outlives the process, however that ends: interfaces that
 * were made here go with it.
 *
 * What the host says of an interface, up or down, plugged or not, plugs and pulls the cable of its port; whether the
 * port is enabled shows on the interface as its carrier (TAP) or as up and down (others). Either is seen within a
 * tenth of a second.
 */
#ifndef SIM_INTERFACES_H
#define SIM_INTERFACES_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/*
 * Makes a TAP interface of that name and joins it to a front port; it goes at the detachment. netns: the file of the
 * network namespace that it is to be in, such as /run/netns/NAME, or null for that of the caller. Status:
 *   BCM_E_UNIT, BCM_E_PORT   there cannot be such a unit or front port
 *   BCM_E_BUSY               the port has an interface, the interface is in use, or a function of the SDK that has
 *                            not returned calls this
 *   BCM_E_PARAM              name is null, empty or too long
 *   BCM_E_FAIL               the host refuses it
 * and for the last two and an interface in use sim_interface_problem() says what is wrong.
 */
int sim_interface_tap(int unit, int port, const char *name, const char *netns);

/*
 * Joins an interface that there is, such as one end of a veth pair, to a front port. Frames that it receives do not
 * reach the port any more otherwise than through here, the host's own network stack gets them too. It is left up or
 * down as it was. Segments that a sender leaves to its hardware to cut, or that are longer than the interface's MTU,
 * are lost: turn off such offloading there. Status as above, and BCM_E_NOT_FOUND for no such interface.
 */
int sim_interface_packet(int unit, int port, const char *name, const char *netns);

/* BCM_E_NOT_FOUND if the port has no interface. */
int sim_interface_detach(int unit, int port);

/* What the last of the caller's attachments that failed failed of, a sentence; good until its next one. */
const char *sim_interface_problem(void);

/* The name of the port's interface, null if it has none: one that vanished from the host has gone here too. */
const char *sim_interface_name(int unit, int port);

typedef enum sim_interface_counter_e {
    simInterfaceReceived,    /* frames that it gave to the port */
    simInterfaceSent,        /* frames of the port that it took */
    simInterfaceNotReceived, /* frames that were cut off, or arrived at a port without link */
    simInterfaceNotSent,     /* frames that it did not take, since it is down or its queue full */
    simInterfaceCounterCount
} sim_interface_counter_t;

/* Since the attachment; 0 if there is no such thing. */
uint64 sim_interface_count(int unit, int port, sim_interface_counter_t counter);

/*
 * What a thread does before it waits for others that work on units, and after that with what the former returned:
 * if it holds a lock that these may want, it has to let go of it. Null for nothing.
 */
void sim_wait_hooks_set(void *(*begins)(void), void (*ends)(void *state));

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
