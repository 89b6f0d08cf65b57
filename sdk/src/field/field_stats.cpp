#include "field.h"
#include "sim_field.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace sim {

namespace {

namespace at = field_places;

using Filter = bool (*)(const FieldKey &);

template <unsigned color>
bool has_color(const FieldKey &key)
{
    return key.get(at::color) == color;
}

template <unsigned color>
bool has_other_color(const FieldKey &key)
{
    return key.get(at::color) != color;
}

template <FieldHeader header>
bool has_header(const FieldKey &key)
{
    return key.is(header);
}

bool is_unicast(const FieldKey &key)
{
    return key.get(at::broadcast) == 0 && key.get(at::multicast) == 0;
}

bool is_multicast(const FieldKey &key)
{
    return key.get(at::multicast) != 0;
}

bool is_broadcast(const FieldKey &key)
{
    return key.get(at::broadcast) != 0;
}

bool is_not_ip(const FieldKey &key)
{
    return !key.is(FieldHeader::ip);
}

bool is_tunnelled(const FieldKey &key)
{
    FieldKey further = key;
    read_further_headers(further);
    return further.get(at::tunnel_type) >> (bcmFieldTunnelTypeNone + 1) != 0;
}

constexpr unsigned green = BCM_FIELD_COLOR_GREEN, yellow = BCM_FIELD_COLOR_YELLOW, red = BCM_FIELD_COLOR_RED;

/// What is counted: bytes by the kind and packets by the one behind it.
struct Counted {
    bcm_field_stat_t bytes;
    Filter is_for;
    FieldFate fate = FieldFate::none;
    bool is_of_policers = false;
};

constexpr Counted counted_kinds[] = {
    {bcmFieldStatBytes, nullptr},
    {bcmFieldStatGreenBytes, has_color<green>},
    {bcmFieldStatYellowBytes, has_color<yellow>},
    {bcmFieldStatRedBytes, has_color<red>},
    {bcmFieldStatNotGreenBytes, has_other_color<green>},
    {bcmFieldStatNotYellowBytes, has_other_color<yellow>},
    {bcmFieldStatNotRedBytes, has_other_color<red>},
    {bcmFieldStatForwardedBytes, nullptr, FieldFate::forwarded},
    {bcmFieldStatGreenForwardedBytes, has_color<green>, FieldFate::forwarded},
    {bcmFieldStatYellowForwardedBytes, has_color<yellow>, FieldFate::forwarded},
    {bcmFieldStatRedForwardedBytes, has_color<red>, FieldFate::forwarded},
    {bcmFieldStatDroppedBytes, nullptr, FieldFate::dropped},
    {bcmFieldStatGreenDroppedBytes, has_color<green>, FieldFate::dropped},
    {bcmFieldStatYellowDroppedBytes, has_color<yellow>, FieldFate::dropped},
    {bcmFieldStatRedDroppedBytes, has_color<red>, FieldFate::dropped},
    {bcmFieldStatCopiedToCpuBytes, nullptr, FieldFate::copied_to_cpu},
    {bcmFieldStatMirroredBytes, nullptr, FieldFate::mirrored},
    {bcmFieldStatRedirectedBytes, nullptr, FieldFate::redirected},
    {bcmFieldStatReplicatedBytes, nullptr, FieldFate::replicated},
    {bcmFieldStatInProfileBytes, has_color<green>, FieldFate::none, true},
    {bcmFieldStatOutProfileBytes, has_other_color<green>, FieldFate::none, true},
    {bcmFieldStatUnicastBytes, is_unicast},
    {bcmFieldStatMulticastBytes, is_multicast},
    {bcmFieldStatBroadcastBytes, is_broadcast},
    {bcmFieldStatNonIpBytes, is_not_ip},
    {bcmFieldStatIp4Bytes, has_header<FieldHeader::ip4>},
    {bcmFieldStatIp6Bytes, has_header<FieldHeader::ip6>},
    {bcmFieldStatTcpBytes, has_header<FieldHeader::tcp>},
    {bcmFieldStatUdpBytes, has_header<FieldHeader::udp>},
    {bcmFieldStatTunnelledBytes, is_tunnelled},
};

/// Null if no packet is of the kind when it meets entries: those with errors do not come so far, and no queue marks any.
const Counted *counted(bcm_field_stat_t kind)
{
    const auto found =
        std::find_if(std::begin(counted_kinds), std::end(counted_kinds),
                     [kind](const Counted &each) { return kind == each.bytes || kind == each.bytes + 1; });
    return found != std::end(counted_kinds) ? found : nullptr;
}

bool is_kind(bcm_field_stat_t kind)
{
    return static_cast<int>(kind) >= 0 && kind < bcmFieldStatCount;
}

bool is_counted(bcm_field_stat_t kind)
{
    return counted(kind) != nullptr;
}

int make_stat(FieldState &state, bcm_field_group_t group, int count, const bcm_field_stat_t *kinds, int *id,
              bool is_id_given)
{
    const bcm_field_stat_t *end = kinds + std::max(count, 0);
    if (count <= 0 || !std::all_of(kinds, end, is_kind)) {
        return BCM_E_PARAM;
    }
    if (!std::all_of(kinds, end, is_counted)) {
        return BCM_E_UNAVAIL;
    }
    int chosen = is_id_given ? *id : 1;
    if (chosen < 1) {
        return BCM_E_PARAM;
    }
    if (is_id_given && state.stats.count(chosen) != 0) {
        return BCM_E_EXISTS;
    }
    if (state.stats.size() >= static_cast<std::size_t>(field_stat_max)) {
        return BCM_E_RESOURCE;
    }
    if (!is_id_given && !state.stats.empty()
        && state.stats.rbegin()->first < std::numeric_limits<int>::max()) {
        chosen = state.stats.rbegin()->first + 1;
    }
    while (!is_id_given && state.stats.count(chosen) != 0) {
        ++chosen;
    }
    state.stats.emplace(chosen, FieldStat{group, {kinds, end}});
    *id = chosen;
    return BCM_E_NONE;
}

auto field_stat(int stat)
{
    return [stat](Switch &sw, auto next) -> int {
        const auto found = fields_of(sw).stats.find(stat);
        return found != fields_of(sw).stats.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

/// One of its counters: BCM_E_NOT_FOUND; BCM_E_PARAM if none counts so.
int find_value(FieldStat &stat, bcm_field_stat_t kind, uint64 **value)
{
    const auto found = std::find_if(stat.counters.begin(), stat.counters.end(),
                                    [kind](const FieldCounter &each) { return each.kind == kind; });
    if (found == stat.counters.end()) {
        return is_kind(kind) ? BCM_E_NOT_FOUND : BCM_E_PARAM;
    }
    *value = &found->value;
    return BCM_E_NONE;
}

template <class Number>
int set_value(int unit, int stat_id, bcm_field_stat_t stat, Number number)
{
    return begin(unit, ready<FieldState>, field_stat(stat_id)).then([&](FieldState &, FieldStat &found) {
        uint64 *value = nullptr;
        const int status = find_value(found, stat, &value);
        if (status == BCM_E_NONE) {
            *value = number;
        }
        return status;
    });
}

template <class Number>
int get_value(int unit, int stat_id, bcm_field_stat_t stat, Number *number)
{
    return begin(unit, ready<FieldState>, given(number), field_stat(stat_id))
        .then([&](FieldState &, FieldStat &found) {
            uint64 *value = nullptr;
            const int status = find_value(found, stat, &value);
            if (status == BCM_E_NONE) {
                *number = static_cast<Number>(*value);
            }
            return status;
        });
}

int set_all(int unit, int stat_id, uint64 number)
{
    return begin(unit, ready<FieldState>, field_stat(stat_id)).then([&](FieldState &, FieldStat &found) {
        for (FieldCounter &counter : found.counters) {
            counter.value = number;
        }
    });
}

template <class Number>
int get_values(int unit, int stat_id, int count, const bcm_field_stat_t *kinds, Number *numbers)
{
    return begin(unit, ready<FieldState>, given(kinds, numbers), field_stat(stat_id))
        .then([&](FieldState &, FieldStat &found) -> int {
            if (count < 0) {
                return BCM_E_PARAM;
            }
            for (int i = 0; i < count; ++i) {
                uint64 *value = nullptr;
                const int status = find_value(found, kinds[i], &value);
                if (status != BCM_E_NONE) {
                    return status;
                }
                numbers[i] = static_cast<Number>(*value);
            }
            return BCM_E_NONE;
        });
}

/// Counters of an entry begin and end to count at once. `place` is one of the entry's.
void put(FieldState &state, FieldEntry &entry, int &place, int id)
{
    if (id != 0) {
        ++state.stats.at(id).uses;
    } else {
        --state.stats.at(place).uses;
    }
    place = id;
    if (entry.installed != nullptr) {
        update_counters(state, entry, *entry.installed);
    }
}

/// Places in FieldStats: that of what is attached without a level, and those of levels.
constexpr std::size_t first_place = 0;

std::size_t place_of(int level)
{
    return level >= 0 ? static_cast<std::size_t>(level) + 1 : std::tuple_size_v<FieldStats>;
}

/// BCM_E_PARAM: no such place.
auto stat_place(std::size_t place)
{
    return [place](Switch &, auto next) -> int {
        return place < std::tuple_size_v<FieldStats> ? next() : static_cast<int>(BCM_E_PARAM);
    };
}

int attach(int unit, std::size_t place, bcm_field_entry_t entry, int stat_id)
{
    return begin(unit, ready<FieldState>, stat_place(place), field_entry(entry), field_stat(stat_id))
        .then([&](FieldState &state, FieldEntry &found, const FieldStat &stat) -> int {
            const bool has_it =
                std::find(found.stats.begin(), found.stats.end(), stat_id) != found.stats.end();
            if (found.stats[place] != 0 || has_it) {
                return BCM_E_EXISTS;
            }
            if (stat.group != found.group) {
                return BCM_E_PARAM;
            }
            put(state, found, found.stats[place], stat_id);
            return BCM_E_NONE;
        });
}

int get_attached(int unit, std::size_t place, bcm_field_entry_t entry, int *stat_id)
{
    return begin(unit, ready<FieldState>, given(stat_id), stat_place(place), field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) -> int {
            if (found.stats[place] == 0) {
                return BCM_E_NOT_FOUND;
            }
            *stat_id = found.stats[place];
            return BCM_E_NONE;
        });
}

/// The counters of bytes and of packets of a kind, whichever of the two it is; null for what is not counted.
struct Pair {
    Pair(FieldStat &stat, bcm_field_stat_t kind)
    {
        const int bytes_kind = kind - kind % 2;
        find_value(stat, static_cast<bcm_field_stat_t>(bytes_kind), &bytes);
        find_value(stat, static_cast<bcm_field_stat_t>(bytes_kind + 1), &packets);
    }

    bool is_there() const { return bytes != nullptr || packets != nullptr; }

    uint64 *bytes = nullptr, *packets = nullptr;
};

/// Objects are tables of one counter each.
bool are_first(uint32 count, const uint32 *indexes)
{
    return indexes != nullptr
           && std::all_of(indexes, indexes + count, [](uint32 index) { return index == 0; });
}

/// What is not counted is 0. BCM_E_NOT_FOUND: neither packets nor bytes are.
int get_counters(int unit, int stat_id, bcm_field_stat_t stat, uint32 count, const uint32 *indexes,
                 bcm_stat_value_t *values)
{
    return begin(unit, ready<FieldState>, given(values), field_stat(stat_id))
        .then([&](FieldState &, FieldStat &found) -> int {
            if (!is_kind(stat) || !are_first(count, indexes)) {
                return BCM_E_PARAM;
            }
            const Pair pair(found, stat);
            if (!pair.is_there()) {
                return BCM_E_NOT_FOUND;
            }
            bcm_stat_value_t value = {};
            value.bytes = pair.bytes != nullptr ? *pair.bytes : 0;
            value.packets64 = pair.packets != nullptr ? *pair.packets : 0;
            value.packets = static_cast<uint32>(value.packets64);
            std::fill_n(values, count, value);
            return BCM_E_NONE;
        });
}

}  // namespace

FieldCounter::FieldCounter(bcm_field_stat_t of) : kind(of)
{
    const Counted &counted_so = *counted(of);
    is_for = counted_so.is_for;
    fate = counted_so.fate;
    is_of_policers = counted_so.is_of_policers;
}

void update_counters(FieldState &state, const FieldEntry &entry, FieldInstalled &installed)
{
    installed.counters.clear();
    installed.counters_of_fates.clear();
    const bool has_policers = std::any_of(installed.policers.begin(), installed.policers.end(),
                                          [](const PolicerUse &use) { return use.id != 0; });
    const auto add = [&](int id) {
        for (FieldCounter &counter : state.stats.at(id).counters) {
            if (counter.fate != FieldFate::none) {
                installed.counters_of_fates.emplace_back(id, &counter);
            } else if (has_policers || !counter.is_of_policers) {
                installed.counters.push_back(&counter);
            }
        }
    };
    for (const int stat : entry.stats) {
        if (stat != 0) {
            add(stat);
        }
    }
    for (const int stat : installed.named) {
        add(stat);
    }
}

[[gnu::cold]] void put_off_counters(FieldState &state, const FieldInstalled &installed, const FieldKey &key,
                                    std::size_t length)
{
    for (const auto &[stat, counter] : installed.counters_of_fates) {
        if (counter->counts(key)) {
            state.undecided.push_back({stat, counter->kind, length});
        }
    }
}

[[gnu::cold]] void settle_counters(FieldState &state, std::size_t from, FieldFates fates)
{
    for (std::size_t i = from; i < state.undecided.size(); ++i) {
        const FieldUndecided &each = state.undecided[i];
        const auto stat = state.stats.find(each.stat);
        if (stat == state.stats.end()) {
            continue;
        }
        for (FieldCounter &counter : stat->second.counters) {
            if (counter.kind == each.kind && (fates & one_of(counter.fate))) {
                counter.add(each.length);
            }
        }
    }
    state.undecided.resize(std::min(from, state.undecided.size()));
}

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_stat_create(int unit, bcm_field_group_t group, int nstat, bcm_field_stat_t *stat_arr,
                              int *stat_id)
{
    return begin(unit, ready<FieldState>, given(stat_arr, stat_id), field_group(group))
        .then([&](FieldState &state, FieldGroup &) {
            return make_stat(state, group, nstat, stat_arr, stat_id, false);
        });
}

int sim_bcm_field_stat_create_id(int unit, bcm_field_group_t group, int nstat, bcm_field_stat_t *stat_arr,
                                 int stat_id)
{
    return begin(unit, ready<FieldState>, given(stat_arr), field_group(group))
        .then([&](FieldState &state, FieldGroup &) {
            return make_stat(state, group, nstat, stat_arr, &stat_id, true);
        });
}

int sim_bcm_field_stat_destroy(int unit, int stat_id)
{
    return begin(unit, ready<FieldState>, field_stat(stat_id))
        .then([&](FieldState &state, FieldStat &found) -> int {
            if (found.uses != 0) {
                return BCM_E_BUSY;
            }
            state.stats.erase(stat_id);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_stat_size(int unit, int stat_id, int *stat_size)
{
    return begin(unit, ready<FieldState>, given(stat_size), field_stat(stat_id))
        .then([&](FieldState &, const FieldStat &found) {
            *stat_size = static_cast<int>(found.counters.size());
        });
}

int sim_bcm_field_stat_config_get(int unit, int stat_id, int nstat, bcm_field_stat_t *stat_arr)
{
    return begin(unit, ready<FieldState>, given(stat_arr), field_stat(stat_id))
        .then([&](FieldState &, const FieldStat &found) -> int {
            if (nstat < 0) {
                return BCM_E_PARAM;
            }
            const std::size_t told = std::min(static_cast<std::size_t>(nstat), found.counters.size());
            for (std::size_t i = 0; i < told; ++i) {
                stat_arr[i] = found.counters[i].kind;
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_field_stat_set(int unit, int stat_id, bcm_field_stat_t stat, uint64 value)
{
    return set_value(unit, stat_id, stat, value);
}

int sim_bcm_field_stat_set32(int unit, int stat_id, bcm_field_stat_t stat, uint32 value)
{
    return set_value(unit, stat_id, stat, value);
}

int sim_bcm_field_stat_all_set(int unit, int stat_id, uint64 value)
{
    return set_all(unit, stat_id, value);
}

int sim_bcm_field_stat_all_set32(int unit, int stat_id, uint32 value)
{
    return set_all(unit, stat_id, value);
}

int sim_bcm_field_stat_get(int unit, int stat_id, bcm_field_stat_t stat, uint64 *value)
{
    return get_value(unit, stat_id, stat, value);
}

int sim_bcm_field_stat_sync_get(int unit, int stat_id, bcm_field_stat_t stat, uint64 *value)
{
    return get_value(unit, stat_id, stat, value);
}

int sim_bcm_field_stat_get32(int unit, int stat_id, bcm_field_stat_t stat, uint32 *value)
{
    return get_value(unit, stat_id, stat, value);
}

int sim_bcm_field_stat_sync_get32(int unit, int stat_id, bcm_field_stat_t stat, uint32 *value)
{
    return get_value(unit, stat_id, stat, value);
}

int sim_bcm_field_stat_multi_get(int unit, int stat_id, int nstat, bcm_field_stat_t *stat_arr,
                                 uint64 *value_arr)
{
    return get_values(unit, stat_id, nstat, stat_arr, value_arr);
}

int sim_bcm_field_stat_multi_get32(int unit, int stat_id, int nstat, bcm_field_stat_t *stat_arr,
                                   uint32 *value_arr)
{
    return get_values(unit, stat_id, nstat, stat_arr, value_arr);
}

int sim_bcm_field_entry_stat_attach(int unit, bcm_field_entry_t entry, int stat_id)
{
    return attach(unit, first_place, entry, stat_id);
}

int sim_bcm_field_entry_stat_extended_attach(int unit, bcm_field_entry_t entry, int level, int stat_id)
{
    return attach(unit, place_of(level), entry, stat_id);
}

int sim_bcm_field_entry_stat_detach(int unit, bcm_field_entry_t entry, int stat_id)
{
    return begin(unit, ready<FieldState>, field_entry(entry))
        .then([&](FieldState &state, FieldEntry &found) -> int {
            const auto place = std::find(found.stats.begin(), found.stats.end(), stat_id);
            if (stat_id == 0 || place == found.stats.end()) {
                return BCM_E_NOT_FOUND;
            }
            put(state, found, *place, 0);
            return BCM_E_NONE;
        });
}

int sim_bcm_field_entry_stat_get(int unit, bcm_field_entry_t entry, int *stat_id)
{
    return get_attached(unit, first_place, entry, stat_id);
}

int sim_bcm_field_entry_stat_extended_get(int unit, bcm_field_entry_t entry, int level, int *stat_id)
{
    return get_attached(unit, place_of(level), entry, stat_id);
}

int sim_bcm_field_stat_attach(int unit, bcm_field_entry_t entry, int stat_id)
{
    return sim_bcm_field_entry_stat_attach(unit, entry, stat_id);
}

int sim_bcm_field_stat_detach(int unit, bcm_field_entry_t entry, int stat_id)
{
    return sim_bcm_field_entry_stat_detach(unit, entry, stat_id);
}

int sim_bcm_field_stat_id_get(int unit, bcm_field_entry_t entry, bcm_field_stat_t stat, int *stat_id)
{
    return begin(unit, ready<FieldState>, given(stat_id), field_entry(entry))
        .then([&](FieldState &state, const FieldEntry &found) -> int {
            if (!is_kind(stat)) {
                return BCM_E_PARAM;
            }
            const auto counts = [&](int id) {
                uint64 *value = nullptr;
                return id != 0 && find_value(state.stats.at(id), stat, &value) == BCM_E_NONE;
            };
            const auto place = std::find_if(found.stats.begin(), found.stats.end(), counts);
            if (place == found.stats.end()) {
                return BCM_E_NOT_FOUND;
            }
            *stat_id = *place;
            return BCM_E_NONE;
        });
}

int sim_bcm_field_stat_counter_get(int unit, int stat_id, bcm_field_stat_t stat, uint32 num_entries,
                                   uint32 *counter_indexes, bcm_stat_value_t *counter_values)
{
    return get_counters(unit, stat_id, stat, num_entries, counter_indexes, counter_values);
}

int sim_bcm_field_stat_counter_sync_get(int unit, int stat_id, bcm_field_stat_t stat, uint32 num_entries,
                                        uint32 *counter_indexes, bcm_stat_value_t *counter_values)
{
    return get_counters(unit, stat_id, stat, num_entries, counter_indexes, counter_values);
}

int sim_bcm_field_stat_counter_set(int unit, int stat_id, bcm_field_stat_t stat, uint32 num_entries,
                                   uint32 *counter_indexes, bcm_stat_value_t *counter_values)
{
    return begin(unit, ready<FieldState>, given(counter_values), field_stat(stat_id))
        .then([&](FieldState &, FieldStat &found) -> int {
            if (!is_kind(stat) || !are_first(num_entries, counter_indexes)) {
                return BCM_E_PARAM;
            }
            const Pair pair(found, stat);
            if (!pair.is_there()) {
                return BCM_E_NOT_FOUND;
            }
            for (uint32 i = 0; i < num_entries; ++i) {
                if (pair.bytes != nullptr) {
                    *pair.bytes = counter_values[i].bytes;
                }
                if (pair.packets != nullptr) {
                    *pair.packets = counter_values[i].packets64;
                }
            }
            return BCM_E_NONE;
        });
}

}  // extern "C"
