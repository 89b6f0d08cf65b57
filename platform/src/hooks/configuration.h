// What the chips are configured with before they start.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// A SOC property, and the value that it is to have; nothing: it is not to be set.
struct Property {
    std::string name;
    std::optional<std::string> value;
};

/// A status: all are as wanted, or as before and *refused is the one that cannot be.
int setProperties(const std::vector<Property> &properties, const Property **refused);

/// The path last set, empty at first.
const std::string &copyEngineConstraintsFilePath();
