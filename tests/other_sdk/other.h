/* An SDK that has nothing in common with the development host's but its basic types and how functions answer. */
#ifndef OTHER_H
#define OTHER_H

#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Codes of their own, and an enumeration without a tag. */
typedef enum { BCM_E_NONE = 0, BCM_E_NOWHERE = -71, BCM_E_SMALL = -72 } other_status_t;

#define OTHER_LASER_ON 0x1
#define OTHER_LASER_COLD 0x80000000u
#define OTHER_LASER_BOTH (OTHER_LASER_ON | OTHER_LASER_COLD)

#define OTHER_LASERS 3

typedef struct {
    unsigned char grade;
    short celsius[2];
} other_wear_t;

typedef struct other_laser_s {
    uint64 photons;
    char label[10];
    bcm_mac_t mac;
    other_wear_t wear;
    bcm_pbmp_t ports;
    unsigned int flags;
} other_laser_t;

/* A laser, 0..2. */
int other_laser_get(int unit, int laser, other_laser_t *info);
int other_laser_set(int unit, int laser, const other_laser_t *info);
int other_laser_photons_get(int unit, int laser, uint64 *photons);
int other_laser_label_get(int unit, int laser, char *label, int size);
int other_laser_mac_get(int unit, int laser, bcm_mac_t mac);
int other_laser_ports_get(int unit, int laser, bcm_pbmp_t *ports);
/* The numbers of those that are lit. */
int other_lit_get(int unit, int max, short *lasers, int *count);
/* A pointer to one that the SDK keeps. */
int other_laser_find(int unit, int laser, other_laser_t **found);

typedef int (*other_visit_f)(int unit, const other_laser_t *info, void *data);
int other_laser_traverse(int unit, other_visit_f visit, void *data);

/* Called by other_laser_set. */
typedef void (*other_change_f)(int unit, short laser, uint64 photons, void *data);
int other_change_register(int unit, other_change_f changed, void *data);
int other_change_unregister(int unit, other_change_f changed, void *data);

#ifdef __cplusplus
}
#endif
#endif
