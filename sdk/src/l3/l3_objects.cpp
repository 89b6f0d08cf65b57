#include "l3_objects.h"

namespace sim {

bcm_if_t L3Objects::lowest_free()
{
    while (is_taken(lowest_free_)) {
        ++lowest_free_;
    }
    return lowest_free_;
}

Hold L3Objects::hold(bcm_if_t id)
{
    if (L3Egress *object = egress_object(id)) {
        return object->holders.hold();
    }
    L3Group *of_many = group(id);
    return of_many != nullptr ? of_many->holders.hold() : nullptr;
}

void L3Objects::count_use(bcm_if_t id, int change)
{
    if (L3Egress *object = egress_object(id)) {
        object->uses += change;
    } else if (L3Group *of_many = group(id)) {
        of_many->uses += change;
    } else if (L3Interface *own = interface(id)) {
        own->uses += change;
    }
}

void L3Objects::clear()
{
    groups.clear();
    egress.clear();
    interfaces.clear();
    lowest_free_ = 1;
}

}  // namespace sim
