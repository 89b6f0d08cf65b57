/// C++ exceptions at the border of the interpreter, which none may cross.
///
/// For the few sources that are built with exceptions: what they call may throw.
#pragma once

namespace [[gnu::visibility("hidden")]] quorel {

/// Within a handler: sets the Python exception that says what is being handled.
void raise_current_exception() noexcept;

/// What body() returns, or an empty value with a Python exception set if it throws.
template <typename Body>
auto without_exceptions(Body body) noexcept -> decltype(body())
{
    try {
        return body();
    } catch (...) {
        raise_current_exception();
    }
    return decltype(body())();
}

}  // namespace quorel
