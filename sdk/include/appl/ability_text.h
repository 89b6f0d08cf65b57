/*
 * Abilities of ports and PHYs as text: a list of words with commas or blanks between, or "none". Case does
 * not matter.
 *
 * Parsers return BCM_E_NONE, or BCM_E_PARAM for a word that they do not know, empty text or a null pointer;
 * what they write to is then as it was. Formatters write text that the parser of the same type reads; nothing
 * is written beyond bufsize, and where it is too small the text is empty. 512 bytes are enough for all.
 */
#ifndef APPL_ABILITY_TEXT_H
#define APPL_ABILITY_TEXT_H

#include <soc/port_ability.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Rate and duplex "1000mb-full", "pause-tx", "pause-rx", "autoneg", "loopback-mac", "loopback-phy". */
int parse_port_mode(char *str, soc_port_mode_t *mode);
/* abbrev other than 0 gives short words, "1000fd", "ptx", "prx", "an", "lbm", "lbp", which are read too. */
void format_port_mode(char *buf, int bufsize, soc_port_mode_t mode, int abbrev);

/* The same words, put where the record has them, and interfaces "sgmii" and media "copper", "fiber". */
int parse_port_ability(char *str, soc_port_ability_t *mode);

/* "5mb" to "100mb", "pair1", "pair2", "pair4", "pause", "pause-asym". */
int parse_phy_control_longreach_ability(char *str, soc_phy_control_longreach_ability_t *ability);
void format_phy_control_longreach_ability(char *buf, int bufsize,
                                          soc_phy_control_longreach_ability_t ability);

#ifdef __cplusplus
}
#endif

#endif
