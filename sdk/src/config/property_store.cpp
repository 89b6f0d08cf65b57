#include "config.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <string>
#include <utility>

namespace sim {

namespace {

/// Whether that changes the value, which else stays where it is. Takes no memory.
bool replace_property(Property *kept, Property *by)
{
    const bool changed = kept->value != by->value;
    if (changed) {
        kept->value.swap(by->value);
    }
    kept->place.swap(by->place);
    return changed;
}

}  // namespace

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

Properties::value_type *PropertyStore::find(const std::string &name)
{
    const auto found = properties_.find(name);
    return found != properties_.end() ? &*found : nullptr;
}

void PropertyStore::set(const std::string &name, Property property)
{
    Properties properties;
    properties.emplace(name, std::move(property));
    enter(std::move(properties));
}

void PropertyStore::enter(Properties properties)
{
    for (auto &[name, property] : properties) {
        const auto kept = properties_.find(name);
        const bool changed = kept == properties_.end() || replace_property(&kept->second, &property);
        changed_ = changed_ || changed;
    }
    properties_.merge(properties);
}

void PropertyStore::complete(Properties properties)
{
    const std::size_t before = properties_.size();
    properties_.merge(properties);
    changed_ = changed_ || properties_.size() != before;
}

bool PropertyStore::remove(const std::string &name)
{
    const bool removed = properties_.erase(name) != 0;
    changed_ = changed_ || removed;
    return removed;
}

void PropertyStore::become(Properties properties)
{
    for (auto entry = properties_.begin(); entry != properties_.end();) {
        entry = properties.count(entry->first) != 0 ? std::next(entry) : properties_.erase(entry);
    }
    enter(std::move(properties));
    changed_ = false;
}

std::vector<std::string> PropertyStore::places_in(const std::string &file) const
{
    std::vector<std::string> places(properties_.size());
    int line = 0;
    for (std::string &place : places) {
        place = place_in_file(file, ++line);
    }
    return places;
}

void PropertyStore::saved(std::vector<std::string> places)
{
    auto place = places.begin();
    for (auto &[name, property] : properties_) {
        property.place.swap(*place++);
    }
    changed_ = false;
}

const char *PropertyStore::lasting_name(const std::string &name)
{
    const std::string &lasting = *names_.insert(name).first;
    names_by_address_.emplace(lasting.c_str(), &lasting);
    return lasting.c_str();
}

const std::string *PropertyStore::name_at(const char *address) const
{
    const auto found = names_by_address_.find(address);
    return found != names_by_address_.end() ? found->second : nullptr;
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
        *new Properties{{"l2_age_timer", {"300"}}, {"port_init_enable", {"1"}}, {"port_init_learn", {"1"}}};
    return defaults;
}

std::string place_in_file(const std::string &file, int line)
{
    return file + ":" + std::to_string(line);
}

const Properties::value_type *find_property(int unit, const std::string &name)
{
    PropertyStore &store = property_store();
    const auto *own = store.find(name + "." + std::to_string(unit));
    return own != nullptr ? own : store.find(name);
}

const std::string *property(int unit, const std::string &name)
{
    const auto *found = find_property(unit, name);
    return found != nullptr ? &found->second.value : nullptr;
}

void refuse_property(const Properties::value_type &property, const std::string &why)
{
    const auto &[name, told] = property;
    const std::string where = told.place.empty() ? "" : told.place + ": ";
    std::fprintf(stderr, "%s%s=%s: %s\n", where.c_str(), name.c_str(), told.value.c_str(), why.c_str());
}

}  // namespace sim
