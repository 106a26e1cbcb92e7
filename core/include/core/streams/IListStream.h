// Streams of lists: the form in which nearly everything of the system is stored, as text or as
// bytes. A class that stores itself calls the operations of `IListOutStream`, and those of
// `IListInStream` in the same order to read itself back; it does not see which form it works on.
//
//   out.beginList();                        in.beginList();
//   out.putString(name);                    in.getString(name);
//   out.putInt32(count);                    in.getInt32(count);
//                                           in.skipList();     // what newer versions may add
//   out.endList();                          in.endList();
//
// Items are not self-describing: writer and reader agree by the order of their calls.
// docs/formats/lists.md describes both forms.
//
// What writes throws only what the writer or file below throws. What reads throws
// `ListStreamException` for anything that is not what was asked for; the place in the stream is
// undefined then and the stream is not to be used any more. A stream is for one thread at a time.
#pragma once

#include <core/component/InterfacePtr.h>
#include <elm/string>

#include <cstdint>

namespace core {

class IFile;
class IReader;
class IWriter;
class IListInStream;
class IListOutStream;
class Numeric;

inline constexpr _GUID IID_IListOutStream = "7a1c4e90-52d8-4f6b-b3e1-8c9d0a6f2b47"_guid;
inline constexpr _GUID IID_IListInStream = "c4e86a1d-3f07-49b2-8d5c-16b9e07a3f82"_guid;
inline constexpr _GUID IID_ITextListInStreamInit = "e92b7d35-a8c4-4d1f-90e6-5b3f7c28d014"_guid;

// Lists within lists, no deeper than this, are read: classes that hold others read themselves by
// recursion, and a damaged stream must not exhaust the stack.
inline constexpr unsigned kMaxListDepth = 2000;

// An item with two forms of its own; to a list it is one item.
class IListStreamObject {
public:
    virtual void toStream(IWriter* writer) = 0;
    // False for a text that is not its own.
    virtual bool fromStream(IReader* reader) = 0;
    virtual void toBinary(IListOutStream* stream) = 0;
    virtual void fromBinary(IListInStream* stream) = 0;

protected:
    ~IListStreamObject() = default;
};

class IListOutStream : public IUnknown {
public:
    ORB_INTERFACE(IListOutStream, IID_IListOutStream)

    virtual void beginList() = 0;
    virtual void endList() = 0;

    virtual void putBool(bool value) = 0;
    virtual void putInt8(std::int8_t value) = 0;
    virtual void putInt16(std::int16_t value) = 0;
    virtual void putInt32(std::int32_t value) = 0;
    virtual void putInt64(std::int64_t value) = 0;
    virtual void putLong(std::int32_t value) = 0;
    virtual void putUInt8(std::uint8_t value) = 0;
    virtual void putUInt16(std::uint16_t value) = 0;
    virtual void putUInt32(std::uint32_t value) = 0;
    virtual void putUInt64(std::uint64_t value) = 0;
    virtual void putULong(std::uint32_t value) = 0;
    virtual void putFloat(float value) = 0;
    virtual void putDouble(double value) = 0;
    virtual void putChar(char16_t value) = 0; // its code
    virtual void putGuid(const _GUID& value) = 0;

    virtual void putString(const stdx::ustring& value) = 0;
    virtual void putCString(const char16_t* value) = 0;
    // As text the string stops at the first U+0000; as bytes it has all `n` units.
    virtual void putChars(const char16_t* value, unsigned n) = 0;

    virtual void putBinary(const void* data, unsigned n) = 0;
    virtual void putBytes(const stdx::string& data) = 0;
    virtual void putNumeric(const Numeric& value) = 0;
    // The bytes of the file from its position to its end; both do the same.
    virtual void putFile(IFile* file) = 0;
    virtual void putFile(const InterfacePtr<IFile>& file) = 0;
    virtual void putObject(IListStreamObject& object) = 0;

    virtual void flush() = 0;
    // Completes what was written and lets go of the writer or file. A second call does nothing.
    virtual void close() = 0;
};

class IListInStream : public IUnknown {
public:
    ORB_INTERFACE(IListInStream, IID_IListInStream)

    // Whether an item follows another one in this list: a comma stands here. It is false in front
    // of the first item.
    virtual bool nextInList() = 0;
    virtual void beginList() = 0;
    virtual void endList() = 0;
    // Passes all items to the end of the list; endList() is to follow.
    virtual void skipList() = 0;
    // The same, appending what is passed to a text for people. Text streams leave out the braces of
    // lists within the list, byte streams show them, but no quotes.
    virtual void readListText(stdx::ustring& text) = 0;

    virtual void getBool(bool& value) = 0;
    // A text stream takes integers modulo their width; a byte stream refuses what does not fit.
    virtual void getInt8(std::int8_t& value) = 0;
    virtual void getInt16(std::int16_t& value) = 0;
    virtual void getInt32(std::int32_t& value) = 0;
    virtual void getInt64(std::int64_t& value) = 0;
    virtual void getLong(std::int32_t& value) = 0;
    virtual void getUInt8(std::uint8_t& value) = 0;
    virtual void getUInt16(std::uint16_t& value) = 0;
    virtual void getUInt32(std::uint32_t& value) = 0;
    virtual void getUInt64(std::uint64_t& value) = 0;
    virtual void getULong(std::uint32_t& value) = 0;
    virtual void getFloat(float& value) = 0;
    virtual void getDouble(double& value) = 0;
    virtual void getChar(char16_t& value) = 0;
    virtual void getGuid(_GUID& value) = 0;

    virtual void getString(stdx::ustring& value) = 0;
    // A string that fits with its terminator into `capacity` units; others are refused.
    virtual void getChars(char16_t* value, unsigned capacity) = 0;

    // Exactly `n` bytes; a text stream takes fewer, too.
    virtual void getBinary(void* data, unsigned n) = 0;
    virtual void getBytes(stdx::string& data) = 0;
    virtual void getNumeric(Numeric& value) = 0;
    // Writes the bytes at the file's position; both do the same.
    virtual void getFile(IFile* file) = 0;
    virtual void getFile(const InterfacePtr<IFile>& file) = 0;
    virtual void getObject(IListStreamObject& object) = 0;
};

// A text stream that can be put on another reader.
class ITextListInStreamInit : public IUnknown {
public:
    ORB_INTERFACE(ITextListInStreamInit, IID_ITextListInStreamInit)

    virtual void init(IReader* reader) = 0;
};

} // namespace core
