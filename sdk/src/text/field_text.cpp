/// Names of the field processor's enumerations, and sets of them, from text and back.
#include "enumerators.h"
#include "number_text.h"
#include "sim_parse.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

using namespace sim;

namespace {

const Names qualifiers(names_of_bcm_field_qualify_e, "bcmFieldQualify");
const Names actions(names_of_bcm_field_action_e, "bcmFieldAction");
const Names decaps(names_of_bcm_field_decap_e, "bcmFieldDecap");
const Names group_modes(names_of_bcm_field_group_mode_e, "bcmFieldGroupMode");
const Names oam_types(names_of_bcm_field_oam_type_e, "bcmFieldOamType");
const Names olp_header_types(names_of_bcm_field_olp_header_type_e, "bcmFieldOlpHeaderType");
const Names mpls_oam_types(names_of_bcm_field_MplsOam_Control_pktType_e, "bcmFieldMplsOamControl");

constexpr std::string_view user_field = "Udf";
constexpr char name_characters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";

template <typename Enumeration>
Enumeration parse(const Names &names, const char *text)
{
    return static_cast<Enumeration>(names.value(text != nullptr ? text : ""));
}

char *format(const Names &names, char *buf, int value, bool brief)
{
    return buf != nullptr ? std::strcpy(buf, names.name(value, brief).c_str()) : nullptr;
}

/// The bit of a qualifier, or of a user-defined field, in a set; -1 for another name.
int qualifier_bit(std::string_view name)
{
    const int value = qualifiers.value(name);
    if (value != bcmFieldQualifyCount) {
        return value;
    }
    for (int field = 0; field < BCM_FIELD_USER_UDF_MAX; ++field) {
        if (same_text(name, std::string(user_field) + std::to_string(field))) {
            return bcmFieldQualifyCount + field;
        }
    }
    return -1;
}

int action_bit(std::string_view name)
{
    const int value = actions.value(name);
    return value != bcmFieldActionCount ? value : -1;
}

std::string qualifier_name(int bit)
{
    return bit < bcmFieldQualifyCount ? qualifiers.name(bit, true)
                                      : std::string(user_field) + std::to_string(bit - bcmFieldQualifyCount);
}

/// change(bit) for each name of the text; false at the first unknown one.
template <typename BitOf, typename Change>
bool for_each_name(std::string_view text, BitOf bit_of, Change change)
{
    for (std::size_t first; (first = text.find_first_of(name_characters)) != std::string_view::npos;) {
        text.remove_prefix(first);
        const std::size_t end = std::min(text.find_first_not_of(name_characters), text.size());
        const int bit = bit_of(text.substr(0, end));
        if (bit < 0) {
            return false;
        }
        change(bit);
        text.remove_prefix(end);
    }
    return true;
}

/// Names of a set's bits below count.
template <typename NameOf>
char *format_set(char *buf, const SHR_BITDCL *words, int count, const char *separator, NameOf name_of)
{
    if (buf == nullptr) {
        return nullptr;
    }
    std::string text;
    for (int bit = 0; bit < count; ++bit) {
        if (SHR_BITGET(words, bit)) {
            text += (text.empty() ? "" : separator != nullptr ? separator : " ") + name_of(bit);
        }
    }
    return std::strcpy(buf, text.c_str());
}

}  // namespace

extern "C" {

bcm_field_qualify_t sim_parse_field_qualifier(char *str)
{
    return parse<bcm_field_qualify_t>(qualifiers, str);
}

bcm_field_action_t sim_parse_field_action(char *str)
{
    return parse<bcm_field_action_t>(actions, str);
}

bcm_field_decap_t sim_parse_field_decap(char *str)
{
    return parse<bcm_field_decap_t>(decaps, str);
}

bcm_field_group_mode_t sim_parse_field_group_mode(char *str)
{
    return parse<bcm_field_group_mode_t>(group_modes, str);
}

bcm_field_oam_type_t sim_parse_field_oam_type(char *str)
{
    return parse<bcm_field_oam_type_t>(oam_types, str);
}

bcm_field_olp_header_type_t sim_parse_field_olp_hdr_type(char *str)
{
    return parse<bcm_field_olp_header_type_t>(olp_header_types, str);
}

bcm_field_MplsOam_Control_pktType_t sim_parse_field_MplsOamCtrlPktType(char *str)
{
    return parse<bcm_field_MplsOam_Control_pktType_t>(mpls_oam_types, str);
}

char *sim_format_field_qualifier(char *buf, bcm_field_qualify_t qual, int brief)
{
    return format(qualifiers, buf, qual, brief != 0);
}

char *sim_format_field_action(char *buf, bcm_field_action_t action, int brief)
{
    return format(actions, buf, action, brief != 0);
}

char *sim_format_field_group_mode(char *buf, bcm_field_group_mode_t mode, int brief)
{
    return format(group_modes, buf, mode, brief != 0);
}

char *sim_format_field_decap(char *buf, bcm_field_decap_t decap)
{
    return format(decaps, buf, decap, true);
}

int sim_parse_field_qset(char *str, bcm_field_qset_t *qset)
{
    if (str == nullptr || qset == nullptr) {
        return BCM_E_PARAM;
    }
    bcm_field_qset_t set = {};
    if (!for_each_name(str, qualifier_bit, [&](int bit) { SHR_BITSET(set.w, bit); })) {
        return BCM_E_NOT_FOUND;
    }
    *qset = set;
    return BCM_E_NONE;
}

int sim_parse_field_aset(char *str, bcm_field_aset_t *aset, uint8 add)
{
    if (str == nullptr || aset == nullptr) {
        return BCM_E_PARAM;
    }
    bcm_field_aset_t set = *aset;
    const auto change = [&](int bit) {
        if (add != 0) {
            SHR_BITSET(set.w, bit);
        } else {
            SHR_BITCLR(set.w, bit);
        }
    };
    if (!for_each_name(str, action_bit, change)) {
        return BCM_E_NOT_FOUND;
    }
    *aset = set;
    return BCM_E_NONE;
}

char *sim_format_field_qset(char *buf, bcm_field_qset_t qset, char *separator)
{
    return format_set(buf, qset.w, bcmFieldQualifyCount + BCM_FIELD_USER_UDF_MAX, separator, qualifier_name);
}

char *sim_format_field_aset(char *buf, bcm_field_aset_t aset, char *separator)
{
    return format_set(buf, aset.w, bcmFieldActionCount, separator,
                      [](int bit) { return actions.name(bit, true); });
}

}  // extern "C"
