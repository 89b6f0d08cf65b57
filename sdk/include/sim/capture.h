/*
 * Packets in files, as network analysers write and read them: pcapng, with a port as an interface and times in
 * nanoseconds, or pcap. Not part of the SDK proper.
 */
#ifndef SIM_CAPTURE_H
#define SIM_CAPTURE_H

#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

typedef enum sim_capture_format_e {
    simCapturePcapng, /* an interface per port, "unit0/ce0" and so on */
    simCapturePcap    /* all ports in one, times in nanoseconds */
} sim_capture_format_t;

#define SIM_CAPTURE_RECEIVED 1 /* what arrives, dropped or not */
#define SIM_CAPTURE_SENT 2     /* what leaves */

/*
 * Captures from now on into a new file, or in place of the old one, and gives it a number from 1 on. Times are
 * those of sim/clock.h. No port is captured yet. BCM_E_NONE; BCM_E_PARAM: null, or no such format; BCM_E_FAIL: it
 * cannot be written, sim_capture_problem() says why; BCM_E_MEMORY.
 */
int sim_capture_open(const char *file, int format, int *capture);

/*
 * A port, the CPU's too, is captured: what of it, directions says, SIM_CAPTURE_RECEIVED and SIM_CAPTURE_SENT.
 * BCM_E_NONE, BCM_E_NOT_FOUND: no such capture, BCM_E_PORT, BCM_E_PARAM, BCM_E_FAIL.
 */
int sim_capture_port(int capture, int unit, bcm_port_t port, int directions);

/* Packets captured so far, after a failure those that are in the file. BCM_E_NONE, BCM_E_NOT_FOUND, BCM_E_PARAM. */
int sim_capture_count(int capture, int *packets);

/*
 * Ends it; the file is whole then. BCM_E_NONE; BCM_E_NOT_FOUND; BCM_E_FAIL: something could not be written, such
 * as for a full disk. Nothing was captured from then on, and the file is good up to there.
 */
int sim_capture_close(int capture);

/*
 * Lets the packets of a file arrive in their order. Those of a pcapng file's interface that is named as a port of
 * an attached unit ("unit0/ce0") arrive there, all others at the port given. timed: the clock advances between
 * them as far as their times are apart. Packets that the port does not take, for it is down or they are too long,
 * are counted as refused. replayed and refused (may be null) say how many there were.
 * BCM_E_NONE; BCM_E_UNIT, BCM_E_PORT; BCM_E_PARAM: null; BCM_E_NOT_FOUND: no such file; BCM_E_FAIL: it cannot be
 * read, is no capture, is damaged or of another medium than Ethernet. Then nothing arrived, and
 * sim_capture_problem() says what is wrong, and where.
 */
int sim_replay(const char *file, int unit, bcm_port_t port, int timed, int *replayed, int *refused);

/* What the latest error of these functions was about; "" if there was none. Valid until the next call of them. */
const char *sim_capture_problem(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
