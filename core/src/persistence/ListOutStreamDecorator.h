// A stream of lists that lets something happen before each operation.
#pragma once

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/IListStream.h>

#include <utility>

namespace core {

// `Owner` has `IListOutStream& ready()`, which makes the stream below ready for the next operation;
// the decorator holds a reference to it.
template <class Owner>
class ListOutStreamDecorator
    : public ObjectRoot
    , public SCOM_InternalClass<ListOutStreamDecorator<Owner>>
    , public IListOutStream {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<ListOutStreamDecorator, IListOutStream>();
    }

    explicit ListOutStreamDecorator(InterfacePtr<Owner> owner) noexcept
        : owner_(std::move(owner)) {}

    void beginList() override { list().beginList(); }
    void endList() override { list().endList(); }

    void putBool(bool value) override { list().putBool(value); }
    void putInt8(std::int8_t value) override { list().putInt8(value); }
    void putInt16(std::int16_t value) override { list().putInt16(value); }
    void putInt32(std::int32_t value) override { list().putInt32(value); }
    void putInt64(std::int64_t value) override { list().putInt64(value); }
    void putLong(std::int32_t value) override { list().putLong(value); }
    void putUInt8(std::uint8_t value) override { list().putUInt8(value); }
    void putUInt16(std::uint16_t value) override { list().putUInt16(value); }
    void putUInt32(std::uint32_t value) override { list().putUInt32(value); }
    void putUInt64(std::uint64_t value) override { list().putUInt64(value); }
    void putULong(std::uint32_t value) override { list().putULong(value); }
    void putFloat(float value) override { list().putFloat(value); }
    void putDouble(double value) override { list().putDouble(value); }
    void putChar(char16_t value) override { list().putChar(value); }
    void putGuid(const _GUID& value) override { list().putGuid(value); }

    void putString(const stdx::ustring& value) override { list().putString(value); }
    void putCString(const char16_t* value) override { list().putCString(value); }
    void putChars(const char16_t* value, unsigned n) override { list().putChars(value, n); }

    void putBinary(const void* data, unsigned n) override { list().putBinary(data, n); }
    void putBytes(const stdx::string& data) override { list().putBytes(data); }
    void putNumeric(const Numeric& value) override { list().putNumeric(value); }
    void putFile(IFile* file) override { list().putFile(file); }
    void putFile(const InterfacePtr<IFile>& file) override { list().putFile(file); }
    void putObject(IListStreamObject& object) override { list().putObject(object); }

    void flush() override { list().flush(); }
    void close() override { list().close(); }

private:
    IListOutStream& list() { return owner_->ready(); }

    InterfacePtr<Owner> owner_;
};

} // namespace core
