/* Return codes of the soc_* functions: 0 or an error below 0. They mean what the BCM_E_* of that name do. */
#ifndef SOC_ERROR_H
#define SOC_ERROR_H

typedef enum soc_error_e {
    SOC_E_NONE = 0,        /* done */
    SOC_E_INTERNAL = -1,   /* fault of the SDK itself */
    SOC_E_MEMORY = -2,     /* out of memory */
    SOC_E_UNIT = -3,       /* no such unit attached */
    SOC_E_PARAM = -4,      /* argument out of range, or a null pointer */
    SOC_E_EMPTY = -5,      /* table empty */
    SOC_E_FULL = -6,       /* table full */
    SOC_E_NOT_FOUND = -7,  /* no such entry, or nothing at that address */
    SOC_E_EXISTS = -8,     /* entry exists already */
    SOC_E_TIMEOUT = -9,    /* no answer in time */
    SOC_E_BUSY = -10,      /* in use */
    SOC_E_FAIL = -11,      /* operation failed */
    SOC_E_DISABLED = -12,  /* operation is disabled */
    SOC_E_BADID = -13,     /* identifier not valid here */
    SOC_E_RESOURCE = -14,  /* no resource left */
    SOC_E_CONFIG = -15,    /* configuration does not allow it */
    SOC_E_UNAVAIL = -16,   /* the chip has no such feature */
    SOC_E_INIT = -17,      /* chip not initialised */
    SOC_E_PORT = -18,      /* no such port */
    SOC_E_LIMIT = -19      /* a limit of the chip is exceeded */
} soc_error_t;

#endif
