// Makes an object with one owner without throwing: the driver is built without exceptions.
#pragma once

#include <memory>
#include <new>
#include <utility>

/// @return null when memory is short.
template <typename Object, typename... Arguments>
std::unique_ptr<Object> UMDMakeUnique(Arguments&&... arguments)
{
    return std::unique_ptr<Object>(new (std::nothrow) Object(std::forward<Arguments>(arguments)...));
}
