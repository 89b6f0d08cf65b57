/// Ports of other modules from text.
#include "begin.h"
#include "number_text.h"
#include "port_text.h"
#include "sim_parse.h"

#include <string_view>

using namespace sim;

extern "C" int sim_parse_mod_port(int unit, char *s, bcm_mod_port_t *mp)
{
    return begin(unit, given(s, mp)).then([&]() -> int {
        std::string_view text = s;
        const std::size_t colon = text.find(':');
        int module = own_module, port;
        if (colon != std::string_view::npos) {
            if (!read_int(text.substr(0, colon), &module)) {
                return BCM_E_PARAM;
            }
            if (module < 0) {
                return BCM_E_BADID;
            }
            text.remove_prefix(colon + 1);
        }
        if (module == own_module) {
            port = port_named(unit, text);
        } else if (!read_int(text, &port)) {
            return BCM_E_PARAM;
        }
        Destination to;
        const int rc = module == own_module && port < 0 ? no_such_port(text) : resolve(module, port, &to);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        *mp = {module, port};
        return BCM_E_NONE;
    });
}
