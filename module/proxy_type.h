// The base class of the companion's proxy classes. Their instances have a dictionary, but take no attribute that
// the class does not have: a misspelt member name raises AttributeError instead of being kept silently. `this`
// is always accepted. It is here, in C, because a __setattr__ written in Python would cost every assignment to a
// member more than the assignment itself. For the same reason it has an __init__: it calls the class's
// `__constructor__` with its own arguments and keeps the result as `this`. It takes no keywords, unless the package
// above the module has said how (refinements.h).
#pragma once

#include "refinements.h"

namespace [[gnu::visibility("hidden")]] quorel {

extern ProxyType Proxy_Type;

/// Makes Proxy_Type usable. Returns false with an exception set when that fails.
bool initialise_proxy_type();

}  // namespace quorel
