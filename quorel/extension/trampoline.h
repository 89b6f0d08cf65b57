// The C functions that stand for Python functions.
//
// A Python function takes one of a fixed number of slots of its callback's type; each slot has a C function
// of its own, so that the SDK can tell them apart, and none is made at run time: no memory is ever both
// written and executed, nothing but the compiler knows how arguments are passed, and a function that the SDK
// goes on calling after Python has dropped it finds an empty slot, not memory that is gone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace quorel {

/// As many Python functions can stand in at the same time for each type of callback.
constexpr unsigned slots_per_callback = 32;

/// Calls the Python function in a slot of a callback, by its number, from any thread. `values` are the addresses of the
/// arguments; the result, if there is one, is written to `result`, where there are zeroes.
void call_python(unsigned number, unsigned slot, void *const *values, void *result);

/// The C functions of a callback's slots.
struct Slots {
    void *(*function)(unsigned slot);
};

extern const Slots callback_slots[];

template <unsigned callback, typename Function>
struct Trampolines;

template <unsigned callback, typename Result, typename... Parameters>
struct Trampolines<callback, Result (*)(Parameters...)> {
    using Function = Result (*)(Parameters...);

    // The slot comes last, so that a trampoline leaves the arguments where they are.
    __attribute__((noinline)) static Result enter(Parameters... parameters, unsigned slot)
    {
        void *values[] = {const_cast<void *>(static_cast<const void *>(&parameters))..., nullptr};
        if constexpr (std::is_void_v<Result>) {
            call_python(callback, slot, values, nullptr);
        } else {
            Result result{};
            call_python(callback, slot, values, &result);
            return result;
        }
    }

    template <unsigned slot>
    static Result call(Parameters... parameters)
    {
        return enter(parameters..., slot);
    }

    template <unsigned... slots>
    static void *function(unsigned slot, std::integer_sequence<unsigned, slots...>)
    {
        static constexpr Function functions[] = {call<slots>...};
        return reinterpret_cast<void *>(functions[slot]);
    }

    static void *function(unsigned slot)
    {
        return function(slot, std::make_integer_sequence<unsigned, slots_per_callback>());
    }
};

template <unsigned callback, typename Function>
constexpr Slots slots_of()
{
    return {Trampolines<callback, Function>::function};
}

}  // namespace quorel
