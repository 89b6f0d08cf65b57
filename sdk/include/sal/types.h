/* Integer types of fixed width, and addresses as the chip sees them. */
#ifndef SAL_TYPES_H
#define SAL_TYPES_H

typedef unsigned char uint8;
typedef unsigned short uint16;
typedef unsigned int uint32;
typedef unsigned long long uint64;
typedef signed char int8;
typedef short int16;
typedef int int32;
typedef long long int64;

typedef uint64 COMPILER_UINT64;
typedef int64 COMPILER_INT64;

/* Physical and virtual addresses of the target's 32-bit address space. */
typedef uint32 sal_paddr_t;
typedef uint32 sal_vaddr_t;

/* A value of any of the sizes that travel through generic interfaces. */
typedef union {
    uint8 u8;
    uint16 u16;
    uint32 u32;
    uint64 u64;
    void *ptr;
    sal_paddr_t paddr;
    sal_vaddr_t vaddr;
} any_t;

#endif
