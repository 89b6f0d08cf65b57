// MDIO accesses that a Python object carries out.
#pragma once

#include "quorel_api/ham.h"
#include "vey/py_obj_handle.h"

namespace Hardware::QuorelApi {

/// An access method that calls the object's read(bus, port, device, address), which returns 0 to 0xffff, and
/// write(bus, port, device, address, data), whose result does not matter.
class PythonMdioAccessWrapper : public MdioHamImpl::HamImpl {
public:
    /// bus and port are told to the object with each access. An accelerator is kept as long as this lives and
    /// not used: it is there for the object.
    PythonMdioAccessWrapper(Vey::Name name, Mdio::BusId bus, Mdio::PortAddr port,
                            Vey::Ptr<HalMdioAccel::Accel> accelerator, Vey::Ptr<Vey::PyObjHandle> object);

    /// Throw Vey::InternalException when the method raises, or read() returns anything but such a number.
    std::uint16_t read(std::uint8_t device, std::uint16_t address) override;
    void write(std::uint8_t device, std::uint16_t address, std::uint16_t data) override;

protected:
    ~PythonMdioAccessWrapper() override;

private:
    Mdio::BusId bus_;
    Mdio::PortAddr port_;
    Vey::Ptr<HalMdioAccel::Accel> accelerator_;
    Vey::Ptr<Vey::PyObjHandle> object_;
};

}  // namespace Hardware::QuorelApi
