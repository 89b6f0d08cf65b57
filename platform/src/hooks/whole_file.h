// Files read and written as a whole.
#pragma once

#include <string>

/// False if it is no regular file or cannot be read.
bool readWholeFile(const char *path, std::string *text);

/// Puts a file with that text in place of a regular file or of none. False, and what was there is untouched.
bool writeWholeFile(const char *path, const std::string &text);
