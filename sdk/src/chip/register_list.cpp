/// Lists of register addresses: their room. Only what was given out here is ever released.
#include "sim_register.h"

#include <memory>
#include <new>
#include <unordered_map>

namespace {

using Room = std::unique_ptr<soc_regaddrinfo_t[]>;

std::unordered_map<const soc_regaddrinfo_t *, Room> &rooms()
{
    static auto &all = *new std::unordered_map<const soc_regaddrinfo_t *, Room>;
    return all;
}

}  // namespace

extern "C" {

int sim_soc_regaddrlist_alloc(soc_regaddrlist_t *addrlist)
{
    if (addrlist == nullptr || addrlist->ainfo != nullptr) {
        return SOC_E_PARAM;
    }
    Room room(new (std::nothrow) soc_regaddrinfo_t[SOC_REGADDRLIST_SIZE]());
    if (room == nullptr) {
        return SOC_E_MEMORY;
    }
    addrlist->count = 0;
    addrlist->ainfo = room.get();
    rooms().emplace(addrlist->ainfo, std::move(room));
    return SOC_E_NONE;
}

int sim_soc_regaddrlist_free(soc_regaddrlist_t *addrlist)
{
    if (addrlist == nullptr || rooms().erase(addrlist->ainfo) == 0) {
        return SOC_E_PARAM;
    }
    addrlist->count = 0;
    addrlist->ainfo = nullptr;
    return SOC_E_NONE;
}

}  // extern "C"
