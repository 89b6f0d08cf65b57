#include "errors.h"

#include <algorithm>
#include <stdexcept>

namespace generator {

void Errors::add(const std::string &place, const std::string &what)
{
    lines_.push_back(place + ": " + what);
}

void Errors::raise_any() const
{
    if (lines_.empty()) {
        return;
    }
    std::string text;
    for (std::size_t i = 0; i < std::min(lines_.size(), limit); ++i) {
        text += lines_[i] + "\n";
    }
    if (lines_.size() > limit) {
        text += "and " + std::to_string(lines_.size() - limit) + " more\n";
    }
    throw std::runtime_error(text);
}

}  // namespace generator
