// A reader of lines over another reader, which it reads in large pieces.
//
//   auto lines = core::create_buffered_reader();
//   lines->open(source.get());                           // any line end
//   while (!lines->eof()) use(lines->readLine());
//
// Without a line separator "\r\n", "\n" and "\r" each end a line; other reading gives them as they
// stand. With one, it alone ends a line, and all reading gives "\n" in its place.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <core/streams/IReader.h>
#include <elm/string>

namespace core {

inline constexpr _GUID IID_IBufferedReader = "725bc6fe-5021-4796-8aa2-625138b7d872"_guid;
inline constexpr _GUID CLSID_BufferedReader = "2013e433-120b-4ee6-801b-ed09944bc3b9"_guid;

class IBufferedReader : public IReader {
public:
    ORB_INTERFACE(IBufferedReader, IID_IBufferedReader)

    // Holds a reference to the source. A null or empty separator stands for any line end. Throws
    // IOException NoSource for a null source.
    virtual void open(IReader* source, const char16_t* lineSeparator = nullptr) = 0;
    virtual void close() = 0;

    // The text up to the next line end, which is passed and left out; at the end, nothing.
    virtual stdx::ustring readLine() = 0;
    // The same, appending; returns the units appended. It allocates nothing but what the buffer
    // needs.
    virtual unsigned readLine(IStringBuffer* to) = 0;
};

ORBCORE_API InterfacePtr<IBufferedReader> create_buffered_reader();

} // namespace core
