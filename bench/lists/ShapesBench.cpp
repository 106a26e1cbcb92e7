// Lists of one kind of item: many small strings, large blobs, and 100 MB that are passed over. What
// should hold: a small string costs one scan and one copy each way; a blob costs a copy in bytes and
// what base64 costs in text; passing over costs a look at each unit of a text, and in bytes at each
// tag.
#include "Records.h"

#include <core/component/Object.h>
#include <core/files/MemoryFile.h>
#include <core/streams/IStringBuffer.h>
#include <core/streams/StringStreams.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#ifdef ORBCORE_PEER_SIMDJSON
#include <simdjson.h>
#endif
#ifdef ORBCORE_PEER_OPENSSL
#include <openssl/evp.h>
#endif
#ifdef ORBCORE_PEER_MSGPACK
#include <msgpack.hpp>
#endif
#ifdef ORBCORE_PEER_QT
#include <QDataStream>
#endif

namespace {

using namespace bench;

struct Row {
    const char* name;
    void (*run)(benchmark::State&);
};
bool add(std::initializer_list<Row> rows) {
    for (const Row& row : rows)
        benchmark::RegisterBenchmark(row.name, row.run)->Unit(benchmark::kMillisecond);
    return true;
}

// ---- What is written.

// A million strings of up to 15 units, one in eight of another script than Latin.
const std::vector<stdx::ustring>& small_strings() {
    static const std::vector<stdx::ustring> strings = [] {
        std::vector<stdx::ustring> made(1'000'000);
        std::uint32_t state = 1;
        for (stdx::ustring& text : made) {
            state = state * 1664525 + 1013904223;
            const char16_t first = state >> 29 == 0 ? u'\u0430' : u'a';
            for (unsigned n = state >> 8 & 15; n != 0; --n)
                text.push_back(static_cast<char16_t>(first + n));
        }
        return made;
    }();
    return strings;
}

// 16 blobs of 4 MiB.
constexpr unsigned kBlobs = 16;
const std::string& blob() {
    static const std::string bytes = [] {
        std::string made;
        std::uint32_t state = 1;
        while (made.size() != 0x400000)
            made += static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
        return made;
    }();
    return bytes;
}

// Trees until there are 100 MB.
constexpr std::size_t kLong = 100'000'000;

// ---- Lists.

template <class Put> core::InterfacePtr<core::IStringBuffer> text_of(Put put) {
    core::StringOutputStream to;
    to.open(core::create_string_buffer().get());
    core::ListOutStream out(to.writer());
    put(out);
    out.close();
    return to.close();
}
template <class Put> core::InterfacePtr<core::IMemoryFile> bytes_of(Put put) {
    auto file = core::create_memory_file(0);
    core::ListOutStream out(static_cast<core::IFile*>(file.get()));
    put(out);
    out.close();
    return file;
}

template <class Get>
void read_text(benchmark::State& state, const core::InterfacePtr<core::IStringBuffer>& text,
               Get get) {
    for (auto _ : state) {
        core::StringInputStream from;
        from.open(text.get());
        core::ListInStream in(from.reader());
        benchmark::DoNotOptimize(get(in));
    }
    state.SetBytesProcessed(state.iterations() * text->length() * 2);
}
template <class Get>
void read_bytes(benchmark::State& state, const core::InterfacePtr<core::IMemoryFile>& file,
                Get get) {
    for (auto _ : state) {
        file->seek(0, core::kSeekFromStart);
        core::ListInStream in(static_cast<core::IFile*>(file.get()));
        benchmark::DoNotOptimize(get(in));
    }
    state.SetBytesProcessed(state.iterations() * file->seek(0, core::kSeekFromEnd));
}

void put_strings(core::ListOutStream& out) {
    out->beginList();
    for (const stdx::ustring& text : small_strings()) out->putString(text);
    out->endList();
}
std::size_t get_strings(core::ListInStream& in) {
    std::size_t sum = 0;
    stdx::ustring text;
    in->beginList();
    for (std::size_t n = small_strings().size(); n != 0; --n) {
        in->getString(text);
        sum += text.size();
    }
    in->endList();
    return sum;
}

void put_blobs(core::ListOutStream& out) {
    out->beginList();
    for (unsigned i = 0; i != kBlobs; ++i)
        out->putBinary(blob().data(), static_cast<unsigned>(blob().size()));
    out->endList();
}
std::size_t get_blobs(core::ListInStream& in) {
    std::size_t sum = 0;
    stdx::string bytes;
    in->beginList();
    for (unsigned i = 0; i != kBlobs; ++i) {
        in->getBytes(bytes);
        sum += bytes.size();
    }
    in->endList();
    return sum;
}

template <class Size> void put_long(core::ListOutStream& out, Size size) {
    out->beginList();
    while (size() < kLong) write_tree(out);
    out->endList();
}
std::size_t skip(core::ListInStream& in) {
    in->beginList();
    in->skipList();
    in->endList();
    return 0;
}
core::InterfacePtr<core::IStringBuffer> long_text() {
    const auto buffer = core::create_string_buffer();
    core::StringOutputStream to;
    to.open(buffer.get());
    core::ListOutStream out(to.writer());
    put_long(out, [&] { return std::size_t{buffer->length()} * 2; });
    out.close();
    return to.close();
}
core::InterfacePtr<core::IMemoryFile> long_bytes() {
    auto file = core::create_memory_file(0);
    core::ListOutStream out(static_cast<core::IFile*>(file.get()));
    put_long(out, [&] { return static_cast<std::size_t>(file->seek(0, core::kSeekFromCurrent)); });
    out.close();
    return file;
}

void strings_text_write(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(text_of(put_strings)->length());
}
void strings_text_read(benchmark::State& state) {
    read_text(state, text_of(put_strings), get_strings);
}
void strings_binary_write(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(bytes_of(put_strings).get());
}
void strings_binary_read(benchmark::State& state) {
    read_bytes(state, bytes_of(put_strings), get_strings);
}
void blobs_text_write(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(text_of(put_blobs)->length());
}
void blobs_text_read(benchmark::State& state) {
    read_text(state, text_of(put_blobs), get_blobs);
}
void blobs_binary_write(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(bytes_of(put_blobs).get());
}
void blobs_binary_read(benchmark::State& state) {
    read_bytes(state, bytes_of(put_blobs), get_blobs);
}
void long_text_skip(benchmark::State& state) {
    read_text(state, long_text(), skip);
}
void long_binary_skip(benchmark::State& state) {
    read_bytes(state, long_bytes(), skip);
}

[[maybe_unused]] const bool by_lists = add({
    {"strings_text_write/orbcore", strings_text_write},
    {"strings_text_read/orbcore", strings_text_read},
    {"strings_binary_write/orbcore", strings_binary_write},
    {"strings_binary_read/orbcore", strings_binary_read},
    {"blobs_text_write/orbcore", blobs_text_write},
    {"blobs_text_read/orbcore", blobs_text_read},
    {"blobs_binary_write/orbcore", blobs_binary_write},
    {"blobs_binary_read/orbcore", blobs_binary_read},
    {"long_text_skip/orbcore", long_text_skip},
    {"long_binary_skip/orbcore", long_binary_skip},
});

// ---- JSON.

#ifdef ORBCORE_PEER_RAPIDJSON
using Buffer16 = rapidjson::GenericStringBuffer<Utf16>;

template <class Put> Buffer16 json16(Put put) {
    Buffer16 buffer;
    rapidjson::Writer<Buffer16, Utf16, Utf16> writer(buffer);
    put(writer);
    return buffer;
}
// Of UTF-8, for those that know nothing else.
template <class Put> std::string json8(Put put) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer, Utf16> writer(buffer);
    put(writer);
    return {buffer.GetString(), buffer.GetSize()};
}
const auto kStrings = [](auto& writer) {
    writer.StartArray();
    for (const stdx::ustring& text : small_strings()) writer.String(text.data(), text.size());
    writer.EndArray();
};

struct Copy : rapidjson::BaseReaderHandler<Utf16, Copy> {
    bool String(const char16_t* units, rapidjson::SizeType size, bool) {
        text.assign(units, size);
        sum += size;
        return true;
    }
    stdx::ustring text;
    std::size_t sum = 0;
};

template <class Handler> void read_rapidjson(benchmark::State& state, const Buffer16& text) {
    for (auto _ : state) {
        Handler handler;
        rapidjson::GenericReader<Utf16, Utf16> reader;
        rapidjson::GenericStringStream<Utf16> stream(text.GetString());
        if (!reader.Parse(stream, handler)) std::abort();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.GetSize()));
}

// As many trees as the list has.
const auto kLongTree = [](auto& writer) {
    const std::size_t one = json16([](auto& to) { write_json(to); }).GetSize();
    writer.StartArray();
    for (std::size_t size = 0; size < kLong; size += one) write_json(writer);
    writer.EndArray();
};

void strings_text_write_rapidjson(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(json16(kStrings).GetSize());
}
void strings_text_read_rapidjson(benchmark::State& state) {
    read_rapidjson<Copy>(state, json16(kStrings));
}
void long_text_skip_rapidjson(benchmark::State& state) {
    read_rapidjson<rapidjson::BaseReaderHandler<Utf16>>(state, json16(kLongTree));
}
[[maybe_unused]] const bool by_rapidjson = add({
    {"strings_text_write/rapidjson", strings_text_write_rapidjson},
    {"strings_text_read/rapidjson", strings_text_read_rapidjson},
    {"long_text_skip/rapidjson", long_text_skip_rapidjson},
});

#ifdef ORBCORE_PEER_OPENSSL
// Base64 of OpenSSL, without line breaks, as strings of UTF-16.
const auto kBlobsOfJson = [](auto& writer) {
    std::string text(blob().size() / 3 * 4 + 5, '\0');
    writer.StartArray();
    for (unsigned i = 0; i != kBlobs; ++i) {
        const auto size = static_cast<std::size_t>(
            EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                            reinterpret_cast<const unsigned char*>(blob().data()),
                            static_cast<int>(blob().size())));
        const std::u16string wide(text.data(), text.data() + size);
        writer.String(wide.data(), static_cast<rapidjson::SizeType>(size));
    }
    writer.EndArray();
};

struct Decode : rapidjson::BaseReaderHandler<Utf16, Decode> {
    bool String(const char16_t* units, rapidjson::SizeType size, bool) {
        const std::string text(units, units + size);
        bytes.resize(size / 4 * 3);
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                        reinterpret_cast<const unsigned char*>(text.data()),
                        static_cast<int>(size));
        return true;
    }
    std::string bytes;
};

void blobs_text_write_rapidjson(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(json16(kBlobsOfJson).GetSize());
}
void blobs_text_read_rapidjson(benchmark::State& state) {
    read_rapidjson<Decode>(state, json16(kBlobsOfJson));
}
[[maybe_unused]] const bool by_openssl = add({
    {"blobs_text_write/rapidjson+openssl", blobs_text_write_rapidjson},
    {"blobs_text_read/rapidjson+openssl", blobs_text_read_rapidjson},
});
#endif

#ifdef ORBCORE_PEER_SIMDJSON
template <class Each>
void read_simdjson(benchmark::State& state, const std::string& json, Each each) {
    const simdjson::padded_string text(json);
    simdjson::ondemand::parser parser;
    for (auto _ : state) {
        std::size_t sum = 0;
        auto document = parser.iterate(text);
        for (auto value : document.get_array()) sum += each(value);
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(json.size()));
}
void strings_text_read_simdjson(benchmark::State& state) {
    read_simdjson(state, json8(kStrings),
                  [](auto value) { return value.get_string().value().size(); });
}
void long_text_skip_simdjson(benchmark::State& state) {
    read_simdjson(state, json8(kLongTree), [](auto) { return std::size_t{1}; });
}
[[maybe_unused]] const bool by_simdjson = add({
    {"strings_text_read/simdjson", strings_text_read_simdjson},
    {"long_text_skip/simdjson", long_text_skip_simdjson},
});
#endif
#endif

// ---- Bytes.

#ifdef ORBCORE_PEER_QT
QByteArray qt_strings() {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const stdx::ustring& text : small_strings())
        out << QString::fromRawData(reinterpret_cast<const QChar*>(text.data()),
                                    static_cast<int>(text.size()));
    return bytes;
}
QByteArray qt_blobs() {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    const auto one = QByteArray::fromRawData(blob().data(), static_cast<int>(blob().size()));
    for (unsigned i = 0; i != kBlobs; ++i) out << one;
    return bytes;
}
template <class Item>
void read_qt(benchmark::State& state, const QByteArray& bytes, std::size_t count) {
    for (auto _ : state) {
        QDataStream in(bytes);
        Item item;
        for (std::size_t i = 0; i != count; ++i) in >> item;
        benchmark::DoNotOptimize(item.size());
    }
}
void strings_binary_write_qt(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(qt_strings().size());
}
void strings_binary_read_qt(benchmark::State& state) {
    read_qt<QString>(state, qt_strings(), small_strings().size());
}
void blobs_binary_write_qt(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(qt_blobs().size());
}
void blobs_binary_read_qt(benchmark::State& state) {
    read_qt<QByteArray>(state, qt_blobs(), kBlobs);
}
[[maybe_unused]] const bool by_qt = add({
    {"strings_binary_write/qdatastream", strings_binary_write_qt},
    {"strings_binary_read/qdatastream", strings_binary_read_qt},
    {"blobs_binary_write/qdatastream", blobs_binary_write_qt},
    {"blobs_binary_read/qdatastream", blobs_binary_read_qt},
});
#endif

#ifdef ORBCORE_PEER_MSGPACK
// Strings go as blobs of UTF-16, which costs no conversion.
using Packer = msgpack::packer<msgpack::sbuffer>;

void pack_blob(Packer& out, const void* bytes, std::size_t size) {
    out.pack_bin(static_cast<std::uint32_t>(size));
    out.pack_bin_body(static_cast<const char*>(bytes), static_cast<std::uint32_t>(size));
}
msgpack::sbuffer msgpack_strings() {
    msgpack::sbuffer bytes;
    Packer out(bytes);
    out.pack_array(static_cast<std::uint32_t>(small_strings().size()));
    for (const stdx::ustring& text : small_strings()) pack_blob(out, text.data(), text.size() * 2);
    return bytes;
}
msgpack::sbuffer msgpack_blobs() {
    msgpack::sbuffer bytes;
    Packer out(bytes);
    out.pack_array(kBlobs);
    for (unsigned i = 0; i != kBlobs; ++i) pack_blob(out, blob().data(), blob().size());
    return bytes;
}
msgpack::sbuffer msgpack_long() {
    msgpack::sbuffer bytes;
    Packer out(bytes);
    while (bytes.size() < kLong)
        for (const Folder& folder : tree()) {
            out.pack_array(static_cast<std::uint32_t>(folder.size()));
            for (const Record& record : folder) {
                out.pack_array(kFields);
                out.pack(record.id);
                out.pack(record.size);
                out.pack(record.open);
                out.pack(record.rate);
                pack_blob(out, record.name.data(), record.name.size() * 2);
                pack_blob(out, record.note.data(), record.note.size() * 2);
            }
        }
    return bytes;
}

struct CopyBlob : msgpack::null_visitor {
    bool visit_bin(const char* bytes, std::uint32_t size) {
        copy.assign(bytes, size);
        return true;
    }
    std::string copy;
};

template <class Visitor> void read_msgpack(benchmark::State& state, const msgpack::sbuffer& bytes) {
    for (auto _ : state) {
        Visitor visitor;
        for (std::size_t at = 0; at != bytes.size();)
            if (!msgpack::parse(bytes.data(), bytes.size(), at, visitor)) std::abort();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
void strings_binary_write_msgpack(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(msgpack_strings().size());
}
void strings_binary_read_msgpack(benchmark::State& state) {
    read_msgpack<CopyBlob>(state, msgpack_strings());
}
void blobs_binary_write_msgpack(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(msgpack_blobs().size());
}
void blobs_binary_read_msgpack(benchmark::State& state) {
    read_msgpack<CopyBlob>(state, msgpack_blobs());
}
void long_binary_skip_msgpack(benchmark::State& state) {
    read_msgpack<msgpack::null_visitor>(state, msgpack_long());
}
[[maybe_unused]] const bool by_msgpack = add({
    {"strings_binary_write/msgpack", strings_binary_write_msgpack},
    {"strings_binary_read/msgpack", strings_binary_read_msgpack},
    {"blobs_binary_write/msgpack", blobs_binary_write_msgpack},
    {"blobs_binary_read/msgpack", blobs_binary_read_msgpack},
    {"long_binary_skip/msgpack", long_binary_skip_msgpack},
});
#endif

} // namespace
