// The text form of lists from a reader, which is borrowed.
//
// Inside of a list the reader may lag behind the stream, which takes text from the reader's window; it
// stands where the stream does once the outermost list has ended, and where an item reads itself.
#pragma once

#include "TextCursor.h"

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/IListStream.h>

namespace core {

class TextListInStream
    : public ObjectRoot
    , public SCOM_InternalClass<TextListInStream>
    , public IListInStream
    , public ITextListInStreamInit {
public:
    static const InterfaceEntry* _GetEntries();

    explicit TextListInStream(IReader* reader) : reader_(reader), in_(reader, window_of(reader)) {}
    void init(IReader* reader) override;

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
    void getLong(std::int32_t& value) override { getInt32(value); }
    void getUInt8(std::uint8_t& value) override;
    void getUInt16(std::uint16_t& value) override;
    void getUInt32(std::uint32_t& value) override;
    void getUInt64(std::uint64_t& value) override;
    void getULong(std::uint32_t& value) override { getUInt32(value); }
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
    template <class Read> void get_item(Read read);
    template <class Word, class Integer> void get_integer(Integer& value);
    template <class Seen> void pass_items(Seen seen);
    void begin_bare_item();
    void end_item();
    static ITextWindow* window_of(IReader* reader);

    IReader* reader_;
    TextCursor in_;
    unsigned depth_ = 0;     // lists that are open here
    bool needComma_ = false; // an item was read: the next one follows a comma
};

} // namespace core
