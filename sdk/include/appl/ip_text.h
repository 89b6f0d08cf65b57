/*
 * IPv4 addresses as text.
 */
#ifndef APPL_IP_TEXT_H
#define APPL_IP_TEXT_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Bytes of the longest address, "255.255.255.255", with its terminator. */
#define IPADDR_STR_LEN 16

typedef uint32 ip_addr_t; /* host byte order */
typedef char ip_addr_text_t[IPADDR_STR_LEN];

/*
 * Four decimal numbers of 0..255 with dots between, or one number as parse_integer() takes it, into *ipaddr.
 * BCM_E_NONE; BCM_E_PARAM, with *ipaddr as it was, on any other text or a null pointer.
 */
int parse_ipaddr(char *str, ip_addr_t *ipaddr);

/* "10.0.0.1" */
void format_ipaddr(ip_addr_text_t buf, ip_addr_t ipaddr);
/*
 * "10.0.0.0/8", or "10.0.0.0/255.0.255.0" if the mask is not ones followed by zeros. No size is passed: buf
 * has 2 * IPADDR_STR_LEN bytes.
 */
void format_ipaddr_mask(char *buf, ip_addr_t ipaddr, ip_addr_t mask);

#ifdef __cplusplus
}
#endif

#endif
