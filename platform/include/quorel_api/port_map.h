/*
 * How one port of the board is wired to the switch chip and to its PHY.
 */
#ifndef QUOREL_API_PORT_MAP_H
#define QUOREL_API_PORT_MAP_H

#include <stdbool.h>

/* Kinds of PHY between the switch chip and the port. */
typedef enum quorelPhyType_e {
    quorelPhyNone,
    quorelPhyCopper,
    quorelPhyGearbox,
    quorelPhyRetimer
} quorelPhyType_t;

/* Lanes count from 0; what is said of the PHY counts only if there is one. */
typedef struct tridentPortMap_s {
    int speed;    /* Mbit/s, a speed that the switch's ports have */
    int warpCore; /* SerDes core, 0 to 63 */
    int phyLane;  /* lane within the core, 0 to 7; a lane has one port */
    int txLane;   /* 0 to 7 */
    int rxLane;
    bool txPolarity; /* inverted */
    bool rxPolarity;
    quorelPhyType_t phyType;
    unsigned int mdioAddr; /* of the PHY, 0 to 0x3ff */
    bool phyTxPolarity;
    bool phyRxPolarity;
    int xcvrLane; /* lane of the transceiver, 0 to 7 */
} tridentPortMap_t;

#endif
