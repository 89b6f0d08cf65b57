/*
 * Ports and sets of ports as text.
 *
 * A port is a number, or a name that the unit knows, such as "ce0". A set is a list, with commas or blanks
 * between, of ports, ranges "ce0-ce3" or "1-4", kinds "ce" (all ports whose names are that and a number),
 * "all" or "*", "none", and masks "0x1e", which have bit n for port n. Case does not matter.
 *
 * Parsers return BCM_E_NONE, BCM_E_UNIT, BCM_E_PORT for a port that there is not, and BCM_E_PARAM for text
 * that is none of this, empty text, or a null pointer. What they write to is then as it was.
 */
#ifndef APPL_PORT_TEXT_H
#define APPL_PORT_TEXT_H

#include <bcm/types.h>
#include <soc/types.h>

#ifdef __cplusplus
extern "C" {
#endif

int parse_port(int unit, char *s, soc_port_t *portp);

/* A port of the unit, or any of the forms that format_gport() writes, except "invalid". */
int parse_bcm_port(int unit, char *s, bcm_port_t *portp);

/* The ports of the unit. parse_pbmp() also prints what is wrong with the text. */
int parse_pbmp(int unit, char *s, soc_pbmp_t *pbmp);
int parse_pbmp_no_error(int unit, char *s, soc_pbmp_t *pbmp);
int parse_bcm_pbmp(int unit, char *s, bcm_pbmp_t *pbmp);

/* Numbers only: of the packet processor's ports, 0..255, and of anything, 0..575. "all" is all of those. */
int parse_pp_pbmp(int unit, char *s, soc_pbmp_t *pbmp);
int parse_small_integers(int unit, char *s, soc_pbmp_t *pbmp);

/*
 * A mask that the parsers read: at most 147 bytes. Returns buf; null, and empty text if bufsize is above 0,
 * if there is no such unit or the text does not fit. Nothing is written beyond bufsize.
 */
char *format_pbmp(int unit, char *buf, int bufsize, soc_pbmp_t pbmp);
char *format_bcm_pbmp(int unit, char *buf, int bufsize, bcm_pbmp_t pbmp);

/*
 * "5", "local=5", "modport=3.7" (module, port), "trunk=9", "system-port=7", "black-hole", "invalid", and
 * "gport=0x28000003" for other kinds. Returns buf, for which no size is passed: it has 24 bytes.
 */
char *format_gport(char *buf, bcm_gport_t gport);

#ifdef __cplusplus
}
#endif

#endif
