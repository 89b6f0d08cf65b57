/// The property store as the SDK's users see it.
#include "property_file.h"
#include "sim_config.h"
#include "whole_file.h"

#include <bcm/error.h>
#include <sim/start.h>

#include <fnmatch.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

using namespace sim;

namespace {

/// What sal_config_file_set was told; empty: none.
struct FileNames {
    std::string file;
    std::string beside;
};

FileNames names;
bool initialised;

/// The defaults with what the file says on top.
int properties_of_file(Properties *properties)
{
    std::string problem;
    const int rc = read_property_file(names.file, properties, &problem);
    if (rc == BCM_E_CONFIG) {
        std::fprintf(stderr, "%s\n", problem.c_str());
    }
    if (rc == BCM_E_NONE) {
        properties->insert(default_properties().begin(), default_properties().end());
    }
    return rc;
}

const char *text_or_null(const std::string &text)
{
    return text.empty() ? nullptr : text.c_str();
}

}  // namespace

extern "C" {

int sim_sal_config_init(void)
{
    if (initialised) {
        return BCM_E_NONE;
    }
    if (names.file.empty()) {
        sim_sal_config_init_defaults();
    } else {
        Properties properties;
        const int rc = properties_of_file(&properties);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        // What was set before goes before what the file says.
        PropertyStore &store = property_store();
        const bool set_before = !store.all().empty();
        for (const auto &[name, property] : store.all()) {
            properties[name] = property;
        }
        store.become(std::move(properties));
        if (set_before) {
            store.touch();
        }
    }
    initialised = true;
    return BCM_E_NONE;
}

void sim_sal_config_init_defaults(void)
{
    property_store().complete(default_properties());
}

int sim_sal_config_refresh(void)
{
    if (names.file.empty()) {
        return BCM_E_CONFIG;
    }
    Properties properties;
    const int rc = properties_of_file(&properties);
    if (rc == BCM_E_NONE) {
        property_store().become(std::move(properties));
        initialised = true;
    }
    return rc;
}

int sim_sal_config_flush(void)
{
    if (names.file.empty()) {
        return BCM_E_CONFIG;
    }
    PropertyStore &store = property_store();
    if (!store.changed()) {
        return BCM_E_NONE;
    }
    // What needs memory comes before the file changes.
    std::vector<std::string> places = store.places_in(names.file);
    const int rc = replace_file(names.file, names.beside, property_text(store.all()));
    if (rc == BCM_E_NONE) {
        store.saved(std::move(places));
    }
    return rc;
}

char *sim_sal_config_get(const char *name)
{
    auto *found = name != nullptr ? property_store().find(name) : nullptr;
    return found != nullptr ? found->second.value.data() : nullptr;
}

int sim_sal_config_set(char *name, char *value)
{
    if (name == nullptr || !valid_property_name(name) || (value != nullptr && !valid_property_value(value))) {
        return BCM_E_PARAM;
    }
    if (value == nullptr) {
        return property_store().remove(name) ? BCM_E_NONE : BCM_E_NOT_FOUND;
    }
    property_store().set(name, {value});
    return BCM_E_NONE;
}

int sim_sal_config_get_next(char **name, char **value)
{
    if (name == nullptr || value == nullptr) {
        return BCM_E_PARAM;
    }
    PropertyStore &store = property_store();
    const std::string *before = nullptr;
    if (*name != nullptr) {
        // Only an address that came from here is looked at.
        before = store.name_at(*name);
        if (before == nullptr) {
            return BCM_E_PARAM;
        }
    }
    const auto next = before != nullptr ? store.all().upper_bound(*before) : store.all().begin();
    if (next == store.all().end()) {
        *name = *value = nullptr;
        return BCM_E_NOT_FOUND;
    }
    *name = const_cast<char *>(store.lasting_name(next->first));
    *value = store.find(next->first)->second.value.data();
    return BCM_E_NONE;
}

void sim_sal_config_show(void)
{
    std::fputs(property_text(property_store().all()).c_str(), stdout);
}

int sim_sal_config_save(char *file, char *pattern, int append)
{
    if (file == nullptr || *file == '\0') {
        return BCM_E_PARAM;
    }
    const bool all = pattern == nullptr || *pattern == '\0';
    Properties chosen;
    for (const auto &[name, property] : property_store().all()) {
        if (all || fnmatch(pattern, name.c_str(), 0) == 0) {
            chosen[name] = property;
        }
    }
    if (chosen.empty()) {
        return BCM_E_NOT_FOUND;
    }
    std::string text;
    if (append) {
        const int rc = read_file(file, &text);
        if (rc != BCM_E_NONE && rc != BCM_E_NOT_FOUND) {
            return rc;
        }
        if (!text.empty() && text.back() != '\n') {
            text += '\n';
        }
    }
    return replace_file(file, "", text + property_text(chosen));
}

int sim_sal_config_file_set(const char *fname, const char *tname)
{
    names = {fname != nullptr ? fname : "", tname != nullptr ? tname : ""};
    return BCM_E_NONE;
}

int sim_sal_config_file_get(const char **fname, const char **tname)
{
    if (fname == nullptr || tname == nullptr) {
        return BCM_E_PARAM;
    }
    *fname = text_or_null(names.file);
    *tname = text_or_null(names.beside);
    return BCM_E_NONE;
}

int sim_config_load(const char *file, char *problem, int size)
{
    Properties properties;
    std::string text;
    const int rc = read_property_file(file, &properties, &text);
    if (rc != BCM_E_NONE) {
        std::snprintf(problem, static_cast<std::size_t>(size), "%s", text.c_str());
        return rc;
    }
    property_store().enter(std::move(properties));
    return BCM_E_NONE;
}

}  // extern "C"
