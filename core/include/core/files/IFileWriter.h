// Text into a file in any encoding.
//
//   auto writer = core::create_file_writer();
//   writer->open(url, core::kUTF8Encoding, true);
//   writer->write(u"text");
//   writer->close();                       // a writer that is only released loses its last units
//
// Failures are IOException: CharConversion, and TargetFault for the file's, with the cause inside.
// What was to be written then is lost. A character that the encoding lacks is written as the
// encoding's substitute.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/files/IFile.h>
#include <core/files/URL.h>
#include <core/streams/IWriter.h>

namespace core {

inline constexpr _GUID IID_IFileWriter = "8beceba9-3675-4b54-bb20-8f2081d3cc9a"_guid;
inline constexpr _GUID CLSID_FileWriter = "f3f1054f-8816-4aaa-9d91-df6a96180f8f"_guid;

class IFileWriter : public IWriter {
public:
    ORB_INTERFACE(IFileWriter, IID_IFileWriter)

    // An empty encoding is the system's. The first form empties or creates the file and needs the
    // file system of a process; the second holds a reference to the file and writes from where it
    // stands. With `writeSignature` the encoding's byte-order mark comes first, if it has one.
    virtual void open(const URL& url, const stdx::ustring& encoding, bool writeSignature) = 0;
    virtual void open(IFile* file, const stdx::ustring& encoding, bool writeSignature) = 0;
    // Writes all, flushes the file and releases it, also if it throws.
    virtual void close() = 0;

    virtual stdx::ustring encoding() = 0; // empty if closed
};

ORBCORE_API InterfacePtr<IFileWriter> create_file_writer();

} // namespace core
