// The rows of hooks that carry what has succeeded on the platform.
#pragma once

#include "interposer/carry/CarryDevice.h"
#include "interposer/hooks/HookMethod.h"

/// @param kCarry called with the device that the driver draws for, and the method's arguments.
template <auto kMethod, auto kCarry>
HookRow HookRowCarried()
{
    return HookMethod<kMethod>::template RowBehind<[](auto* pThis, auto... arguments) {
        // By reference: a program draws a thousand times a frame, and a function would be copied each time.
        const auto carry = [&](CarryDevice& device) { kCarry(device, arguments...); };
        CarryFor(pThis, std::cref(carry));
    }>();
}

// What is carried by an operation of the same parameters.
template <auto kOperation>
constexpr auto kHookState = [](CarryDevice& device, auto... values) { (device.State().*kOperation)(values...); };
template <auto kOperation>
constexpr auto kHookDraws = [](CarryDevice& device, auto... values) { (device.Draws().*kOperation)(values...); };
