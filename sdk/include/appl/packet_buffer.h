/*
 * Packets to test with: size bytes of them. A null pointer, or a size not above 0, does nothing.
 */
#ifndef APPL_PACKET_BUFFER_H
#define APPL_PACKET_BUFFER_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Fills the buffer with 32-bit words in network byte order, val and then always inc more; of the last word
 * what fits. Returns the value with which the next buffer goes on.
 */
uint32 packet_store(uint8 *buf, int size, uint32 val, uint32 inc);

/* The number in the first size bytes, at most four, in network byte order. */
uint32 packet_load(uint8 *addr, int size);

/* Fills the buffer with bytes that nobody can foretell. */
void packet_random_store(uint8 *buf, int size);

/* 0 if the packets are equal, else the place of the first difference, counted from 1. */
int packet_compare(uint8 *p1, uint8 *p2, int size);

#ifdef __cplusplus
}
#endif

#endif
