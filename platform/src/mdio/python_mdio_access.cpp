#include "quorel_api/python_mdio_access.h"

#include "vey/exception.h"

namespace Hardware::QuorelApi {

PythonMdioAccessWrapper::PythonMdioAccessWrapper(Vey::Name name, Mdio::BusId bus, Mdio::PortAddr port,
                                                 Vey::Ptr<HalMdioAccel::Accel> accelerator,
                                                 Vey::Ptr<Vey::PyObjHandle> object)
    : HamImpl(std::move(name)),
      bus_(bus),
      port_(port),
      accelerator_(std::move(accelerator)),
      object_(std::move(object))
{
}

PythonMdioAccessWrapper::~PythonMdioAccessWrapper() = default;

std::uint16_t PythonMdioAccessWrapper::read(std::uint8_t device, std::uint16_t address)
{
    std::optional<long> data = object_->call("read", {bus_.value(), port_.value(), device, address});
    if (!data || *data < 0 || *data > 0xffff) {
        throw Vey::InternalException(
            Vey::format("%s: read() did not return a number from 0 to 0xffff", name().text().data()));
    }
    return static_cast<std::uint16_t>(*data);
}

void PythonMdioAccessWrapper::write(std::uint8_t device, std::uint16_t address, std::uint16_t data)
{
    object_->run("write", {bus_.value(), port_.value(), device, address, data});
}

}  // namespace Hardware::QuorelApi
