// Programs of calls on a list stream: an operation a letter. What they give is written down, so that
// two sources of the same list can be compared.
#pragma once

#include "ListSources.h"

#include <charconv>
#include <core/component/Utf8.h>
#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>

namespace test {

// Reals with six digits behind the point, whatever the locale.
template <class T> std::string number_text(T value) {
    if constexpr (std::is_floating_point_v<T>) {
        char text[400];
        return {text, std::to_chars(text, std::end(text), value, std::chars_format::fixed, 6).ptr};
    } else {
        return std::to_string(value);
    }
}

inline constexpr std::string_view kRefused = " refused";

class ListProgram {
public:
    explicit ListProgram(core::IListInStream& in) : in_(in) {}

    // The results of the operations up to the one that is refused; other exceptions pass.
    std::string run(std::string_view operations) {
        try {
            for (const char operation : operations) step(operation);
        } catch (const core::ListStreamException&) {
            out_ += kRefused;
        }
        return out_;
    }

private:
    void step(char operation) {
        using namespace core;
        switch (operation) {
        case '{':
            return in_.beginList();
        case '}':
            return in_.endList();
        case ',':
            return put(in_.nextInList());
        case '~':
            return in_.skipList();
        case '?': {
            stdx::ustring text;
            in_.readListText(text);
            return put(text);
        }
        case 'b':
            return get<bool>(&IListInStream::getBool);
        case '1':
            return get<std::int8_t>(&IListInStream::getInt8);
        case '2':
            return get<std::int16_t>(&IListInStream::getInt16);
        case '4':
            return get<std::int32_t>(&IListInStream::getInt32);
        case '8':
            return get<std::int64_t>(&IListInStream::getInt64);
        case '5':
            return get<std::uint8_t>(&IListInStream::getUInt8);
        case '6':
            return get<std::uint16_t>(&IListInStream::getUInt16);
        case '7':
            return get<std::uint32_t>(&IListInStream::getUInt32);
        case '9':
            return get<std::uint64_t>(&IListInStream::getUInt64);
        case 'c':
            return get<char16_t>(&IListInStream::getChar);
        case 'f':
            return get<float>(&IListInStream::getFloat);
        case 'd':
            return get<double>(&IListInStream::getDouble);
        case 'g':
            return get<_GUID>(&IListInStream::getGuid);
        case 's':
            return get<stdx::ustring>(&IListInStream::getString);
        case 'x':
            return get<stdx::string>(&IListInStream::getBytes);
        case 'n':
            return get<Numeric>(&IListInStream::getNumeric);
        case 'C': {
            char16_t text[8];
            in_.getChars(text, std::size(text));
            return put(stdx::ustring(text));
        }
        case 'B': {
            char bytes[4] = {};
            in_.getBinary(bytes, sizeof bytes);
            return put(stdx::string(bytes, sizeof bytes));
        }
        case 'D': {
            Date date;
            DateSerializer item(&date);
            in_.getObject(item);
            return put(date.ticks());
        }
        case 'F': {
            const auto file = make_object<ByteFile>();
            in_.getFile(file.get());
            return put(stdx::string(file->bytes.data(), static_cast<unsigned>(file->bytes.size())));
        }
        default:
            return;
        }
    }

    template <class T> void get(void (core::IListInStream::*read)(T&)) {
        T value{};
        (in_.*read)(value);
        put(value);
    }

    template <class T> void put(const T& value) {
        if constexpr (std::is_same_v<T, stdx::ustring>)
            out_.append(core::to_utf8(value.view()).view());
        else if constexpr (std::is_same_v<T, stdx::string>)
            out_ += hex(value.view());
        else if constexpr (std::is_same_v<T, core::Numeric>)
            return put(value.toString());
        else if constexpr (std::is_same_v<T, _GUID>)
            return put(core::to_string(value));
        else
            out_ += number_text(value);
        out_ += ';';
    }

    core::IListInStream& in_;
    std::string out_;
};

inline std::string run_text(std::string_view operations, std::u16string text, unsigned window) {
    const auto reader = make_reader(std::move(text), window);
    core::ListInStream in(reader.get());
    return ListProgram(*in.get()).run(operations);
}
inline std::string run_bytes(std::string_view operations, std::string bytes, unsigned window) {
    const auto file = make_file(std::move(bytes), window);
    core::ListInStream in(file.get());
    return ListProgram(*in.get()).run(operations);
}

} // namespace test
