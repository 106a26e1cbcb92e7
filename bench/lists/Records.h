// What the benchmarks of lists write and read: a tree of records, and the same as JSON.
#pragma once

#include <core/streams/ListRecord.h>

#include <cstdint>
#include <vector>

#ifdef ORBCORE_PEER_RAPIDJSON
#include <rapidjson/reader.h>
#include <rapidjson/writer.h>
#endif

namespace bench {

// ---- The tree: folders of records, some 10 MB of text.

struct Record {
    std::int32_t id;
    std::int64_t size;
    bool open;
    double rate;
    stdx::ustring name, note;

    static constexpr auto fields =
        core::list_fields(core::list_field(&Record::id), core::list_field(&Record::size),
                          core::list_field(&Record::open), core::list_field(&Record::rate),
                          core::list_field(&Record::name), core::list_field(&Record::note));
};
constexpr std::size_t kFields = 6;

using Folder = std::vector<Record>;

inline const std::vector<Folder>& tree() {
    static const std::vector<Folder> folders = [] {
        std::vector<Folder> made(100);
        std::uint32_t state = 1;
        const auto next = [&state] { return state = state * 1664525 + 1013904223, state >> 8; };
        const auto text = [&](unsigned words) {
            static const char16_t* const kWords[] = {u"invoice ", u"paid ", u"of March ", u"X-100 ",
                                                     u"\u0441\u0447\u0451\u0442 "};
            stdx::ustring line;
            for (unsigned n = next() % words; n != 0; --n) line.append(kWords[next() % 5]);
            return line;
        };
        for (Folder& folder : made)
            for (unsigned i = 0; i != 1400; ++i)
                folder.push_back({static_cast<std::int32_t>(next() % 100'000),
                                  static_cast<std::int64_t>(next()) * next(), next() % 2 == 0,
                                  static_cast<double>(next()) / 128, text(4), text(12)});
        return made;
    }();
    return folders;
}

inline std::size_t record_count() {
    return tree().size() * tree()[0].size();
}

inline void write_tree(core::ListOutStream& out) {
    out->beginList();
    for (const Folder& folder : tree()) {
        out->beginList();
        out->putUInt32(static_cast<std::uint32_t>(folder.size()));
        for (const Record& record : folder) core::write_record(out, record);
        out->endList();
    }
    out->endList();
}

inline std::size_t read_tree(core::ListInStream& in) {
    std::size_t sum = 0;
    Record record{};
    in->beginList();
    for (std::size_t i = 0; i != tree().size(); ++i) {
        std::uint32_t count = 0;
        in->beginList();
        in->getUInt32(count);
        for (; count != 0; --count) {
            core::read_record(in, record);
            sum += record.note.size() + static_cast<std::size_t>(record.id);
        }
        in->endList();
    }
    in->endList();
    return sum;
}

#ifdef ORBCORE_PEER_RAPIDJSON
using Utf16 = rapidjson::UTF16<char16_t>;

// The tree as arrays.
template <class Writer> void write_json(Writer& writer) {
    writer.StartArray();
    for (const Folder& folder : tree()) {
        writer.StartArray();
        writer.Uint(static_cast<unsigned>(folder.size()));
        for (const Record& record : folder) {
            writer.StartArray();
            writer.Int(record.id);
            writer.Int64(record.size);
            writer.Bool(record.open);
            writer.Double(record.rate);
            writer.String(record.name.data(), record.name.size());
            writer.String(record.note.data(), record.note.size());
            writer.EndArray();
        }
        writer.EndArray();
    }
    writer.EndArray();
}

// Fills records, as the list's reader does.
struct Fill : rapidjson::BaseReaderHandler<Utf16, Fill> {
    bool Bool(bool value) {
        record.open = value;
        ++field;
        return true;
    }
    bool Int(int value) { return Int64(value); }
    bool Uint(unsigned value) { return Int64(value); }
    bool Uint64(std::uint64_t value) { return Int64(static_cast<std::int64_t>(value)); }
    bool Int64(std::int64_t value) {
        if (field++ % kFields == 0)
            record.id = static_cast<std::int32_t>(value);
        else
            record.size = value;
        return true;
    }
    bool Double(double value) {
        record.rate = value;
        ++field;
        return true;
    }
    bool String(const char16_t* text, rapidjson::SizeType size, bool) {
        stdx::ustring& to = field++ % kFields == 4 ? record.name : record.note;
        to.assign(text, size);
        return true;
    }
    bool StartArray() {
        field = 0;
        return true;
    }
    bool EndArray(rapidjson::SizeType) {
        sum += record.note.size() + static_cast<std::size_t>(record.id);
        return true;
    }
    Record record{};
    std::size_t field = 0, sum = 0;
};
#endif

} // namespace bench
