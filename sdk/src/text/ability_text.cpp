/// Abilities of ports and PHYs from text and back.
#include "number_text.h"
#include "sim_parse.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

using namespace sim;

namespace {

constexpr char separators[] = ", \t\r\n";

struct Word {
    uint32 flag;
    std::string_view text, abbreviation;
};

constexpr Word half_duplex_modes[] = {{_SHR_PM_10MB_HD, "10mb-half", "10hd"},
                                      {_SHR_PM_100MB_HD, "100mb-half", "100hd"},
                                      {_SHR_PM_1000MB_HD, "1000mb-half", "1000hd"}};
constexpr Word full_duplex_modes[] = {
    {_SHR_PM_10MB_FD, "10mb-full", "10fd"},       {_SHR_PM_100MB_FD, "100mb-full", "100fd"},
    {_SHR_PM_1000MB_FD, "1000mb-full", "1000fd"}, {_SHR_PM_2500MB_FD, "2500mb-full", "2500fd"},
    {_SHR_PM_10GB_FD, "10gb-full", "10gfd"},      {_SHR_PM_40GB_FD, "40gb-full", "40gfd"},
    {_SHR_PM_100GB_FD, "100gb-full", "100gfd"}};
constexpr Word pause_modes[] = {{_SHR_PM_PAUSE_TX, "pause-tx", "ptx"}, {_SHR_PM_PAUSE_RX, "pause-rx", "prx"}};
constexpr Word autonegotiation[] = {{_SHR_PM_AUTONEG, "autoneg", "an"}};
constexpr Word loopbacks[] = {{_SHR_PM_LB_MAC, "loopback-mac", "lbm"},
                              {_SHR_PM_LB_PHY, "loopback-phy", "lbp"}};

constexpr Word longreach[] = {
    {SOC_PHY_LONGREACH_5MB, "5mb", "5"},       {SOC_PHY_LONGREACH_10MB, "10mb", "10"},
    {SOC_PHY_LONGREACH_20MB, "20mb", "20"},    {SOC_PHY_LONGREACH_25MB, "25mb", "25"},
    {SOC_PHY_LONGREACH_33MB, "33mb", "33"},    {SOC_PHY_LONGREACH_50MB, "50mb", "50"},
    {SOC_PHY_LONGREACH_100MB, "100mb", "100"}, {SOC_PHY_LONGREACH_PAIR1, "pair1", "p1"},
    {SOC_PHY_LONGREACH_PAIR2, "pair2", "p2"},  {SOC_PHY_LONGREACH_PAIR4, "pair4", "p4"},
    {SOC_PHY_LONGREACH_PAUSE, "pause", "p"},   {SOC_PHY_LONGREACH_PAUSE_ASYM, "pause-asym", "pa"}};

constexpr Word media[] = {{1u << _SHR_PORT_MEDIUM_COPPER, "copper", "cu"},
                          {1u << _SHR_PORT_MEDIUM_FIBER, "fiber", "fi"},
                          {1u << _SHR_PORT_MEDIUM_BACKPLANE, "backplane", "bp"}};

constexpr Word interfaces[] = {
    {1u << _SHR_PORT_IF_NULL, "null", "null"},       {1u << _SHR_PORT_IF_MII, "mii", "mii"},
    {1u << _SHR_PORT_IF_GMII, "gmii", "gmii"},       {1u << _SHR_PORT_IF_SGMII, "sgmii", "sgmii"},
    {1u << _SHR_PORT_IF_QSGMII, "qsgmii", "qsgmii"}, {1u << _SHR_PORT_IF_RGMII, "rgmii", "rgmii"},
    {1u << _SHR_PORT_IF_XGMII, "xgmii", "xgmii"},    {1u << _SHR_PORT_IF_XAUI, "xaui", "xaui"},
    {1u << _SHR_PORT_IF_RXAUI, "rxaui", "rxaui"},    {1u << _SHR_PORT_IF_XFI, "xfi", "xfi"},
    {1u << _SHR_PORT_IF_SFI, "sfi", "sfi"},          {1u << _SHR_PORT_IF_KR, "kr", "kr"},
    {1u << _SHR_PORT_IF_KR4, "kr4", "kr4"},          {1u << _SHR_PORT_IF_CR4, "cr4", "cr4"},
    {1u << _SHR_PORT_IF_XLAUI, "xlaui", "xlaui"},    {1u << _SHR_PORT_IF_CAUI, "caui", "caui"},
    {1u << _SHR_PORT_IF_ILKN, "ilkn", "ilkn"}};

/// Words, and the set that their flags are part of.
struct Vocabulary {
    const Word *first, *last;
    uint32 *set;
};

template <std::size_t Size>
Vocabulary into(const Word (&words)[Size], uint32 *set)
{
    return {std::begin(words), std::end(words), set};
}

using Vocabularies = std::initializer_list<Vocabulary>;

bool add_word(std::string_view text, Vocabularies vocabularies)
{
    if (same_text(text, "none")) {
        return true;
    }
    for (const Vocabulary &vocabulary : vocabularies) {
        for (const Word *word = vocabulary.first; word != vocabulary.last; ++word) {
            if (same_text(text, word->text) || same_text(text, word->abbreviation)) {
                *vocabulary.set |= word->flag;
                return true;
            }
        }
    }
    return false;
}

bool add_words(std::string_view text, Vocabularies vocabularies)
{
    bool any = false;
    for (std::size_t first; (first = text.find_first_not_of(separators)) != std::string_view::npos;) {
        any = true;
        text.remove_prefix(first);
        const std::string_view word = text.substr(0, text.find_first_of(separators));
        if (!add_word(word, vocabularies)) {
            return false;
        }
        text.remove_prefix(word.size());
    }
    return any;
}

void write_words(char *buf, int bufsize, Vocabularies vocabularies, bool abbreviate)
{
    std::string text;
    for (const Vocabulary &vocabulary : vocabularies) {
        for (const Word *word = vocabulary.first; word != vocabulary.last; ++word) {
            if (*vocabulary.set & word->flag) {
                text += (text.empty() ? "" : ",") + std::string(abbreviate ? word->abbreviation : word->text);
            }
        }
    }
    write_text(text.empty() ? "none" : text, buf, bufsize);
}

}  // namespace

extern "C" {

int sim_parse_port_mode(char *str, soc_port_mode_t *mode)
{
    soc_port_mode_t set = 0;
    if (str == nullptr || mode == nullptr
        || !add_words(str, {into(half_duplex_modes, &set), into(full_duplex_modes, &set),
                            into(pause_modes, &set), into(autonegotiation, &set), into(loopbacks, &set)})) {
        return BCM_E_PARAM;
    }
    *mode = set;
    return BCM_E_NONE;
}

void sim_format_port_mode(char *buf, int bufsize, soc_port_mode_t mode, int abbrev)
{
    write_words(buf, bufsize,
                {into(half_duplex_modes, &mode), into(full_duplex_modes, &mode), into(pause_modes, &mode),
                 into(autonegotiation, &mode), into(loopbacks, &mode)},
                abbrev != 0);
}

int sim_parse_port_ability(char *str, soc_port_ability_t *mode)
{
    soc_port_ability_t ability = {};
    if (str == nullptr || mode == nullptr
        || !add_words(str,
                      {into(half_duplex_modes, &ability.speed_half_duplex),
                       into(full_duplex_modes, &ability.speed_full_duplex), into(pause_modes, &ability.pause),
                       into(autonegotiation, &ability.flags), into(loopbacks, &ability.loopback),
                       into(interfaces, &ability.interface), into(media, &ability.medium)})) {
        return BCM_E_PARAM;
    }
    *mode = ability;
    return BCM_E_NONE;
}

int sim_parse_phy_control_longreach_ability(char *str, soc_phy_control_longreach_ability_t *ability)
{
    soc_phy_control_longreach_ability_t set = 0;
    if (str == nullptr || ability == nullptr || !add_words(str, {into(longreach, &set)})) {
        return BCM_E_PARAM;
    }
    *ability = set;
    return BCM_E_NONE;
}

void sim_format_phy_control_longreach_ability(char *buf, int bufsize,
                                              soc_phy_control_longreach_ability_t ability)
{
    write_words(buf, bufsize, {into(longreach, &ability)}, false);
}

}  // extern "C"
