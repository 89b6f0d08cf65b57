#include "config.h"

#include "number_text.h"

#include <bcm/error.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>

namespace sim {

bool valid_property_name(const std::string &name)
{
    return !name.empty() && name.size() <= property_name_max
           && std::all_of(name.begin(), name.end(),
                          [](unsigned char c) { return c > ' ' && c != 0x7f && c != '=' && c != '#'; });
}

bool valid_property_value(const std::string &value)
{
    const auto blank = [](unsigned char c) { return std::isspace(c) != 0; };
    const bool printable = std::none_of(value.begin(), value.end(),
                                        [](unsigned char c) { return (c < ' ' && c != '\t') || c == 0x7f; });
    return value.size() <= property_value_max && printable
           && (value.empty()
               || (!blank(static_cast<unsigned char>(value.front()))
                   && !blank(static_cast<unsigned char>(value.back()))));
}

std::string *PropertyStore::find(const std::string &name)
{
    const auto found = properties_.find(name);
    return found != properties_.end() ? &found->second : nullptr;
}

void PropertyStore::set(const std::string &name, const std::string &value)
{
    const auto [entry, added] = properties_.try_emplace(name, value);
    if (added || entry->second != value) {
        entry->second = value;
        changed_ = true;
    }
}

bool PropertyStore::remove(const std::string &name)
{
    const bool removed = properties_.erase(name) != 0;
    changed_ = changed_ || removed;
    return removed;
}

void PropertyStore::become(const Properties &properties)
{
    for (auto entry = properties_.begin(); entry != properties_.end();) {
        entry = properties.count(entry->first) != 0 ? std::next(entry) : properties_.erase(entry);
    }
    for (const auto &[name, value] : properties) {
        set(name, value);
    }
    changed_ = false;
}

const char *PropertyStore::lasting_name(const std::string &name)
{
    return names_.insert(name).first->c_str();
}

const std::string *PropertyStore::name_at(const char *address) const
{
    const auto found = std::find_if(names_.begin(), names_.end(),
                                    [address](const std::string &name) { return name.c_str() == address; });
    return found != names_.end() ? &*found : nullptr;
}

PropertyStore &property_store()
{
    // Never destroyed: other libraries may ask at their end.
    static PropertyStore &store = *new PropertyStore;
    return store;
}

const Properties &default_properties()
{
    static const Properties &defaults =
        *new Properties{{"l2_age_timer", "300"}, {"port_init_enable", "1"}, {"port_init_learn", "1"}};
    return defaults;
}

const std::string *property(int unit, const std::string &name)
{
    PropertyStore &store = property_store();
    const std::string *own = store.find(name + "." + std::to_string(unit));
    return own != nullptr ? own : store.find(name);
}

int integer_property(int unit, const std::string &name, int *value)
{
    const std::string *text = property(unit, name);
    if (text == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    return read_int(*text, value) ? BCM_E_NONE : BCM_E_CONFIG;
}

}  // namespace sim
