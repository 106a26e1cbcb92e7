// Text from a file in any encoding.
//
//   auto reader = core::create_file_reader();
//   reader->open(url, core::kUTF8Encoding, true);
//
// A byte-order mark at the start of the file does not reach the text if it is that of the encoding.
// One of another encoding decides which encoding is read if the reader is told to follow it, and is
// text otherwise.
//
// Failures are IOException: CharConversion for bytes that are no text in the encoding, SourceFault
// for the file's, both with the cause inside. The text before them is read first; behind a failure
// the reader is at its end. See core/streams/IReader.h for all else.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/files/IFile.h>
#include <core/files/URL.h>
#include <core/streams/IReader.h>

namespace core {

inline constexpr _GUID IID_IFileReader = "3e7c3987-2d0d-42e9-961c-6e323fba2200"_guid;
inline constexpr _GUID CLSID_FileReader = "4cefd565-1f3c-4117-a145-a069487a8d7c"_guid;

class IFileReader : public IReader {
public:
    ORB_INTERFACE(IFileReader, IID_IFileReader)

    // An empty encoding is the system's. The first form needs the file system of a process; the
    // second holds a reference to the file and reads from where it stands.
    virtual void open(const URL& url, const stdx::ustring& encoding, bool followSignature) = 0;
    virtual void open(IFile* file, const stdx::ustring& encoding, bool followSignature) = 0;
    virtual void close() = 0;

    // The encoding that is read, and whether there was a mark. Both are known for certain once
    // something was read; eof() is enough.
    virtual stdx::ustring encoding() = 0; // empty if closed
    virtual bool signatureFound() = 0;
};

ORBCORE_API InterfacePtr<IFileReader> create_file_reader();

} // namespace core
