/// The room of the field processor: groups of entries, each of which says which packets it is for and what happens
/// to them, and what they share: ranges and counters.
///
/// It offers the packet path which entries of a stage match and what they decide (match_fields). It knows nothing of
/// the path; what the path has found, it puts into the key.
#pragma once

#include "begin.h"
#include "field_action.h"
#include "field_data.h"
#include "field_table.h"
#include "l3.h"
#include "packet.h"
#include "policer.h"

#include <bcm/field.h>

#include <algorithm>
#include <climits>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace sim {

struct MirrorState;
struct PortState;

constexpr std::size_t field_entry_max = 65536;
constexpr int field_installed_max = 16384;  // of a stage
constexpr int field_range_max = field_places::ranges.width;
constexpr int field_stat_max = 16384;

/// What became of a packet, or of the copy that an entry of egress meets.
enum class FieldFate : std::uint8_t {
    none,
    forwarded,  ///< a port sends it, or it waits for one; the CPU's port counts if that is where it goes
    dropped,    ///< none does
    copied_to_cpu,
    mirrored,
    redirected,  ///< where it goes an entry has said
    replicated,  ///< more than one copy is sent
};

/// A set of them.
using FieldFates = std::uint8_t;

constexpr FieldFates one_of(FieldFate fate)
{
    return static_cast<FieldFates>(1u << static_cast<unsigned>(fate));
}

struct FieldCounter {
    explicit FieldCounter(bcm_field_stat_t of);

    bcm_field_stat_t kind;
    bool (*is_for)(const FieldKey &);  ///< which of its entries' packets are counted; null for all
    FieldFate fate;                    ///< which of them, when it is known; none for all, at once
    bool is_of_policers;               ///< none but those that the entry's policers have seen
    uint64 value = 0;

    bool counts(const FieldKey &key) const { return is_for == nullptr || is_for(key); }

    /// A packet of the length, with its checksum.
    void add(std::size_t length)
    {
        // Bytes and packets take turns in the enumeration.
        value += kind % 2 == bcmFieldStatBytes ? length : 1;
    }
};

/// That a packet counts, if it becomes what the counter asks for. Until then the counter may go.
struct FieldUndecided {
    int stat;
    bcm_field_stat_t kind;
    std::size_t length;
};

struct FieldStat {
    bcm_field_group_t group;
    std::vector<FieldCounter> counters;
    int uses = 0;  // entries that have it, and installed ones that name it
};

/// A range of numbers that a packet has, or several.
struct FieldRange {
    struct Piece {
        unsigned low, high;
    };
    uint32 flags;
    std::vector<Piece> pieces;
    unsigned bit;  // its place in the key
    int uses = 0;  // entries that name it, and those that are installed so
};

/// By level.
using FieldPolicers = std::array<PolicerUse, 2>;

/// The counters of an entry: what was attached first, then the extended ones by level.
constexpr std::size_t field_stat_levels = 4;
using FieldStats = std::array<int, 1 + field_stat_levels>;

/// What an entry says.
struct FieldContent {
    FieldQualified qualifiers;
    std::map<std::pair<int, bcm_field_range_t>, int> ranges;  // by qualifier and range: inverted?
    std::map<int, FieldData> data;                            // by data qualifier
    std::map<int, FieldAction> actions;                       // by bcm_field_action_t
};

/// A condition under which groups are looked up. It holds at once.
struct FieldPresel {
    FieldQualified qualifiers;
    FieldPattern pattern;
};

/// To the functions of qualifiers, conditions are entries whose ids have this bit.
constexpr bcm_field_entry_t presel_entry = 0x80000000u;

/// What an installed entry does.
struct FieldInstalled : FieldRule {
    FieldContent content;  // the entry's when it was installed
    std::vector<FieldEffect> effects;
    FieldPolicers policers;
    bool is_color_blind = false;       // to these
    std::vector<FieldRange *> ranges;  // that it is compared with
    std::vector<int> named;            // counters, by its actions
    // Of these and of those that are attached to the entry: what counts at once, and by what becomes of packets.
    std::vector<FieldCounter *> counters;
    std::vector<std::pair<int, const FieldCounter *>> counters_of_fates;  // with the id of their object
    std::vector<Hold> holds;                                              // of what its actions name
};

struct FieldEntry : FieldContent {
    explicit FieldEntry(bcm_field_group_t of) : group(of) {}

    bcm_field_group_t group;
    int priority = 0;
    bool is_enabled = true;
    FieldStats stats = {};  // 0 for none
    FieldPolicers policers;
    std::unique_ptr<FieldInstalled> installed;
};

struct FieldGroup {
    bcm_field_qset_t qset = {};
    bcm_field_aset_t aset = {};
    bool has_aset = false;
    int priority = 0;
    bcm_field_group_mode_t mode = bcmFieldGroupModeDefault;
    PortSet ports = PortSet::all();  // only packets from these; of the stage egress: that leave by these
    bcm_field_presel_set_t presel_set = {};
    std::vector<const FieldPresel *> presels;  // of which one has to hold, if there are any
    bool is_enabled = true;
    FieldStage stage = FieldStage::ingress;
    std::map<bcm_field_entry_t, FieldEntry *> entries;
    FieldTable table;
    int installed = 0;
    std::optional<bcm_field_entry_t> default_entry;  // acts if no other does, whatever it asks for
    FieldInstalled *by_default = nullptr;            // the same, while it is installed and enabled
};

/// Whether a condition of the group holds for the packet, or it has none.
inline bool is_selected(const FieldGroup &group, const FieldKey &key)
{
    return group.presels.empty()
           || std::any_of(group.presels.begin(), group.presels.end(),
                          [&](const FieldPresel *presel) { return presel->pattern.matches(key); });
}

/// What holds for all groups.
struct FieldSettings {
    int counted_besides = 0;  ///< bytes that counters add to a packet's length
    int looks_before_tables = 1;
    int drops_copies = 0;  ///< the CPU gets no copies of what is dropped
};

using FieldHints = std::vector<bcm_field_hint_t>;

/// A group in which packets look for entries.
struct FieldLookup {
    bcm_field_group_t id;
    FieldGroup *group;
};

struct FieldState : RoomState {
    static constexpr Room room = Room::field;

    explicit FieldState(Switch &sw);

    /// As when new.
    void reset();

    /// Works out anew what packets look at, and at which ports.
    void update_lookups();

    bool initialised = true;
    PolicerState &policers;
    MirrorState &mirrors;
    L3State &l3;
    std::map<bcm_field_group_t, FieldGroup> groups;
    std::map<bcm_field_entry_t, FieldEntry> entries;
    std::map<bcm_field_range_t, FieldRange> ranges;
    std::map<bcm_field_presel_t, FieldPresel> presels;
    bool presels_look_further = false;  ///< whether one asks for what is further in
    std::map<int, FieldStat> stats;
    /// Of packets that are on their way, the last one's behind those that wait for it.
    std::vector<FieldUndecided> undecided;
    FieldDataQualifiers data_qualifiers;
    std::map<bcm_field_hintid_t, FieldHints> hints;
    FieldSettings settings;

    /// What is installed and enabled, by stage.
    std::array<FieldIndex, field_stages> indexes;
    FieldIndex &index_of(const FieldGroup &group) { return indexes[static_cast<std::size_t>(group.stage)]; }

    /// By stage: the enabled groups that have installed entries, by descending priority.
    std::array<std::vector<FieldLookup>, field_stages> lookups;
    std::array<int, field_stages> installed = {};
    std::array<int, field_stages> looking_further = {};  ///< of these: those that ask for what is further in
    int asking_for_findings = 0;  ///< of all stages: those that ask for what tables say before it is routed
    int asking_for_conditions =
        0;  ///< those with actions for packets of which more than their colour has to be known

private:
    PortState &ports_;
};

inline FieldState &fields_of(Switch &sw)
{
    return sw.of<FieldState>();
}

/// Whether packets have to look.
inline bool has_fields(Switch &sw, FieldStage stage)
{
    return !fields_of(sw).lookups[static_cast<std::size_t>(stage)].empty();
}

inline bool asks_for_findings(const FieldState &state)
{
    return state.asking_for_findings != 0;
}

/// Finds in each group of the stage for the port the entry that acts, counts the packet there and adds what is decided
/// to the verdict. The key has all but ranges. color = meet(entry) before, of each entry that acts: that of the packet
/// from then on. found(lookup, entry or null) for each group that is looked up.
template <class Meet, class Found>
void match_fields(FieldState &state, FieldStage stage, int port, FieldKey &key, FieldVerdict &verdict,
                  Meet meet, Found found);

/// An entry that does not match, and why.
struct FieldMiss {
    const FieldInstalled *entry;
    std::vector<std::string>
        differences;  // the qualifiers that differ, with what is there and what was wanted
};

/// Of the entries of a group that could match other packets, the one that differs from this one in the fewest qualifiers,
/// and of several the one that would win.
FieldMiss nearest_miss(const FieldState &state, const FieldGroup &group, const FieldKey &key);

/// Puts the bits of the ranges that hold for the packet.
void put_ranges(const FieldState &state, FieldKey &key);

/// BCM_E_NOT_FOUND: no such group, entry.
inline auto field_group(bcm_field_group_t group)
{
    return [group](Switch &sw, auto next) -> int {
        const auto found = fields_of(sw).groups.find(group);
        return found != fields_of(sw).groups.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

inline auto field_entry(bcm_field_entry_t entry)
{
    return [entry](Switch &sw, auto next) -> int {
        const auto found = fields_of(sw).entries.find(entry);
        return found != fields_of(sw).entries.end() ? next(found->second) : static_cast<int>(BCM_E_NOT_FOUND);
    };
}

inline bool has_qualifier(const bcm_field_qset_t &qset, int qualifier)
{
    return SHR_BITGET(qset.w, static_cast<unsigned>(qualifier)) != 0;
}

/// Gives a group those conditions. BCM_E_NOT_FOUND: one of them is not there.
int select_field_group(FieldState &state, FieldGroup &group, const bcm_field_presel_set_t &presels);

/// Gives a condition, or takes from it, values of a qualifier; null takes. BCM_E_UNAVAIL: it is not known in all stages.
int set_presel(FieldState &state, FieldPresel &presel, const FieldSubject &subject,
               const FieldValues *values);

/// Makes an entry take effect, or take over what was changed. BCM_E_UNAVAIL: the switch has nothing that a qualifier is
/// compared with, or cannot do an action; BCM_E_FULL; BCM_E_PARAM, BCM_E_PORT: values of qualifiers and actions;
/// BCM_E_NOT_FOUND: an action names an object that is not there.
int install_field(FieldState &state, bcm_field_entry_t id, FieldEntry &entry);

/// Finds the counters of the entry as it is installed, or about to be.
void update_counters(FieldState &state, const FieldEntry &entry, FieldInstalled &installed);

/// What became of the packet whose counters begin there: all that are undecided since then.
void settle_counters(FieldState &state, std::size_t from, FieldFates fates);

/// Those of the entry wait for what becomes of the packet.
void put_off_counters(FieldState &state, const FieldInstalled &installed, const FieldKey &key,
                      std::size_t length);

/// The installed and enabled entry begins or ends to act.
void begin_to_act(FieldState &state, FieldGroup &group, bcm_field_entry_t id, FieldInstalled &installed);
void end_to_act(FieldState &state, FieldGroup &group, FieldInstalled &installed);

/// Ends its effect, if it has one.
void remove_field(FieldState &state, FieldEntry &entry);

/// Destroys an entry with its effect.
void destroy_field(FieldState &state, bcm_field_entry_t id);

template <class Meet, class Found>
void match_fields(FieldState &state, FieldStage stage, int port, FieldKey &key, FieldVerdict &verdict,
                  Meet meet, Found found)
{
    if (!state.ranges.empty()) {
        put_ranges(state, key);
    }
    const FieldIndex &index = state.indexes[static_cast<std::size_t>(stage)];
    FieldIndex::Found rules;
    index.find(key, rules);
    const auto length = static_cast<std::size_t>(static_cast<int>(key.get(field_places::packet_length))
                                                 + state.settings.counted_besides);
    FieldWord color = key.get(field_places::color);
    for (const FieldLookup &lookup : state.lookups[static_cast<std::size_t>(stage)]) {
        if (!lookup.group->ports.has(port) || !is_selected(*lookup.group, key)) {
            continue;
        }
        const FieldTable &table = lookup.group->table;
        const FieldRule *const rule = !table.is_empty() ? index.find(table, key, rules) : nullptr;
        const FieldInstalled *const installed =
            rule != nullptr ? static_cast<const FieldInstalled *>(rule) : lookup.group->by_default;
        if (installed != nullptr) {
            const auto met = static_cast<FieldWord>(meet(*installed));
            if (met != color) {
                color = met;
                key.replace(field_places::color, color);
            }
            for (FieldCounter *counter : installed->counters) {
                if (counter->counts(key)) {
                    counter->add(length);
                }
            }
            if (!installed->counters_of_fates.empty()) {
                put_off_counters(state, *installed, key, length);
            }
            verdict.add(installed->effects, static_cast<unsigned>(color));
        }
        found(lookup, installed);
    }
}

}  // namespace sim
