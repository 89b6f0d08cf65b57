#include "l3_routes.h"

namespace sim {

bool L3Routes::insert(const L3Entry &entry, std::unique_ptr<Details> details)
{
    const bool is_ip6 = entry.is_ip6();
    if (count(is_ip6) >= (is_ip6 ? ip6_capacity : ip4_capacity)) {
        return false;
    }
    if (tables_.size() <= entry.vrf) {
        tables_.resize(entry.vrf + 1u);
    }
    std::unique_ptr<Prefixes> &prefixes = tables_[entry.vrf];
    if (prefixes == nullptr) {
        prefixes = std::make_unique<Prefixes>();
    }
    const std::uint32_t place = add(entry, std::move(details));
    try {
        prefixes->of_version[is_ip6].put(entry.network, entry.length, place);
    } catch (...) {
        erase(place);
        throw;
    }
    return true;
}

void L3Routes::remove(std::uint32_t place)
{
    const L3Entry &entry = at(place);
    tables_[entry.vrf]->of_version[entry.is_ip6()].remove(entry.network, entry.length);
    erase(place);
}

void L3Routes::remove_all()
{
    tables_.clear();
    clear();
}

}  // namespace sim
