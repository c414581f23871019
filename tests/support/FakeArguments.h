// How the arguments of a recorded call print.
//
// Numbers in decimal, floats as short as they are exact enough (%g), rectangles as "l,t,r,b", points as "x,y", other
// records and lists in brackets, objects by their names, other memory by its name or as "data", null as "null".
#pragma once

#include "FakeRecorder.h"

#include <d3d9.h>

#include <string>
#include <type_traits>

namespace tesslo::test
{

/// A number that prints as "0x...".
struct Hex
{
    explicit Hex(DWORD value) : m_Value(value) {}
    DWORD m_Value;
};

/// An array that prints all its elements.
template <typename Element>
struct List
{
    List(const Element* pElements, size_t count) : m_pElements(pElements), m_Count(count) {}
    const Element* m_pElements;
    size_t m_Count;
};

std::string FormatFloat(double value);
std::string FormatRecord(const RECT& rect);
std::string FormatRecord(const D3DRECT& rect);
std::string FormatRecord(const POINT& point);
std::string FormatRecord(const D3DVIEWPORT9& viewport);
std::string FormatRecord(const D3DMATRIX& matrix);
std::string FormatRecord(const D3DPRESENT_PARAMETERS& parameters);
std::string FormatRecord(const D3DVERTEXELEMENT9& element);
/// All elements up to the end marker.
std::string FormatElements(const D3DVERTEXELEMENT9* pElements);
std::string FormatGuid(const GUID& guid);

/// Whether constant records of this type print their content behind a pointer.
template <typename Record>
inline constexpr bool IsPrintedRecord =
    std::is_same_v<Record, const RECT> || std::is_same_v<Record, const POINT> ||
    std::is_same_v<Record, const D3DVIEWPORT9> || std::is_same_v<Record, const D3DMATRIX> ||
    std::is_same_v<Record, D3DPRESENT_PARAMETERS>;

template <typename Argument>
std::string FormatArgument(const FakeRecorder& recorder, const Argument& argument)
{
    if constexpr (std::is_same_v<Argument, Hex>)
    {
        char text[16];
        snprintf(text, sizeof text, "0x%lx", argument.m_Value);
        return text;
    }
    else if constexpr (std::is_same_v<Argument, GUID>)
        return FormatGuid(argument);
    else if constexpr (std::is_floating_point_v<Argument>)
        return FormatFloat(argument);
    else if constexpr (std::is_enum_v<Argument>)
        return std::to_string(static_cast<int>(argument));
    else if constexpr (std::is_integral_v<Argument>)
        return std::to_string(argument);
    else
    {
        using Pointee = std::remove_pointer_t<Argument>;
        if (argument == nullptr)
            return "null";
        if constexpr (std::is_same_v<Pointee, const D3DVERTEXELEMENT9>)
            return FormatElements(argument);
        else if constexpr (IsPrintedRecord<Pointee>)
            return FormatRecord(*argument);
        else if constexpr (std::is_pointer_v<Pointee>)
            return "out";
        else if constexpr (std::is_base_of_v<IUnknown, Pointee>)
            return recorder.PointerText(argument, "?");
        else if constexpr (std::is_void_v<Pointee> || std::is_const_v<Pointee>)
            return recorder.PointerText(argument, "data");
        else
            return "out";
    }
}

template <typename Element>
std::string FormatArgument(const FakeRecorder&, const List<Element>& list)
{
    if (list.m_pElements == nullptr)
        return "null";
    std::string text = "[";
    for (size_t i = 0; i < list.m_Count; i++)
    {
        text += i == 0 ? "" : " ";
        if constexpr (std::is_floating_point_v<Element>)
            text += FormatFloat(list.m_pElements[i]);
        else if constexpr (std::is_integral_v<Element>)
            text += std::to_string(list.m_pElements[i]);
        else
            text += FormatRecord(list.m_pElements[i]);
    }
    return text + "]";
}

template <typename... Arguments>
std::string FormatArguments(const FakeRecorder& recorder, const Arguments&... arguments)
{
    std::string text;
    ((text += (text.empty() ? "" : ", ") + FormatArgument(recorder, arguments)), ...);
    return text;
}

}  // namespace tesslo::test
