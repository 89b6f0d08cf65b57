/// The room of configuration: the properties in memory, on which the functions of <sal/config.h> stand.
#pragma once

#include <map>
#include <set>
#include <string>

namespace sim {

using Properties = std::map<std::string, std::string>;

constexpr std::size_t property_name_max = 127;
constexpr std::size_t property_value_max = 1023;

bool valid_property_name(const std::string &name);
bool valid_property_value(const std::string &value);

class PropertyStore {
public:
    const Properties &all() const { return properties_; }

    /// Null if it is not set; else the value, where it stays until that property is changed.
    std::string *find(const std::string &name);

    /// Name and value have to be valid.
    void set(const std::string &name, const std::string &value);
    bool remove(const std::string &name);

    /// Makes the store equal to the properties given; what does not change stays where it is.
    void become(const Properties &properties);

    /// The name, at an address that is good for ever; names are few.
    const char *lasting_name(const std::string &name);
    /// Null if that address did not come from lasting_name. The address may be any.
    const std::string *name_at(const char *address) const;

    /// Whether anything was changed since saved().
    bool changed() const { return changed_; }
    void saved() { changed_ = false; }
    void touch() { changed_ = true; }

private:
    Properties properties_;
    std::set<std::string> names_;
    bool changed_ = false;
};

PropertyStore &property_store();

/// What the SDK starts from where nobody says otherwise.
const Properties &default_properties();

/// The value for a unit: of "name.unit", else of "name"; null if neither is set.
const std::string *property(int unit, const std::string &name);

/// The same as an integer: BCM_E_NONE and *value; BCM_E_NOT_FOUND; BCM_E_CONFIG if it is none.
int integer_property(int unit, const std::string &name, int *value);

}  // namespace sim
