/// Files read and written as a whole: all that this process keeps in files goes through here.
#pragma once

#include <string>

namespace sim {

/// The text of a regular file: BCM_E_NONE; BCM_E_NOT_FOUND: there is none; BCM_E_FAIL: it cannot be read, or
/// is something else. After an error *text is as it was.
int read_file(const std::string &path, std::string *text);

/// Puts a file with that text in place of a regular file or of none, with the rights of the old one. It is
/// written as the file named by beside and renamed only when it is safely there; where that is empty or the
/// file itself by another name, under a free name in its folder. What stood under the name beside is lost.
/// BCM_E_NONE; or BCM_E_FAIL, then the file is as it was and nothing stands beside it.
int replace_file(const std::string &path, const std::string &beside, const std::string &text);

}  // namespace sim
