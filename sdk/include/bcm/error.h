/* Return codes of the bcm_* functions: 0 or an error below 0. */
#ifndef BCM_ERROR_H
#define BCM_ERROR_H

typedef enum bcm_error_e {
    BCM_E_NONE = 0,        /* done */
    BCM_E_INTERNAL = -1,   /* fault of the SDK itself */
    BCM_E_MEMORY = -2,     /* out of memory */
    BCM_E_UNIT = -3,       /* no such unit attached */
    BCM_E_PARAM = -4,      /* argument out of range, or a null pointer */
    BCM_E_EMPTY = -5,      /* table empty */
    BCM_E_FULL = -6,       /* table full */
    BCM_E_NOT_FOUND = -7,  /* no such entry */
    BCM_E_EXISTS = -8,     /* entry exists already */
    BCM_E_TIMEOUT = -9,    /* no answer in time */
    BCM_E_BUSY = -10,      /* in use */
    BCM_E_FAIL = -11,      /* operation failed */
    BCM_E_DISABLED = -12,  /* operation is disabled */
    BCM_E_BADID = -13,     /* identifier not valid here */
    BCM_E_RESOURCE = -14,  /* no resource left */
    BCM_E_CONFIG = -15,    /* configuration does not allow it */
    BCM_E_UNAVAIL = -16,   /* the chip has no such feature */
    BCM_E_INIT = -17,      /* module not initialised */
    BCM_E_PORT = -18       /* no such port */
} bcm_error_t;

#endif
