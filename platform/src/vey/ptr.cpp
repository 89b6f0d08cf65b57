#include "vey/ptr.h"

namespace Vey {

PtrInterface::~PtrInterface() = default;

}  // namespace Vey
