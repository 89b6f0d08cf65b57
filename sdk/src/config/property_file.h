/// Properties as the text of a file.
#pragma once

#include "config.h"

namespace sim {

/// BCM_E_NONE and *properties, with their places; BCM_E_NOT_FOUND: no such file; BCM_E_FAIL: it cannot be
/// read, or is no file; BCM_E_CONFIG: it is damaged, and *problem tells where.
int read_property_file(const std::string &path, Properties *properties, std::string *problem);

/// A line for each, in their order.
std::string property_text(const Properties &properties);

}  // namespace sim
