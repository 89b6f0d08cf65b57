#include "l2.h"

#include "events.h"
#include "l2_flags.h"
#include "vlan.h"

#include <sim/traffic.h>

namespace sim {

void L2LearnCounts::add(const bcm_l2_addr_t &address, int change)
{
    counts_[{BCM_L2_LEARN_LIMIT_SYSTEM, 0}] += change;
    counts_[{BCM_L2_LEARN_LIMIT_VLAN, address.vid}] += change;
    Destination at;
    if (resolve_address(address, &at) != BCM_E_NONE) {
        return;
    }
    if (is_own_port(at)) {
        counts_[{BCM_L2_LEARN_LIMIT_PORT, at.id}] += change;
    } else if (at.kind == Destination::Kind::trunk) {
        counts_[{BCM_L2_LEARN_LIMIT_TRUNK, at.id}] += change;
    }
}

int L2LearnCounts::of(uint32 selector, int id) const
{
    const auto found = counts_.find({selector, id});
    return found != counts_.end() ? found->second : 0;
}

L2State::L2State(Switch &sw) : ageing_([unit = sw.unit] { sim_l2_age_step(unit); })
{
    age_every(age_seconds_default);
}

void L2State::age_every(int seconds)
{
    settings.age_seconds = seconds;
    if (seconds > 0) {
        ageing_.repeat(static_cast<Time>(seconds) * nanoseconds_per_second);
    } else {
        ageing_.stop();
    }
}

void L2State::clear()
{
    rows.touch();
    addresses.clear();
    learnt.clear();
    counters.clear();
    cache.clear();
    tunnels.clear();
    authorised.clear();
    stations.clear();
    order_stations();
    egress.clear();
    mac_ports.clear();
}

void L2State::retire()
{
    clear();
    settings.subscribers.clear();
    ageing_.stop();
}

int l2_check(const Switch &sw, bcm_l2_addr_t *address)
{
    if (!VlanTable::valid(address->vid) || (address->flags & ~l2_known_flags) != 0) {
        return BCM_E_PARAM;
    }
    if (!vlans_of(sw).has(address->vid)) {
        return BCM_E_NOT_FOUND;
    }
    Destination to;
    const int rc = resolve_address(*address, &to);
    if (rc == BCM_E_NONE) {
        set_destination(address, to);
    }
    return rc;
}

int l2_enter(Switch &sw, const bcm_l2_addr_t &address, unsigned state, int operation)
{
    L2State &l2 = l2_of(sw);
    const std::size_t position = l2.addresses.find(l2_key(address.mac, address.vid));
    const bool replaces = position != L2Table::none;
    const bool replaces_learnt = replaces && (l2.addresses.state(position) & l2_learnt);
    const bcm_l2_addr_t before = replaces ? l2.addresses.record(position) : bcm_l2_addr_t{};
    if (state & l2_learnt) {
        // Makes room for the counts, so that nothing can fail when the entry is there.
        l2.learnt.add(address, 0);
    }
    l2.rows.touch();
    if (!l2.addresses.put(address, state)) {
        raise(sw, state & l2_learnt ? Event{bcmSwitchEventLearnOverflow}
                                    : Event{bcmSwitchEventTableFull, bcmSwitchObjectL2EntryMax});
        return BCM_E_FULL;
    }
    if (replaces_learnt) {
        l2.learnt.add(before, -1);
    }
    if (state & l2_learnt) {
        l2.learnt.add(address, 1);
    }
    if (replaces && operation == BCM_L2_CALLBACK_ADD) {
        l2_notify(sw, before, BCM_L2_CALLBACK_DELETE);
    }
    l2_notify(sw, address, operation);
    return BCM_E_NONE;
}

void l2_remove(Switch &sw, std::size_t position, int operation)
{
    L2State &l2 = l2_of(sw);
    const bcm_l2_addr_t before = l2.addresses.record(position);
    if (l2.addresses.state(position) & l2_learnt) {
        l2.learnt.add(before, -1);
    }
    l2.counters.erase(l2_key(before.mac, before.vid));
    l2.addresses.erase(position);
    l2.rows.touch();
    l2_notify(sw, before, operation);
}

void l2_notify(Switch &sw, const bcm_l2_addr_t &address, int operation)
{
    if (operation == l2_silent) {
        return;
    }
    l2_of(sw).settings.subscribers.each([unit = sw.unit, address, operation](const auto &subscriber) {
        // Who is told may write to what it gets.
        bcm_l2_addr_t copy = address;
        subscriber.function(unit, &copy, operation, subscriber.user_data);
    });
}

}  // namespace sim
