/// Names and tables of the chip level that are there before a chip is.
#include <soc/memory.h>
#include <soc/register.h>

#include <iterator>

// A constant heeds no attribute after its first declaration.
#pragma GCC visibility push(default)
const int MemNoName = -1;
#pragma GCC visibility pop

namespace {

struct RegisterType {
    char name[12];
    int granularity;
};
RegisterType types[] = {{"generic", 1}, {"cpu", 1},      {"pci", 1},
                        {"port", 4},    {"per-port", 1}, {"per-cosq", 8}};

}  // namespace

[[gnu::visibility("default")]] char *soc_regtypenames[] = {types[0].name, types[1].name, types[2].name,
                                                           types[3].name, types[4].name, types[5].name};
[[gnu::visibility("default")]] int soc_regtype_gran[] = {types[0].granularity, types[1].granularity,
                                                         types[2].granularity, types[3].granularity,
                                                         types[4].granularity, types[5].granularity};
static_assert(std::size(types) == std::size(soc_regtypenames)
                  && std::size(types) == std::size(soc_regtype_gran),
              "");
