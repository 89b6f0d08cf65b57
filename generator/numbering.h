// The numbers by which generated rows refer to types, arguments and methods.
#pragma once

#include "model.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace generator {

/// Every bound function, in method-table order, and the tables that the rows share.
class Numbering {
public:
    explicit Numbering(const Model &model);

    /// The number of a descriptor; 0 for no descriptor, where the number is not looked at.
    unsigned type(const std::string &mangled) const;

    /// The number of the first of a sequence of arguments; equal sequences share their place.
    unsigned arguments(const std::vector<Crossing> &crossings);

    /// Adds a method, described by its docstring (or by its bare name, if it has none), to the current group.
    /// Returns its number.
    unsigned method(const std::string &stub, const std::string &doc);

    struct Method {
        std::string stub, doc;
    };
    struct Group {
        std::string name;
        std::vector<Method> methods;
    };
    void begin_group(const std::string &name);
    const std::vector<Group> &groups() const { return groups_; }
    unsigned method_count() const { return method_count_; }

    /// (descriptor number, text number) in order.
    const std::vector<std::pair<unsigned, unsigned>> &argument_table() const { return arguments_; }
    const std::vector<std::string> &texts() const { return texts_; }

private:
    unsigned text(const std::string &text);

    std::map<std::string, unsigned> types_, text_numbers_;
    std::vector<std::string> texts_;
    std::vector<std::pair<unsigned, unsigned>> arguments_;
    std::map<std::vector<std::pair<unsigned, unsigned>>, unsigned> sequences_;
    std::vector<Group> groups_;
    unsigned method_count_ = 0;
};

}  // namespace generator
