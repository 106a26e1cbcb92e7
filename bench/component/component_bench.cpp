// Creation, interfaces and services, beside what a program would do by hand and beside the object
// models that are installed.

#include <core/component/ClassDescriptor.h>
#include <core/component/SCOM_Process.h>
#include <core/platform/version.h>
#include <core/runtime/CoreInit.h>
#include <core/runtime/Process.h>

#include <benchmark/benchmark.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <thread>
#include <unordered_map>
#include <vector>

#include <unistd.h>

#ifdef ORBCORE_PEER_QT
#include <QMetaType>
#endif
#ifdef ORBCORE_PEER_GLIB
#include <glib-object.h>
#endif

ORBCORE_MODULE("bench", ORBCORE_VERSION ".0");

using namespace core::literals;

namespace {

constexpr int kClasses = 1000;

constexpr _GUID kInterfaces[] = {
    "60000000-0000-4000-8000-000000000001"_guid, "60000000-0000-4000-8000-000000000002"_guid,
    "60000000-0000-4000-8000-000000000003"_guid, "60000000-0000-4000-8000-000000000004"_guid};
constexpr _GUID CLSID_Small = "61000000-0000-4000-8000-000000000001"_guid;
constexpr _GUID CLSID_Service = "61000000-0000-4000-8000-000000000002"_guid;

template <int n> class INumbered : public IUnknown {
public:
    ORB_INTERFACE(INumbered, kInterfaces[n])
    virtual int number() = 0;
};

class Small
    : public core::ObjectRoot
    , public core::SCOM_Class<Small, &CLSID_Small>
    , public INumbered<0>
    , public INumbered<1>
    , public INumbered<2>
    , public INumbered<3> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Small, INumbered<0>, INumbered<1>, INumbered<2>, INumbered<3>>();
    }
    int number() override { return 1; }
};

class Service
    : public core::ObjectRoot
    , public core::SCOM_Service<Service, &CLSID_Service, &kInterfaces[0]>
    , public INumbered<0> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Service, INumbered<0>>();
    }
    int number() override { return 1; }
};

// A thousand GUIDs as they are drawn in life: random in their first field.
std::vector<_GUID> class_ids() {
    std::vector<_GUID> ids;
    std::uint32_t random = 12345;
    for (int i = 0; i != kClasses; ++i) {
        random = random * 1664525u + 1013904223u;
        ids.push_back({random, static_cast<std::uint16_t>(i), 0x4000, {0x80, 0, 0, 0, 0, 0, 0, 0}});
    }
    return ids;
}

// The process of all benchmarks, with a thousand classes of the same kind.
class Host : public core::Process {
public:
    Host() {
        construct(&core::this_module());
        init(nullptr);
        const core::InterfacePtr<core::SCOM_ClassRegistrar> registrar(
            static_cast<IUnknown*>(process()));
        const auto factory = core::make_class_factory(core::creator_of<Small>());
        for (const _GUID& clsid : class_ids())
            registrar->registerClass(clsid, factory.get(), core::RegisterClass, "bench");
    }
    ~Host() override { term(); }
};

Host& host() {
    CoreInit();
    static Host& the = *new Host;
    return the;
}

// The object of the peers that create by hand: as large, as polymorphic, counted in the same way.
struct PlainSmall {
    virtual ~PlainSmall() = default;
    virtual int number() { return 1; }
    void* otherTables[3] = {};
    std::atomic<std::uintptr_t> count = 1;
};

void create_by_guid(benchmark::State& state) {
    host();
    const std::vector<_GUID> ids = class_ids();
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(core::create_object<INumbered<0>>(ids[next]));
        next = (next + 7) % ids.size();
    }
}
BENCHMARK(create_by_guid)->Name("create_by_guid/orbcore");

void create_by_map(benchmark::State& state) {
    std::unordered_map<_GUID, std::unique_ptr<PlainSmall> (*)()> registry;
    const std::vector<_GUID> ids = class_ids();
    for (const _GUID& id : ids) registry[id] = [] { return std::make_unique<PlainSmall>(); };
    std::size_t next = 0;
    for (auto _ : state) {
        auto object = registry.find(ids[next])->second();
        object->count.fetch_add(1, std::memory_order_relaxed);
        if (object->count.fetch_sub(1, std::memory_order_acq_rel) == 1) std::abort();
        benchmark::DoNotOptimize(object);
        next = (next + 7) % ids.size();
    }
}
BENCHMARK(create_by_map)->Name("create_by_guid/new + unordered_map");

#ifdef ORBCORE_PEER_QT
void create_by_metatype(benchmark::State& state) {
    const int type = qRegisterMetaType<std::array<void*, 5>>("Small");
    for (auto _ : state) {
        void* const object = QMetaType::create(type);
        benchmark::DoNotOptimize(object);
        QMetaType::destroy(type, object);
    }
}
BENCHMARK(create_by_metatype)->Name("create_by_guid/QMetaType");
#endif

#ifdef ORBCORE_PEER_GLIB
void create_gobject(benchmark::State& state) {
    for (auto _ : state) {
        void* const object = g_object_new(G_TYPE_OBJECT, nullptr);
        benchmark::DoNotOptimize(object);
        g_object_unref(object);
    }
}
BENCHMARK(create_gobject)->Name("create_by_guid/g_object_new");
#endif

// The fourth interface, with the reference pair that every query brings.
void query_fourth(benchmark::State& state) {
    const auto object = core::make_object<Small>();
    IUnknown* const unknown = static_cast<INumbered<0>*>(object.get());
    for (auto _ : state) {
        void* found = nullptr;
        unknown->QueryInterface(kInterfaces[3], &found);
        benchmark::DoNotOptimize(found);
        static_cast<IUnknown*>(found)->Release();
    }
}
BENCHMARK(query_fourth)->Name("query_fourth_interface/orbcore");

// The least that a query can cost: four comparisons of GUIDs and an atomic pair.
void bare_walk(benchmark::State& state) {
    _GUID wanted = kInterfaces[3];
    std::atomic<std::uintptr_t> count = 1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(wanted);
        const _GUID* found = nullptr;
        for (const _GUID& iid : kInterfaces)
            if (iid == wanted) found = &iid;
        benchmark::DoNotOptimize(found);
        count.fetch_add(1, std::memory_order_relaxed);
        count.fetch_sub(1, std::memory_order_acq_rel);
    }
}
BENCHMARK(bare_walk)->Name("query_fourth_interface/bare walk + atomic pair");

void reference_pair(benchmark::State& state) {
    const auto object = core::make_object<Small>();
    INumbered<3>* const last = object.get();
    for (auto _ : state) {
        const core::InterfacePtr<INumbered<3>> copy(last, true);
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(reference_pair)->Name("reference_pair/orbcore");

// libstdc++ drops the atomics of shared_ptr until a program has started its first thread.
void shared_ptr_pair(benchmark::State& state) {
    static auto& parked = *new std::thread([] {
        for (;;) pause();
    });
    benchmark::DoNotOptimize(parked);
    const auto object = std::make_shared<PlainSmall>();
    for (auto _ : state) {
        const std::shared_ptr<PlainSmall> copy = object;
        benchmark::DoNotOptimize(copy.get());
    }
}
BENCHMARK(shared_ptr_pair)->Name("reference_pair/shared_ptr");

void service_lookup(benchmark::State& state) {
    host();
    for (auto _ : state) benchmark::DoNotOptimize(core::get_service<INumbered<0>>());
}
BENCHMARK(service_lookup)->Name("service_lookup/orbcore");

void hash_lookup(benchmark::State& state) {
    std::unordered_map<_GUID, IUnknown*> services;
    for (const _GUID& id : class_ids()) services[id] = nullptr;
    services[kInterfaces[0]] = nullptr;
    _GUID wanted = kInterfaces[0];
    for (auto _ : state) {
        benchmark::DoNotOptimize(wanted);
        benchmark::DoNotOptimize(services.find(wanted)->second);
    }
}
BENCHMARK(hash_lookup)->Name("service_lookup/unordered_map");

} // namespace

ORBCORE_REGISTER(Service);
