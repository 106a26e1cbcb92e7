// 10,000 small records with an attachment of 1 KiB each, through each pair of storages, to and from a
// file in memory. What should hold: a storage costs what its list costs with the same bytes as blobs
// in it ("list"), and little more: an object or two an attachment, and where attachments pass through
// temporary files, a copy into and one out of memory each. Qt writes plain bytes.
#include "../support/Host.h"
#include "Pairs.h"

#include <core/component/Object.h>
#include <core/files/BufferedFile.h>
#include <core/files/FileStreams.h>
#include <core/files/MemoryFile.h>
#include <core/streams/LineSeparator.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#ifdef ORBCORE_PEER_QT
#include <QBuffer>
#include <QDataStream>
#endif

ORBCORE_MODULE("persistence_bench", "1.0.0.0");

namespace {

using namespace core;
using namespace bench;

constexpr int kRecords = 10'000;
constexpr unsigned kAttachment = 1024;

const std::string& attachment() {
    static const std::string bytes = [] {
        std::string made;
        for (unsigned i = 0; i != kAttachment; ++i) made += static_cast<char>(i * 7);
        return made;
    }();
    return bytes;
}

void count(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * kRecords);
}

// ---- Records. `put` and `get` move the attachment.

template <class Put> void put_records(IListOutStream& list, Put put) {
    const stdx::ustring name(u"a name of some length");
    list.beginList();
    for (int i = 0; i != kRecords; ++i) {
        list.beginList();
        list.putInt32(i);
        list.putString(name);
        put();
        list.endList();
    }
    list.endList();
}

template <class Get> void get_records(IListInStream& list, Get get) {
    stdx::ustring name;
    list.beginList();
    for (int i = 0; i != kRecords; ++i) {
        std::int32_t number = 0;
        list.beginList();
        list.getInt32(number);
        list.getString(name);
        if (number != i || get() != kAttachment) std::abort();
        list.endList();
    }
    list.endList();
}

unsigned read_whole(IFile& file) {
    static char bytes[2 * kAttachment];
    unsigned size = 0;
    while (const unsigned n = file.read(bytes + size, sizeof bytes - size)) size += n;
    return size;
}

// ---- Storages.

void save(const Pair& pair, IFile* file) {
    const auto storage = create_object<IOutPersistenceStorage>(pair.out);
    attach(storage, file);
    put_records(*storage->listStream()->get(),
                [&] { storage->binFile()->write(attachment().data(), kAttachment); });
    attach(storage, nullptr);
}

void save_storage(benchmark::State& state, const Pair& pair) {
    enter_process();
    const auto file = create_memory_file(0);
    for (auto _ : state) {
        file->seek(0, kSeekFromStart);
        save(pair, file.get());
    }
    count(state);
}

void load_storage(benchmark::State& state, const Pair& pair, bool forwardOnly) {
    enter_process();
    const auto file = create_memory_file(0);
    save(pair, file.get());
    for (auto _ : state) {
        file->seek(0, kSeekFromStart);
        const auto storage = create_object<IInPersistenceStorage>(pair.in);
        attach(storage, file.get());
        get_records(*storage->listStream()->get(), [&] {
            return forwardOnly ? read_whole(*storage->forwardOnlyBinFile())
                               : read_whole(*storage->binFile());
        });
    }
    count(state);
}

BENCHMARK_CAPTURE(save_storage, stream, kStream)->Name("save/orbcore/stream");
BENCHMARK_CAPTURE(save_storage, binary, kBinary)->Name("save/orbcore/binary");
BENCHMARK_CAPTURE(save_storage, compact, kCompact)->Name("save/orbcore/compact");
BENCHMARK_CAPTURE(load_storage, stream, kStream, false)->Name("load/orbcore/stream");
BENCHMARK_CAPTURE(load_storage, binary, kBinary, false)->Name("load/orbcore/binary");
BENCHMARK_CAPTURE(load_storage, compact, kCompact, false)->Name("load/orbcore/compact");
BENCHMARK_CAPTURE(load_storage, forward, kBinary, true)->Name("load/orbcore/binary_forward_only");

// ---- Lists with blobs.

void save_text_list(IFile* file) {
    OutputFileStream text;
    text.open(file, kUTF8Encoding, true, kWindowsLineSeparator);
    ListOutStream list(text.writer());
    put_records(*list.get(), [&] { list->putBinary(attachment().data(), kAttachment); });
    list.close();
    text.close();
}

void save_binary_list(IFile* file) {
    ListOutStream list(create_buffered_file(file, 8192).get());
    put_records(*list.get(), [&] { list->putBinary(attachment().data(), kAttachment); });
    list.close();
}

void load_list(ListInStream& list) {
    get_records(*list.get(), [&] {
        stdx::string bytes;
        list->getBytes(bytes);
        return bytes.size();
    });
}

void save_list(benchmark::State& state, void (*save)(IFile*)) {
    enter_process();
    const auto file = create_memory_file(0);
    for (auto _ : state) {
        file->seek(0, kSeekFromStart);
        save(file.get());
    }
    count(state);
}
void load_text_list(benchmark::State& state) {
    enter_process();
    const auto file = create_memory_file(0);
    save_text_list(file.get());
    for (auto _ : state) {
        file->seek(0, kSeekFromStart);
        InputFileStream text;
        text.open(file.get(), kUTF8Encoding, true, kWindowsLineSeparator);
        ListInStream list(text.reader());
        load_list(list);
    }
    count(state);
}
void load_binary_list(benchmark::State& state) {
    enter_process();
    const auto file = create_memory_file(0);
    save_binary_list(file.get());
    for (auto _ : state) {
        file->seek(0, kSeekFromStart);
        ListInStream list(create_buffered_file(file.get(), 8192).get());
        load_list(list);
    }
    count(state);
}

BENCHMARK_CAPTURE(save_list, text, &save_text_list)->Name("save/list/stream");
BENCHMARK_CAPTURE(save_list, binary, &save_binary_list)->Name("save/list/binary");
BENCHMARK(load_text_list)->Name("load/list/stream");
BENCHMARK(load_binary_list)->Name("load/list/binary");

#ifdef ORBCORE_PEER_QT
// ---- The same records.

void write_qt(QBuffer& to) {
    const QByteArray bytes(attachment().data(), kAttachment);
    const QString name("a name of some length");
    to.open(QIODevice::WriteOnly);
    QDataStream out(&to);
    for (int i = 0; i != kRecords; ++i) out << i << name << bytes;
    to.close();
}

void save_qt(benchmark::State& state) {
    QBuffer to;
    for (auto _ : state) write_qt(to);
    count(state);
}
void load_qt(benchmark::State& state) {
    QBuffer from;
    write_qt(from);
    for (auto _ : state) {
        from.open(QIODevice::ReadOnly);
        QDataStream in(&from);
        for (int i = 0; i != kRecords; ++i) {
            int number;
            QString name;
            QByteArray bytes;
            in >> number >> name >> bytes;
            if (number != i || bytes.size() != static_cast<int>(kAttachment)) std::abort();
        }
        from.close();
    }
    count(state);
}

BENCHMARK(save_qt)->Name("save/qt/binary");
BENCHMARK(load_qt)->Name("load/qt/binary");
#endif

} // namespace
