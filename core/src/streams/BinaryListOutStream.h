// The binary form of lists on a file, which is held until the stream is closed.
//
// Inside of a list bytes are collected, so that the file is not called for each item; all of them are
// in the file when the outermost list has ended, but for the tag byte in the making.
#pragma once

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/IFile.h>
#include <core/streams/IListStream.h>

#include <string_view>

namespace core {

class BinaryListOutStream
    : public ObjectRoot
    , public SCOM_InternalClass<BinaryListOutStream>
    , public IListOutStream {
public:
    static const InterfaceEntry* _GetEntries();

    explicit BinaryListOutStream(IFile* file) noexcept : file_(file, true) {}
    // Completes the stream; faults of doing so are swallowed.
    ~BinaryListOutStream();

    void beginList() override;
    void endList() override;

    void putBool(bool value) override { put_unsigned(value ? 1 : 0); }
    void putInt8(std::int8_t value) override { put_signed(value); }
    void putInt16(std::int16_t value) override { put_signed(value); }
    void putInt32(std::int32_t value) override { put_signed(value); }
    void putInt64(std::int64_t value) override { put_signed(value); }
    void putLong(std::int32_t value) override { put_signed(value); }
    void putUInt8(std::uint8_t value) override { put_unsigned(value); }
    void putUInt16(std::uint16_t value) override { put_unsigned(value); }
    void putUInt32(std::uint32_t value) override { put_unsigned(value); }
    void putUInt64(std::uint64_t value) override { put_unsigned(value); }
    void putULong(std::uint32_t value) override { put_unsigned(value); }
    void putFloat(float value) override;
    void putDouble(double value) override;
    void putChar(char16_t value) override { put_unsigned(value); }
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
    void put_comma();
    void put_pending();
    void put_tag(std::uint8_t type) { put_item(type, nullptr, 0); }
    void put_item(std::uint8_t type, const void* payload, unsigned n);
    void put_number(std::uint8_t type, std::uint64_t number, unsigned width);
    void put_bytes(const void* data, unsigned n);
    void reserve(unsigned n);
    void write_collected();
    void end_item();
    void put_unsigned(std::uint64_t value);
    void put_signed(std::int64_t value);
    void put_integer(std::uint64_t magnitude, bool negative);
    void put_counted(std::uint8_t firstType, std::uint64_t count);
    void put_blob(const void* data, unsigned n);
    void put_units(std::u16string_view units);

    static constexpr unsigned kCapacity = 4096;

    InterfacePtr<IFile> file_; // null once closed
    unsigned depth_ = 0;       // lists that are open
    unsigned size_ = 0;        // of bytes_, collected
    bool needComma_ = false;
    bool commasOn_ = true;     // false while an object writes itself
    std::uint8_t pending_ = 0; // the tag byte in the making
    std::uint8_t bytes_[kCapacity];
};

} // namespace core
