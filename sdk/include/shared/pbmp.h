/* A set of ports: bit p % 32 of word p / 32 stands for port p. */
#ifndef SHARED_PBMP_H
#define SHARED_PBMP_H

#include <shared/bitop.h>

#define _SHR_PBMP_PORT_MAX 576
#define _SHR_PBMP_WORD_MAX 18

typedef struct _shr_pbmp {
    uint32 pbits[_SHR_PBMP_WORD_MAX];
} _shr_pbmp_t;

/*
 * Operations on a _shr_pbmp_t (not a pointer to one). A port outside 0.._SHR_PBMP_PORT_MAX-1 is never a
 * member, and adding or removing it does nothing.
 */
#define _SHR_PBMP_PORT_VALID(port) ((unsigned int)(port) < _SHR_PBMP_PORT_MAX)

#define _SHR_PBMP_CLEAR(pbm)                                   \
    do {                                                       \
        int _word;                                             \
        for (_word = 0; _word < _SHR_PBMP_WORD_MAX; ++_word) { \
            (pbm).pbits[_word] = 0;                            \
        }                                                      \
    } while (0)

#define _SHR_PBMP_PORT_ADD(pbm, port)             \
    do {                                          \
        if (_SHR_PBMP_PORT_VALID(port)) {         \
            SHR_BITSET((pbm).pbits, port);        \
        }                                         \
    } while (0)

#define _SHR_PBMP_PORT_REMOVE(pbm, port)          \
    do {                                          \
        if (_SHR_PBMP_PORT_VALID(port)) {         \
            SHR_BITCLR((pbm).pbits, port);        \
        }                                         \
    } while (0)

#define _SHR_PBMP_MEMBER(pbm, port) (_SHR_PBMP_PORT_VALID(port) && SHR_BITGET((pbm).pbits, port))

#endif
