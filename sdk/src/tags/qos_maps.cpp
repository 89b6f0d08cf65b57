/// Maps of priorities that ports share: what is in a map stands in each of its ports, where packets meet it and
/// bcm_port_vlan_priority_map_set and its like change it for one port.
#include "begin.h"
#include "port.h"
#include "rule_store.h"
#include "sim_qos.h"
#include "tags.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>

using namespace sim;

namespace {

using Line = bcm_qos_map_t;

constexpr const char *family = "qos";
constexpr rules::Table maps = {"bcm_qos_map", family};
constexpr rules::Table lines = {"bcm_qos_map_line", family};

constexpr int capacity = 64;  // ids from 1 on
constexpr int no_map = PortTags::no_map;

constexpr uint32 directions = BCM_QOS_MAP_INGRESS | BCM_QOS_MAP_EGRESS;
constexpr uint32 marks =
    BCM_QOS_MAP_L2 | BCM_QOS_MAP_L2_INNER_TAG | BCM_QOS_MAP_L3 | BCM_QOS_MAP_MPLS | BCM_QOS_MAP_ETAG;

constexpr bool is_one_bit(uint32 bits)
{
    return bits != 0 && (bits & (bits - 1)) == 0;
}

/// A number or record as the store has it.
template <class T>
std::string bytes_of(const T &object)
{
    static_assert(std::is_trivially_copyable_v<T>, "it is kept as bytes");
    return {reinterpret_cast<const char *>(&object), sizeof object};
}

template <class T>
T from_bytes(const std::string &bytes)
{
    T object;
    std::memcpy(&object, bytes.data(), sizeof object);
    return object;
}

std::string key_of(int first, int second)
{
    return bytes_of(first) + bytes_of(second);
}

/// The unit's store, if the module is initialised: BCM_E_INIT.
constexpr auto ready_maps = [](Switch &sw, auto next) -> int {
    RuleStore &store = rule_store_of(sw);
    return store.is_initialised(family) ? next(store) : static_cast<int>(BCM_E_INIT);
};

/// Flags that say one direction and one mark, besides others: BCM_E_PARAM; BCM_E_UNAVAIL if packets are not marked so.
int check_kind(uint32 flags, uint32 others)
{
    if ((flags & ~(directions | marks | others)) != 0 || !is_one_bit(flags & directions)
        || !is_one_bit(flags & marks)) {
        return BCM_E_PARAM;
    }
    return flags & BCM_QOS_MAP_L2 ? BCM_E_NONE : BCM_E_UNAVAIL;
}

/// The direction of a map: BCM_E_NOT_FOUND.
int direction_of(const RuleStore &store, int id, uint32 *direction)
{
    const std::string *flags = store.find(maps.name, bytes_of(id));
    if (flags == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    *direction = from_bytes<uint32>(*flags) & directions;
    return BCM_E_NONE;
}

/// A map that has the direction and mark of the flags: BCM_E_PARAM, BCM_E_NOT_FOUND.
int find_map(const RuleStore &store, uint32 flags, int id)
{
    uint32 direction = 0;
    const int rc = direction_of(store, id, &direction);
    return rc != BCM_E_NONE ? rc : flags == (direction | BCM_QOS_MAP_L2) ? BCM_E_NONE : BCM_E_PARAM;
}

int &map_of(Switch &sw, int port, uint32 direction)
{
    PortTags &tags = port_of(sw, port).tags;
    return direction == BCM_QOS_MAP_INGRESS ? tags.map_of_classes : tags.map_of_marks;
}

/// use(port) for each that has the map.
template <class Use>
void for_ports_of(Switch &sw, int id, uint32 direction, Use use)
{
    for (int port = 0; port <= port_max; ++port) {
        if (map_of(sw, port, direction) == id) {
            use(port);
        }
    }
}

int places_of(uint32 direction)
{
    return direction == BCM_QOS_MAP_INGRESS ? 2 * PortTags::packet_priorities
                                            : PortTags::priorities * PortTags::colors;
}

/// The line's place in its map: by the tag, or by what the packet is in the switch.
int place_of(uint32 direction, const Line &line)
{
    return static_cast<int>(direction == BCM_QOS_MAP_INGRESS
                                ? PortTags::of_tag(line.pkt_pri, line.pkt_cfi)
                                : PortTags::of_class(line.int_pri, static_cast<int>(line.color)));
}

/// BCM_E_PARAM; BCM_E_UNAVAIL for what lines say besides.
int check_line(const Line &line)
{
    const int color = static_cast<int>(line.color);
    if (line.pkt_pri >= PortTags::packet_priorities || line.pkt_cfi > 1 || line.int_pri < 0
        || line.int_pri >= PortTags::priorities || color < 0 || color >= PortTags::colors) {
        return BCM_E_PARAM;
    }
    return line.port_offset == 0 && line.policer_offset == 0 && line.remark_int_pri == 0
                   && line.remark_color == bcmColorGreen
               ? BCM_E_NONE
               : BCM_E_UNAVAIL;
}

/// What stands at a place of a map, in the port; null: its default.
void put(PortTags &tags, uint32 direction, int place, const Line *line)
{
    const auto at = static_cast<std::size_t>(place);
    if (direction == BCM_QOS_MAP_INGRESS) {
        tags.classes[at] = line != nullptr ? PortTags::Class{static_cast<std::uint8_t>(line->int_pri),
                                                             static_cast<std::uint8_t>(line->color)}
                                           : PortTags().classes[at];
    } else {
        tags.marks[at] =
            line != nullptr ? PortTags::Mark{true, line->pkt_pri, line->pkt_cfi} : PortTags::Mark();
    }
}

/// At all places what the map says; no_map: the defaults.
void put_map(Switch &sw, int port, uint32 direction, int id)
{
    for (int place = 0; place < places_of(direction); ++place) {
        const std::string *kept = rule_store_of(sw).find(lines.name, key_of(id, place));
        const Line line = kept != nullptr ? from_bytes<Line>(*kept) : Line();
        put(port_of(sw, port).tags, direction, place, kept != nullptr ? &line : nullptr);
    }
    sw.of<TagState>().touch();
}

/// The port has that map from now on, or none.
void give(Switch &sw, int port, uint32 direction, int id)
{
    int &map = map_of(sw, port, direction);
    const bool has_none = map == no_map && id == no_map;
    map = id;
    if (!has_none) {
        put_map(sw, port, direction, id);
    }
}

void take_all(Switch &sw)
{
    for (int port = 0; port <= port_max; ++port) {
        for (const uint32 direction : {BCM_QOS_MAP_INGRESS, BCM_QOS_MAP_EGRESS}) {
            give(sw, port, direction, no_map);
        }
    }
}

int choose_id(const RuleStore &store, bool is_chosen, int *id)
{
    const auto exists = [&](int number) { return store.find(maps.name, bytes_of(number)) != nullptr; };
    if (is_chosen) {
        return *id < 1 || *id > capacity ? BCM_E_PARAM : exists(*id) ? BCM_E_EXISTS : BCM_E_NONE;
    }
    for (int number = 1; number <= capacity; ++number) {
        if (!exists(number)) {
            *id = number;
            return BCM_E_NONE;
        }
    }
    return BCM_E_FULL;
}

/// A line of the map changes, or goes back to its default: to(store key, direction, place) enters it.
template <class Change>
int change_line(int unit, uint32 flags, const Line *map, int id, Change change)
{
    return begin(unit, ready_maps, given(map)).then([&](Switch &sw, RuleStore &store) -> int {
        int rc = find_map(store, flags, id);
        if (rc == BCM_E_NONE) {
            rc = check_line(*map);
        }
        if (rc != BCM_E_NONE) {
            return rc;
        }
        const uint32 direction = flags & directions;
        const int place = place_of(direction, *map);
        const Line *line = change(store, key_of(id, place));
        for_ports_of(sw, id, direction,
                     [&](int port) { put(port_of(sw, port).tags, direction, place, line); });
        sw.of<TagState>().touch();
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_qos_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        take_all(sw);
        rule_store_of(sw).initialise(family);
    });
}

int sim_bcm_qos_detach(int unit)
{
    return begin(unit, ready_maps).then([](Switch &sw, RuleStore &store) {
        take_all(sw);
        store.detach(family);
    });
}

int sim_bcm_qos_map_create(int unit, uint32 flags, int *map_id)
{
    return begin(unit, ready_maps, given(map_id)).then([&](RuleStore &store) -> int {
        int rc = check_kind(flags, BCM_QOS_MAP_WITH_ID);
        if (rc == BCM_E_NONE) {
            rc = choose_id(store, flags & BCM_QOS_MAP_WITH_ID, map_id);
        }
        if (rc == BCM_E_NONE) {
            store.put(maps, bytes_of(*map_id), bytes_of(flags & ~uint32{BCM_QOS_MAP_WITH_ID}));
        }
        return rc;
    });
}

int sim_bcm_qos_map_used_get(int unit, int map_id, int *used)
{
    return begin(unit, ready_maps, given(used)).then([&](Switch &sw, RuleStore &store) -> int {
        uint32 direction = 0;
        const int rc = direction_of(store, map_id, &direction);
        if (rc == BCM_E_NONE) {
            *used = 0;
            for_ports_of(sw, map_id, direction, [&](int) { ++*used; });
        }
        return rc;
    });
}

int sim_bcm_qos_map_destroy(int unit, int map_id)
{
    int used = 0;
    const int rc = sim_bcm_qos_map_used_get(unit, map_id, &used);
    return rc != BCM_E_NONE ? rc : begin(unit, ready_maps).then([&](RuleStore &store) -> int {
        if (used != 0) {
            return BCM_E_BUSY;
        }
        store.erase_all(lines, [&](const std::string &key, const std::string &) {
            return from_bytes<int>(key) == map_id;
        });
        store.erase(maps, bytes_of(map_id));
        return BCM_E_NONE;
    });
}

int sim_bcm_qos_map_add(int unit, uint32 flags, bcm_qos_map_t *map, int map_id)
{
    return change_line(unit, flags, map, map_id, [&](RuleStore &store, const std::string &key) {
        store.put(lines, key, bytes_of(*map));
        return map;
    });
}

int sim_bcm_qos_map_delete(int unit, uint32 flags, bcm_qos_map_t *map, int map_id)
{
    return change_line(unit, flags, map, map_id,
                       [&](RuleStore &store, const std::string &key) -> const Line * {
                           store.erase(lines, key);
                           return nullptr;
                       });
}

int sim_bcm_qos_map_multi_get(int unit, uint32 flags, int map_id, int array_size, bcm_qos_map_t *array,
                              int *array_count)
{
    return begin(unit, ready_maps, given(array_count)).then([&](RuleStore &store) -> int {
        if (array_size < 0 || (array_size > 0 && array == nullptr)) {
            return BCM_E_PARAM;
        }
        const int rc = find_map(store, flags, map_id);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        *array_count = 0;
        for (int place = 0; place < places_of(flags & directions); ++place) {
            if (const std::string *line = store.find(lines.name, key_of(map_id, place))) {
                if (*array_count < array_size) {
                    array[*array_count] = from_bytes<Line>(*line);
                }
                ++*array_count;
            }
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_qos_port_map_set(int unit, bcm_gport_t port, int ing_map, int egr_map)
{
    return begin(unit, ready_maps, own_port(port)).then([&](Switch &sw, RuleStore &store, int own) -> int {
        for (const auto &[id, flags] : {std::pair{ing_map, BCM_QOS_MAP_INGRESS | BCM_QOS_MAP_L2},
                                        std::pair{egr_map, BCM_QOS_MAP_EGRESS | BCM_QOS_MAP_L2}}) {
            const int rc = id == no_map ? BCM_E_NONE : find_map(store, static_cast<uint32>(flags), id);
            if (rc != BCM_E_NONE) {
                return rc;
            }
        }
        if (ing_map != no_map) {
            give(sw, own, BCM_QOS_MAP_INGRESS, ing_map);
        }
        if (egr_map != no_map) {
            give(sw, own, BCM_QOS_MAP_EGRESS, egr_map);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_qos_port_map_get(int unit, bcm_gport_t port, int *ing_map, int *egr_map)
{
    return begin(unit, ready_maps, given(ing_map, egr_map), own_port(port))
        .then([&](Switch &sw, RuleStore &, int own) {
            *ing_map = map_of(sw, own, BCM_QOS_MAP_INGRESS);
            *egr_map = map_of(sw, own, BCM_QOS_MAP_EGRESS);
        });
}

int sim_bcm_qos_port_map_type_set(int unit, bcm_gport_t port, uint32 flags, int map_id)
{
    return begin(unit, ready_maps, own_port(port)).then([&](Switch &sw, RuleStore &store, int own) -> int {
        int rc = check_kind(flags, 0);
        if (rc == BCM_E_NONE && map_id != no_map) {
            rc = find_map(store, flags, map_id);
        }
        if (rc == BCM_E_NONE) {
            give(sw, own, flags & directions, map_id);
        }
        return rc;
    });
}

int sim_bcm_qos_port_map_type_get(int unit, bcm_gport_t port, uint32 flags, int *map_id)
{
    return begin(unit, ready_maps, given(map_id), own_port(port))
        .then([&](Switch &sw, RuleStore &, int own) -> int {
            const int rc = check_kind(flags, 0);
            if (rc == BCM_E_NONE) {
                *map_id = map_of(sw, own, flags & directions);
            }
            return rc;
        });
}

int sim_bcm_qos_multi_get(int unit, int array_size, int *map_ids_array, int *flags_array, int *array_count)
{
    return begin(unit, ready_maps, given(array_count)).then([&](RuleStore &store) -> int {
        const bool has_arrays = map_ids_array != nullptr && flags_array != nullptr;
        if (array_size < 0 || (array_size > 0 && !has_arrays)) {
            return BCM_E_PARAM;
        }
        *array_count = 0;
        for (const auto &[id, flags] : store.records(maps.name)) {
            if (*array_count < array_size) {
                map_ids_array[*array_count] = from_bytes<int>(id);
                flags_array[*array_count] = from_bytes<int>(flags);
            }
            ++*array_count;
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
