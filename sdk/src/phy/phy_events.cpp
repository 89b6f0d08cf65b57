/// What a MAC tells the driver of its PHY.
#include "begin.h"
#include "phy.h"
#include "phy_settings.h"
#include "sim_phyctrl.h"

using namespace sim;

namespace {

bool is_flag(uint32 value)
{
    return value <= 1;
}

/// The driver looks at the link after it has been told of it: what was lost before does not count any more.
int report_link(PhyPort &port, bool up)
{
    port.reported_link = up;
    port.outer().link_lost = !up;
    return SOC_E_NONE;
}

int take_event(PhyPort &port, int event, uint32 data)
{
    Phy &phy = port.outer();
    const int number = static_cast<int>(data);
    switch (event) {
    case phyEventInterface:
        return set_interface(phy, number);
    case phyEventDuplex:
        return set_duplex(port, phy, number);
    case phyEventSpeed:
        return set_speed(port, phy, number);
    case phyEventAutoneg:
        return is_flag(data) ? set_autonegotiation(port, phy, number) : static_cast<int>(SOC_E_PARAM);
    case phyEventStop:
        phy.stopped |= data;
        return SOC_E_NONE;
    case phyEventResume:
        phy.stopped &= ~data;
        return SOC_E_NONE;
    case phyEventTxFifoReset:
        phy.link_lost = phy.link_lost || rate_of(number) != nullptr;
        return rate_of(number) == nullptr ? SOC_E_PARAM : SOC_E_NONE;
    case phyEventLinkUp:
        return report_link(port, true);
    case phyEventLinkDown:
        return report_link(port, false);
    case phyEventEncapMode:
        return SOC_E_UNAVAIL;
    default:
        return SOC_E_PARAM;
    }
}

}  // namespace

extern "C" {

int sim_soc_phyctrl_notify(int unit, soc_port_t port, soc_phy_event_t event, uint32 data)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return take_event(own, static_cast<int>(event), data);
    });
}

int sim_soc_phyctrl_linkup_evt(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, ready_phy(port)).then([](PhyPort &own) { return report_link(own, true); });
}

int sim_soc_phyctrl_linkdn_evt(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, ready_phy(port)).then([](PhyPort &own) { return report_link(own, false); });
}

int sim_soc_phyctrl_link_get(int unit, soc_port_t port, int *link)
{
    return begin(unit, chip_runs, given(link), ready_phy(port)).then([&](PhyPort &own) {
        *link = link_of(own).up();
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_link_change(int unit, soc_port_t port, int *link)
{
    return begin(unit, chip_runs, given(link), ready_phy(port)).then([&](PhyPort &own) {
        if (*link != 0 && *link != 1) {
            return static_cast<int>(SOC_E_PARAM);
        }
        // The PHY knows best.
        *link = link_of(own).up();
        return *link != own.reported_link ? report_link(own, *link != 0) : static_cast<int>(SOC_E_NONE);
    });
}

int sim_soc_phyctrl_linkfault_get(int unit, soc_port_t port, int *fault)
{
    return begin(unit, chip_runs, given(fault), ready_phy(port)).then([&](PhyPort &own) {
        *fault = has_fault(own, own.outer());
        return SOC_E_NONE;
    });
}

}  // extern "C"
