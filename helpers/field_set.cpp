#include "field_set.h"

#include <cstring>

namespace {

constexpr int word_bits = 32;

/// The word of an element, and the element's bit within it; a null word, with an exception set, outside.
struct Place {
    uint32 *word;
    uint32 bit;
};

template <typename Set>
Place place_of(Set &set, const char *kind, int element)
{
    constexpr int elements = static_cast<int>(sizeof set.w / sizeof set.w[0]) * word_bits;
    if (element < 0 || element >= elements) {
        PyErr_Format(PyExc_ValueError, "Element %d is outside the %s set (0 to %d)", element, kind,
                     elements - 1);
        return {nullptr, 0};
    }
    return {&set.w[element / word_bits], uint32{1} << (element % word_bits)};
}

template <typename Set>
void add(Set &set, const char *kind, int element)
{
    Place place = place_of(set, kind, element);
    if (place.word) {
        *place.word |= place.bit;
    }
}

template <typename Set>
void remove(Set &set, const char *kind, int element)
{
    Place place = place_of(set, kind, element);
    if (place.word) {
        *place.word &= ~place.bit;
    }
}

template <typename Set>
unsigned int test(Set &set, const char *kind, int element)
{
    Place place = place_of(set, kind, element);
    return place.word ? *place.word & place.bit : 0;
}

constexpr char qualifier[] = "qualifier", action[] = "action";

}  // namespace

void bcm_field_qset_init(bcm_field_qset_t &qset)
{
    std::memset(&qset, 0, sizeof qset);
}

void bcm_field_qset_add(bcm_field_qset_t &qset, bcm_field_qualify_e e)
{
    add(qset, qualifier, e);
}

void bcm_field_qset_remove(bcm_field_qset_t &qset, bcm_field_qualify_e e)
{
    remove(qset, qualifier, e);
}

unsigned int bcm_field_qset_test(bcm_field_qset_t &qset, bcm_field_qualify_e e)
{
    return test(qset, qualifier, e);
}

void bcm_field_aset_init(bcm_field_aset_t &aset)
{
    std::memset(&aset, 0, sizeof aset);
}

void bcm_field_aset_add(bcm_field_aset_t &aset, bcm_field_action_e e)
{
    add(aset, action, e);
}

void bcm_field_aset_remove(bcm_field_aset_t &aset, bcm_field_action_e e)
{
    remove(aset, action, e);
}

unsigned int bcm_field_aset_test(bcm_field_aset_t &aset, bcm_field_qualify_e e)
{
    return test(aset, action, e);
}
