// Numbers by which units and PHYs are known.
#pragma once

#include <cstdint>

namespace Hardware::QuorelApi {

/// A switch chip: 0 to 255.
class UnitId {
public:
    /// Throws Vey::RangeException. A negative number counts as the unsigned one with its bits.
    explicit UnitId(unsigned int value);
    unsigned int value() const noexcept { return value_; }

private:
    unsigned int value_;
};

/// A PHY outside of the switch chip: 0 to 0x3ff.
class ExternalPhyId {
public:
    /// Throws Vey::RangeException.
    explicit ExternalPhyId(std::uint16_t value);
    std::uint16_t value() const noexcept { return value_; }

private:
    std::uint16_t value_;
};

}  // namespace Hardware::QuorelApi
