/*
 * Names of the field processor's qualifiers, actions and other enumerations. A name is the enumerator's,
 * "bcmFieldQualifyInPorts", or what follows the part common to all of its kind, "InPorts". Case does not
 * matter.
 *
 * Parsers of one name return its value; ...Count of the enumeration for other text and for a null pointer.
 * Formatters return buf, for which no size is passed: a name has at most 64 bytes. brief other than 0 gives
 * the short name. What is no value of the enumeration is "?".
 */
#ifndef APPL_FIELD_TEXT_H
#define APPL_FIELD_TEXT_H

#include <bcm/field.h>

#ifdef __cplusplus
extern "C" {
#endif

bcm_field_qualify_t parse_field_qualifier(char *str);
bcm_field_action_t parse_field_action(char *str);
bcm_field_decap_t parse_field_decap(char *str);
bcm_field_group_mode_t parse_field_group_mode(char *str);
bcm_field_oam_type_t parse_field_oam_type(char *str);
bcm_field_olp_header_type_t parse_field_olp_hdr_type(char *str);
bcm_field_MplsOam_Control_pktType_t parse_field_MplsOamCtrlPktType(char *str);

char *format_field_qualifier(char *buf, bcm_field_qualify_t qual, int brief);
char *format_field_action(char *buf, bcm_field_action_t action, int brief);
char *format_field_group_mode(char *buf, bcm_field_group_mode_t mode, int brief);
char *format_field_decap(char *buf, bcm_field_decap_t decap);

/*
 * Sets: names with anything between that is no letter, digit or underscore, such as "InPorts, SrcIp"; the
 * user-defined fields of a qset are "Udf0" on. No name at all is the empty set. parse_field_qset() replaces
 * the set; parse_field_aset() adds to it, or takes from it if add is 0. BCM_E_NONE; BCM_E_NOT_FOUND for an
 * unknown name and BCM_E_PARAM for a null pointer, with the set as it was.
 */
int parse_field_qset(char *str, bcm_field_qset_t *qset);
int parse_field_aset(char *str, bcm_field_aset_t *aset, uint8 add);

/*
 * Short names with the separator between them, " " if it is null. No size is passed: buf has 64 bytes and
 * those of a separator for each name. Null for a null buf.
 */
char *format_field_qset(char *buf, bcm_field_qset_t qset, char *separator);
char *format_field_aset(char *buf, bcm_field_aset_t aset, char *separator);

#ifdef __cplusplus
}
#endif

#endif
