// Lists beside their peers. What should hold: text is written ahead of RapidJSON's writer and read at
// least as fast as by its SAX reader, both on UTF-16; bytes go ahead of QDataStream and msgpack both
// ways; skipping costs little more than looking at the text.
#include "Records.h"

#include <core/component/Object.h>
#include <core/files/MemoryFile.h>
#include <core/streams/IStringBuffer.h>
#include <core/streams/StringStreams.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdlib>
#include <string>
#include <vector>

#ifdef ORBCORE_PEER_RAPIDJSON
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/writer.h>
#endif
#ifdef ORBCORE_PEER_SIMDJSON
#include <simdjson.h>
#endif
#ifdef ORBCORE_PEER_BOOST_JSON
#include <boost/json/src.hpp>
#endif
#ifdef ORBCORE_PEER_MSGPACK
#include <msgpack.hpp>
#endif
#ifdef ORBCORE_PEER_QT
#include <QBuffer>
#include <QDataStream>
#endif

namespace {

using namespace bench;

template <class Run> void run_records(benchmark::State& state, Run run) {
    std::size_t size = 0;
    for (auto _ : state) size = run();
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * record_count()));
    state.counters["bytes"] = static_cast<double>(size);
}

// ---- orbcore.

core::InterfacePtr<core::IStringBuffer> written_text() {
    core::StringOutputStream to;
    to.open(core::create_string_buffer().get());
    core::ListOutStream out(to.writer());
    write_tree(out);
    out.close();
    return to.close();
}

void text_write_orbcore(benchmark::State& state) {
    run_records(state, [] { return written_text()->length() * 2; });
}
void text_read_orbcore(benchmark::State& state) {
    const auto text = written_text();
    run_records(state, [&] {
        core::StringInputStream from;
        from.open(text.get());
        core::ListInStream in(from.reader());
        benchmark::DoNotOptimize(read_tree(in));
        return text->length() * 2;
    });
}
void text_skip_orbcore(benchmark::State& state) {
    const auto text = written_text();
    run_records(state, [&] {
        core::StringInputStream from;
        from.open(text.get());
        core::ListInStream in(from.reader());
        in->beginList();
        in->skipList();
        in->endList();
        return text->length() * 2;
    });
}

core::InterfacePtr<core::IMemoryFile> written_file() {
    auto file = core::create_memory_file(0);
    core::ListOutStream out(static_cast<core::IFile*>(file.get()));
    write_tree(out);
    out.close();
    return file;
}

void binary_write_orbcore(benchmark::State& state) {
    run_records(state, [] {
        return static_cast<std::size_t>(written_file()->seek(0, core::kSeekFromEnd));
    });
}
template <class Read> void binary_read(benchmark::State& state, Read read) {
    const auto file = written_file();
    const auto size = static_cast<std::size_t>(file->seek(0, core::kSeekFromEnd));
    run_records(state, [&] {
        file->seek(0, core::kSeekFromStart);
        core::ListInStream in(static_cast<core::IFile*>(file.get()));
        benchmark::DoNotOptimize(read(in));
        return size;
    });
}
void binary_read_orbcore(benchmark::State& state) {
    binary_read(state, read_tree);
}
void binary_skip_orbcore(benchmark::State& state) {
    binary_read(state, [](core::ListInStream& in) {
        in->beginList();
        in->skipList();
        in->endList();
        return 0;
    });
}

BENCHMARK(text_write_orbcore)->Name("text_write/orbcore")->Unit(benchmark::kMillisecond);
BENCHMARK(text_read_orbcore)->Name("text_read/orbcore")->Unit(benchmark::kMillisecond);
BENCHMARK(text_skip_orbcore)->Name("text_skip/orbcore")->Unit(benchmark::kMillisecond);
BENCHMARK(binary_write_orbcore)->Name("binary_write/orbcore")->Unit(benchmark::kMillisecond);
BENCHMARK(binary_read_orbcore)->Name("binary_read/orbcore")->Unit(benchmark::kMillisecond);
BENCHMARK(binary_skip_orbcore)->Name("binary_skip/orbcore")->Unit(benchmark::kMillisecond);

// ---- JSON: the same tree as arrays.

#ifdef ORBCORE_PEER_RAPIDJSON
using Buffer16 = rapidjson::GenericStringBuffer<Utf16>;

std::u16string json16() {
    Buffer16 buffer;
    rapidjson::Writer<Buffer16, Utf16, Utf16> writer(buffer);
    write_json(writer);
    return {buffer.GetString(), buffer.GetSize() / sizeof(char16_t)};
}

void text_write_rapidjson(benchmark::State& state) {
    run_records(state, [] { return json16().size() * 2; });
}

void text_read_rapidjson(benchmark::State& state) {
    const std::u16string text = json16();
    run_records(state, [&] {
        Fill fill;
        rapidjson::GenericReader<Utf16, Utf16> reader;
        rapidjson::GenericStringStream<Utf16> stream(text.c_str());
        if (!reader.Parse(stream, fill)) std::abort();
        benchmark::DoNotOptimize(fill.sum);
        return text.size() * 2;
    });
}
void text_skip_rapidjson(benchmark::State& state) {
    const std::u16string text = json16();
    run_records(state, [&] {
        rapidjson::BaseReaderHandler<Utf16> nothing;
        rapidjson::GenericReader<Utf16, Utf16> reader;
        rapidjson::GenericStringStream<Utf16> stream(text.c_str());
        if (!reader.Parse(stream, nothing)) std::abort();
        return text.size() * 2;
    });
}
BENCHMARK(text_write_rapidjson)->Name("text_write/rapidjson")->Unit(benchmark::kMillisecond);
BENCHMARK(text_read_rapidjson)->Name("text_read/rapidjson")->Unit(benchmark::kMillisecond);
BENCHMARK(text_skip_rapidjson)->Name("text_skip/rapidjson")->Unit(benchmark::kMillisecond);
#endif

#ifdef ORBCORE_PEER_BOOST_JSON
boost::json::array boost_tree() {
    const auto utf8 = [](const stdx::ustring& text) {
        std::string made; // the tree holds units below 0x800 alone
        for (const char16_t unit : text.view()) {
            if (unit < 0x80) {
                made += static_cast<char>(unit);
            } else {
                made += static_cast<char>(0xC0 | unit >> 6);
                made += static_cast<char>(0x80 | (unit & 0x3F));
            }
        }
        return made;
    };
    boost::json::array all;
    for (const Folder& folder : tree()) {
        boost::json::array records;
        for (const Record& record : folder)
            records.push_back(boost::json::array{record.id, record.size, record.open, record.rate,
                                                 boost::json::string(utf8(record.name)),
                                                 boost::json::string(utf8(record.note))});
        all.push_back(std::move(records));
    }
    return all;
}

// Both work on UTF-8, half of the others' bytes; Boost's writer has the tree made before.
void text_write_boost(benchmark::State& state) {
    const boost::json::value all(boost_tree());
    run_records(state, [&] { return boost::json::serialize(all).size(); });
}
void text_read_boost(benchmark::State& state) {
    const std::string text = boost::json::serialize(boost_tree());
    run_records(state, [&] {
        benchmark::DoNotOptimize(boost::json::parse(text).as_array().size());
        return text.size();
    });
}
BENCHMARK(text_write_boost)->Name("text_write/boost.json")->Unit(benchmark::kMillisecond);
BENCHMARK(text_read_boost)->Name("text_read/boost.json")->Unit(benchmark::kMillisecond);

#ifdef ORBCORE_PEER_SIMDJSON
void text_read_simdjson(benchmark::State& state) {
    const simdjson::padded_string text(boost::json::serialize(boost_tree()));
    simdjson::ondemand::parser parser;
    run_records(state, [&] {
        std::size_t sum = 0;
        auto document = parser.iterate(text);
        for (auto folder : document.get_array())
            for (auto record : folder.get_array()) {
                std::size_t field = 0;
                for (auto value : record.get_array()) switch (field++) {
                    case 0:
                    case 1:
                        sum += static_cast<std::size_t>(value.get_int64().value());
                        break;
                    case 2:
                        sum += value.get_bool().value();
                        break;
                    case 3:
                        sum += static_cast<std::size_t>(value.get_double().value());
                        break;
                    default:
                        sum += value.get_string().value().size();
                    }
            }
        benchmark::DoNotOptimize(sum);
        return text.size();
    });
}
BENCHMARK(text_read_simdjson)->Name("text_read/simdjson")->Unit(benchmark::kMillisecond);
#endif
#endif

// ---- Binary peers.

#ifdef ORBCORE_PEER_QT
QByteArray qt_bytes() {
    static const std::vector<std::vector<std::pair<QString, QString>>> texts = [] {
        std::vector<std::vector<std::pair<QString, QString>>> made;
        const auto text = [](const stdx::ustring& from) {
            return QString(reinterpret_cast<const QChar*>(from.data()),
                           static_cast<int>(from.size()));
        };
        for (const Folder& folder : tree()) {
            made.emplace_back();
            for (const Record& record : folder)
                made.back().emplace_back(text(record.name), text(record.note));
        }
        return made;
    }();
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (std::size_t f = 0; f != tree().size(); ++f) {
        out << static_cast<quint32>(tree()[f].size());
        for (std::size_t r = 0; r != tree()[f].size(); ++r) {
            const Record& record = tree()[f][r];
            out << qint32{record.id} << qint64{record.size} << record.open << record.rate
                << texts[f][r].first << texts[f][r].second;
        }
    }
    return bytes;
}

void binary_write_qt(benchmark::State& state) {
    run_records(state, [] { return static_cast<std::size_t>(qt_bytes().size()); });
}
void binary_read_qt(benchmark::State& state) {
    const QByteArray bytes = qt_bytes();
    run_records(state, [&] {
        std::size_t sum = 0;
        QDataStream in(bytes);
        for (std::size_t f = 0; f != tree().size(); ++f) {
            quint32 count = 0;
            in >> count;
            for (; count != 0; --count) {
                qint32 id = 0;
                qint64 size = 0;
                bool open = false;
                double rate = 0;
                QString name, note;
                in >> id >> size >> open >> rate >> name >> note;
                sum += static_cast<std::size_t>(note.size() + id);
            }
        }
        benchmark::DoNotOptimize(sum);
        return static_cast<std::size_t>(bytes.size());
    });
}
BENCHMARK(binary_write_qt)->Name("binary_write/qdatastream")->Unit(benchmark::kMillisecond);
BENCHMARK(binary_read_qt)->Name("binary_read/qdatastream")->Unit(benchmark::kMillisecond);
#endif

#ifdef ORBCORE_PEER_MSGPACK
// Strings go as blobs of UTF-16, which costs no conversion.
msgpack::sbuffer msgpack_bytes() {
    msgpack::sbuffer bytes;
    msgpack::packer<msgpack::sbuffer> out(bytes);
    const auto pack_text = [&](const stdx::ustring& text) {
        out.pack_bin(text.size() * 2);
        out.pack_bin_body(reinterpret_cast<const char*>(text.data()), text.size() * 2);
    };
    out.pack_array(static_cast<std::uint32_t>(tree().size()));
    for (const Folder& folder : tree()) {
        out.pack_array(static_cast<std::uint32_t>(folder.size()));
        for (const Record& record : folder) {
            out.pack_array(kFields);
            out.pack(record.id);
            out.pack(record.size);
            out.pack(record.open);
            out.pack(record.rate);
            pack_text(record.name);
            pack_text(record.note);
        }
    }
    return bytes;
}

void binary_write_msgpack(benchmark::State& state) {
    run_records(state, [] { return msgpack_bytes().size(); });
}

struct Visit : msgpack::null_visitor {
    bool visit_boolean(bool value) {
        record.open = value;
        ++field;
        return true;
    }
    bool visit_positive_integer(std::uint64_t value) {
        return visit_negative_integer(static_cast<std::int64_t>(value));
    }
    bool visit_negative_integer(std::int64_t value) {
        if (field++ == 0)
            record.id = static_cast<std::int32_t>(value);
        else
            record.size = value;
        return true;
    }
    bool visit_float64(double value) {
        record.rate = value;
        ++field;
        return true;
    }
    bool visit_bin(const char* bytes, std::uint32_t size) {
        stdx::ustring& to = field++ == 4 ? record.name : record.note;
        to.clear();
        if (size != 0) std::memcpy(to._append(size / 2), bytes, size);
        return true;
    }
    bool start_array(std::uint32_t) {
        field = 0;
        return true;
    }
    bool end_array() {
        sum += record.note.size() + static_cast<std::size_t>(record.id);
        return true;
    }
    Record record{};
    std::size_t field = 0, sum = 0;
};

void binary_read_msgpack(benchmark::State& state) {
    const msgpack::sbuffer bytes = msgpack_bytes();
    run_records(state, [&] {
        Visit visit;
        if (!msgpack::parse(bytes.data(), bytes.size(), visit)) std::abort();
        benchmark::DoNotOptimize(visit.sum);
        return bytes.size();
    });
}
BENCHMARK(binary_write_msgpack)->Name("binary_write/msgpack")->Unit(benchmark::kMillisecond);
BENCHMARK(binary_read_msgpack)->Name("binary_read/msgpack")->Unit(benchmark::kMillisecond);
#endif

} // namespace
