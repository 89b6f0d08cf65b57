/// Router interfaces, egress objects and groups of these, which share one space of ids.
#pragma once

#include "destination.h"
#include "holders.h"

#include <bcm/error.h>
#include <bcm/l3.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <vector>

namespace sim {

struct L3Interface {
    bcm_l3_intf_t record = {};
    int uses = 0;  ///< by egress objects, hosts and routes
};

/// Where a packet leaves and how it is rewritten: what packets need of an egress object.
struct NextHop {
    enum class Kind : std::uint8_t {
        unresolved,  ///< no interface or no address is known
        cpu,         ///< as it came
        discard,
        forward
    };

    Kind kind = Kind::unresolved;
    bool has_cpu_copy = false;
    uint32 flags = 0;  ///< BCM_L3_KEEP_*, BCM_L3_L2ONLY
    Destination to = {Destination::Kind::discard, 0, 0};
    const L3Interface *interface = nullptr;
    bcm_vlan_t vlan = 0;  ///< with BCM_L3_L2ONLY
    bcm_if_t object = 0;  ///< the egress object, 0 if a host or route says it itself
    unsigned char mac[6] = {};
};

struct L3Egress {
    bcm_l3_egress_t record = {};
    NextHop hop;
    int status = BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_UP;
    int uses = 0;  ///< by hosts, routes and groups
    Holders holders;

    bool is_used() const { return uses != 0 || holders.count() != 0; }
};

/// Paths may be the same object several times, which gives it more weight.
struct L3Group {
    bcm_l3_egress_ecmp_t record = {};
    std::vector<bcm_l3_ecmp_member_t> members;
    std::vector<const NextHop *> paths;  ///< those of members that take part, worked out at each change
    int uses = 0;                        ///< by hosts and routes
    Holders holders;

    bool is_used() const { return uses != 0 || holders.count() != 0; }
};

class L3Objects {
public:
    static constexpr std::size_t interface_max = 8192;
    static constexpr std::size_t egress_max = 65536;
    static constexpr std::size_t group_max = 4096;

    std::map<bcm_if_t, L3Interface> interfaces;
    std::map<bcm_if_t, L3Egress> egress;
    std::map<bcm_if_t, L3Group> groups;

    /// The object, or null.
    L3Interface *interface(bcm_if_t id) { return in(interfaces, id); }
    L3Egress *egress_object(bcm_if_t id) { return in(egress, id); }
    L3Group *group(bcm_if_t id) { return in(groups, id); }

    /// The place of an object that is made, or is to be replaced, in one of the maps. with_id: under *id, which must be
    /// free; replaces: the one of that id; neither: under the lowest free id, which it writes to *id.
    /// BCM_E_PARAM: id below 1; BCM_E_EXISTS, BCM_E_NOT_FOUND, BCM_E_FULL.
    template <class Object>
    int place(std::map<bcm_if_t, Object> &objects, std::size_t capacity, bool with_id, bool replaces,
              bcm_if_t *id, Object **object)
    {
        bcm_if_t chosen = *id;
        if (with_id || replaces) {
            if (chosen < 1) {
                return BCM_E_PARAM;
            }
            *object = in(objects, chosen);
            if (replaces) {
                return *object != nullptr ? BCM_E_NONE : BCM_E_NOT_FOUND;
            }
            if (is_taken(chosen)) {
                return BCM_E_EXISTS;
            }
        } else {
            chosen = lowest_free();
        }
        if (objects.size() >= capacity) {
            return BCM_E_FULL;
        }
        *object = &objects[chosen];
        *id = chosen;
        return BCM_E_NONE;
    }

    template <class Object>
    void erase(std::map<bcm_if_t, Object> &objects, bcm_if_t id)
    {
        objects.erase(id);
        lowest_free_ = std::min(lowest_free_, id);
    }

    /// Holds the egress object or group of that id; none if there is none.
    Hold hold(bcm_if_t id);

    /// A host or route refers to the object of that id, or does so no longer; 0 is none.
    void count_use(bcm_if_t id, int change);

    void clear();

private:
    template <class Object>
    static Object *in(std::map<bcm_if_t, Object> &objects, bcm_if_t id)
    {
        const auto found = objects.find(id);
        return found != objects.end() ? &found->second : nullptr;
    }

    bool is_taken(bcm_if_t id) const
    {
        return interfaces.count(id) != 0 || egress.count(id) != 0 || groups.count(id) != 0;
    }
    bcm_if_t lowest_free();

    bcm_if_t lowest_free_ = 1;  ///< no lower one is
};

}  // namespace sim
