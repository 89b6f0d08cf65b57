/// Registers from text.
#include "register_text.h"

#include "begin.h"
#include "chip_address.h"
#include "destination.h"
#include "number_text.h"
#include "port_text.h"
#include "sim_parse.h"
#include "sim_register.h"
#include "symbols.h"

#include <algorithm>
#include <string_view>

using namespace sim;

namespace {

/// Ends of a range of elements, ports or cores, both included.
struct Range {
    int first, last;
};

bool read_element_range(const Register &reg, std::string_view text, Range *elements)
{
    *elements = {0, reg.elements - 1};
    return text.data() == nullptr || read_range(text, 0, reg.elements - 1, &elements->first, &elements->last);
}

/// Where the register is to be accessed; one that is on the chip once takes no place.
int read_places(int unit, const Register &reg, std::string_view text, Range *places)
{
    const bool all = text.data() == nullptr || text == "*";
    if (reg.type != soc_portreg) {
        *places = {REG_PORT_ANY, REG_PORT_ANY};
        if (all) {
            return BCM_E_NONE;
        }
        const int cores = block_of(reg.block).count;
        return read_range(text, 0, cores - 1, &places->first, &places->last) ? BCM_E_NONE : BCM_E_PORT;
    }
    *places = {0, port_max};
    if (all) {
        return BCM_E_NONE;
    }
    const std::size_t dash = text.find('-');
    places->first = port_named(unit, text.substr(0, dash));
    places->last = dash == std::string_view::npos ? places->first : port_named(unit, text.substr(dash + 1));
    if (places->first < 0 || places->last < 0) {
        return BCM_E_PORT;
    }
    return places->first <= places->last ? BCM_E_NONE : BCM_E_PARAM;
}

int read_address(int unit, std::string_view text, Registers *registers)
{
    uint32 address;
    if (read_number(text, &address, 1) != NumberStatus::ok) {
        return BCM_E_NOT_FOUND;
    }
    soc_regaddrinfo_t info;
    sim_soc_regaddrinfo_get(unit, &info, address);
    registers->push_back(info);
    return info.valid ? BCM_E_NONE : BCM_E_NOT_FOUND;
}

}  // namespace

int sim::read_registers(int unit, std::string_view text, Registers *registers)
{
    Reference reference;
    if (!split_reference(text, &reference)) {
        return BCM_E_PARAM;
    }
    const Register *reg = register_symbol(reference.name);
    if (reg == nullptr) {
        return read_address(unit, text, registers);
    }
    Range elements, places;
    if (!read_element_range(*reg, reference.element, &elements)) {
        return BCM_E_PARAM;
    }
    const int rc = read_places(unit, *reg, reference.place, &places);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    for (int port = places.first; port <= places.last; ++port) {
        for (int index = elements.first; index <= elements.last; ++index) {
            RegisterPlace place;
            if (locate(reg, port, index, &place) != SOC_E_NONE) {
                return BCM_E_PORT;
            }
            registers->push_back(info_of(place));
        }
    }
    return BCM_E_NONE;
}

extern "C" {

int sim_parse_cmic_regname(int unit, char *name, uint32 *offset_ptr)
{
    return begin(unit, given(name, offset_ptr)).then([&]() -> int {
        Reference reference;
        int index = 0;
        RegisterPlace place;
        if (!split_reference(name, &reference) || reference.place.data() != nullptr) {
            return BCM_E_PARAM;
        }
        const Register *reg = register_symbol(reference.name);
        if (reg == nullptr || reg->block != SOC_BLK_CMIC) {
            return BCM_E_NOT_FOUND;
        }
        if ((reference.element.data() != nullptr && !read_int(reference.element, &index))
            || locate(reg, REG_PORT_ANY, index, &place) != SOC_E_NONE) {
            return BCM_E_PARAM;
        }
        *offset_ptr = place.address();
        return BCM_E_NONE;
    });
}

int sim_parse_symbolic_reference(int unit, soc_regaddrlist_t *alist, char *ref)
{
    return begin(unit, given(alist, ref)).then([&]() -> int {
        Registers registers;
        if (alist->ainfo == nullptr) {
            return BCM_E_PARAM;
        }
        const int rc = read_registers(unit, ref, &registers);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (registers.size() > SOC_REGADDRLIST_SIZE) {
            return BCM_E_FULL;
        }
        std::copy(registers.begin(), registers.end(), alist->ainfo);
        alist->count = static_cast<int>(registers.size());
        return BCM_E_NONE;
    });
}

}  // extern "C"
