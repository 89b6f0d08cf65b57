// What the interpreter calls when the module is imported; the generated tables have the function of the name that
// it looks for.
#pragma once

namespace [[gnu::visibility("hidden")]] quorel {

/// Makes the module, in the steps that startup.cpp tells. Where one fails an exception is set and there is none.
void import();

}  // namespace quorel
