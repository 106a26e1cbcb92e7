// Just enough JSON to write lists of records (RFC 8259).
#pragma once

#include <cstdio>
#include <ostream>
#include <string_view>

namespace orb {

// A text as a JSON string; the text is UTF-8.
struct Quoted {
    std::string_view text;

    friend std::ostream& operator<<(std::ostream& out, const Quoted& quoted) {
        out << '"';
        for (const char c : quoted.text) {
            if (c == '"' || c == '\\') {
                out << '\\' << c;
            } else if (static_cast<unsigned char>(c) < 0x20) {
                char escape[7];
                std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
                out << escape;
            } else {
                out << c;
            }
        }
        return out << '"';
    }
};

} // namespace orb
