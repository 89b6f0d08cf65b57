/// Properties as the text of a file. Both functions do all or nothing.
#pragma once

#include "config.h"

namespace sim {

/// BCM_E_NONE and *properties; BCM_E_NOT_FOUND: no such file; BCM_E_FAIL: it cannot be read, or is no file;
/// BCM_E_CONFIG: it is damaged, and the line is told on standard error.
int read_property_file(const std::string &path, Properties *properties);

std::string property_text(const Properties &properties);

/// Replaces a file, or makes it: the text is written to the file named by beside (empty: a name of its own)
/// and renamed only when it is safely there. BCM_E_NONE, or BCM_E_FAIL and the file is as it was.
int replace_file(const std::string &path, std::string beside, const std::string &text);

/// The text of a regular file: BCM_E_NONE, BCM_E_NOT_FOUND, BCM_E_FAIL.
int read_file(const std::string &path, std::string *text);

}  // namespace sim
