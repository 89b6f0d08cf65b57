// Sets of field qualifiers and actions, for which the SDK has macros only. Element e is bit e % 32 of word
// e / 32 of the set's `w`. An element outside of it raises ValueError and nothing is read or written.
#pragma once

#include <Python.h>

extern "C" {
#include <bcm/field.h>
}

/// Empties the set, with all that the record holds beside it.
void bcm_field_qset_init(bcm_field_qset_t &qset);
void bcm_field_qset_add(bcm_field_qset_t &qset, bcm_field_qualify_e e);
void bcm_field_qset_remove(bcm_field_qset_t &qset, bcm_field_qualify_e e);
/// The element's own bit, such as 32 for element 5, or 0; also 0 with an exception.
unsigned int bcm_field_qset_test(bcm_field_qset_t &qset, bcm_field_qualify_e e);

void bcm_field_aset_init(bcm_field_aset_t &aset);
void bcm_field_aset_add(bcm_field_aset_t &aset, bcm_field_action_e e);
void bcm_field_aset_remove(bcm_field_aset_t &aset, bcm_field_action_e e);
/// The element has a qualifier's type here: scripts know the message that names it.
unsigned int bcm_field_aset_test(bcm_field_aset_t &aset, bcm_field_qualify_e e);
