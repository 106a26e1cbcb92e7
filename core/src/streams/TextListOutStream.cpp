#include "TextListOutStream.h"

#include "Base64Streams.h"

#include <core/component/IllegalArgumentException.h>
#include <core/streams/IFile.h>
#include <core/streams/StreamFunctions.h>

#include <vector>

namespace core {
namespace {

constexpr unsigned kBase64Line = 64;

} // namespace

const InterfaceEntry* TextListOutStream::_GetEntries() {
    return interface_map<TextListOutStream, IListOutStream>();
}

void TextListOutStream::begin_item(TextChunk& out) {
    if (needComma_) out.put(u',');
    needComma_ = true;
    afterList_ = false;
    atStart_ = false;
}

template <class Put> void TextListOutStream::put_item(Put put) {
    ORB_ASSERT(writer_);
    TextChunk out(writer_);
    begin_item(out);
    put(out);
    out.flush();
}

void TextListOutStream::beginList() {
    ORB_ASSERT(writer_);
    TextChunk out(writer_);
    if (needComma_) out.put(u',');
    if (!atStart_) out.put(u'\n');
    out.put(u'{');
    needComma_ = false;
    afterList_ = false;
    atStart_ = false;
    out.flush();
}

void TextListOutStream::endList() {
    ORB_ASSERT(writer_);
    TextChunk out(writer_);
    if (afterList_) out.put(u'\n');
    out.put(u'}');
    needComma_ = true;
    afterList_ = true;
    atStart_ = false;
    out.flush();
}

void TextListOutStream::putBool(bool value) {
    put_item([=](TextChunk& out) { out.put(value ? u'1' : u'0'); });
}
void TextListOutStream::putInt64(std::int64_t value) {
    put_item([=](TextChunk& out) { put_integer(out, value); });
}
void TextListOutStream::putUInt64(std::uint64_t value) {
    put_item([=](TextChunk& out) { put_integer(out, value); });
}
void TextListOutStream::putDouble(double value) {
    put_item([=](TextChunk& out) { put_double(out, value); });
}
void TextListOutStream::putGuid(const _GUID& value) {
    put_item([&](TextChunk& out) { put_guid(out, value); });
}
void TextListOutStream::putString(const stdx::ustring& value) {
    put_item([&](TextChunk& out) { put_string(out, value); });
}
void TextListOutStream::putCString(const char16_t* value) {
    put_item([=](TextChunk& out) { put_string(out, value); });
}
void TextListOutStream::putChars(const char16_t* value, unsigned n) {
    const std::u16string_view all(value, n);
    put_item([=](TextChunk& out) { put_string(out, all.substr(0, find_unit(all, 0))); });
}
void TextListOutStream::putNumeric(const Numeric& value) {
    put_item([&](TextChunk& out) { put_numeric(out, value); });
}

void TextListOutStream::putBinary(const void* data, unsigned n) {
    put_item([](TextChunk&) {});
    encode_base64(data, n, writer_, kBase64Line);
}

void TextListOutStream::putFile(IFile* file) {
    constexpr unsigned kBlock = 12288;
    put_item([](TextChunk&) {});
    Base64Writer text(*writer_, kBase64Line, false);
    std::vector<char> data(kBlock);
    while (const unsigned n = file->read(data.data(), kBlock)) text.write(data.data(), n);
    text.finish();
}

void TextListOutStream::putObject(IListStreamObject& object) {
    put_item([](TextChunk&) {});
    object.toStream(writer_);
}

void TextListOutStream::flush() {
    ORB_ASSERT(writer_);
    writer_->flush();
}

void TextListOutStream::close() {
    if (IWriter* const writer = std::exchange(writer_, nullptr)) writer->flush();
}

} // namespace core
