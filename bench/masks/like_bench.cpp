// LIKE over 100,000 short strings in five shapes of mask, beside SQLite's LIKE over a table in
// memory and RE2's full match; sets beside RE2 alone, for SQLite's LIKE has none. Everybody
// compiles once. What should hold: half of SQLite's time or less, and less than RE2's.
//
// Names are `<shape>/<whose>`; a shape ends in `_nocase` where case is ignored.
#include <core/component/Utf8.h>
#include <core/text/LikeMask.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#ifdef ORBCORE_PEER_SQLITE
#include <sqlite3.h>
#endif
#ifdef ORBCORE_PEER_RE2
#include <re2/re2.h>
#endif

namespace {

constexpr int kTexts = 100'000;

struct Shape {
    const char* name;
    const char16_t* mask;
    const char* regex; // for a full match
    bool plain;        // SQLite's LIKE can say it
};

constexpr Shape kShapes[] = {
    {"prefix", u"invoice 4%", "invoice 4.*", true},
    {"suffix", u"%1.pdf", ".*1\\.pdf", true},
    {"infix", u"%Smith%", ".*Smith.*", true},
    {"parts", u"in%an%20_6%.pdf", "in.*an.*20.6.*\\.pdf", true},
    {"positions", u"invoice 4___ of%", "invoice 4... of.*", true},
    {"sets", u"%[A-C]_____ 202[0-4]%", ".*[A-C]..... 202[0-4].*", false},
};

// "invoice 4711 of Robinson 2026-11.pdf" and the like.
const std::vector<std::string>& texts() {
    static const auto made = [] {
        constexpr const char* kNames[] = {"Robinson", "Smith",  "Andersen",  "Brown",
                                          "Morgan",   "Carter", "Hernandez", "Li"};
        std::vector<std::string> lines;
        unsigned any = 1;
        const auto next = [&any](unsigned n) {
            any = any * 1664525u + 1013904223u;
            return (any >> 8) % n;
        };
        for (int i = 0; i < kTexts; ++i)
            lines.push_back((next(4) == 0 ? "offer " : "invoice ") + std::to_string(next(10'000)) +
                            " of " + kNames[next(8)] + " " + std::to_string(2018 + next(9)) + "-" +
                            std::to_string(10 + next(3)) + ".pdf");
        return lines;
    }();
    return made;
}

enum class Case { Sensitive, Ignored };

// ---- Ours.

void ours(benchmark::State& state, const Shape& shape, Case kind) {
    static const auto strings = [] {
        std::vector<stdx::ustring> made;
        for (const std::string& text : texts()) made.push_back(core::from_utf8(text));
        return made;
    }();
    const auto& order = core::system_character_order();
    std::size_t hits = 0;
    for (auto _ : state) {
        const auto mask = kind == Case::Ignored
                              ? core::create_like_mask_nocase(shape.mask, 0, order)
                              : core::create_like_mask(shape.mask, 0, order);
        hits = 0;
        for (const stdx::ustring& text : strings) hits += mask->match(text);
    }
    state.counters["hits"] = static_cast<double>(hits);
    state.SetItemsProcessed(state.iterations() * kTexts);
}

// The mask is compiled for each text.
void ours_once(benchmark::State& state, const Shape& shape) {
    const stdx::ustring text = core::from_utf8(texts().front());
    for (auto _ : state)
        benchmark::DoNotOptimize(
            core::compare_like(text, shape.mask, 0, core::system_character_order()));
}

#ifdef ORBCORE_PEER_SQLITE
sqlite3* table() {
    static sqlite3* const made = [] {
        sqlite3* db = nullptr;
        sqlite3_open(":memory:", &db);
        sqlite3_exec(db, "create table t(s text); begin", nullptr, nullptr, nullptr);
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(db, "insert into t values(?)", -1, &insert, nullptr);
        for (const std::string& text : texts()) {
            sqlite3_bind_text(insert, 1, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        sqlite3_exec(db, "commit", nullptr, nullptr, nullptr);
        return db;
    }();
    return made;
}

void sqlite(benchmark::State& state, const Shape& shape, Case kind) {
    sqlite3* const db = table();
    sqlite3_exec(db,
                 kind == Case::Ignored ? "pragma case_sensitive_like = 0"
                                       : "pragma case_sensitive_like = 1",
                 nullptr, nullptr, nullptr);
    const std::string mask(core::to_utf8(shape.mask).c_str());
    sqlite3_stmt* count = nullptr;
    sqlite3_prepare_v2(db, "select count(*) from t where s like ?", -1, &count, nullptr);
    sqlite3_bind_text(count, 1, mask.data(), static_cast<int>(mask.size()), SQLITE_STATIC);
    int hits = 0;
    for (auto _ : state) {
        sqlite3_step(count);
        hits = sqlite3_column_int(count, 0);
        sqlite3_reset(count);
    }
    sqlite3_finalize(count);
    state.counters["hits"] = hits;
    state.SetItemsProcessed(state.iterations() * kTexts);
}
#endif

#ifdef ORBCORE_PEER_RE2
void re2_match(benchmark::State& state, const Shape& shape, Case kind) {
    RE2::Options options;
    options.set_case_sensitive(kind == Case::Sensitive);
    std::size_t hits = 0;
    for (auto _ : state) {
        const RE2 regex(shape.regex, options);
        hits = 0;
        for (const std::string& text : texts()) hits += RE2::FullMatch(text, regex);
    }
    state.counters["hits"] = static_cast<double>(hits);
    state.SetItemsProcessed(state.iterations() * kTexts);
}
#endif

const bool kRegistered = [] {
    for (const Shape& shape : kShapes) {
        for (const Case kind : {Case::Sensitive, Case::Ignored}) {
            const std::string name =
                std::string(shape.name) + (kind == Case::Ignored ? "_nocase/" : "/");
            const auto add = [&](const char* whose, auto run) {
                benchmark::RegisterBenchmark((name + whose).c_str(), [=](benchmark::State& state) {
                    run(state, shape, kind);
                })->Unit(benchmark::kMillisecond);
            };
            add("orbcore", ours);
#ifdef ORBCORE_PEER_SQLITE
            if (shape.plain) add("sqlite", sqlite);
#endif
#ifdef ORBCORE_PEER_RE2
            add("re2", re2_match);
#endif
        }
        benchmark::RegisterBenchmark(
            (std::string(shape.name) + "_once/orbcore").c_str(),
            [&shape](benchmark::State& state) { ours_once(state, shape); });
    }
    return true;
}();

} // namespace
