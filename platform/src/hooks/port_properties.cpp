#include "port_properties.h"

std::vector<Property> portProperties(int port, const tridentPortMap_t *map)
{
    std::string const of_port = "_" + std::to_string(port);
    const tridentPortMap_t wiring = map ? *map : tridentPortMap_t();
    std::vector<Property> properties;
    auto add = [&](bool applies, const char *what, const std::string &value) {
        properties.push_back({what + of_port, applies ? std::optional<std::string>(value) : std::nullopt});
    };
    auto addNumber = [&](bool applies, const char *what, unsigned int number) {
        add(applies, what, std::to_string(number));
    };
    add(map, "port_map", std::to_string(wiring.warpCore) + "." + std::to_string(wiring.phyLane));
    addNumber(map, "phy_tx_lane", static_cast<unsigned int>(wiring.txLane));
    addNumber(map, "phy_rx_lane", static_cast<unsigned int>(wiring.rxLane));
    addNumber(map, "phy_tx_polarity_flip", wiring.txPolarity);
    addNumber(map, "phy_rx_polarity_flip", wiring.rxPolarity);
    addNumber(map, "xcvr_lane", static_cast<unsigned int>(wiring.xcvrLane));
    const bool has_phy = map && wiring.phyType != quorelPhyNone;
    addNumber(has_phy, "ext_phy_type", wiring.phyType);
    addNumber(has_phy, "ext_phy_mdio_addr", wiring.mdioAddr);
    addNumber(has_phy, "ext_phy_tx_polarity_flip", wiring.phyTxPolarity);
    addNumber(has_phy, "ext_phy_rx_polarity_flip", wiring.phyRxPolarity);
    return properties;
}
