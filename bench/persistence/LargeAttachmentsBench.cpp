// One attachment of 64 MB or 1 GB through each pair of storages, from and to files. What should hold:
// memory ("peak", in MiB beyond what the program had before) does not grow with the attachment beyond
// the limits of temporary files (16 MiB in the compact pair); time is that of the bytes' ways: base64
// in the stream pair, once through a temporary file more in it and in the compact pair. QFile writes
// and reads the plain bytes.
#include "../support/Host.h"
#include "../support/PeakMemory.h"
#include "Pairs.h"

#include <core/files/BufferedFile.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#ifdef ORBCORE_PEER_QT
#include <QFile>
#endif

namespace {

using namespace bench;

constexpr unsigned kPiece = 0x10000;

std::uint64_t size_wanted(const benchmark::State& state) {
    return static_cast<std::uint64_t>(state.range(0)) << 20;
}

// `write(data, n)` until there are so many bytes.
template <class Write> void write_pieces(std::uint64_t size, Write write) {
    const std::string piece(kPiece, 'x');
    for (; size != 0; size -= kPiece) write(piece.data(), kPiece);
}
template <class Read> std::uint64_t read_pieces(Read read) {
    std::string piece(kPiece, '\0');
    std::uint64_t size = 0;
    while (const auto n = read(piece.data(), kPiece)) size += static_cast<std::uint64_t>(n);
    return size;
}

void save(const Pair& pair, const ScratchName& name, std::uint64_t size) {
    const auto file = core::create_buffered_file_for(name.url(), 0, core::kFileOpenForWrite);
    const auto storage = core::create_object<core::IOutPersistenceStorage>(pair.out);
    attach(storage, file.get());
    core::ListOutStream& list = *storage->listStream();
    list->beginList();
    {
        const auto to = storage->binFile();
        write_pieces(size, [&](const char* bytes, unsigned n) { to->write(bytes, n); });
    }
    list->endList();
    attach(storage, nullptr);
}

std::uint64_t load(const Pair& pair, const ScratchName& name) {
    const auto file = core::create_buffered_file_for(name.url(), 0, core::kFileOpenForRead);
    const auto storage = core::create_object<core::IInPersistenceStorage>(pair.in);
    attach(storage, file.get());
    core::ListInStream& list = *storage->listStream();
    list->beginList();
    std::uint64_t size = 0;
    {
        const auto from = storage->forwardOnlyBinFile();
        size = read_pieces([&](char* bytes, unsigned n) { return from->read(bytes, n); });
    }
    list->endList();
    return size;
}

template <class Save> void measure_save(benchmark::State& state, Save save) {
    const ScratchName name;
    for (auto _ : state) {
        const PeakMemory memory;
        save(name, size_wanted(state));
        state.counters["peak"] = memory.mebibytes();
    }
    state.counters["file"] = name.mebibytes();
}
template <class Save, class Load> void measure_load(benchmark::State& state, Save save, Load load) {
    const ScratchName name;
    save(name, size_wanted(state));
    for (auto _ : state) {
        const PeakMemory memory;
        if (load(name) != size_wanted(state)) std::abort();
        state.counters["peak"] = memory.mebibytes();
    }
    state.counters["file"] = name.mebibytes();
}

template <class Run> void add(const std::string& name, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), run)
        ->Arg(64)
        ->Arg(1024)
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

#ifdef ORBCORE_PEER_QT
void save_qt(const ScratchName& name, std::uint64_t size) {
    QFile file(QString::fromStdString(name.path));
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    write_pieces(size, [&](const char* bytes, unsigned n) { file.write(bytes, n); });
}
std::uint64_t load_qt(const ScratchName& name) {
    QFile file(QString::fromStdString(name.path));
    if (!file.open(QIODevice::ReadOnly)) std::abort();
    return read_pieces([&](char* bytes, unsigned n) { return file.read(bytes, n); });
}
#endif

[[maybe_unused]] const bool added = [] {
    static constexpr struct {
        const char* name;
        const Pair& pair;
    } kRows[] = {{"stream", kStream}, {"binary", kBinary}, {"compact", kCompact}};
    for (const auto& row : kRows) {
        const auto save_pair = [&row](const ScratchName& name, std::uint64_t size) {
            save(row.pair, name, size);
        };
        const auto load_pair = [&row](const ScratchName& name) { return load(row.pair, name); };
        const std::string job = std::string("large_") + row.name;
        add(job + "_save/orbcore", [=](auto& state) { measure_save(state, save_pair); });
        add(job + "_load/orbcore", [=](auto& state) { measure_load(state, save_pair, load_pair); });
#ifdef ORBCORE_PEER_QT
        add(job + "_save/qfile", [](auto& state) { measure_save(state, save_qt); });
        add(job + "_load/qfile", [](auto& state) { measure_load(state, save_qt, load_qt); });
#endif
    }
    return true;
}();

} // namespace
