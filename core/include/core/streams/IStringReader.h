// A reader over a string buffer.
//
//   core::StaticObject<core::StringReader> reader;
//   reader.open(buffer.get());
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/streams/IStringBuffer.h>

namespace core {

inline constexpr _GUID IID_IStringReader = "e4d0807d-966c-4ced-8b19-05a5a92146d4"_guid;
inline constexpr _GUID CLSID_StringReader = "f749eb30-9b8c-44fd-9b22-a0b1677442ac"_guid;

class IStringReader : public IReader {
public:
    ORB_INTERFACE(IStringReader, IID_IStringReader)

    // Holds a reference to the buffer. Throws IOException NoSource for null.
    virtual void open(IStringBuffer* buffer) = 0;
    virtual void close() = 0;
    virtual IStringBuffer* buffer() = 0; // lent; null if closed
};

class ORBCORE_API StringReader
    : public ObjectRoot
    , public SCOM_Class<StringReader, &CLSID_StringReader>
    , public IStringReader
    , public ITextWindow {
public:
    static const InterfaceEntry* _GetEntries();

    void open(IStringBuffer* buffer) override;
    void close() override;
    IStringBuffer* buffer() override { return buffer_.get(); }

    char16_t get() override;
    char16_t peek() override;
    unsigned read(char16_t* to, unsigned n) override;
    unsigned readUntil(char16_t stop, char16_t* to, unsigned n) override;
    unsigned readTo(IStringBuffer* to, unsigned n) override;
    unsigned readToUntil(char16_t stop, IStringBuffer* to, unsigned n) override;
    unsigned skip(unsigned n) override;
    bool eof() override;

    const char16_t* window(unsigned& size) override;
    void advance(unsigned n) override;

private:
    IStringBufferIterator& iterator();

    InterfacePtr<IStringBuffer> buffer_;
    InterfacePtr<IStringBufferIterator> iterator_; // set while open
    InterfacePtr<ITextWindow> window_;             // the same
};

} // namespace core
