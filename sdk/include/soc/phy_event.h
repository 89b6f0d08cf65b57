/*
 * What a MAC tells the driver of its PHY.
 */
#ifndef SOC_PHY_EVENT_H
#define SOC_PHY_EVENT_H

/* Events of soc_phyctrl_notify(); each comment says what data is. */
typedef enum soc_phy_event_e {
    phyEventInterface = 0, /* MAC's new interface, SOC_PHY_INTERFACE_* */
    phyEventDuplex,        /* 1 full, 0 half */
    phyEventSpeed,         /* Mbit/s */
    phyEventStop,          /* set of reasons; the PHY stays stopped until all are resumed */
    phyEventResume,        /* set of reasons */
    phyEventAutoneg,       /* 1 on, 0 off */
    phyEventTxFifoReset,   /* Mbit/s */
    phyEventEncapMode,     /* 0 plain Ethernet, else a stacking header */
    phyEventLinkUp,        /* none, as in the next */
    phyEventLinkDown
} soc_phy_event_t;

#endif
