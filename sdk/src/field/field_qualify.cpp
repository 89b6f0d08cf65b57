#include "field.h"
#include "field_arguments.h"
#include "sim_field.h"

#include <algorithm>
#include <cstring>

namespace sim {

namespace {

/// The arguments of a function of a qualifier.
struct Asked {
    /// What follows the values says only whether they are within their ranges.
    explicit Asked(const rules::Arguments &arguments)
        : values(std::find_if(
            arguments.begin() + 2, arguments.end(),
            [](const rules::Argument &each) { return each.role != rules::Argument::Role::key; })),
          end(std::find_if(values, arguments.end(),
                           [](const rules::Argument &each) { return each.size == 0; })),
          within(std::none_of(end, arguments.end(), [](const rules::Argument &each) {
              return each.role == rules::Argument::Role::refused;
          }))
    {
        std::memcpy(&entry, arguments.begin()[0].from, sizeof entry);
        std::memcpy(&subject.qualifier, arguments.begin()[1].from, sizeof subject.qualifier);
        for (const rules::Argument *of = arguments.begin() + 2; of != values; ++of) {
            subject.of.append(static_cast<const char *>(of->from), of->size);
        }
    }

    bool has_all() const
    {
        return within
               && std::all_of(values, end, [](const rules::Argument &each) { return each.from != nullptr; });
    }

    bcm_field_entry_t entry;
    FieldSubject subject;
    const rules::Argument *values, *end;
    bool within;
};

auto all_given(const Asked &asked)
{
    return [has_all = asked.has_all()](Switch &, auto next) -> int {
        return has_all ? next() : static_cast<int>(BCM_E_PARAM);
    };
}

bool is_presel(bcm_field_entry_t entry)
{
    return (entry & presel_entry) != 0;
}

/// The condition that is an entry of that id to functions of qualifiers: BCM_E_NOT_FOUND.
auto field_presel(bcm_field_entry_t entry)
{
    return [entry](Switch &sw, auto next) -> int {
        auto &presels = fields_of(sw).presels;
        const auto found = presels.find(static_cast<bcm_field_presel_t>(entry & ~presel_entry));
        return found != presels.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

FieldValues values_of(const Asked &asked)
{
    FieldValues values{{}, static_cast<unsigned>(asked.end - asked.values)};
    for (const rules::Argument *value = asked.values; value != asked.end; ++value) {
        values.bytes.append(static_cast<const char *>(value->from), value->size);
    }
    return values;
}

/// Writes what is kept of the qualifier: BCM_E_NOT_FOUND.
int write_values(const FieldQualified &qualifiers, const Asked &asked)
{
    const auto found = qualifiers.find(asked.subject);
    if (found == qualifiers.end()) {
        return BCM_E_NOT_FOUND;
    }
    const char *bytes = found->second.bytes.data();
    for (const rules::Argument *value = asked.values; value != asked.end; ++value) {
        std::memcpy(value->to, bytes, value->size);
        bytes += value->size;
    }
    return BCM_E_NONE;
}

bool may_have(const FieldState &state, const FieldEntry &entry, int qualifier)
{
    return has_qualifier(state.groups.at(entry.group).qset, qualifier);
}

/// The range of that id: BCM_E_NOT_FOUND.
auto field_range(bcm_field_range_t range)
{
    return [range](Switch &sw, auto next) -> int {
        const auto found = fields_of(sw).ranges.find(range);
        return found != fields_of(sw).ranges.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

/// Whether a qualifier for ranges is for those of such flags.
bool is_for(bcm_field_qualify_t qualifier, uint32 flags)
{
    constexpr uint32 ports =
        BCM_FIELD_RANGE_SRCPORT | BCM_FIELD_RANGE_DSTPORT | BCM_FIELD_RANGE_TCP | BCM_FIELD_RANGE_UDP;
    return qualifier == bcmFieldQualifyL4PortRangeCheck         ? (flags & ~ports) == 0
           : qualifier == bcmFieldQualifyPacketLengthRangeCheck ? flags == BCM_FIELD_RANGE_PACKET_LENGTH
                                                                : true;
}

int add_range(int unit, bcm_field_entry_t entry, bcm_field_qualify_t qualifier, bcm_field_range_t range,
              int invert)
{
    return begin(unit, ready<FieldState>, field_entry(entry), field_range(range))
        .then([&](FieldState &state, FieldEntry &found, FieldRange &of) -> int {
            if (!may_have(state, found, qualifier) || !is_for(qualifier, of.flags)) {
                return BCM_E_PARAM;
            }
            const auto place = found.ranges.emplace(std::pair<int, bcm_field_range_t>(qualifier, range), 0);
            of.uses += place.second;
            place.first->second = invert != 0;
            return BCM_E_NONE;
        });
}

int get_ranges(int unit, bcm_field_entry_t entry, bcm_field_qualify_t qualifier, int max_count,
               bcm_field_range_t *range, int *invert, int *count)
{
    return begin(unit, ready<FieldState>, given(range, invert, count), field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) -> int {
            int number = 0;
            for (const auto &[key, inverted] : found.ranges) {
                if (key.first == qualifier) {
                    if (number < max_count) {
                        range[number] = key.second;
                        invert[number] = inverted;
                    }
                    ++number;
                }
            }
            if (max_count < 0) {
                return BCM_E_PARAM;
            }
            if (number == 0) {
                return BCM_E_NOT_FOUND;
            }
            *count = number;
            return BCM_E_NONE;
        });
}

void clear_ranges(FieldState &state, FieldEntry &entry, int qualifier, bool all)
{
    for (auto range = entry.ranges.begin(); range != entry.ranges.end();) {
        if (all || range->first.first == qualifier) {
            --state.ranges.at(range->first.second).uses;
            range = entry.ranges.erase(range);
        } else {
            ++range;
        }
    }
}

}  // namespace

int set_qualifier(int unit, rules::Arguments arguments)
{
    const Asked asked(arguments);
    if (is_presel(asked.entry)) {
        return begin(unit, ready<FieldState>, all_given(asked), field_presel(asked.entry))
            .then([&](FieldState &state, FieldPresel &presel) {
                const FieldValues values = values_of(asked);
                return set_presel(state, presel, asked.subject, &values);
            });
    }
    return begin(unit, ready<FieldState>, all_given(asked), field_entry(asked.entry))
        .then([&](FieldState &state, FieldEntry &entry) -> int {
            if (!may_have(state, entry, asked.subject.qualifier)) {
                return BCM_E_PARAM;
            }
            FieldValues values = values_of(asked);
            const FieldQualifier *qualifier = field_qualifier(asked.subject.qualifier);
            FieldPattern pattern;
            const int status = qualifier != nullptr ? add_to_pattern(*qualifier, values, pattern)
                                                    : static_cast<int>(BCM_E_NONE);
            if (status == BCM_E_NONE) {
                entry.qualifiers[asked.subject] = std::move(values);
            }
            return status;
        });
}

int find_qualifier(int unit, rules::Arguments arguments)
{
    const Asked asked(arguments);
    if (is_presel(asked.entry)) {
        return begin(unit, ready<FieldState>, all_given(asked), field_presel(asked.entry))
            .then([&](FieldState &, const FieldPresel &presel) {
                return write_values(presel.qualifiers, asked);
            });
    }
    return begin(unit, ready<FieldState>, all_given(asked), field_entry(asked.entry))
        .then([&](FieldState &, const FieldEntry &entry) { return write_values(entry.qualifiers, asked); });
}

int find_qualifier_bytes(int unit, bcm_field_entry_t entry, int qualifier, std::size_t *bytes)
{
    const auto tell = [&](const FieldQualified &qualifiers) -> int {
        const auto found = qualifiers.find({qualifier, {}});
        if (found == qualifiers.end()) {
            return BCM_E_NOT_FOUND;
        }
        *bytes = found->second.size();
        return BCM_E_NONE;
    };
    if (is_presel(entry)) {
        return begin(unit, ready<FieldState>, field_presel(entry))
            .then([&](FieldState &, const FieldPresel &presel) { return tell(presel.qualifiers); });
    }
    return begin(unit, ready<FieldState>, field_entry(entry))
        .then([&](FieldState &, const FieldEntry &found) { return tell(found.qualifiers); });
}

int clear_qualifier(int unit, rules::Arguments arguments)
{
    bcm_field_entry_t entry;
    std::memcpy(&entry, arguments.begin()->from, sizeof entry);
    return begin(unit, ready<FieldState>, field_entry(entry)).then([](FieldState &state, FieldEntry &found) {
        found.qualifiers.clear();
        found.data.clear();
        clear_ranges(state, found, 0, true);
    });
}

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_field_qualifier_delete(int unit, bcm_field_entry_t entry, bcm_field_qualify_t qual_id)
{
    if (is_presel(entry)) {
        return begin(unit, ready<FieldState>, field_presel(entry))
            .then([&](FieldState &state, FieldPresel &presel) {
                return set_presel(state, presel, {qual_id, {}}, nullptr);
            });
    }
    return begin(unit, ready<FieldState>, field_entry(entry))
        .then([&](FieldState &state, FieldEntry &found) -> int {
            const auto before = found.qualifiers.size() + found.ranges.size();
            auto next = found.qualifiers.lower_bound({qual_id, {}});
            while (next != found.qualifiers.end() && next->first.qualifier == qual_id) {
                next = found.qualifiers.erase(next);
            }
            clear_ranges(state, found, qual_id, false);
            return found.qualifiers.size() + found.ranges.size() != before ? BCM_E_NONE : BCM_E_NOT_FOUND;
        });
}

int sim_bcm_field_qualify_RangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range, int invert)
{
    return add_range(unit, entry, bcmFieldQualifyRangeCheck, range, invert);
}

int sim_bcm_field_qualify_RangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                         bcm_field_range_t *range, int *invert, int *count)
{
    return get_ranges(unit, entry, bcmFieldQualifyRangeCheck, max_count, range, invert, count);
}

int sim_bcm_field_qualify_L4PortRangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range,
                                           int invert)
{
    return add_range(unit, entry, bcmFieldQualifyL4PortRangeCheck, range, invert);
}

int sim_bcm_field_qualify_L4PortRangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                               bcm_field_range_t *range, int *invert, int *count)
{
    return get_ranges(unit, entry, bcmFieldQualifyL4PortRangeCheck, max_count, range, invert, count);
}

int sim_bcm_field_qualify_VPortRangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range,
                                          int invert)
{
    return add_range(unit, entry, bcmFieldQualifyVPortRangeCheck, range, invert);
}

int sim_bcm_field_qualify_VPortRangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                              bcm_field_range_t *range, int *invert, int *count)
{
    return get_ranges(unit, entry, bcmFieldQualifyVPortRangeCheck, max_count, range, invert, count);
}

int sim_bcm_field_qualify_PacketLengthRangeCheck(int unit, bcm_field_entry_t entry, bcm_field_range_t range,
                                                 int invert)
{
    return add_range(unit, entry, bcmFieldQualifyPacketLengthRangeCheck, range, invert);
}

int sim_bcm_field_qualify_PacketLengthRangeCheck_get(int unit, bcm_field_entry_t entry, int max_count,
                                                     bcm_field_range_t *range, int *invert, int *count)
{
    return get_ranges(unit, entry, bcmFieldQualifyPacketLengthRangeCheck, max_count, range, invert, count);
}

}  // extern "C"
