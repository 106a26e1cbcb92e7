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
#include <core/streams/ListTags.h>

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
    void put_pending();
    std::uint8_t take_marks();
    void put_tag(std::uint8_t type, std::uint64_t number = 0, unsigned width = 0);
    void put_bytes(const void* data, unsigned n);
    void write_collected();
    void write_if_full();
    void put_unsigned(std::uint64_t value);
    void put_signed(std::int64_t value);
    void put_integer(std::uint64_t magnitude, bool negative);
    void put_counted(std::uint8_t firstType, std::uint64_t count);
    void put_short_units(const char16_t* units, std::size_t n);
    void put_long_units(std::u16string_view units);
    void put_units(std::u16string_view units);

    static constexpr unsigned kCapacity = 4096;
    static constexpr unsigned kShortRun = 255; // units whose count is a byte
    // For a number or a short string, with marks in a byte of their own.
    static constexpr unsigned kRoom = 3 + 3 * kShortRun;

    // Between operations size_ is at most limit_, which is kCapacity within lists and 0 outside of
    // them, where others may use the file. While comma_ is a mark, pending_ has none but an end.
    InterfacePtr<IFile> file_; // null once closed
    unsigned depth_ = 0;       // lists that are open
    unsigned size_ = 0;        // of bytes_, collected
    unsigned limit_ = 0;
    std::uint8_t pending_ = 0;               // the tag byte in the making
    std::uint8_t comma_ = 0;                 // the mark that the next item gets
    std::uint8_t commas_ = list_tag::kComma; // and those behind it; 0 while an object writes itself
    std::uint8_t bytes_[kCapacity + kRoom];
};

} // namespace core
