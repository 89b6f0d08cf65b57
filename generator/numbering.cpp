#include "numbering.h"

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
}

unsigned Numbering::type(const std::string &mangled) const
{
    return mangled.empty() ? 0 : types_.at(mangled);
}

unsigned Numbering::text(const std::string &text)
{
    auto [place, added] = text_numbers_.emplace(text, checked(texts_.size(), "texts"));
    if (added) {
        texts_.push_back(text);
    }
    return place->second;
}

unsigned Numbering::arguments(const std::vector<Crossing> &crossings)
{
    std::vector<std::pair<unsigned, unsigned>> sequence;
    for (const Crossing &crossing : crossings) {
        sequence.emplace_back(type(crossing.descriptor), text(crossing.text));
    }
    auto [place, added] = sequences_.emplace(sequence, checked(arguments_.size(), "arguments"));
    if (added) {
        arguments_.insert(arguments_.end(), sequence.begin(), sequence.end());
    }
    return place->second;
}

unsigned Numbering::method(const std::string &stub, const std::string &doc)
{
    groups_.back().methods.push_back({stub, doc});
    return checked(method_count_++, "methods");
}

void Numbering::begin_group(const std::string &name)
{
    groups_.push_back({name, {}});
}

}  // namespace generator
