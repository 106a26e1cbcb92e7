// The text form of lists on a writer, which is borrowed.
#pragma once

#include "ListTokens.h"

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/IListStream.h>

namespace core {

class TextListOutStream
    : public ObjectRoot
    , public SCOM_InternalClass<TextListOutStream>
    , public IListOutStream {
public:
    static const InterfaceEntry* _GetEntries();

    explicit TextListOutStream(IWriter* writer) noexcept : writer_(writer) {}

    void beginList() override;
    void endList() override;

    void putBool(bool value) override;
    void putInt8(std::int8_t value) override { putInt64(value); }
    void putInt16(std::int16_t value) override { putInt64(value); }
    void putInt32(std::int32_t value) override { putInt64(value); }
    void putInt64(std::int64_t value) override;
    void putLong(std::int32_t value) override { putInt64(value); }
    void putUInt8(std::uint8_t value) override { putUInt64(value); }
    void putUInt16(std::uint16_t value) override { putUInt64(value); }
    void putUInt32(std::uint32_t value) override { putUInt64(value); }
    void putUInt64(std::uint64_t value) override;
    void putULong(std::uint32_t value) override { putUInt64(value); }
    void putFloat(float value) override { putDouble(value); }
    void putDouble(double value) override;
    void putChar(char16_t value) override { putUInt64(value); }
    void putGuid(const _GUID& value) override;

    void putString(const stdx::ustring& value) override;
    void putCString(const char16_t* value) override;
    void putChars(const char16_t* value, unsigned n) override;

    void putBinary(const void* data, unsigned n) override;
    void putBytes(const stdx::string& data) override { putBinary(data.data(), data.size()); }
    void putNumeric(const Numeric& value) override;
    void putFile(IFile* file) override;
    void putFile(const InterfacePtr<IFile>& file) override { putFile(file.get()); }
    void putObject(IListStreamObject& object) override;

    void flush() override;
    void close() override;

private:
    template <class Put> void put_item(Put put);
    void begin_item(TextChunk& out);

    IWriter* writer_;        // null once closed
    bool needComma_ = false; // an item stands in this list
    bool afterList_ = false; // and the last of them is a list
    bool atStart_ = true;    // nothing was written yet
};

} // namespace core
