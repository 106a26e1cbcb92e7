// What collections of values offer to whoever knows nothing else of them: a loop over their elements,
// a count, access by position. The collections themselves are in core/collections.
#pragma once

#include <core/component/InterfacePtr.h>

#include <cstddef>

namespace core {

class GenericValue;
class Value;

inline constexpr _GUID IID_IEnumValue = "95c94ce0-a6ca-4a2e-8d82-052a01d9fd3b"_guid;
inline constexpr _GUID IID_IProvideEnumValue = "f49ece11-9d76-4874-80fd-06e9d8641611"_guid;
inline constexpr _GUID IID_IIndexedCollectionRO = "ff16605f-3331-458f-b912-6329ea15f982"_guid;
inline constexpr _GUID IID_ICountedCollection = "e6b47e58-c9e5-4edf-93c6-16290b6a938d"_guid;
inline constexpr _GUID IID_IFilledObject = "ec579fa3-d7fb-4320-a617-bbbc357f3d41"_guid;

// One pass over the elements; it holds the collection.
class IEnumValue : public IUnknown {
public:
    ORB_INTERFACE(IEnumValue, IID_IEnumValue)

    // The next element; false, with `out` as it is, when there is none.
    virtual bool next(GenericValue& out) = 0;
};

// What a loop over each element asks a value for.
class IProvideEnumValue : public IUnknown {
public:
    ORB_INTERFACE(IProvideEnumValue, IID_IProvideEnumValue)

    virtual InterfacePtr<IEnumValue> getEnumValue() = 0; // may be null
};

class IIndexedCollectionRO : public IUnknown {
public:
    ORB_INTERFACE(IIndexedCollectionRO, IID_IIndexedCollectionRO)

    virtual std::size_t size() = 0;
    virtual Value get(std::size_t index) = 0; // of an index below the size
};

// A collection whose elements have no position of their own.
class ICountedCollection : public IUnknown {
public:
    ORB_INTERFACE(ICountedCollection, IID_ICountedCollection)

    virtual std::size_t size() = 0;
};

// An object that exists only filled in, as a reference to a stored object does.
class IFilledObject : public IUnknown {
public:
    ORB_INTERFACE(IFilledObject, IID_IFilledObject)
};

} // namespace core
