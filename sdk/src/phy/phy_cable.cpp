/// Cables: plugged, pulled, damaged, and leading to ports.
#include "begin.h"
#include "phy.h"

#include <sim/cable.h>

using namespace sim;

namespace {

uint32 sockets_of(const PhyPort &port)
{
    uint32 sockets = 0;
    for (const MediumAbility &ability : port.outer().kind.media) {
        sockets |= 1u << ability.medium;
    }
    return sockets;
}

/// Changes the cable in a port. A cable that led to a port is out there too.
void plug(PhyUnit &phys, PhyPort &port, const Cable &cable)
{
    const std::optional<CableEnd> before = port.cable.partner;
    phys.plug(port.number, cable);
    if (PhyUnit *others = before ? phys_of(before->unit) : nullptr) {
        others->plug(before->port, Cable(0, 1));
        tell_changes(before->unit, others->of(before->port));
    }
}

}  // namespace

extern "C" {

int sim_cable_plug(int unit, int port, uint32 media, int metres)
{
    return begin(unit, chip_runs, phy_port(port)).then([&](PhyUnit &phys, PhyPort &own) {
        if (media & ~sockets_of(own) || metres <= 0) {
            return SOC_E_PARAM;
        }
        plug(phys, own, Cable(media, metres));
        return SOC_E_NONE;
    });
}

int sim_cable_pull(int unit, int port)
{
    return sim_cable_plug(unit, port, 0, 1);
}

int sim_cable_join(int unit, int port, int other_unit, int other_port, int metres)
{
    return begin(unit, chip_runs, phy_port(port)).then([&](PhyUnit &phys, PhyPort &own) {
        return begin(other_unit, chip_runs, phy_port(other_port)).then([&](PhyUnit &others, PhyPort &other) {
            const uint32 media = sockets_of(own) & sockets_of(other);
            if (&own == &other || media == 0 || metres <= 0) {
                return SOC_E_PARAM;
            }
            // The lowest that both have, which is the one that copper ports are meant for.
            Cable cable(media & ~(media - 1), metres);
            plug(phys, own, Cable(0, 1));
            plug(others, other, Cable(0, 1));
            cable.partner = CableEnd{other_unit, other.number};
            phys.plug(own.number, cable);
            cable.partner = CableEnd{unit, own.number};
            others.plug(other.number, cable);
            return SOC_E_NONE;
        });
    });
}

int sim_cable_flap(int unit, int port, int times)
{
    return begin(unit, chip_runs, phy_port(port)).then([&](PhyUnit &phys, PhyPort &own) {
        if (times < 1) {
            return SOC_E_PARAM;
        }
        if (own.cable.media == 0) {
            return SOC_E_NOT_FOUND;
        }
        for (int time = 0; time < times; ++time) {
            const Cable cable = own.cable;
            Cable none(0, cable.metres);
            none.partner = cable.partner;
            for (const Cable &next : {none, cable}) {
                phys.plug(own.number, next);
                tell_changes(unit, own);
                // Who is told may have done anything.
                if (phys_of(unit) != &phys) {
                    return SOC_E_NONE;
                }
            }
        }
        return SOC_E_NONE;
    });
}

int sim_cable_partner_get(int unit, int port, int *other_unit, int *other_port)
{
    return begin(unit, chip_runs, given(other_unit, other_port), phy_port(port))
        .then([&](PhyUnit &, PhyPort &own) {
            if (!own.cable.partner) {
                return SOC_E_NOT_FOUND;
            }
            *other_unit = own.cable.partner->unit;
            *other_port = own.cable.partner->port;
            return SOC_E_NONE;
        });
}

int sim_cable_pair_set(int unit, int port, int pair, _shr_port_cable_state_t state, int metres)
{
    return begin(unit, chip_runs, phy_port(port)).then([&](PhyUnit &, PhyPort &own) {
        if (pair < 0 || pair >= _SHR_PORT_CABLE_PAIRS || static_cast<int>(state) < 0
            || state >= _SHR_PORT_CABLE_STATE_COUNT || metres <= 0) {
            return SOC_E_PARAM;
        }
        if (!(own.cable.media >> _SHR_PORT_MEDIUM_COPPER & 1)) {
            return SOC_E_NOT_FOUND;
        }
        const bool whole = state == _SHR_PORT_CABLE_STATE_OK;
        own.cable.pairs[static_cast<std::size_t>(pair)] = {state, whole ? own.cable.metres : metres};
        return SOC_E_NONE;
    });
}

}  // extern "C"
