/// Characters and pieces of text.
#include "number_text.h"
#include "sim_text.h"

#include <algorithm>
#include <cstring>
#include <string_view>

using namespace sim;

extern "C" {

int sim_xdigit2i(int digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

int sim_i2xdigit(int digit)
{
    return digit >= 0 && digit < 16 ? "0123456789abcdef"[digit] : -1;
}

const char *sim_strcaseindex(const char *s, const char *sub)
{
    if (s == nullptr || sub == nullptr) {
        return nullptr;
    }
    const std::string_view text = s, wanted = sub;
    for (std::size_t place = 0; place + wanted.size() <= text.size(); ++place) {
        if (same_text(text.substr(place, wanted.size()), wanted)) {
            return s + place;
        }
    }
    return nullptr;
}

char *sim_strrepl(char *s, int start, int len, const char *repstr)
{
    if (s == nullptr || repstr == nullptr) {
        return nullptr;
    }
    const std::size_t size = std::strlen(s), added = std::strlen(repstr);
    const std::size_t first = std::min(size, static_cast<std::size_t>(std::max(start, 0)));
    const std::size_t removed = std::min(size - first, static_cast<std::size_t>(std::max(len, 0)));
    std::memmove(s + first + added, s + first + removed, size - first - removed + 1);
    std::memcpy(s + first, repstr, added);
    return s;
}

void sim_tabify_line(char *out, char *line, int tab_width)
{
    if (out == nullptr || line == nullptr) {
        return;
    }
    long long column = 0, run = 0;
    for (; *line != '\0'; ++line) {
        *out++ = *line;
        column = *line == '\n' ? 0 : column + 1;
        run = *line == ' ' ? run + 1 : 0;
        if (tab_width < 1) {
            continue;
        }
        if (*line == '\t') {
            column += (tab_width - 1) - (column - 1) % tab_width;
        } else if (run > 0 && column % tab_width == 0) {
            if (run > 1) {
                out -= run;
                *out++ = '\t';
            }
            run = 0;
        }
    }
    *out = '\0';
}

}  // extern "C"
