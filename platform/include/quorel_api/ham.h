// How the registers of a PHY are reached.
#pragma once

#include "vey/name.h"
#include "vey/ptr.h"

#include <cstdint>

namespace Mdio {

/// An MDIO bus of the board.
class BusId {
public:
    explicit BusId(std::uint16_t value) : value_(value) {}
    std::uint16_t value() const noexcept { return value_; }

private:
    std::uint16_t value_;
};

/// A PHY on its bus, 0 to 31.
class PortAddr {
public:
    explicit PortAddr(std::uint8_t value) : value_(value) {}
    std::uint8_t value() const noexcept { return value_; }

private:
    std::uint8_t value_;
};

}  // namespace Mdio

namespace HalMdioAccel {

/// Hardware that carries out MDIO accesses on its own. A development host has none: pointers to it are null.
class Accel : public Vey::PtrInterface {
protected:
    ~Accel() override;
};

}  // namespace HalMdioAccel

namespace MdioHamImpl {

/// An access method: carries out the MDIO accesses of one PHY.
class HamImpl : public Vey::PtrInterface {
public:
    using Ptr = Vey::Ptr<HamImpl>;

    explicit HamImpl(Vey::Name name) : name_(std::move(name)) {}
    const Vey::Name &name() const noexcept { return name_; }

    /// A register, 0 to 0xffff, of an MDIO device, 0 to 31, in the PHY. Both throw Vey::Exception when the
    /// access fails. To be called without the activity lock: an access may wait for another thread.
    virtual std::uint16_t read(std::uint8_t device, std::uint16_t address) = 0;
    virtual void write(std::uint8_t device, std::uint16_t address, std::uint16_t data) = 0;

protected:
    ~HamImpl() override;

private:
    Vey::Name name_;
};

}  // namespace MdioHamImpl
