// Where text goes: a stream of UTF-16 units.
//
// Writers are objects of one thread at a time. A writer that is not open throws IOException
// NoTarget. What a target below throws passes through.
#pragma once

#include <core/streams/IReader.h>

namespace core {

inline constexpr _GUID IID_IWriter = "d2bae1ad-b13b-4e9a-9682-a242de1ee1c9"_guid;

class IWriter : public IUnknown {
public:
    ORB_INTERFACE(IWriter, IID_IWriter)

    virtual void put(char16_t unit) = 0;
    // kAllUnits: up to the terminator.
    virtual void write(const char16_t* text, unsigned n = kAllUnits) = 0;
    // At most `n` units of the buffer from `pos` on. Throws IOException OutOfBounds for a place
    // behind its end.
    virtual void write(IStringBuffer* source, unsigned pos = 0, unsigned n = kAllUnits) = 0;
    // Hands on what is held back in this writer; a target below is not flushed.
    virtual void flush() = 0;
};

} // namespace core
