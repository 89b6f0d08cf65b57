/* The simulated switch by itself, in C: no Python, no platform. */
#include <bcm/attach.h>
#include <bcm/l2.h>
#include <bcm/vlan.h>
#include <sim/call_log.h>
#include <sim/traffic.h>

#include <stdio.h>
#include <string.h>

enum { unit = 3, from_port = 1, to_port = 7 };

static int failures;

static void check(int holds, const char *what)
{
    if (!holds) {
        printf("failed: %s\n", what);
        ++failures;
    }
}

struct seen {
    int packets;
    int port;
    unsigned char frame[128];
    int length;
};

static void note(int on_unit, bcm_port_t port, const unsigned char *frame, int length, void *datum)
{
    struct seen *seen = datum;
    seen->packets += on_unit == unit;
    seen->port = port;
    seen->length = length;
    memcpy(seen->frame, frame, length < 128 ? length : 128);
}

int main(void)
{
    bcm_mac_t station = {0x02, 0, 0, 0, 0, 0x2a};
    unsigned char frame[60] = {0x02, 0, 0, 0, 0, 0x2a, 0x02, 0, 0, 0, 0, 0x01, 0x08, 0x06};
    struct seen seen = {0, -1, {0}, 0};
    bcm_l2_addr_t address;

    check(bcm_attach_check(unit) == BCM_E_UNIT, "the unit is not there at first");
    check(bcm_attach(unit, NULL, NULL, -1) == BCM_E_NONE, "attach");
    bcm_l2_addr_t_init(&address, station, BCM_VLAN_DEFAULT);
    address.port = to_port;
    address.flags = BCM_L2_STATIC;
    sim_call_log_start();
    check(bcm_l2_addr_add(unit, &address) == BCM_E_NONE, "add an address");
    sim_call_log_stop();
    check(sim_call_log_count() == 1 && strcmp(sim_call_log_function(0), "bcm_l2_addr_add") == 0,
          "the call is in the log");

    sim_packet_watch(note, &seen);
    check(sim_packet_arrive(unit, from_port, frame, sizeof frame) == BCM_E_NONE, "a packet arrives");
    check(seen.packets == 1 && seen.port == to_port, "it leaves where the address is, and nowhere else");
    check(seen.length == sizeof frame && memcmp(seen.frame, frame, sizeof frame) == 0,
          "it is the same packet");
    check(bcm_l2_addr_get(unit, frame + 6, BCM_VLAN_DEFAULT, &address) == BCM_E_NONE
              && address.port == from_port,
          "its source is learnt");

    check(bcm_detach(unit) == BCM_E_NONE, "detach");
    check(sim_packet_arrive(unit, from_port, frame, sizeof frame) == BCM_E_UNIT, "nothing arrives any more");
    return failures != 0;
}
