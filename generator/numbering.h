// The numbers by which generated rows refer to types, arguments and methods. They are all given before anything is
// emitted: what is emitted, and in which order, does not change them.
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
    /// Throws std::runtime_error where 16 bits are not enough.
    explicit Numbering(const Model &model);

    /// The number of a descriptor; 0 for no descriptor, where the number is not looked at.
    unsigned type(const std::string &mangled) const;

    /// The number of the first of a sequence of arguments; equal sequences share their place.
    unsigned arguments(const std::vector<Crossing> &crossings) const;

    /// The number of a method, by its name in Python.
    unsigned method(const std::string &name) const { return method_numbers_.at(name); }

    struct Method {
        std::string name;
        std::string doc;  ///< its docstring, or its bare name if it has none
    };
    /// The methods of one emitted text: "records_l2" or "calls_l2".
    struct Group {
        std::string name;
        unsigned first;  ///< number of its first method
        std::vector<Method> methods;
    };
    const std::vector<Group> &groups() const { return groups_; }
    const Group &group(const std::string &name) const;
    unsigned method_count() const { return static_cast<unsigned>(method_numbers_.size()); }

    /// (descriptor number, text number) in order.
    const std::vector<std::pair<unsigned, unsigned>> &argument_table() const { return arguments_; }
    const std::vector<std::string> &texts() const { return texts_; }

private:
    using Sequence = std::vector<std::pair<unsigned, unsigned>>;

    void add_records(const Family &family);
    void add_calls(const Family &family);
    void add(const BoundPointerClass &bound);
    void add(const BoundArray &array);
    void add(const BoundRecord &record);
    void add_method(const std::string &name, const std::string &doc);
    void add_accessor(const std::string &name, const std::string &signature);
    void add_arguments(const std::vector<Crossing> &crossings);
    unsigned add_text(const std::string &text);

    std::map<std::string, unsigned> types_, text_numbers_, method_numbers_;
    std::vector<std::string> texts_;
    Sequence arguments_;
    std::map<Sequence, unsigned> sequences_;
    std::vector<Group> groups_;
};

}  // namespace generator
