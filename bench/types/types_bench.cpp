// Types and domains: the membership test that stands before every assignment to a typed value, beside
// a std::set of GUIDs, which is what a tree costs; domains of patterns, which share a body; types by
// class and by name, beside a hash table of the standard library.
//
// What should hold: membership in less than the tree's time, though ours is a call into the library
// and the tree is inlined; a domain of a pattern that has one costs a pair of references, whatever
// its size; a name costs little for the base types, for others a walk over all types.
#include <core/values/TypeDomain.h>

#include "../support/Host.h"

#include <benchmark/benchmark.h>

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using namespace core;

// The first `n` of a row of known types, base types in front.
std::vector<_GUID> types(std::int64_t n) {
    std::vector<_GUID> all = {CLSID_NumericType, CLSID_StringType, CLSID_DateType,
                              CLSID_BooleanType};
    std::uint32_t word = 1;
    while (all.size() < static_cast<std::size_t>(n)) {
        word = word * 1664525u + 1013904223u;
        all.push_back({word, 1, 2, {3}});
    }
    all.resize(static_cast<std::size_t>(n));
    return all;
}

// The types are asked for in turn, as far as they are of the set, and one that is not.
template <class Contains> void ask(benchmark::State& state, Contains contains) {
    std::vector<_GUID> asked = types(state.range(0));
    asked.push_back(CLSID_TypeType);
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(contains(asked[next]));
        if (++next == asked.size()) next = 0;
    }
}

void contains_of_a_set(benchmark::State& state) {
    const TypeDomainPattern pattern(types(state.range(0)));
    ask(state, [&](const _GUID& type) { return pattern.contains(type); });
}
void contains_of_a_std_set(benchmark::State& state) {
    const std::vector<_GUID> all = types(state.range(0));
    const std::set<_GUID> set(all.begin(), all.end());
    ask(state, [&](const _GUID& type) { return set.contains(type); });
}
BENCHMARK(contains_of_a_set)->Arg(1)->Arg(4)->Arg(16)->Arg(256);
BENCHMARK(contains_of_a_std_set)->Arg(1)->Arg(4)->Arg(16)->Arg(256);

void domain_of_a_pattern(benchmark::State& state) {
    bench::enter_process();
    const TypeDomainPattern pattern(types(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(TypeDomain(pattern));
}
BENCHMARK(domain_of_a_pattern)->Arg(1)->Arg(256);

void domain_of_a_new_pattern(benchmark::State& state) {
    bench::enter_process();
    const std::vector<_GUID> all = types(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(TypeDomain(TypeDomainPattern(all)));
}
BENCHMARK(domain_of_a_new_pattern)->Arg(1)->Arg(4);

void type_by_class(benchmark::State& state) {
    bench::enter_process();
    for (auto _ : state) benchmark::DoNotOptimize(Type(CLSID_DateType));
}
void type_by_name(benchmark::State& state) {
    bench::enter_process();
    const stdx::ustring name = u"Дата";
    for (auto _ : state) benchmark::DoNotOptimize(Type(name));
}
// The last of those that have no place among the base types.
void type_by_name_of_an_object_type(benchmark::State& state) {
    bench::enter_process();
    const stdx::ustring name = u"ВертикальноеПоложение";
    for (auto _ : state) benchmark::DoNotOptimize(Type(name));
}
void name_in_a_std_table(benchmark::State& state) {
    const std::unordered_map<std::u16string, int> table = {{u"Дата", 1}, {u"Число", 2}};
    const std::u16string name = u"Дата";
    for (auto _ : state) benchmark::DoNotOptimize(table.find(name));
}
BENCHMARK(type_by_class);
BENCHMARK(type_by_name);
BENCHMARK(type_by_name_of_an_object_type);
BENCHMARK(name_in_a_std_table);

} // namespace
