/// What the generated functions of qualifiers call, all of which are alike: an entry's id, the number of the
/// qualifier, what it is asked of if there are several, and its values, or where they are to be written.
#pragma once

#include "rules.h"

#include <bcm/field_types.h>

#include <cstddef>

namespace sim {

/// BCM_E_PARAM: a null pointer, a value wider than the qualifier, or the group's set lacks it; BCM_E_NOT_FOUND: no such
/// entry, or it has no such qualifier.
int set_qualifier(int unit, rules::Arguments arguments);
int find_qualifier(int unit, rules::Arguments arguments);

/// How many bytes each of its values has, of a qualifier whose caller says how many. BCM_E_NOT_FOUND as above.
int find_qualifier_bytes(int unit, bcm_field_entry_t entry, int qualifier, std::size_t *bytes);

/// All of the entry's.
int clear_qualifier(int unit, rules::Arguments arguments);

}  // namespace sim
