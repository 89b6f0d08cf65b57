#include "quorel_api/ham.h"

namespace HalMdioAccel {

Accel::~Accel() = default;

}  // namespace HalMdioAccel

namespace MdioHamImpl {

HamImpl::~HamImpl() = default;

}  // namespace MdioHamImpl
