#include "other.h"

#include <stdio.h>
#include <string.h>

static other_laser_t lasers[OTHER_LASERS];
static other_change_f listener;
static void *listener_data;

static int status(int laser)
{
    return laser >= 0 && laser < OTHER_LASERS ? BCM_E_NONE : BCM_E_NOWHERE;
}

int other_laser_get(int unit, int laser, other_laser_t *info)
{
    (void)unit;
    if (status(laser) == BCM_E_NONE) {
        *info = lasers[laser];
    }
    return status(laser);
}

int other_laser_set(int unit, int laser, const other_laser_t *info)
{
    if (status(laser) == BCM_E_NONE) {
        lasers[laser] = *info;
        if (listener) {
            listener(unit, (short)laser, info->photons, listener_data);
        }
    }
    return status(laser);
}

int other_laser_photons_get(int unit, int laser, uint64 *photons)
{
    (void)unit;
    if (status(laser) == BCM_E_NONE) {
        *photons = lasers[laser].photons;
    }
    return status(laser);
}

int other_laser_label_get(int unit, int laser, char *label, int size)
{
    (void)unit;
    if (status(laser) != BCM_E_NONE) {
        return status(laser);
    }
    return snprintf(label, (size_t)size, "%s", lasers[laser].label) < size ? BCM_E_NONE : BCM_E_SMALL;
}

int other_laser_mac_get(int unit, int laser, bcm_mac_t mac)
{
    (void)unit;
    if (status(laser) == BCM_E_NONE) {
        memcpy(mac, lasers[laser].mac, sizeof(bcm_mac_t));
    }
    return status(laser);
}

int other_laser_ports_get(int unit, int laser, bcm_pbmp_t *ports)
{
    (void)unit;
    if (status(laser) == BCM_E_NONE) {
        *ports = lasers[laser].ports;
    }
    return status(laser);
}

int other_lit_get(int unit, int max, short *numbers, int *count)
{
    (void)unit;
    *count = 0;
    for (short laser = 0; laser < OTHER_LASERS; ++laser) {
        if (lasers[laser].flags & OTHER_LASER_ON) {
            if (*count < max) {
                numbers[*count] = laser;
            }
            ++*count;
        }
    }
    return *count <= max ? BCM_E_NONE : BCM_E_SMALL;
}

int other_laser_find(int unit, int laser, other_laser_t **found)
{
    (void)unit;
    *found = status(laser) == BCM_E_NONE ? &lasers[laser] : NULL;
    return status(laser);
}

int other_laser_traverse(int unit, other_visit_f visit, void *data)
{
    int result = BCM_E_NONE;
    for (int laser = 0; laser < OTHER_LASERS && result >= 0; ++laser) {
        result = visit(unit, &lasers[laser], data);
    }
    return result < 0 ? result : BCM_E_NONE;
}

int other_change_register(int unit, other_change_f changed, void *data)
{
    (void)unit;
    listener = changed;
    listener_data = data;
    return BCM_E_NONE;
}

int other_change_unregister(int unit, other_change_f changed, void *data)
{
    (void)unit;
    (void)data;
    if (listener != changed) {
        return BCM_E_NOWHERE;
    }
    listener = NULL;
    return BCM_E_NONE;
}
