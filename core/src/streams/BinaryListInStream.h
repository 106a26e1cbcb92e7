// The binary form of lists from a file, which is held.
//
// Inside of a list the file may lag behind the stream, which takes bytes from the file's window;
// it stands where the stream does once the outermost list has ended.
#pragma once

#include "ByteCursor.h"

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/IListStream.h>

namespace core {

class BinaryListInStream
    : public ObjectRoot
    , public SCOM_InternalClass<BinaryListInStream>
    , public IListInStream {
public:
    static const InterfaceEntry* _GetEntries();

    explicit BinaryListInStream(IFile* file) : in_(file) {}
    ~BinaryListInStream() { in_.sync(); }

    bool nextInList() override;
    void beginList() override;
    void endList() override;
    void skipList() override;
    void readListText(stdx::ustring& text) override;

    void getBool(bool& value) override;
    void getInt8(std::int8_t& value) override;
    void getInt16(std::int16_t& value) override;
    void getInt32(std::int32_t& value) override;
    void getInt64(std::int64_t& value) override;
    void getLong(std::int32_t& value) override;
    void getUInt8(std::uint8_t& value) override;
    void getUInt16(std::uint16_t& value) override;
    void getUInt32(std::uint32_t& value) override;
    void getUInt64(std::uint64_t& value) override;
    void getULong(std::uint32_t& value) override;
    void getFloat(float& value) override;
    void getDouble(double& value) override;
    void getChar(char16_t& value) override;
    void getGuid(_GUID& value) override;

    void getString(stdx::ustring& value) override;
    void getChars(char16_t* value, unsigned capacity) override;

    void getBinary(void* data, unsigned n) override;
    void getBytes(stdx::string& data) override;
    void getNumeric(Numeric& value) override;
    void getFile(IFile* file) override;
    void getFile(const InterfacePtr<IFile>& file) override { getFile(file.get()); }
    void getObject(IListStreamObject& object) override;

private:
    struct Integer {
        std::uint64_t magnitude;
        bool negative;
    };

    // Bytes.
    template <class T> T read_as();
    std::uint64_t read_number(unsigned width);
    void pass(std::uint64_t n);
    template <class String, class Fill>
    void fill_string(String& to, std::uint64_t count, unsigned width, Fill fill);
    template <class String> void read_units(String& to, std::uint64_t count);
    void widen_bytes(char16_t* to, unsigned n);

    // Tags.
    bool load();
    std::uint8_t next();
    void take_comma();
    std::uint8_t peek();
    std::uint8_t begin_item();
    void end_item();

    // Items behind their tag.
    Integer integer_of(std::uint8_t type);
    std::uint64_t count_of(std::uint8_t type, std::uint8_t firstType);
    std::uint64_t blob_size(std::uint8_t type);
    void blob_of(std::uint8_t type, stdx::string& data);
    void string_of(std::uint8_t type, stdx::ustring& value);
    void numeric_of(std::uint8_t type, Numeric& value);
    void skip_item(std::uint8_t type);
    void append_item(std::uint8_t type, stdx::ustring& text);

    template <class T> void get_signed(T& value);
    template <class T> void get_unsigned(T& value);
    template <class Item, class Mark> void pass_items(Item item, Mark mark);

    ByteCursor in_;
    unsigned depth_ = 0;       // lists that are open here
    bool needComma_ = false;   // an item was read: the next one follows a comma
    bool commasOn_ = true;     // false while an object reads itself
    std::uint8_t pending_ = 0; // what of the tag byte was not taken yet
};

} // namespace core
