#include "field.h"
#include "mirror.h"
#include "port.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace sim {

namespace {

namespace at = field_places;

/// Whether the packet has the numbers of the range, and one of them is in it.
bool is_in(const FieldRange &range, const FieldKey &key)
{
    struct Compared {
        uint32 flag;
        FieldHeader header;
        FieldPlace place;
    };
    static constexpr FieldPlace outer_vlan{at::outer_tag.word, at::outer_tag.shift, 12},
        inner_vlan{at::inner_tag.word, at::inner_tag.shift, 12};
    static constexpr Compared compared[] = {
        {BCM_FIELD_RANGE_SRCPORT, FieldHeader::l4_ports, at::source_l4_port},
        {BCM_FIELD_RANGE_DSTPORT, FieldHeader::l4_ports, at::destination_l4_port},
        {BCM_FIELD_RANGE_OUTER_VLAN, FieldHeader::outer_tag, outer_vlan},
        {BCM_FIELD_RANGE_INNER_VLAN, FieldHeader::inner_tag, inner_vlan},
        {BCM_FIELD_RANGE_PACKET_LENGTH, FieldHeader::always, at::packet_length},
    };
    constexpr uint32 protocols = BCM_FIELD_RANGE_TCP | BCM_FIELD_RANGE_UDP;
    if ((range.flags & (BCM_FIELD_RANGE_SRCPORT | BCM_FIELD_RANGE_DSTPORT)) != 0) {
        const uint32 protocol = (key.is(FieldHeader::tcp) ? unsigned{BCM_FIELD_RANGE_TCP} : 0u)
                                | (key.is(FieldHeader::udp) ? unsigned{BCM_FIELD_RANGE_UDP} : 0u);
        if ((protocol & ((range.flags & protocols) != 0 ? range.flags : protocols)) == 0) {
            return false;
        }
    }
    for (const Compared &each : compared) {
        if (!(range.flags & each.flag)) {
            continue;
        }
        const FieldWord number = key.get(each.place);
        const bool is_one = key.is(each.header)
                            && std::any_of(range.pieces.begin(), range.pieces.end(), [&](const auto &piece) {
                                   return number >= piece.low && number <= piece.high;
                               });
        if (!is_one) {
            return false;
        }
    }
    return true;
}

}  // namespace

void put_ranges(const FieldState &state, FieldKey &key)
{
    FieldWord bits = 0;
    for (const auto &[id, range] : state.ranges) {
        bits |= FieldWord{range.uses != 0 && is_in(range, key)} << range.bit;
    }
    key.words[at::ranges.word] = bits;
}

namespace {

/// Why a qualifier is not met, or nothing if it is.
std::string difference(int number, const FieldValues &values, const FieldKey &key)
{
    const FieldQualifier &qualifier = *field_qualifier(number);
    FieldPattern pattern;
    add_to_pattern(qualifier, values, pattern);
    if (pattern.matches(key)) {
        return {};
    }
    std::string text = field_qualifier_name(number);
    if ((key.headers & pattern.value.headers) != pattern.value.headers) {
        return text + ", which it has not";
    }
    if (qualifier.layout == FieldLayout::number) {
        const FieldWord mask = pattern.mask.get(qualifier.place);
        std::array<char, 96> numbers;
        std::snprintf(numbers.data(), numbers.size(), " of 0x%llx, which is not 0x%llx",
                      static_cast<unsigned long long>(key.get(qualifier.place)),
                      static_cast<unsigned long long>(pattern.value.get(qualifier.place)));
        text += numbers.data();
        if (mask != field_ones(qualifier.place.width)) {
            std::snprintf(numbers.data(), numbers.size(), " with the mask 0x%llx",
                          static_cast<unsigned long long>(mask));
            text += numbers.data();
        }
    }
    return text;
}

std::vector<std::string> differences(const FieldState &state, const FieldContent &content,
                                     const FieldKey &key)
{
    std::vector<std::string> found;
    for (const auto &[subject, values] : content.qualifiers) {
        const std::string text = difference(subject.qualifier, values, key);
        if (!text.empty()) {
            found.push_back(text);
        }
    }
    for (const auto &[range, inverted] : content.ranges) {
        const bool is_in_range = key.get(at::ranges) >> state.ranges.at(range.second).bit & 1;
        if (is_in_range == (inverted != 0)) {
            found.push_back(field_qualifier_name(range.first) + " with range "
                            + std::to_string(range.second));
        }
    }
    for (const auto &[number, data] : content.data) {
        FieldPattern pattern;
        add_to_pattern(state.data_qualifiers.at(number), data, pattern);
        if (!pattern.matches(key)) {
            found.push_back("data qualifier " + std::to_string(number));
        }
    }
    return found;
}

}  // namespace

FieldMiss nearest_miss(const FieldState &state, const FieldGroup &group, const FieldKey &key)
{
    FieldMiss nearest{};
    for (const auto &[id, entry] : group.entries) {
        const FieldInstalled *installed = entry->installed.get();
        const bool can_match = installed != nullptr && entry->is_enabled && group.default_entry != id
                               && !installed->pattern.matches_none;
        if (!can_match) {
            continue;
        }
        std::vector<std::string> found = differences(state, installed->content, key);
        const bool is_nearer =
            nearest.entry == nullptr || found.size() < nearest.differences.size()
            || (found.size() == nearest.differences.size() && installed->wins_over(*nearest.entry));
        if (is_nearer) {
            nearest = {installed, std::move(found)};
        }
    }
    return nearest;
}

namespace {

/// Whether packets find entries in the group, if it is enabled.
bool is_asked(const FieldGroup &group)
{
    return !group.table.is_empty() || group.by_default != nullptr;
}

}  // namespace

void FieldState::update_lookups()
{
    for (auto &of_stage : lookups) {
        of_stage.clear();
    }
    PortSet arriving, leaving;
    for (auto &[id, group] : groups) {
        if (group.is_enabled && is_asked(group)
            && (group.stage != FieldStage::lookup || settings.looks_before_tables != 0)) {
            lookups[static_cast<std::size_t>(group.stage)].push_back({id, &group});
            if (group.stage == FieldStage::egress) {
                leaving = leaving | group.ports;
            } else {
                arriving = arriving | group.ports;
            }
        }
    }
    for (auto &of_stage : lookups) {
        std::stable_sort(of_stage.begin(), of_stage.end(), [](const FieldLookup &a, const FieldLookup &b) {
            return a.group->priority > b.group->priority;
        });
    }
    for (int port = 0; port <= port_max; ++port) {
        ports_.ports[static_cast<std::size_t>(port)].matches_fields = arriving.has(port);
    }
    ports_.matches_out = leaving;
    ports_.update_special_out();
}

FieldState::FieldState(Switch &sw)
    : policers(sw.of<PolicerState>()),
      mirrors(sw.of<MirrorState>()),
      l3(sw.of<L3State>()),
      ports_(sw.of<PortState>())
{
}

void FieldState::reset()
{
    installed = {};
    looking_further = {};
    asking_for_findings = 0;
    asking_for_conditions = 0;
    indexes = {};
    entries.clear();
    groups.clear();
    ranges.clear();
    stats.clear();
    undecided.clear();
    data_qualifiers.clear();
    presels.clear();
    hints.clear();
    settings = {};
    presels_look_further = false;
    update_lookups();
}

namespace {

/// Makes the policers that actions name the entry's own. BCM_E_NOT_FOUND: no such policer; BCM_E_UNAVAIL: there are
/// none in the stage.
int take_policers(FieldState &state, FieldStage stage, FieldInstalled &compiled)
{
    auto &effects = compiled.effects;
    for (std::size_t level = 0; level < compiled.policers.size(); ++level) {
        const FieldDecision decision = level == 0 ? FieldDecision::policer : FieldDecision::second_policer;
        const auto effect = std::find_if(effects.begin(), effects.end(),
                                         [&](const FieldEffect &each) { return each.decision == decision; });
        if (effect != effects.end()) {
            compiled.policers[level] = state.policers.use(static_cast<bcm_policer_t>(effect->number));
            if (compiled.policers[level].id == 0) {
                return BCM_E_NOT_FOUND;
            }
            effects.erase(effect);
        }
        if (compiled.policers[level].id != 0 && stage != FieldStage::ingress) {
            return BCM_E_UNAVAIL;
        }
    }
    const auto is_blind = [](const FieldEffect &each) { return each.decision == FieldDecision::color_blind; };
    compiled.is_color_blind = std::any_of(effects.begin(), effects.end(), is_blind)
                              && std::any_of(compiled.policers.begin(), compiled.policers.end(),
                                             [](const PolicerUse &use) { return use.id != 0; });
    effects.erase(std::remove_if(effects.begin(), effects.end(), is_blind), effects.end());
    return BCM_E_NONE;
}

/// Takes the counters that an action names to those of the entry. BCM_E_NOT_FOUND: no such ones; BCM_E_PARAM: those of
/// another group.
int take_stats(FieldState &state, bcm_field_group_t group, FieldInstalled &compiled)
{
    auto &effects = compiled.effects;
    const auto counts = [](const FieldEffect &effect) { return effect.decision == FieldDecision::count_too; };
    for (const FieldEffect &effect : effects) {
        if (!counts(effect)) {
            continue;
        }
        const auto found = state.stats.find(static_cast<int>(effect.number));
        if (found == state.stats.end()) {
            return BCM_E_NOT_FOUND;
        }
        if (found->second.group != group) {
            return BCM_E_PARAM;
        }
        compiled.named.push_back(found->first);
    }
    effects.erase(std::remove_if(effects.begin(), effects.end(), counts), effects.end());
    return BCM_E_NONE;
}

/// Holds the objects that actions name. BCM_E_NOT_FOUND: one is not there.
int hold_objects(FieldState &state, FieldInstalled &compiled)
{
    for (const FieldEffect &effect : compiled.effects) {
        const auto id = static_cast<int>(effect.number);
        Hold hold;
        if (effect.kind == FieldEffect::Kind::to_object) {
            hold = state.l3.objects.hold(id);
        } else if (effect.kind == FieldEffect::Kind::act
                   && (effect.decision == FieldDecision::mirror_in
                       || effect.decision == FieldDecision::mirror_out
                       || (effect.decision == FieldDecision::sample_to && id != 0))) {
            const auto found = state.mirrors.destinations.find(id);
            hold = found != state.mirrors.destinations.end() ? found->second.holders.hold() : nullptr;
        } else {
            continue;
        }
        if (hold == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        compiled.holds.push_back(std::move(hold));
    }
    return BCM_E_NONE;
}

int compile(FieldState &state, bcm_field_entry_t id, const FieldEntry &entry, FieldInstalled &compiled)
{
    const FieldStage stage = state.groups.at(entry.group).stage;
    for (const auto &[subject, values] : entry.qualifiers) {
        const FieldQualifier *qualifier = field_qualifier(subject.qualifier);
        if (qualifier == nullptr || !(qualifier->stages >> static_cast<unsigned>(stage) & 1)) {
            return BCM_E_UNAVAIL;
        }
        const int status = add_to_pattern(*qualifier, values, compiled.pattern);
        if (status != BCM_E_NONE) {
            return status;
        }
    }
    for (const auto &[key, inverted] : entry.ranges) {
        if (key.first == bcmFieldQualifyVPortRangeCheck) {
            return BCM_E_UNAVAIL;
        }
        FieldRange &range = state.ranges.at(key.second);
        const FieldPlace bit{at::ranges.word, static_cast<std::uint8_t>(range.bit), 1};
        compiled.pattern.require(bit, inverted == 0, 1);
        compiled.ranges.push_back(&range);
    }
    for (const auto &[qualifier, data] : entry.data) {
        add_to_pattern(state.data_qualifiers.at(qualifier), data, compiled.pattern);
    }
    for (const auto &[action, given] : entry.actions) {
        int status = add_effects(action, given, stage, static_cast<unsigned>(id), compiled.effects);
        for (const bcm_field_extraction_field_t &piece : given.pieces) {
            const FieldQualifier *const qualifier = field_qualifier(piece.qualifier);
            const bool is_constant = (piece.flags & BCM_FIELD_EXTRACTION_FIELD_CONSTANT) != 0;
            if (!is_constant && qualifier != nullptr
                && !(qualifier->stages >> static_cast<unsigned>(stage) & 1)) {
                status = BCM_E_UNAVAIL;
            }
        }
        if (status != BCM_E_NONE) {
            return status;
        }
    }
    compiled.policers = entry.policers;
    int status = take_policers(state, stage, compiled);
    status = status != BCM_E_NONE ? status : take_stats(state, entry.group, compiled);
    status = status != BCM_E_NONE ? status : hold_objects(state, compiled);
    if (status != BCM_E_NONE) {
        return status;
    }
    update_counters(state, entry, compiled);
    compiled.content = entry;
    compiled.priority = entry.priority;
    compiled.entry = id;
    return BCM_E_NONE;
}

bool asks_for_findings(const FieldPattern &pattern)
{
    static constexpr FieldPlace places[] = {
        at::station_hit,    at::destination_is_host, at::destination_is_route,
        at::source_is_host, at::source_is_route,     at::destination_is_local,
        at::vlan_class,     at::incoming_class,      at::has_moved,
        at::is_learnt,      at::source_l3_class,     at::destination_l3_class};
    static constexpr FieldHeader headers[] = {FieldHeader::router, FieldHeader::l3_ingress,
                                              FieldHeader::l3_group, FieldHeader::learnt};
    return std::any_of(std::begin(places), std::end(places),
                       [&](FieldPlace place) { return pattern.asks_for(place); })
           || std::any_of(std::begin(headers), std::end(headers),
                          [&](FieldHeader header) { return pattern.value.is(header); });
}

bool asks_for_findings(const FieldInstalled &installed)
{
    return asks_for_findings(installed.pattern)
           || std::any_of(installed.effects.begin(), installed.effects.end(), [](const FieldEffect &effect) {
                  return effect.condition == FieldCondition::moved
                         || (effect.extraction != nullptr
                             && asks_for_findings(effect.extraction->looked_at()));
              });
}

bool looks_further(const FieldInstalled &installed)
{
    return installed.pattern.looks_further()
           || std::any_of(installed.effects.begin(), installed.effects.end(), [](const FieldEffect &effect) {
                  return effect.extraction != nullptr && effect.extraction->looked_at().looks_further();
              });
}

bool asks_for_conditions(const FieldInstalled &installed)
{
    return std::any_of(installed.effects.begin(), installed.effects.end(), [](const FieldEffect &effect) {
        return (one_of(effect.condition) & looked_for_conditions) != 0;
    });
}

/// What is there as long as installed entries use it.
void count_uses(FieldState &state, FieldStage stage, const FieldInstalled &installed, int more)
{
    state.looking_further[static_cast<std::size_t>(stage)] += looks_further(installed) ? more : 0;
    state.asking_for_findings += asks_for_findings(installed) ? more : 0;
    state.asking_for_conditions += asks_for_conditions(installed) ? more : 0;
    for (const int stat : installed.named) {
        state.stats.at(stat).uses += more;
    }
    for (FieldRange *range : installed.ranges) {
        range->uses += more;
    }
}

}  // namespace

void begin_to_act(FieldState &state, FieldGroup &group, bcm_field_entry_t id, FieldInstalled &installed)
{
    if (group.default_entry == id) {
        group.by_default = &installed;
    } else {
        state.index_of(group).add(group.table, installed);
    }
}

void end_to_act(FieldState &state, FieldGroup &group, FieldInstalled &installed)
{
    if (group.by_default == &installed) {
        group.by_default = nullptr;
    } else {
        state.index_of(group).remove(group.table, installed);
    }
}

int install_field(FieldState &state, bcm_field_entry_t id, FieldEntry &entry)
{
    auto compiled = std::make_unique<FieldInstalled>();
    const int status = compile(state, id, entry, *compiled);
    if (status != BCM_E_NONE) {
        return status;
    }
    FieldGroup &group = state.groups.at(entry.group);
    int &installed = state.installed[static_cast<std::size_t>(group.stage)];
    if (entry.installed == nullptr && installed >= field_installed_max) {
        return BCM_E_FULL;
    }
    const bool was_asked = is_asked(group);
    FieldInstalled *const before = entry.installed.get();
    if (entry.is_enabled) {
        begin_to_act(state, group, id, *compiled);
    }
    count_uses(state, group.stage, *compiled, 1);
    if (before != nullptr) {
        count_uses(state, group.stage, *before, -1);
        if (entry.is_enabled && group.default_entry != id) {
            end_to_act(state, group, *before);
        }
    } else {
        ++installed;
        ++group.installed;
    }
    entry.installed = std::move(compiled);
    if (was_asked != is_asked(group)) {
        state.update_lookups();
    }
    return BCM_E_NONE;
}

void remove_field(FieldState &state, FieldEntry &entry)
{
    if (entry.installed == nullptr) {
        return;
    }
    FieldGroup &group = state.groups.at(entry.group);
    if (entry.is_enabled) {
        end_to_act(state, group, *entry.installed);
        if (!is_asked(group)) {
            state.update_lookups();
        }
    }
    count_uses(state, group.stage, *entry.installed, -1);
    entry.installed = nullptr;
    --group.installed;
    --state.installed[static_cast<std::size_t>(group.stage)];
}

void destroy_field(FieldState &state, bcm_field_entry_t id)
{
    FieldEntry &entry = state.entries.at(id);
    remove_field(state, entry);
    for (const auto &[key, inverted] : entry.ranges) {
        --state.ranges.at(key.second).uses;
    }
    for (const int stat : entry.stats) {
        if (stat != 0) {
            --state.stats.at(stat).uses;
        }
    }
    FieldGroup &group = state.groups.at(entry.group);
    if (group.default_entry == id) {
        group.default_entry.reset();
    }
    group.entries.erase(id);
    state.entries.erase(id);
}

}  // namespace sim
