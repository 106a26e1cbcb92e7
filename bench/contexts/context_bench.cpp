// Members by name and by number. What should hold:
//   - a lookup among 40 properties with two names each, found or not, is ahead of a map of hashed
//     names that takes case off, and allocates nothing;
//   - a property or a method by number costs little more than a call through a pointer (2 ns) beyond
//     a plain one whose argument and result are taken from values and put into values by hand.
// Peers: a map with a hash and an equality that fold, a sorted vector searched by halves; a virtual
// function.
#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/text/Characters.h>
#include <core/values/ScriptType.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using namespace core;

constexpr int kProperties = 40;

// The names of a document's properties: "TotalAmount7", "СуммаДокумента7".
const std::vector<std::u16string>& names(int language) {
    static const auto made = [] {
        constexpr Term kWords[] = {{u"TotalAmount", u"СуммаДокумента"},
                                   {u"Owner", u"Владелец"},
                                   {u"Date", u"Дата"},
                                   {u"Presentation", u"Вид"},
                                   {u"Currency", u"ВалютаДокумента"},
                                   {u"Number", u"Номер"},
                                   {u"Comment", u"Комментарий"},
                                   {u"Author", u"Автор"}};
        std::vector<std::u16string> all[2];
        for (int i = 0; i < kProperties; ++i)
            for (int of = 0; of < 2; ++of) {
                std::u16string name = term_string(kWords[i % 8], of);
                if (i >= 8) name += static_cast<char16_t>(u'0' + i / 8);
                all[of].push_back(name);
            }
        return std::array{all[0], all[1]};
    }();
    return made[static_cast<std::size_t>(language)];
}

class Described
    : public ObjectRoot
    , public SCOM_InternalClass<Described>
    , public IContextDefImpl<Described> {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Described, IContextDef>(); }
    Described() { fillCaches(); }
    int getNProps() override { return kProperties; }
    const char16_t* getPropName(int property, int language) override {
        return language < 2 ? names(language)[static_cast<std::size_t>(property)].c_str() : nullptr;
    }
};

// What is asked for: names in the case that scripts write, or names that nobody has.
template <class Text> std::vector<Text> questions(bool found) {
    std::vector<Text> all;
    for (int i = 0; i < kProperties; ++i) {
        std::u16string name = names(i % 2)[static_cast<std::size_t>(i)];
        if (i % 4 == 1)
            for (char16_t& unit : name) unit = to_upper(unit);
        if (!found) name += u"X";
        all.emplace_back(name.c_str());
    }
    return all;
}

template <class Text, class Find>
void lookup(benchmark::State& state, bool found, const Find& find) {
    const std::vector<Text> asked = questions<Text>(found);
    for (auto _ : state)
        for (const Text& name : asked) benchmark::DoNotOptimize(find(name));
    state.SetItemsProcessed(state.iterations() * kProperties);
}

void ours(benchmark::State& state, bool found) {
    const auto described = make_object<Described>();
    IContextDefBase* const definition = described.get();
    lookup<stdx::ustring>(state, found,
                          [&](const stdx::ustring& name) { return definition->findProp(name); });
}

struct FoldedHash {
    std::size_t operator()(const std::u16string& text) const noexcept {
        std::size_t hash = 14695981039346656037u;
        for (const char16_t unit : text) hash = (hash ^ to_lower(unit)) * 1099511628211u;
        return hash;
    }
};
struct FoldedEqual {
    bool operator()(const std::u16string& a, const std::u16string& b) const noexcept {
        return a.size() == b.size() &&
               std::equal(a.begin(), a.end(), b.begin(), [](char16_t x, char16_t y) {
                   return x == y || to_lower(x) == to_lower(y);
               });
    }
};

void folding_map(benchmark::State& state, bool found) {
    std::unordered_map<std::u16string, int, FoldedHash, FoldedEqual> map;
    for (int i = 0; i < kProperties; ++i)
        for (int language : {0, 1}) map.emplace(names(language)[static_cast<std::size_t>(i)], i);
    lookup<std::u16string>(state, found, [&](const std::u16string& name) {
        const auto at = map.find(name);
        return at == map.end() ? -1 : at->second;
    });
}

void sorted_vector(benchmark::State& state, bool found) {
    std::vector<std::pair<stdx::ustring, int>> sorted;
    for (int i = 0; i < kProperties; ++i)
        for (int language : {0, 1})
            sorted.emplace_back(names(language)[static_cast<std::size_t>(i)].c_str(), i);
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& a, const auto& b) { return compare_nocase(a.first, b.first) < 0; });
    lookup<stdx::ustring>(state, found, [&](const stdx::ustring& name) {
        std::size_t begin = 0, end = sorted.size();
        while (begin < end) {
            const std::size_t middle = (begin + end) / 2;
            const int order = compare_nocase(sorted[middle].first, name);
            if (order == 0) return sorted[middle].second;
            (order < 0 ? begin : end) = order < 0 ? middle + 1 : middle;
        }
        return -1;
    });
}

BENCHMARK_CAPTURE(ours, find_hit, true);
BENCHMARK_CAPTURE(folding_map, find_hit, true);
BENCHMARK_CAPTURE(sorted_vector, find_hit, true);
BENCHMARK_CAPTURE(ours, find_miss, false);
BENCHMARK_CAPTURE(folding_map, find_miss, false);
BENCHMARK_CAPTURE(sorted_vector, find_miss, false);

// ---- By number

inline constexpr _GUID CLSID_CounterType = "5d0a1c52-6a9e-4be6-a1b5-7fd6b5f0a321"_guid;

class ICounting {
public:
    virtual ~ICounting() = default;
    virtual Numeric count() const = 0;
    virtual Numeric add(const Numeric& amount) = 0;
};

class Counter
    : public ObjectRoot
    , public SCOM_InternalClass<Counter>
    , public ScriptValue<Counter, &CLSID_CounterType>
    , public ICounting {
public:
    static const ScriptTable members;
    static const InterfaceEntry* _GetEntries() { return script_interface_map<Counter>(); }

    Numeric count() const override { return count_; }
    Numeric add(const Numeric& amount) override { return amount; }

private:
    Numeric count_ = 7;
};

constexpr ScriptProperty kCounterProperties[] = {
    {{u"Count", u"Количество"}, reads<&Counter::count>},
};
constexpr ScriptMethod kCounterMethods[] = {
    {{u"Add", u"Добавить"}, runs<&Counter::add>, {{{u"Amount", u"Количество"}}}},
};
constexpr ScriptTable Counter::members = script_table<Counter>(kCounterProperties, kCounterMethods);

// The peers make a value of the number as well, since a script takes a value.
void property_by_number(benchmark::State& state) {
    const auto counter = make_object<Counter>();
    IContext_* context = counter.get();
    Value value;
    for (auto _ : state) {
        benchmark::DoNotOptimize(context);
        benchmark::DoNotOptimize(context->getPropVal(0, value));
    }
}
void property_by_virtual_call(benchmark::State& state) {
    const auto counter = make_object<Counter>();
    ICounting* plain = counter.get();
    Value value;
    GenericValue* out = &value;
    for (auto _ : state) {
        benchmark::DoNotOptimize(plain);
        benchmark::DoNotOptimize(out);
        out->assign(plain->count());
    }
}
BENCHMARK(property_by_number);
BENCHMARK(property_by_virtual_call);

void method_by_number(benchmark::State& state) {
    const auto counter = make_object<Counter>();
    IContext_* context = counter.get();
    Value amount = 5, result;
    std::vector<GenericValue*> arguments{&amount};
    for (auto _ : state) {
        benchmark::DoNotOptimize(context);
        benchmark::DoNotOptimize(context->call(0, &result, arguments));
    }
}
void method_by_virtual_call(benchmark::State& state) {
    const auto counter = make_object<Counter>();
    ICounting* plain = counter.get();
    Value amount = 5, result;
    GenericValue *in = &amount, *out = &result;
    for (auto _ : state) {
        benchmark::DoNotOptimize(plain);
        benchmark::DoNotOptimize(in);
        benchmark::DoNotOptimize(out);
        out->assign(plain->add(in->as<Numeric>()));
    }
}
BENCHMARK(method_by_number);
BENCHMARK(method_by_virtual_call);

} // namespace
