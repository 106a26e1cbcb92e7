// What the component "counter" brings: a counter, a sequence that all share, and a greeter.
#pragma once

#include <core/core.h>

namespace example {

using namespace core::literals;

inline constexpr _GUID IID_ICounter = "dbba47f5-fa50-479c-a364-22f273eb1c8d"_guid;
inline constexpr _GUID IID_IGreeter = "d0111eb2-0696-4934-82a5-31a63dd5d821"_guid;

inline constexpr _GUID CLSID_Counter =
    "04e48df9-f112-4e40-b942-1b6a147bb2dd"_guid; // "Counter", "Счётчик"
inline constexpr _GUID CLSID_Sequence =
    "aab596ec-f852-4345-bd6b-9f968bfa1ed4"_guid; // "Sequence", "Последовательность"
inline constexpr _GUID CLSID_Greeter =
    "d22b62e9-96d9-4505-9913-65d32da8ab6b"_guid; // the service behind IGreeter

// The classes that count.
inline constexpr _GUID CATID_Counting = "f9d041b0-bdbf-46e3-b623-8882394d86ad"_guid;

class ICounter : public IUnknown {
public:
    ORB_INTERFACE(ICounter, IID_ICounter)

    // The number after the call, from 1.
    virtual int next() = 0;
};

class IGreeter : public IUnknown {
public:
    ORB_INTERFACE(IGreeter, IID_IGreeter)

    virtual stdx::ustring greet(const stdx::ustring& name) = 0;
};

} // namespace example
