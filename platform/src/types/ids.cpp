#include "quorel_api/ids.h"

#include "vey/exception.h"

namespace Hardware::QuorelApi {

UnitId::UnitId(unsigned int value) : value_(value)
{
    if (value > 255) {
        Vey::throwRangeException("UnitId::value < 0 or > 255 not allowed");
    }
}

ExternalPhyId::ExternalPhyId(std::uint16_t value) : value_(value)
{
    if (value > 0x3ff) {
        Vey::throwRangeException("ExternalPhyId::value < 0 or > 0x03ff not allowed");
    }
}

}  // namespace Hardware::QuorelApi
