// Lines of tests/cases/lists.cases: kind, list, program, result, canonical text, with a tab between
// them; lines that begin with "#" are remarks.
//
//   kind       "text", where \n, \r and \t in the list are control characters, or "bytes" in
//              hexadecimal digits
//   program    operations as in ListProgram.h, and what they give
//   canonical  the list as text, for which \n holds as well, or the place of its first fault:
//              "line 1, column 2", "offset 3"
#pragma once

#include "ListProgram.h"

#include <core/component/Utf8.h>

#include <cctype>
#include <optional>
#include <string>
#include <string_view>

namespace test {

struct ListCase {
    bool isText;
    std::string list; // UTF-8, or bytes
    std::string operations, result, canonical;

    bool is_faulty() const noexcept {
        return canonical.starts_with("line ") || canonical.starts_with("offset ");
    }
};

inline std::string with_controls(std::string_view field) {
    constexpr std::string_view kLetters = "nrt", kControls = "\n\r\t";
    std::string text;
    for (std::size_t i = 0; i != field.size(); ++i) {
        const std::size_t control =
            field[i] == '\\' && i + 1 != field.size() ? kLetters.find(field[i + 1]) : kLetters.npos;
        text += control == kLetters.npos ? field[i] : kControls[control];
        i += control != kLetters.npos;
    }
    return text;
}

inline std::string bytes_of(std::string_view field) {
    std::string digits, bytes;
    for (const char c : field)
        if (std::isxdigit(static_cast<unsigned char>(c))) digits += c;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return bytes;
}

inline std::optional<ListCase> parse_list_case(std::string_view line) {
    std::string_view fields[5];
    for (std::string_view& field : fields) {
        if (line.data() == nullptr) return {};
        const std::size_t tab = line.find('\t');
        field = line.substr(0, tab);
        line = tab == line.npos ? std::string_view() : line.substr(tab + 1);
    }
    const bool isText = fields[0] == "text";
    if ((!isText && fields[0] != "bytes") || line.data() != nullptr) return {};
    return ListCase{isText, isText ? with_controls(fields[1]) : bytes_of(fields[1]),
                    std::string(fields[2]), with_controls(fields[3]), with_controls(fields[4])};
}

// What the program of a row gives where the list is read by windows of so many units or bytes.
inline std::string run_case(const ListCase& row, unsigned window) {
    if (!row.isText) return run_bytes(row.operations, row.list, window);
    return run_text(row.operations, std::u16string(core::from_utf8(row.list).view()), window);
}

} // namespace test
