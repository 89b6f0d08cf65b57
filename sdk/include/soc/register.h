/*
 * Chip registers.
 */
#ifndef SOC_REGISTER_H
#define SOC_REGISTER_H

#ifdef __cplusplus
extern "C" {
#endif

/* A register that is not one of a port: the port argument of its accessors. */
#define REG_PORT_ANY (-10)

/* Words of a register value wider than 64 bits. */
#define SOC_REG_ABOVE_64_MAX_SIZE_U32 20

/* Register types: their names, and how many instances of one share a block. Indexed alike. */
extern char *soc_regtypenames[];
extern int soc_regtype_gran[];

#ifdef __cplusplus
}
#endif

#endif
