#include "numbering.h"

#include "signature.h"

#include <algorithm>
#include <stdexcept>

namespace generator {

namespace {

// Rows keep numbers in 16 bits.
unsigned checked(size_t number, const char *what)
{
    if (number > 0xfffe) {
        throw std::runtime_error(std::string("too many ") + what + " for 16-bit numbers");
    }
    return static_cast<unsigned>(number);
}

}  // namespace

Numbering::Numbering(const Model &model)
{
    for (const auto &entry : model.descriptors) {
        types_.emplace(entry.first, checked(types_.size(), "types"));
    }
    for (const Family &family : model.families) {
        add_records(family);
        add_calls(family);
    }
    for (const BoundVariable &variable : model.variables) {
        add_arguments({variable.crossing});
    }
}

unsigned Numbering::type(const std::string &mangled) const
{
    return mangled.empty() ? 0 : types_.at(mangled);
}

unsigned Numbering::arguments(const std::vector<Crossing> &crossings) const
{
    Sequence sequence;
    for (const Crossing &crossing : crossings) {
        sequence.emplace_back(type(crossing.descriptor), text_numbers_.at(crossing.text));
    }
    return sequences_.at(sequence);
}

const Numbering::Group &Numbering::group(const std::string &name) const
{
    return *std::find_if(groups_.begin(), groups_.end(),
                         [&](const Group &group) { return group.name == name; });
}

void Numbering::add_records(const Family &family)
{
    groups_.push_back({"records_" + family.name, method_count(), {}});
    for (const BoundPointerClass &bound : family.pointer_classes) {
        add(bound);
    }
    for (const BoundArray &array : family.arrays) {
        add(array);
    }
    for (const BoundRecord &record : family.records) {
        add(record);
    }
}

void Numbering::add(const BoundPointerClass &bound)
{
    const std::string &name = bound.name;
    add_accessor("new_" + name, "() -> " + name);
    add_accessor("delete_" + name, "(self)");
    add_accessor(name + "_assign", "(self, value)");
    add_accessor(name + "_value", "(self) -> " + bound.element.text);
    add_accessor(name + "_cast", "(self) -> " + bound.pointer.text);
    add_accessor(name + "_frompointer", "(t) -> " + name);
    add_accessor(name + "_swigregister", "");
    add_arguments({bound.element});
    add_arguments({bound.self});
    add_arguments({bound.pointer});
}

void Numbering::add(const BoundArray &array)
{
    const std::string &name = array.name;
    // Of records as a record's constructor has it, by the class.
    const bool of_records = array.element.conversion == Conversion::Value;
    add_accessor("new_" + name, "(nelements) -> " + (of_records ? array.element : array.pointer).text);
    add_accessor("delete_" + name, "(ary)");
    add_accessor(name + "_getitem", "(ary, index) -> " + array.element.text);
    add_accessor(name + "_setitem", "(ary, index, value)");
    add_arguments({array.pointer, array.index, array.element});
}

void Numbering::add(const BoundRecord &record)
{
    add_accessor("new_" + record.name, "() -> " + record.name);
    add_accessor("delete_" + record.name, "(self)");
    add_accessor(record.name + "_swigregister", "");
    add_arguments({record.self});
    for (const BoundMember &member : record.members) {
        const std::string name = record.name + "_" + member.name;
        if (!member.read_only) {
            add_accessor(name + "_set", "(self, " + member.name + ")");
        }
        add_accessor(name + "_get", "(self) -> " + member.declared);
        add_arguments({member.crossing});
    }
}

void Numbering::add_calls(const Family &family)
{
    groups_.push_back({"calls_" + family.name, method_count(), {}});
    for (const std::vector<const BoundFunction *> &overloads : overloads_of(family)) {
        std::string docs;
        for (const BoundFunction *function : overloads) {
            docs += (docs.empty() ? "" : "\n") + docstring(*function);
        }
        add_method(overloads.front()->name, docs);
        for (const BoundFunction *function : overloads) {
            add_arguments(arguments_of(*function));
        }
    }
}

void Numbering::add_method(const std::string &name, const std::string &doc)
{
    const unsigned number = checked(method_numbers_.size(), "methods");
    if (!method_numbers_.emplace(name, number).second) {
        throw std::runtime_error("two methods are called '" + name + "'");
    }
    groups_.back().methods.push_back({name, doc});
}

void Numbering::add_accessor(const std::string &name, const std::string &signature)
{
    add_method(name, name + signature);
}

void Numbering::add_arguments(const std::vector<Crossing> &crossings)
{
    Sequence sequence;
    for (const Crossing &crossing : crossings) {
        sequence.emplace_back(type(crossing.descriptor), add_text(crossing.text));
    }
    auto [place, added] = sequences_.emplace(sequence, arguments_.size());
    if (added) {
        checked(place->second, "arguments");
        arguments_.insert(arguments_.end(), sequence.begin(), sequence.end());
    }
}

unsigned Numbering::add_text(const std::string &text)
{
    auto [place, added] = text_numbers_.emplace(text, texts_.size());
    if (added) {
        checked(place->second, "texts");
        texts_.push_back(text);
    }
    return place->second;
}

}  // namespace generator
