// What C programs do by casts.
#pragma once

#include <pcap/pcap.h>

/// Appends a packet that was caught whole.
inline void pcap_write(pcap_dumper_t *file, long seconds, const void *bytes, unsigned int size)
{
    pcap_pkthdr header = {};
    header.ts.tv_sec = seconds;
    header.caplen = header.len = size;
    pcap_dump(reinterpret_cast<unsigned char *>(file), &header, static_cast<const unsigned char *>(bytes));
}
