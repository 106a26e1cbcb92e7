// A writer that collects text, writes it to another one in large pieces, and puts a line separator
// in the place of every "\n".
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <core/streams/IWriter.h>
#include <elm/string>

namespace core {

inline constexpr _GUID IID_IBufferedWriter = "0aab360e-23c7-4237-9879-2ad71f67e2bd"_guid;
inline constexpr _GUID CLSID_BufferedWriter = "7bda1068-cbdc-4a15-9b93-4c082a27c16c"_guid;

class IBufferedWriter : public IWriter {
public:
    ORB_INTERFACE(IBufferedWriter, IID_IBufferedWriter)

    // Holds a reference to the target. A null or empty separator leaves the text as it is. Throws
    // IOException NoTarget for a null target.
    virtual void open(IWriter* target, const char16_t* lineSeparator = nullptr) = 0;
    // Writes what is collected and releases the target, also if it throws. A writer that is
    // released without it loses what it has collected.
    virtual void close() = 0;
    // Writes the separator; none writes nothing.
    virtual void newLine() = 0;
    virtual stdx::ustring lineSeparator() = 0;
};

ORBCORE_API InterfacePtr<IBufferedWriter> create_buffered_writer();

} // namespace core
