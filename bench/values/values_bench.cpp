// Values beside other holders of any value. What should hold: a copy of a static value costs at most
// half of a copy of a shared pointer, one of a value with a cell no more than that; a new number at
// most 1.2 times malloc and free of its size; and all of it is ahead of GLib and Poco, and of Qt where
// values are shared or small. std::variant is the bound: it knows its types beforehand.
#include "../support/Host.h"
#include "ValuePeers.h"

#include <core/files/MemoryFile.h>
#include <core/locale/Locale.h>
#include <core/persistence/StreamPersistenceStorage.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <thread>
#include <vector>

#ifdef ORBCORE_PEER_QT
#include <QBuffer>
#include <QDataStream>
#endif

ORBCORE_MODULE("values_bench", "1.0.0.0");

namespace {

using namespace bench;
using namespace core;

constexpr unsigned kValues = 64;      // that a job goes through, so that caches hold them
constexpr unsigned kMany = 1'000'000; // that are sorted and stored

// A second thread, or the standard library counts references without atomics.
void park_a_thread() {
    static auto* const parked =
        new std::thread([] { std::this_thread::sleep_for(std::chrono::hours(24)); });
    benchmark::DoNotOptimize(parked);
    enter_process();
}

template <class Peer> std::vector<typename Peer::Value> values_of(Kind kind) {
    park_a_thread();
    std::vector<typename Peer::Value> values;
    for (unsigned i = 0; i != kValues; ++i) values.push_back(Peer::make(kind, i));
    return values;
}

template <class Peer> void copy(benchmark::State& state, Kind kind) {
    const auto values = values_of<Peer>(kind);
    unsigned i = 0;
    for (auto _ : state) {
        typename Peer::Value copied(values[++i % kValues]);
        benchmark::DoNotOptimize(copied);
    }
}

// A new value into a handle that holds one.
template <class Peer> void assign(benchmark::State& state, Kind kind) {
    park_a_thread();
    typename Peer::Value value = Peer::make(kind, 0);
    unsigned i = 0;
    for (auto _ : state) {
        value = Peer::make(kind, ++i % kValues);
        benchmark::DoNotOptimize(value);
    }
}

template <class Peer> void read(benchmark::State& state) {
    const auto values = values_of<Peer>(Kind::Number);
    unsigned i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(Peer::read(values[++i % kValues]));
}

// Half of the pairs are equal, and none the same object.
template <class Peer> void compare(benchmark::State& state, Kind kind) {
    const auto values = values_of<Peer>(kind), others = values_of<Peer>(kind);
    unsigned i = 0;
    for (auto _ : state) {
        ++i;
        benchmark::DoNotOptimize(Peer::equal(values[i % kValues], others[(i + (i & 1)) % kValues]));
    }
}

template <class Peer> void text_and_back(benchmark::State& state) {
    const auto values = values_of<Peer>(Kind::Number);
    unsigned i = 0;
    for (auto _ : state) {
        typename Peer::Value text = Peer::to_text(values[++i % kValues]);
        benchmark::DoNotOptimize(Peer::to_number(text));
    }
}

// The cost of memory alone, for a cell of a number.
void malloc_and_free(benchmark::State& state) {
    for (auto _ : state) {
        void* block = std::malloc(80);
        benchmark::DoNotOptimize(block);
        std::free(block);
    }
}

// ---- A million

template <class Peer> std::vector<typename Peer::Value> mixture() {
    park_a_thread();
    std::mt19937 random(1);
    constexpr Kind kKinds[] = {Kind::Boolean, Kind::Digit, Kind::Number,
                               Kind::Short,   Kind::Long,  Kind::Date};
    std::vector<typename Peer::Value> values;
    values.reserve(kMany);
    for (unsigned i = 0; i != kMany; ++i)
        values.push_back(Peer::make(kKinds[random() % 6], static_cast<unsigned>(random() % kMany)));
    return values;
}

template <class Peer> void sort_values(benchmark::State& state) {
    const auto values = mixture<Peer>();
    current_process()->setLocale(Locale(u"ru"));
    for (auto _ : state) {
        auto sorted = values;
        std::stable_sort(sorted.begin(), sorted.end(), Peer::less());
        benchmark::DoNotOptimize(sorted.data());
    }
    state.SetItemsProcessed(state.iterations() * kMany);
}

template <class Storage>
InterfacePtr<Storage> open_storage(const _GUID& clsid, const InterfacePtr<IMemoryFile>& file) {
    file->seek(0, kSeekFromStart);
    auto storage = create_object<Storage>(clsid);
    InterfacePtr<IStreamPersistenceStorage>(storage)->attach(file.get());
    return storage;
}

void put_values(const _GUID& clsid, const InterfacePtr<IMemoryFile>& file,
                const std::vector<core::Value>& values) {
    const auto storage = open_storage<IOutPersistenceStorage>(clsid, file);
    (*storage->listStream())->beginList();
    for (const core::Value& value : values) value.serialize(storage.get());
    (*storage->listStream())->endList();
    InterfacePtr<IStreamPersistenceStorage>(storage)->close();
}

void persist(benchmark::State& state, const _GUID& clsid) {
    const auto values = mixture<Ours>();
    const auto file = create_memory_file(0);
    for (auto _ : state) put_values(clsid, file, values);
    state.SetItemsProcessed(state.iterations() * kMany);
}

void restore(benchmark::State& state, const _GUID& out, const _GUID& in) {
    const auto file = create_memory_file(0);
    put_values(out, file, mixture<Ours>());
    for (auto _ : state) {
        const auto storage = open_storage<IInPersistenceStorage>(in, file);
        std::vector<core::Value> values(kMany);
        (*storage->listStream())->beginList();
        for (core::Value& value : values) GenericValue::deserialize(storage.get(), value);
        (*storage->listStream())->endList();
    }
    state.SetItemsProcessed(state.iterations() * kMany);
}

#ifdef ORBCORE_PEER_QT
void put_qt(QBuffer& to, const std::vector<QVariant>& values) {
    to.open(QIODevice::WriteOnly | QIODevice::Truncate);
    QDataStream out(&to);
    for (const QVariant& value : values) out << value;
    to.close();
}

void persist_qt(benchmark::State& state) {
    const auto values = mixture<bench::Qt>();
    QBuffer to;
    for (auto _ : state) put_qt(to, values);
    state.SetItemsProcessed(state.iterations() * kMany);
}

void restore_qt(benchmark::State& state) {
    QBuffer from;
    put_qt(from, mixture<bench::Qt>());
    for (auto _ : state) {
        std::vector<QVariant> values(kMany);
        from.open(QIODevice::ReadOnly);
        QDataStream in(&from);
        for (QVariant& value : values) in >> value;
        from.close();
    }
    state.SetItemsProcessed(state.iterations() * kMany);
}
#endif

// ---- Who does what

constexpr struct {
    Kind kind;
    const char* name;
} kKinds[] = {{Kind::Boolean, "boolean"}, {Kind::Digit, "digit"}, {Kind::Number, "number"},
              {Kind::Short, "short"},     {Kind::Long, "long"},   {Kind::Date, "date"}};

std::string name_of(const char* job, const char* who, const char* kind) {
    return std::string(job) + '/' + who + '/' + kind;
}

template <class Peer> void register_peer() {
    using Value = typename Peer::Value;
    const std::string who = Peer::kName;
    for (const auto& [kind, name] : kKinds) {
        benchmark::RegisterBenchmark(name_of("copy", Peer::kName, name).c_str(), copy<Peer>, kind);
        benchmark::RegisterBenchmark(name_of("assign", Peer::kName, name).c_str(), assign<Peer>,
                                     kind);
        if constexpr (requires(const Value& value) { Peer::equal(value, value); })
            benchmark::RegisterBenchmark(name_of("equal", Peer::kName, name).c_str(), compare<Peer>,
                                         kind);
    }
    benchmark::RegisterBenchmark(("read/" + who).c_str(), read<Peer>);
    if constexpr (requires(const Value& value) { Peer::to_text(value); })
        benchmark::RegisterBenchmark(("text and back/" + who).c_str(), text_and_back<Peer>);
    if constexpr (requires { Peer::less(); })
        benchmark::RegisterBenchmark(("sort/" + who).c_str(), sort_values<Peer>)
            ->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool registered = [] {
    register_peer<Ours>();
    register_peer<Variant>();
    register_peer<Any>();
    register_peer<Shared>();
#ifdef ORBCORE_PEER_QT
    register_peer<bench::Qt>();
#endif
#ifdef ORBCORE_PEER_GLIB
    register_peer<GLib>();
#endif
#ifdef ORBCORE_PEER_POCO
    register_peer<bench::Poco>();
#endif
    return true;
}();

BENCHMARK(malloc_and_free)->Name("assign/malloc/number");

BENCHMARK_CAPTURE(persist, text, CLSID_StreamOutPersistenceStorage)
    ->Name("persist/orbcore/text")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(persist, binary, CLSID_BinaryStreamOutPersistenceStorage)
    ->Name("persist/orbcore/binary")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(restore, text, CLSID_StreamOutPersistenceStorage,
                  CLSID_StreamInPersistenceStorage)
    ->Name("restore/orbcore/text")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(restore, binary, CLSID_BinaryStreamOutPersistenceStorage,
                  CLSID_BinaryStreamInPersistenceStorage)
    ->Name("restore/orbcore/binary")
    ->Unit(benchmark::kMillisecond);
#ifdef ORBCORE_PEER_QT
BENCHMARK(persist_qt)->Name("persist/qt/binary")->Unit(benchmark::kMillisecond);
BENCHMARK(restore_qt)->Name("restore/qt/binary")->Unit(benchmark::kMillisecond);
#endif

} // namespace
