/// The room of configuration: the properties in memory, on which the functions of <sal/config.h> stand.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace sim {

struct Property {
    std::string value;
    std::string place = {};  ///< "file:line" where it stands; empty if a call set it
};

using Properties = std::map<std::string, Property>;

constexpr std::size_t property_name_max = 127;
constexpr std::size_t property_value_max = 1023;

bool valid_property_name(const std::string &name);
bool valid_property_value(const std::string &value);

class PropertyStore {
public:
    const Properties &all() const { return properties_; }

    /// Null if it is not set; else it with its name. The value stays where it is until it is changed.
    Properties::value_type *find(const std::string &name);

    /// Names and values have to be valid. All are set or, where memory is short, none.
    void set(const std::string &name, Property property);
    void enter(Properties properties);
    /// Sets those that are not set.
    void complete(Properties properties);
    bool remove(const std::string &name);

    /// Makes the store equal to the properties given; what does not change stays where it is.
    void become(Properties properties);

    /// The name, at an address that is good for ever; names are few.
    const char *lasting_name(const std::string &name);
    /// Null if that address did not come from lasting_name. The address may be any.
    const std::string *name_at(const char *address) const;

    /// Whether anything was changed since saved(), which is told where each property stands now.
    bool changed() const { return changed_; }
    void saved(std::vector<std::string> places);
    /// Where each will stand in a file, a line each in their order.
    std::vector<std::string> places_in(const std::string &file) const;
    void touch() { changed_ = true; }

private:
    Properties properties_;
    std::unordered_set<std::string> names_;
    std::unordered_map<const char *, const std::string *> names_by_address_;
    bool changed_ = false;
};

PropertyStore &property_store();

/// What the SDK starts from where nobody says otherwise.
const Properties &default_properties();

/// How the place of a property is written.
std::string place_in_file(const std::string &file, int line);

/// What goes for a unit: "name.unit", else "name"; null if neither is set.
const Properties::value_type *find_property(int unit, const std::string &name);

/// Its value.
const std::string *property(int unit, const std::string &name);

/// Tells on standard error where a property stands whose value cannot be, and why it cannot.
void refuse_property(const Properties::value_type &property, const std::string &why);

}  // namespace sim
