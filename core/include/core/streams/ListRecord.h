// Records of lists, said once: the fields in their order, each with the version it came in. Writing
// and reading follow from it.
//
//   struct Address {
//       stdx::ustring street, town;
//       std::int32_t floor = 0;            // since version 2
//
//       static constexpr auto fields = core::list_fields(
//           core::list_field(&Address::street), core::list_field(&Address::town),
//           core::list_field<2>(&Address::floor));
//   };
//
//   core::write_record(out, address);      // {"Main St","Riga",3}
//   core::read_record(in, address);
//
// Lists that an older program wrote end early: the fields that they lack keep the values they have.
// What a newer program wrote behind the last field is passed over. A field of the first version is
// never missing. Nothing is allocated, and all of it is compiled into plain calls of the stream.
//
// An object that is stored on its own begins its list with the version, by which a reader knows the
// fields to expect:
//
//   core::write_versioned_record(out, address);      // {2,"Main St","Riga",3}
//   core::read_versioned_record(in, address);
//
// A field may be an integer of a fixed width, bool, char16_t, float, double, an enumeration (stored as
// its underlying integer), a string, an 8-bit string (stored as a blob), a GUID, a Numeric, a Date,
// a type that has `fields` of its own, or one that stores itself by `serialize` and `deserialize`.
#pragma once

#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>
#include <core/streams/ListStream.h>
#include <core/streams/ListStreamException.h>

#include <tuple>
#include <type_traits>
#include <utility>

namespace core {

// A member of a record that was added in a version; the first version is 1.
template <unsigned kSince, class Record, class Value> struct ListField {
    static constexpr unsigned since = kSince;
    Value Record::*member;
};

template <unsigned kSince = 1, class Record, class Value>
constexpr ListField<kSince, Record, Value> list_field(Value Record::*member) noexcept {
    return {member};
}

// Later fields are of later versions.
template <class... Fields> constexpr std::tuple<Fields...> list_fields(Fields... fields) noexcept {
    static_assert(sizeof...(Fields) != 0, "a record has at least one field");
    constexpr unsigned kVersions[] = {Fields::since...};
    static_assert(
        [&] {
            if (kVersions[0] != 1) return false;
            for (std::size_t i = 1; i < sizeof...(Fields); ++i)
                if (kVersions[i] < kVersions[i - 1]) return false;
            return true;
        }(),
        "fields stand in the order of their versions, which begin with 1");
    return {fields...};
}

template <class T>
concept ListRecord = requires {
    std::tuple_size<std::remove_cvref_t<decltype(T::fields)>>::value;
};

template <ListRecord Record>
void write_record(ListOutStream& out, const Record& record, unsigned version = ~0u);
template <ListRecord Record> void read_record(ListInStream& in, Record& record);

// The version that the last field came in.
template <ListRecord Record> constexpr std::int32_t version_of() noexcept {
    using Fields = std::remove_cvref_t<decltype(Record::fields)>;
    return std::tuple_element_t<std::tuple_size_v<Fields> - 1, Fields>::since;
}

template <ListRecord Record> void write_versioned_record(ListOutStream& out, const Record& record);
// Fields of later versions than that of the list keep their values; what a newer program wrote behind
// the last one is passed over. Throws `ListStreamException` for a version below 1.
template <ListRecord Record> void read_versioned_record(ListInStream& in, Record& record);

// ---- One item by its type.

template <class T> void put_item(ListOutStream& out, const T& value) {
    if constexpr (std::is_enum_v<T>)
        put_item(out, static_cast<std::underlying_type_t<T>>(value));
    else if constexpr (std::is_same_v<T, bool>)
        out->putBool(value);
    else if constexpr (std::is_same_v<T, char16_t>)
        out->putChar(value);
    else if constexpr (std::is_same_v<T, float>)
        out->putFloat(value);
    else if constexpr (std::is_same_v<T, double>)
        out->putDouble(value);
    else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>)
        out->putInt64(value); // integers of all widths are stored alike
    else if constexpr (std::is_integral_v<T>)
        out->putUInt64(value);
    else if constexpr (std::is_same_v<T, stdx::ustring>)
        out->putString(value);
    else if constexpr (std::is_same_v<T, stdx::string>)
        out->putBytes(value);
    else if constexpr (std::is_same_v<T, _GUID>)
        out->putGuid(value);
    else if constexpr (std::is_same_v<T, Numeric>)
        out->putNumeric(value);
    else if constexpr (std::is_same_v<T, Date>) {
        Date date = value;
        DateSerializer item(&date);
        out->putObject(item);
    } else if constexpr (ListRecord<T>)
        write_record(out, value);
    else
        to_stream(out, value);
}

template <class T> void get_item(ListInStream& in, T& value) {
    if constexpr (std::is_enum_v<T>) {
        std::underlying_type_t<T> integer{};
        get_item(in, integer);
        value = static_cast<T>(integer);
    } else if constexpr (std::is_same_v<T, bool>)
        in->getBool(value);
    else if constexpr (std::is_same_v<T, char16_t>)
        in->getChar(value);
    else if constexpr (std::is_same_v<T, std::int8_t>)
        in->getInt8(value);
    else if constexpr (std::is_same_v<T, std::int16_t>)
        in->getInt16(value);
    else if constexpr (std::is_same_v<T, std::int32_t>)
        in->getInt32(value);
    else if constexpr (std::is_same_v<T, std::int64_t>)
        in->getInt64(value);
    else if constexpr (std::is_same_v<T, std::uint8_t>)
        in->getUInt8(value);
    else if constexpr (std::is_same_v<T, std::uint16_t>)
        in->getUInt16(value);
    else if constexpr (std::is_same_v<T, std::uint32_t>)
        in->getUInt32(value);
    else if constexpr (std::is_same_v<T, std::uint64_t>)
        in->getUInt64(value);
    else if constexpr (std::is_same_v<T, float>)
        in->getFloat(value);
    else if constexpr (std::is_same_v<T, double>)
        in->getDouble(value);
    else if constexpr (std::is_same_v<T, stdx::ustring>)
        in->getString(value);
    else if constexpr (std::is_same_v<T, stdx::string>)
        in->getBytes(value);
    else if constexpr (std::is_same_v<T, _GUID>)
        in->getGuid(value);
    else if constexpr (std::is_same_v<T, Numeric>)
        in->getNumeric(value);
    else if constexpr (std::is_same_v<T, Date>) {
        DateSerializer item(&value);
        in->getObject(item);
    } else if constexpr (ListRecord<T>)
        read_record(in, value);
    else
        from_stream(in, value);
}

// ---- Records.

// As a program of `version` knew the record: without the fields that came later.
template <ListRecord Record>
void write_record(ListOutStream& out, const Record& record, unsigned version) {
    out->beginList();
    std::apply(
        [&](const auto&... field) {
            (..., (field.since <= version ? put_item(out, record.*field.member) : void()));
        },
        Record::fields);
    out->endList();
}

template <ListRecord Record> void read_record(ListInStream& in, Record& record) {
    in->beginList();
    std::apply(
        [&](const auto&... field) {
            // The first field that is missing ends the record.
            (void)(... && ((field.since == 1 || in->nextInList())
                               ? (get_item(in, record.*field.member), true)
                               : false));
        },
        Record::fields);
    in->skipList();
    in->endList();
}

template <ListRecord Record> void write_versioned_record(ListOutStream& out, const Record& record) {
    out->beginList();
    out->putInt32(version_of<Record>());
    std::apply([&](const auto&... field) { (..., put_item(out, record.*field.member)); },
               Record::fields);
    out->endList();
}

template <ListRecord Record> void read_versioned_record(ListInStream& in, Record& record) {
    in->beginList();
    std::int32_t version = 0;
    in->getInt32(version);
    if (version < 1) throw ListStreamException();
    std::apply(
        [&](const auto&... field) {
            (...,
             (static_cast<std::int64_t>(field.since) <= version ? get_item(in, record.*field.member)
                                                                : void()));
        },
        Record::fields);
    in->skipList();
    in->endList();
}

} // namespace core
