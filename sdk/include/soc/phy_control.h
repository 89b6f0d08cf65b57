/*
 * Settings and state that only some PHYs have: the selectors of soc_phyctrl_control_set() and _get(), and of
 * those that take a lane or one PHY of several. Where a comment gives no unit, the value is 0 for off or no
 * and 1 for on or yes; "read" means that it cannot be set, and so does a count since the last read.
 */
#ifndef SOC_PHY_CONTROL_H
#define SOC_PHY_CONTROL_H

typedef enum soc_phy_control_e {
    /* Line code, and what runs on it. */
    SOC_PHY_CONTROL_WAN = 0,                     /* 10 Gbit/s in SONET frames */
    SOC_PHY_CONTROL_SCRAMBLER,
    SOC_PHY_CONTROL_PCS_BYPASS,
    SOC_PHY_CONTROL_MODULATION,                  /* SOC_PHY_MODULATION_* */
    SOC_PHY_CONTROL_OVERSAMPLING,                /* samples per bit */
    SOC_PHY_CONTROL_LANE_COUNT,                  /* lanes in use */
    SOC_PHY_CONTROL_LANE_RATE,                   /* Mbit/s, read */
    SOC_PHY_CONTROL_ALIGNMENT_MARKER_INTERVAL,   /* blocks between markers that align the lanes */
    SOC_PHY_CONTROL_UNIDIRECTIONAL,              /* sends without receiving a link */
    SOC_PHY_CONTROL_CODE_ERROR_LIMIT,            /* code errors after which the link is taken down */

    /* Driver of the transmitter. */
    SOC_PHY_CONTROL_PREEMPHASIS,                 /* weight of a bit that differs from the one before */
    SOC_PHY_CONTROL_DRIVER_CURRENT,              /* steps of the PHY */
    SOC_PHY_CONTROL_PRE_DRIVER_CURRENT,
    SOC_PHY_CONTROL_DRIVER_SUPPLY,               /* mV */
    SOC_PHY_CONTROL_TX_SWING,                    /* mV, peak to peak */
    SOC_PHY_CONTROL_TX_COMMON_MODE,              /* mV */
    SOC_PHY_CONTROL_TX_RISE_TIME,                /* ps */
    SOC_PHY_CONTROL_TX_IMPEDANCE,                /* ohm */
    SOC_PHY_CONTROL_TX_PPM_ADJUST,               /* of the clock, two's complement */
    SOC_PHY_CONTROL_TX_PHASE,                    /* of the clock, steps of the interpolator */

    /* Taps of the transmit filter; two's complement, in steps of the PHY. */
    SOC_PHY_CONTROL_TX_FIR_PRE2,                 /* two bits before the main one, and so on */
    SOC_PHY_CONTROL_TX_FIR_PRE,
    SOC_PHY_CONTROL_TX_FIR_MAIN,
    SOC_PHY_CONTROL_TX_FIR_POST,
    SOC_PHY_CONTROL_TX_FIR_POST2,
    SOC_PHY_CONTROL_TX_FIR_POST3,
    SOC_PHY_CONTROL_TX_FIR_FORCE,                /* the taps as set, whatever link training asks for */
    SOC_PHY_CONTROL_TX_FIR_PRESET,               /* number of a set of taps in the PHY */
    SOC_PHY_CONTROL_TX_PRECODER,
    SOC_PHY_CONTROL_RX_PRECODER,                 /* the other end's transmitter has it on */

    /* Gain and equaliser of the receiver; steps of the PHY. */
    SOC_PHY_CONTROL_EQUALIZER_BOOST,
    SOC_PHY_CONTROL_EQUALIZER_ADAPTATION,        /* follows the signal; off holds the values */
    SOC_PHY_CONTROL_RX_PEAK_FILTER,
    SOC_PHY_CONTROL_RX_LOW_FREQ_PEAK_FILTER,
    SOC_PHY_CONTROL_RX_VGA,                      /* gain of the amplifier */
    SOC_PHY_CONTROL_RX_VGA_LIMIT,
    SOC_PHY_CONTROL_RX_AMPLITUDE,                /* mV, read */
    SOC_PHY_CONTROL_RX_TERMINATION,              /* ohm */
    SOC_PHY_CONTROL_RX_COUPLING,                 /* 0 through a capacitor, 1 direct */
    SOC_PHY_CONTROL_RX_CHANNEL_LOSS,             /* expected, dB at half the bit rate */
    SOC_PHY_CONTROL_RX_FFE_PRE,                  /* feed-forward taps before and after the main one */
    SOC_PHY_CONTROL_RX_FFE_POST,

    /* Decision feedback of the receiver: taps by distance in bits, two's complement. */
    SOC_PHY_CONTROL_RX_DFE_TAP1,
    SOC_PHY_CONTROL_RX_DFE_TAP2,
    SOC_PHY_CONTROL_RX_DFE_TAP3,
    SOC_PHY_CONTROL_RX_DFE_TAP4,
    SOC_PHY_CONTROL_RX_DFE_TAP5,
    SOC_PHY_CONTROL_RX_DFE_ENABLE,
    SOC_PHY_CONTROL_RX_DFE_LOW_POWER,            /* first tap only */
    SOC_PHY_CONTROL_RX_DFE_FREEZE,

    /* Decision levels and sampling instant; two's complement. */
    SOC_PHY_CONTROL_RX_SLICER_DATA_OFFSET,       /* mV */
    SOC_PHY_CONTROL_RX_SLICER_UPPER_OFFSET,
    SOC_PHY_CONTROL_RX_SLICER_LOWER_OFFSET,
    SOC_PHY_CONTROL_RX_PHASE_OFFSET,             /* steps of the interpolator */

    /* State of the receiver; all read but the thresholds and the restart. */
    SOC_PHY_CONTROL_RX_SIGNAL_DETECT,
    SOC_PHY_CONTROL_RX_SIGNAL_DETECT_THRESHOLD,  /* mV */
    SOC_PHY_CONTROL_RX_LOSS_OF_SIGNAL,           /* since the last read */
    SOC_PHY_CONTROL_RX_CLOCK_LOCK,
    SOC_PHY_CONTROL_RX_CLOCK_BANDWIDTH,          /* of clock recovery, kHz */
    SOC_PHY_CONTROL_RX_PPM,                      /* the other end's clock, two's complement */
    SOC_PHY_CONTROL_RX_SEQ_DONE,                 /* start-up of the receiver is through */
    SOC_PHY_CONTROL_RX_BLOCK_LOCK,
    SOC_PHY_CONTROL_RX_LANE_ALIGNMENT,
    SOC_PHY_CONTROL_RX_SKEW,                     /* of the lane against the earliest one, bits */
    SOC_PHY_CONTROL_RX_SNR,                      /* tenths of dB */
    SOC_PHY_CONTROL_RX_HIGH_ERROR_RATE,
    SOC_PHY_CONTROL_RX_RESTART,

    /* Lanes: order, polarity and single lanes off. */
    SOC_PHY_CONTROL_TX_LANE_MAP,                 /* four bits per lane: the pin that it goes to */
    SOC_PHY_CONTROL_RX_LANE_MAP,
    SOC_PHY_CONTROL_LANE_SWAP,                   /* all lanes in reverse order */
    SOC_PHY_CONTROL_TX_POLARITY,                 /* 1: inverted */
    SOC_PHY_CONTROL_RX_POLARITY,
    SOC_PHY_CONTROL_TX_LANE_SQUELCH,
    SOC_PHY_CONTROL_RX_LANE_SQUELCH,
    SOC_PHY_CONTROL_TX_RESET,
    SOC_PHY_CONTROL_RX_RESET,
    SOC_PHY_CONTROL_LANE_RESET,
    SOC_PHY_CONTROL_TX_ELECTRICAL_IDLE,
    SOC_PHY_CONTROL_LANE_FAILOVER,               /* a standing-by lane takes over for a broken one */

    /* Test sequences. */
    SOC_PHY_CONTROL_PRBS_POLYNOMIAL,             /* SOC_PHY_PRBS_POLYNOMIAL_* */
    SOC_PHY_CONTROL_PRBS_TX_ENABLE,
    SOC_PHY_CONTROL_PRBS_TX_INVERT_DATA,
    SOC_PHY_CONTROL_PRBS_RX_ENABLE,
    SOC_PHY_CONTROL_PRBS_RX_INVERT_DATA,
    SOC_PHY_CONTROL_PRBS_RX_LOCK,                /* read */
    SOC_PHY_CONTROL_PRBS_RX_STATUS,              /* errors since the last read, all ones while unlocked */
    SOC_PHY_CONTROL_PRBS_ERROR_INJECT,           /* so many wrong bits */
    SOC_PHY_CONTROL_PATTERN_LENGTH,              /* bits of a pattern that is sent over and over */
    SOC_PHY_CONTROL_PATTERN_DATA,                /* its first 32 bits, lowest first */
    SOC_PHY_CONTROL_PATTERN_ENABLE,
    SOC_PHY_CONTROL_PACKET_TEST_ENABLE,          /* the PHY makes packets itself */
    SOC_PHY_CONTROL_PACKET_TEST_LENGTH,          /* bytes */
    SOC_PHY_CONTROL_PACKET_TEST_GAP,             /* byte times between packets */
    SOC_PHY_CONTROL_PACKET_TEST_RECEIVED,        /* since the last read */
    SOC_PHY_CONTROL_PACKET_TEST_ERRORS,          /* likewise */
    SOC_PHY_CONTROL_JITTER_PATTERN,              /* one of IEEE 802.3's jitter tests, 0 for none */

    /* Loopback, besides soc_phyctrl_loopback_set(). */
    SOC_PHY_CONTROL_LOOPBACK_MODE,               /* SOC_PHY_LOOPBACK_* */
    SOC_PHY_CONTROL_LOOPBACK_PCS,
    SOC_PHY_CONTROL_LOOPBACK_PMD,
    SOC_PHY_CONTROL_LOOPBACK_REMOTE,             /* sends back what comes in from the line */
    SOC_PHY_CONTROL_LOOPBACK_REMOTE_PCS,         /* likewise, decoded and coded again */
    SOC_PHY_CONTROL_LOOPBACK_INTERNAL,           /* in the internal PHY of a port with an external one */
    SOC_PHY_CONTROL_LOOPBACK_EXTERNAL,           /* a plug connects the pairs of the cable */

    /* Eye of the received signal. */
    SOC_PHY_CONTROL_EYE_MARGIN_LEFT,             /* thousandths of a bit time, read */
    SOC_PHY_CONTROL_EYE_MARGIN_RIGHT,
    SOC_PHY_CONTROL_EYE_MARGIN_UPPER,            /* mV, read */
    SOC_PHY_CONTROL_EYE_MARGIN_LOWER,
    SOC_PHY_CONTROL_EYE_SCAN_ERROR_RATE,         /* n for 10 to the power of -n at the margins */
    SOC_PHY_CONTROL_EYE_SCAN_TIME,               /* ms per point */
    SOC_PHY_CONTROL_EYE_SCAN_RUN,                /* 1 starts, 0 stops; reads 0 when it is through */

    /* Forward error correction. */
    SOC_PHY_CONTROL_FEC_MODE,                    /* SOC_PHY_FEC_* */
    SOC_PHY_CONTROL_FEC_ACTIVE,                  /* SOC_PHY_FEC_*, as negotiated, read */
    SOC_PHY_CONTROL_FEC_BYPASS_CORRECTION,       /* errors are found only; less delay */
    SOC_PHY_CONTROL_FEC_BYPASS_INDICATION,       /* uncorrected blocks are passed on unmarked */
    SOC_PHY_CONTROL_FEC_LOCK,                    /* read */
    SOC_PHY_CONTROL_FEC_CORRECTED_BLOCKS,        /* since the last read, and so the next two */
    SOC_PHY_CONTROL_FEC_UNCORRECTED_BLOCKS,
    SOC_PHY_CONTROL_FEC_SYMBOL_ERRORS,
    SOC_PHY_CONTROL_FEC_ERROR_INJECT,            /* so many wrong symbols */

    /* Autonegotiation. */
    SOC_PHY_CONTROL_AUTONEG_MODE,                /* SOC_PHY_AUTONEG_* */
    SOC_PHY_CONTROL_AUTONEG_TIMEOUT,             /* us */
    SOC_PHY_CONTROL_AUTONEG_RESTART,
    SOC_PHY_CONTROL_AUTONEG_RETRIES,             /* then the port goes to a forced speed; 0: no end */
    SOC_PHY_CONTROL_AUTONEG_NEXT_PAGE,           /* to be sent, 16 bits */
    SOC_PHY_CONTROL_AUTONEG_PARTNER_PAGE,        /* received, read */
    SOC_PHY_CONTROL_AUTONEG_NONCE_CHECK,         /* refuses to negotiate with itself */
    SOC_PHY_CONTROL_PARALLEL_DETECT,             /* finds the speed of an end that does not negotiate */
    SOC_PHY_CONTROL_SPEED_DOWNGRADE,             /* attempts at a speed before the next lower one is tried */
    SOC_PHY_CONTROL_MASTER_PREFERENCE,           /* SOC_PHY_MS_* to ask for */
    SOC_PHY_CONTROL_MASTER_FAULT,                /* both ends insist on the same, read */

    /* Link training over backplanes and copper cables. */
    SOC_PHY_CONTROL_LINK_TRAINING,
    SOC_PHY_CONTROL_LINK_TRAINING_RESTART,
    SOC_PHY_CONTROL_LINK_TRAINING_DONE,          /* read, and so the next */
    SOC_PHY_CONTROL_LINK_TRAINING_FAILURE,
    SOC_PHY_CONTROL_LINK_TRAINING_TIMEOUT,       /* ms */
    SOC_PHY_CONTROL_LINK_TRAINING_PRESET,        /* asks the other end for a known start */

    /* Link: how it is judged, and what happens on a change. */
    SOC_PHY_CONTROL_LINK_UP_DELAY,               /* ms for which it must be good */
    SOC_PHY_CONTROL_LINK_DOWN_DELAY,             /* ms for which it may be bad */
    SOC_PHY_CONTROL_LINK_FORCE,                  /* up whatever the receiver says */
    SOC_PHY_CONTROL_LINK_INTERRUPT,
    SOC_PHY_CONTROL_LINK_CHANGES,                /* since the last read */
    SOC_PHY_CONTROL_LOCAL_FAULT,                 /* read, and so the next */
    SOC_PHY_CONTROL_REMOTE_FAULT,
    SOC_PHY_CONTROL_REMOTE_FAULT_SEND,
    SOC_PHY_CONTROL_FAILOVER,                    /* to the other medium when the link is lost */

    /* Medium, and the module in the cage. */
    SOC_PHY_CONTROL_KIND,                        /* soc_phy_kind_t, read */
    SOC_PHY_CONTROL_MEDIA_TYPE,                  /* SOC_PHY_MEDIA_TYPE_* */
    SOC_PHY_CONTROL_MEDIUM_PREFERENCE,           /* SOC_PHY_MEDIUM_* to take where both have a link */
    SOC_PHY_CONTROL_MEDIUM_AUTO_DETECT,
    SOC_PHY_CONTROL_FIBER_DETECT,                /* by 0 the signal, 1 the pin of the module */
    SOC_PHY_CONTROL_MODULE_PRESENT,              /* read */
    SOC_PHY_CONTROL_MODULE_TX_DISABLE,
    SOC_PHY_CONTROL_MODULE_TX_FAULT,             /* read, and so the next two */
    SOC_PHY_CONTROL_MODULE_LOSS_OF_SIGNAL,
    SOC_PHY_CONTROL_MODULE_INTERRUPT,
    SOC_PHY_CONTROL_MODULE_RESET,
    SOC_PHY_CONTROL_MODULE_LOW_POWER,

    /* Copper cable. */
    SOC_PHY_CONTROL_CABLE_DIAG_MODE,             /* 0 short test, 1 full, 2 lengths only */
    SOC_PHY_CONTROL_CABLE_LENGTH,                /* m, estimated, read */
    SOC_PHY_CONTROL_CABLE_PAIR_ORDER,            /* four bits per pair, read */
    SOC_PHY_CONTROL_CABLE_PAIR_POLARITY,         /* bit n: pair n is reversed, read */
    SOC_PHY_CONTROL_CABLE_PAIR_SKEW,             /* ns, read */
    SOC_PHY_CONTROL_CROSSOVER_WITHOUT_AUTONEG,   /* finds the crossing of the pairs at a forced speed too */
    SOC_PHY_CONTROL_SHORT_CABLE,                 /* lower power on cables below 10 m */

    /* Ethernet over long copper cables. */
    SOC_PHY_CONTROL_LONGREACH_ENABLE,
    SOC_PHY_CONTROL_LONGREACH_SPEED,             /* Mbit/s */
    SOC_PHY_CONTROL_LONGREACH_PAIRS,             /* 1, 2 or 4 */
    SOC_PHY_CONTROL_LONGREACH_GAIN,
    SOC_PHY_CONTROL_LONGREACH_AUTONEG,
    SOC_PHY_CONTROL_LONGREACH_LOCAL_ABILITY,     /* set of SOC_PHY_LONGREACH_* to advertise */
    SOC_PHY_CONTROL_LONGREACH_REMOTE_ABILITY,    /* read, and so the next two */
    SOC_PHY_CONTROL_LONGREACH_CURRENT_ABILITY,
    SOC_PHY_CONTROL_LONGREACH_ACTIVE,
    SOC_PHY_CONTROL_LONGREACH_MASTER,

    /* Power. */
    SOC_PHY_CONTROL_POWER,                       /* SOC_PHY_POWER_* */
    SOC_PHY_CONTROL_POWER_AUTO_SLEEP_TIME,       /* ms without a signal before it sleeps */
    SOC_PHY_CONTROL_POWER_AUTO_WAKE_TIME,        /* ms for which it then wakes now and then */
    SOC_PHY_CONTROL_POWER_DOWN_ON_LINK_LOSS,
    SOC_PHY_CONTROL_OVER_CURRENT,                /* bit n: supply n is overloaded, read */
    SOC_PHY_CONTROL_TEMPERATURE,                 /* degrees Celsius, two's complement, read */
    SOC_PHY_CONTROL_TEMPERATURE_LIMIT,           /* degrees Celsius above which it switches itself off */
    SOC_PHY_CONTROL_SUPPLY_VOLTAGE,              /* mV, read */
    SOC_PHY_CONTROL_WAKE_ON_LAN,                 /* wakes the system on a packet made for that */

    /* Energy-efficient Ethernet. */
    SOC_PHY_CONTROL_EEE,
    SOC_PHY_CONTROL_EEE_AUTO,                    /* in the PHY, for a MAC that knows nothing of it */
    SOC_PHY_CONTROL_EEE_AUTO_FIXED_LATENCY,
    SOC_PHY_CONTROL_EEE_AUTO_IDLE_THRESHOLD,     /* us without packets before it sleeps */
    SOC_PHY_CONTROL_EEE_AUTO_BUFFER_LIMIT,       /* bytes waiting that wake it */
    SOC_PHY_CONTROL_EEE_TX_WAKE_TIME,            /* us */
    SOC_PHY_CONTROL_EEE_RX_WAKE_TIME,
    SOC_PHY_CONTROL_EEE_SLEEP_TIME,
    SOC_PHY_CONTROL_EEE_PARTNER,                 /* the other end has it, read */
    SOC_PHY_CONTROL_EEE_TX_EVENT_COUNT,          /* sleeps since the last read */
    SOC_PHY_CONTROL_EEE_RX_EVENT_COUNT,
    SOC_PHY_CONTROL_EEE_TX_DURATION,             /* us asleep since the last read */
    SOC_PHY_CONTROL_EEE_RX_DURATION,
    SOC_PHY_CONTROL_EEE_STATISTICS_CLEAR,

    /* Synchronous Ethernet: clocks that the PHY takes and gives. */
    SOC_PHY_CONTROL_CLOCK_ENABLE,                /* gives a clock */
    SOC_PHY_CONTROL_CLOCK_SOURCE,                /* SOC_PHY_CLOCK_SOURCE_*: what it is made from */
    SOC_PHY_CONTROL_CLOCK_FREQUENCY,             /* kHz */
    SOC_PHY_CONTROL_CLOCK_SQUELCH_ON_LINK_LOSS,
    SOC_PHY_CONTROL_CLOCK_LOCK_LOST,             /* since the last read */
    SOC_PHY_CONTROL_PRIMARY_RECOVERED_CLOCK,     /* this port's clock is the first one given */
    SOC_PHY_CONTROL_BACKUP_RECOVERED_CLOCK,
    SOC_PHY_CONTROL_RECOVERED_CLOCK_DIVIDER,     /* bit rate divided by the frequency */
    SOC_PHY_CONTROL_REFERENCE_CLOCK_FREQUENCY,   /* kHz */
    SOC_PHY_CONTROL_PLL_LOCK,                    /* read */
    SOC_PHY_CONTROL_PLL_DIVIDER,                 /* the lane's rate divided by the reference clock */
    SOC_PHY_CONTROL_PLL_SELECT,                  /* which of the PHY's loops the lane runs on */
    SOC_PHY_CONTROL_PLL_CALIBRATION_RESTART,

    /* Timestamps in the PHY. */
    SOC_PHY_CONTROL_TIMESYNC_ENABLE,
    SOC_PHY_CONTROL_TIMESYNC_ONE_STEP,           /* writes the time into the packet that it belongs to */
    SOC_PHY_CONTROL_TIMESYNC_PROTOCOLS,          /* bits: 0 Ethernet, 1 IPv4, 2 IPv6, 3 MPLS */
    SOC_PHY_CONTROL_TIMESYNC_CLOCK_STEP,         /* fraction of a ns per cycle */
    SOC_PHY_CONTROL_TIMESYNC_LOCAL_TIME,         /* ns, lower half */
    SOC_PHY_CONTROL_TIMESYNC_LOCAL_TIME_UPPER,
    SOC_PHY_CONTROL_TIMESYNC_LOAD,               /* takes the time over with the next pulse */
    SOC_PHY_CONTROL_TIMESYNC_PULSE_MODE,         /* 0 none, 1 the PHY follows a pulse, 2 it gives one */
    SOC_PHY_CONTROL_TIMESYNC_TX_OFFSET,          /* ns from the stamp to the line, two's complement */
    SOC_PHY_CONTROL_TIMESYNC_RX_OFFSET,
    SOC_PHY_CONTROL_TIMESYNC_LINK_DELAY,         /* ns */
    SOC_PHY_CONTROL_TIMESYNC_CAPTURE_PENDING,    /* times that wait to be read, read */
    SOC_PHY_CONTROL_TIMESYNC_INTERRUPT_MASK,

    /* Encryption of the line. */
    SOC_PHY_CONTROL_MACSEC_ENABLE,
    SOC_PHY_CONTROL_MACSEC_BYPASS,               /* unprotected packets pass */
    SOC_PHY_CONTROL_MACSEC_MAC_ENABLE,           /* MACs in the PHY, between line and system side */
    SOC_PHY_CONTROL_MACSEC_FRAME_SIZE_MAX,       /* bytes */
    SOC_PHY_CONTROL_MACSEC_FIXED_LATENCY,

    /* Firmware. */
    SOC_PHY_CONTROL_FIRMWARE_VERSION,            /* read, and so the next four */
    SOC_PHY_CONTROL_FIRMWARE_SIZE,               /* bytes */
    SOC_PHY_CONTROL_FIRMWARE_SIZE_MAX,
    SOC_PHY_CONTROL_FIRMWARE_CRC,                /* CRC-32 of IEEE 802.3 over what is loaded */
    SOC_PHY_CONTROL_FIRMWARE_RUNNING,
    SOC_PHY_CONTROL_FIRMWARE_MODE,               /* SOC_PHY_MEDIA_TYPE_* that it is tuned for */
    SOC_PHY_CONTROL_FIRMWARE_LANE_ADAPTATION,    /* the firmware looks after the lane */
    SOC_PHY_CONTROL_FIRMWARE_LOAD_VERIFY,        /* a load is read back */
    SOC_PHY_CONTROL_FIRMWARE_RESTART,

    /* Lamps. */
    SOC_PHY_CONTROL_LED_MODE,                    /* what the port's lamps show, as the PHY counts it */
    SOC_PHY_CONTROL_LED_BLINK_RATE,              /* ms per change */
    SOC_PHY_CONTROL_LED_INVERT,
    SOC_PHY_CONTROL_LED_FORCE,                   /* bit n: lamp n is on */

    /* System side of an external PHY. */
    SOC_PHY_CONTROL_SYSTEM_INTERFACE,            /* SOC_PHY_INTERFACE_* */
    SOC_PHY_CONTROL_SYSTEM_LINK,                 /* read */
    SOC_PHY_CONTROL_SYSTEM_AUTONEG,
    SOC_PHY_CONTROL_SYSTEM_RX_DELAY,             /* of the clock against the data, ps */
    SOC_PHY_CONTROL_SYSTEM_TX_DELAY,
    SOC_PHY_CONTROL_GEARBOX,                     /* number of lanes differs between the sides */
    SOC_PHY_CONTROL_CROSS_CONNECT,               /* lane of the other side that this one is joined to */

    /* Diagnostics. */
    SOC_PHY_CONTROL_SUPERISOLATE,                /* neither sends nor negotiates, though it is powered */
    SOC_PHY_CONTROL_MDIO_FAULTS,                 /* failed accesses since the last read */
    SOC_PHY_CONTROL_DUMP,                        /* prints the PHY's registers */

    SOC_PHY_CONTROL_COUNT
} soc_phy_control_t;

#endif
