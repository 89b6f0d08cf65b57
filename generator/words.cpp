#include "words.h"

#include <algorithm>
#include <sstream>

namespace generator {

std::vector<std::string> words(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> found;
    for (std::string word; stream >> word;) {
        found.push_back(word);
    }
    return found;
}

bool has(const std::vector<std::string> &texts, const std::string &text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

bool ends_with(const std::string &text, const std::string &end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

std::pair<std::string, std::string> divided(const std::string &word)
{
    const std::size_t sign = word.find('=');
    return sign == std::string::npos ? std::pair(word, std::string())
                                     : std::pair(word.substr(0, sign), word.substr(sign + 1));
}

bool names_an_array(const std::string &name)
{
    return name.find("array") != std::string::npos || ends_with(name, "arr") || ends_with(name, "list");
}

}  // namespace generator
