/// Ends of ranges as the shell reads them.
#include "number_text.h"
#include "sim_shell.h"

#include <string_view>

namespace {

/// Whether text is a number, or stands for the legal end.
bool read_end(const char *text, int legal_end, int *value)
{
    const std::string_view word = text;
    if (word.empty() || word == "*") {
        *value = legal_end;
        return true;
    }
    return sim::read_int(word, value);
}

}  // namespace

extern "C" int sim_diag_parse_range(char *low, char *high, int *min, int *max, int legal_min, int legal_max)
{
    int first, last;
    if (low == nullptr || min == nullptr || max == nullptr || !read_end(low, legal_min, &first)) {
        return -1;
    }
    // One "*" alone is the whole range.
    const bool all = high == nullptr && (*low == '\0' || *low == '*');
    last = all ? legal_max : first;
    if (high != nullptr && !read_end(high, legal_max, &last)) {
        return -1;
    }
    if (first < legal_min || last > legal_max || first > last) {
        return -1;
    }
    *min = first;
    *max = last;
    return 0;
}
