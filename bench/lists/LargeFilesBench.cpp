// Trees of records in files of 64 MB and 1 GB, written and read in one go. What should hold: memory
// ("peak", in MiB beyond what the program had before) does not grow with the file; time per record
// is that of lists in memory, the work of the disk apart. Bytes are read and written through a buffer
// of the size that storages have.
#include "../support/Host.h"
#include "../support/PeakMemory.h"
#include "Records.h"

#include <core/files/BufferedFile.h>
#include <core/files/FileStreams.h>
#include <core/streams/LineSeparator.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#ifdef ORBCORE_PEER_RAPIDJSON
#include <rapidjson/filereadstream.h>
#include <rapidjson/filewritestream.h>
#endif
#ifdef ORBCORE_PEER_SIMDJSON
#include <simdjson.h>
#endif
#ifdef ORBCORE_PEER_QT
#include <QDataStream>
#include <QFile>
#endif

ORBCORE_MODULE("bench_lists", "1.0.0.0");

namespace {

using namespace bench;

constexpr unsigned kBuffer = 8192;

std::uint64_t size_wanted(const benchmark::State& state) {
    return static_cast<std::uint64_t>(state.range(0)) << 20;
}

// Writes, then measures.
template <class Run> void measure_write(benchmark::State& state, Run run) {
    const ScratchName file;
    benchmark::DoNotOptimize(tree());
    for (auto _ : state) {
        const PeakMemory memory;
        run(file, size_wanted(state));
        state.counters["peak"] = memory.mebibytes();
    }
    state.counters["file"] = file.mebibytes();
}
template <class Write, class Read>
void measure_read(benchmark::State& state, Write write, Read read) {
    const ScratchName file;
    write(file, size_wanted(state));
    for (auto _ : state) {
        const PeakMemory memory;
        benchmark::DoNotOptimize(read(file));
        state.counters["peak"] = memory.mebibytes();
    }
    state.counters["file"] = file.mebibytes();
}

void measure(const char* job, const char* who, void (*run)(benchmark::State&)) {
    benchmark::RegisterBenchmark((std::string(job) + '/' + who).c_str(), run)
        ->Arg(64)
        ->Arg(1024)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

// ---- Lists: one list of trees.

std::uint64_t size_of(const core::InterfacePtr<core::IFileEx>& file) {
    return static_cast<std::uint64_t>(file->seek(0, core::kSeekFromCurrent));
}

void write_trees(core::ListOutStream& out, core::IFile* file, std::uint64_t size) {
    const core::InterfacePtr<core::IFileEx> position(file);
    out->beginList();
    while (size_of(position) < size) write_tree(out);
    out->endList();
    out.close();
}
std::size_t read_trees(core::ListInStream& in) {
    std::size_t sum = 0;
    in->beginList();
    do sum += read_tree(in);
    while (in->nextInList());
    in->endList();
    return sum;
}

void write_text(const ScratchName& name, std::uint64_t size) {
    const auto file = core::create_buffered_file_for(name.url(), 0, core::kFileOpenForWrite);
    core::OutputFileStream text;
    text.open(file.get(), core::kUTF8Encoding, true, core::kWindowsLineSeparator);
    core::ListOutStream out(text.writer());
    write_trees(out, file.get(), size);
    text.close();
}
std::size_t read_text(const ScratchName& name) {
    core::InputFileStream text;
    text.open(name.url(), core::kUTF8Encoding, true, core::kWindowsLineSeparator);
    core::ListInStream in(text.reader());
    return read_trees(in);
}
void write_bytes(const ScratchName& name, std::uint64_t size) {
    const auto file = core::create_buffered_file_for(name.url(), kBuffer, core::kFileOpenForWrite);
    core::ListOutStream out(file.get());
    write_trees(out, file.get(), size);
}
std::size_t read_bytes(const ScratchName& name) {
    const auto file = core::create_buffered_file_for_read(name.url(), kBuffer);
    core::ListInStream in(file.get());
    return read_trees(in);
}

// ---- RapidJSON, in sequence from file to file; UTF-8 there, UTF-16 here, as lists.

#ifdef ORBCORE_PEER_RAPIDJSON
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File open_file(const ScratchName& name, const char* mode) {
    File file(std::fopen(name.path.c_str(), mode), &std::fclose);
    if (!file) std::abort();
    return file;
}

void write_rapidjson(const ScratchName& name, std::uint64_t size) {
    const File file = open_file(name, "wb");
    char buffer[0x10000];
    rapidjson::FileWriteStream to(file.get(), buffer, sizeof buffer);
    rapidjson::Writer<rapidjson::FileWriteStream, Utf16, rapidjson::UTF8<>> writer(to);
    writer.StartArray();
    while (static_cast<std::uint64_t>(std::ftell(file.get())) < size) write_json(writer);
    writer.EndArray();
}
std::size_t read_rapidjson(const ScratchName& name) {
    const File file = open_file(name, "rb");
    char buffer[0x10000];
    rapidjson::FileReadStream from(file.get(), buffer, sizeof buffer);
    Fill fill;
    rapidjson::GenericReader<rapidjson::UTF8<>, Utf16> reader;
    if (!reader.Parse(from, fill)) std::abort();
    return fill.sum;
}
#endif

// The whole file in memory, which is how it is meant to be used.
#if defined(ORBCORE_PEER_RAPIDJSON) && defined(ORBCORE_PEER_SIMDJSON)
std::size_t read_simdjson(const ScratchName& name) {
    std::size_t sum = 0;
    simdjson::padded_string text;
    if (simdjson::padded_string::load(name.path).get(text) != simdjson::SUCCESS) std::abort();
    simdjson::ondemand::parser parser;
    auto document = parser.iterate(text);
    for (auto tree : document.get_array())
        for (auto folder : tree.get_array())
            for (auto record : folder.get_array()) {
                if (record.type().value() != simdjson::ondemand::json_type::array) continue;
                std::size_t field = 0;
                for (auto value : record.get_array()) switch (field++) {
                    case 0:
                        sum += static_cast<std::size_t>(value.get_int64().value());
                        break;
                    case 1:
                        sum += value.get_int64().value() != 0;
                        break;
                    case 2:
                        sum += value.get_bool().value();
                        break;
                    case 3:
                        sum += value.get_double().value() != 0;
                        break;
                    default:
                        sum += value.get_string().value().size();
                    }
            }
    return sum;
}
#endif

// ---- QDataStream.

#ifdef ORBCORE_PEER_QT
QString borrowed(const stdx::ustring& text) {
    return QString::fromRawData(reinterpret_cast<const QChar*>(text.data()),
                                static_cast<int>(text.size()));
}

void write_qt(const ScratchName& name, std::uint64_t size) {
    QFile file(QString::fromStdString(name.path));
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    QDataStream out(&file);
    while (static_cast<std::uint64_t>(file.pos()) < size)
        for (const Folder& folder : tree()) {
            out << static_cast<quint32>(folder.size());
            for (const Record& record : folder)
                out << qint32{record.id} << qint64{record.size} << record.open << record.rate
                    << borrowed(record.name) << borrowed(record.note);
        }
}
std::size_t read_qt(const ScratchName& name) {
    QFile file(QString::fromStdString(name.path));
    if (!file.open(QIODevice::ReadOnly)) std::abort();
    QDataStream in(&file);
    std::size_t sum = 0;
    while (!in.atEnd()) {
        quint32 count = 0;
        for (in >> count; count != 0; --count) {
            qint32 id = 0;
            qint64 size = 0;
            bool open = false;
            double rate = 0;
            QString name16, note;
            in >> id >> size >> open >> rate >> name16 >> note;
            sum += static_cast<std::size_t>(note.size() + id);
        }
    }
    return sum;
}
#endif

[[maybe_unused]] const bool registered = [] {
    measure("file_text_write", "orbcore", [](auto& state) { measure_write(state, write_text); });
    measure("file_text_read", "orbcore",
            [](auto& state) { measure_read(state, write_text, read_text); });
    measure("file_binary_write", "orbcore", [](auto& state) { measure_write(state, write_bytes); });
    measure("file_binary_read", "orbcore",
            [](auto& state) { measure_read(state, write_bytes, read_bytes); });
#ifdef ORBCORE_PEER_RAPIDJSON
    measure("file_text_write", "rapidjson",
            [](auto& state) { measure_write(state, write_rapidjson); });
    measure("file_text_read", "rapidjson",
            [](auto& state) { measure_read(state, write_rapidjson, read_rapidjson); });
#endif
#if defined(ORBCORE_PEER_RAPIDJSON) && defined(ORBCORE_PEER_SIMDJSON)
    measure("file_text_read", "simdjson",
            [](auto& state) { measure_read(state, write_rapidjson, read_simdjson); });
#endif
#ifdef ORBCORE_PEER_QT
    measure("file_binary_write", "qdatastream",
            [](auto& state) { measure_write(state, write_qt); });
    measure("file_binary_read", "qdatastream",
            [](auto& state) { measure_read(state, write_qt, read_qt); });
#endif
    return true;
}();

} // namespace
