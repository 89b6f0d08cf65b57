// What the chips are configured with before they start.
#pragma once

#include <string>

/// The path last set, empty at first.
const std::string &copyEngineConstraintsFilePath();
