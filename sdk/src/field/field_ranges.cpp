#include "field.h"
#include "sim_field.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace sim {

namespace {

constexpr uint32 l4_flags = BCM_FIELD_RANGE_SRCPORT | BCM_FIELD_RANGE_DSTPORT;
constexpr uint32 vlan_flags = BCM_FIELD_RANGE_OUTER_VLAN | BCM_FIELD_RANGE_INNER_VLAN;
constexpr uint32 compared_flags = l4_flags | vlan_flags | BCM_FIELD_RANGE_PACKET_LENGTH;
constexpr uint32 protocol_flags = BCM_FIELD_RANGE_TCP | BCM_FIELD_RANGE_UDP;

/// BCM_E_PARAM: nothing is compared, or numbers of different kinds; BCM_E_UNAVAIL: what the switch has not got.
int check_flags(uint32 flags)
{
    if ((flags & ~(compared_flags | protocol_flags | BCM_FIELD_RANGE_VPORT)) != 0) {
        return BCM_E_PARAM;
    }
    if ((flags & BCM_FIELD_RANGE_VPORT) != 0) {
        return BCM_E_UNAVAIL;
    }
    const int kinds = ((flags & l4_flags) != 0) + ((flags & vlan_flags) != 0)
                      + ((flags & BCM_FIELD_RANGE_PACKET_LENGTH) != 0);
    return kinds == 1 && ((flags & protocol_flags) == 0 || (flags & l4_flags) != 0) ? BCM_E_NONE
                                                                                    : BCM_E_PARAM;
}

/// Makes a range of that id, or of the lowest that is free if there is none, and writes it.
int make_range(FieldState &state, bcm_field_range_t *id, bool is_id_given, uint32 flags,
               std::vector<FieldRange::Piece> pieces)
{
    const int status = check_flags(flags);
    if (status != BCM_E_NONE) {
        return status;
    }
    const unsigned highest = (flags & vlan_flags) != 0 ? 4095 : std::numeric_limits<bcm_l4_port_t>::max();
    const auto is_wrong = [&](const auto &piece) { return piece.low > piece.high || piece.high > highest; };
    if (pieces.empty() || std::any_of(pieces.begin(), pieces.end(), is_wrong)) {
        return BCM_E_PARAM;
    }
    bcm_field_range_t chosen = is_id_given ? *id : 1;
    if (is_id_given && state.ranges.count(chosen) != 0) {
        return BCM_E_EXISTS;
    }
    while (!is_id_given && state.ranges.count(chosen) != 0) {
        ++chosen;
    }
    FieldWord taken = 0;
    for (const auto &[other, range] : state.ranges) {
        taken |= FieldWord{1} << range.bit;
    }
    if (taken == ~FieldWord{0}) {
        return BCM_E_RESOURCE;
    }
    const auto bit = static_cast<unsigned>(__builtin_ctzll(~taken));
    state.ranges.emplace(chosen, FieldRange{flags, std::move(pieces), bit});
    *id = chosen;
    return BCM_E_NONE;
}

auto range_of(bcm_field_range_t range)
{
    return [range](Switch &sw, auto next) -> int {
        const auto found = fields_of(sw).ranges.find(range);
        return found != fields_of(sw).ranges.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

}  // namespace

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_range_create(int unit, bcm_field_range_t *range, uint32 flags, bcm_l4_port_t min,
                               bcm_l4_port_t max)
{
    return begin(unit, ready<FieldState>, given(range)).then([&](FieldState &state) {
        return make_range(state, range, false, flags, {{min, max}});
    });
}

int sim_bcm_field_range_create_id(int unit, bcm_field_range_t range, uint32 flags, bcm_l4_port_t min,
                                  bcm_l4_port_t max)
{
    return begin(unit, ready<FieldState>).then([&](FieldState &state) {
        return make_range(state, &range, true, flags, {{min, max}});
    });
}

// All ranges are compared at once: which group one is of makes no difference to it.
int sim_bcm_field_range_group_create(int unit, bcm_field_range_t *range, uint32 flags, bcm_l4_port_t min,
                                     bcm_l4_port_t max, int group)
{
    return begin(unit, ready<FieldState>, given(range)).then([&](FieldState &state) -> int {
        return group < 0 ? BCM_E_PARAM : make_range(state, range, false, flags, {{min, max}});
    });
}

int sim_bcm_field_range_group_create_id(int unit, bcm_field_range_t range, uint32 flags, bcm_l4_port_t min,
                                        bcm_l4_port_t max, int group)
{
    return begin(unit, ready<FieldState>).then([&](FieldState &state) -> int {
        return group < 0 ? BCM_E_PARAM : make_range(state, &range, true, flags, {{min, max}});
    });
}

int sim_bcm_field_range_multi_create(int unit, bcm_field_range_t *range, uint32 flags, int count,
                                     bcm_l4_port_t *min_arr, bcm_l4_port_t *max_arr)
{
    return begin(unit, ready<FieldState>, given(range, min_arr, max_arr)).then([&](FieldState &state) {
        std::vector<FieldRange::Piece> pieces;
        std::transform(min_arr, min_arr + std::max(count, 0), max_arr, std::back_inserter(pieces),
                       [](bcm_l4_port_t low, bcm_l4_port_t high) {
                           return FieldRange::Piece{low, high};
                       });
        return make_range(state, range, false, flags, std::move(pieces));
    });
}

int sim_bcm_field_range_get(int unit, bcm_field_range_t range, uint32 *flags, bcm_l4_port_t *min,
                            bcm_l4_port_t *max)
{
    return begin(unit, ready<FieldState>, given(flags, min, max), range_of(range))
        .then([&](FieldState &, const FieldRange &found) {
            *flags = found.flags;
            *min = static_cast<bcm_l4_port_t>(found.pieces.front().low);
            *max = static_cast<bcm_l4_port_t>(found.pieces.front().high);
        });
}

int sim_bcm_field_range_multi_get(int unit, bcm_field_range_t range, uint32 *flags, int max_count,
                                  bcm_l4_port_t *min_arr, bcm_l4_port_t *max_arr, int *count)
{
    return begin(unit, ready<FieldState>, given(flags, min_arr, max_arr, count), range_of(range))
        .then([&](FieldState &, const FieldRange &found) -> int {
            if (max_count < 0) {
                return BCM_E_PARAM;
            }
            *flags = found.flags;
            *count = static_cast<int>(found.pieces.size());
            for (int i = 0; i < std::min(max_count, *count); ++i) {
                min_arr[i] = static_cast<bcm_l4_port_t>(found.pieces[static_cast<std::size_t>(i)].low);
                max_arr[i] = static_cast<bcm_l4_port_t>(found.pieces[static_cast<std::size_t>(i)].high);
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_field_range_destroy(int unit, bcm_field_range_t range)
{
    return begin(unit, ready<FieldState>, range_of(range))
        .then([&](FieldState &state, const FieldRange &found) -> int {
            if (found.uses != 0) {
                return BCM_E_BUSY;
            }
            state.ranges.erase(range);
            return BCM_E_NONE;
        });
}

}  // extern "C"
