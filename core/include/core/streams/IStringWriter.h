// A writer at the end of a string buffer.
//
//   core::StaticObject<core::StringWriter> writer;
//   writer.open(nullptr);                                // into a new buffer
//   fill(&writer);
//   core::InterfacePtr<core::IStringBuffer> text = writer.detach();
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/streams/IStringBuffer.h>
#include <core/streams/IWriter.h>

namespace core {

inline constexpr _GUID IID_IStringWriter = "56d6bccf-20a9-45e0-8ef2-557d591dbc14"_guid;
inline constexpr _GUID CLSID_StringWriter = "61ebc6e4-1b9d-4773-85bb-3add3f01670c"_guid;

class IStringWriter : public IWriter {
public:
    ORB_INTERFACE(IStringWriter, IID_IStringWriter)

    // Holds a reference to the buffer; null makes a new one in chunks.
    virtual void open(IStringBuffer* buffer) = 0;
    // Closes the writer and gives its buffer; null if it was closed.
    virtual InterfacePtr<IStringBuffer> detach() = 0;
    virtual IStringBuffer* buffer() = 0; // lent; null if closed
};

class ORBCORE_API StringWriter
    : public ObjectRoot
    , public SCOM_Class<StringWriter, &CLSID_StringWriter>
    , public IStringWriter {
public:
    static const InterfaceEntry* _GetEntries();

    void open(IStringBuffer* buffer) override;
    InterfacePtr<IStringBuffer> detach() override { return std::move(buffer_); }
    IStringBuffer* buffer() override { return buffer_.get(); }

    void put(char16_t unit) override;
    void write(const char16_t* text, unsigned n) override;
    void write(IStringBuffer* source, unsigned pos, unsigned n) override;
    void flush() override;

private:
    IStringBuffer& target();

    InterfacePtr<IStringBuffer> buffer_;
};

} // namespace core
