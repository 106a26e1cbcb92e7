// `orb text`: searches lines of UTF-8 text with the library's masks, expressions and phrases, and
// converts text. Files are named behind the options; "-", or none, is standard input. What is
// searched goes through line by line, what is converted block by block.

#include "Command.h"
#include "Json.h"
#include "SubCommand.h"

#include <core/component/Utf8.h>
#include <core/text/Base64.h>
#include <core/text/Characters.h>
#include <core/text/Compare.h>
#include <core/text/LikeMask.h>
#include <core/text/Matcher.h>
#include <core/text/PhraseSearch.h>
#include <core/text/RegexException.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <functional>
#include <iostream>
#include <utility>
#include <vector>

namespace orb {
namespace {

// ---- What is read.

bool is_standard_input(std::string_view name) {
    return name == "-";
}

// Calls `use` with each input and its name, and throws where one cannot be read to its end.
template <class Use> void for_each_input(std::span<char* const> names, const Use& use) {
    static char standardInput[] = "-";
    static char* const kOnlyStandardInput[] = {standardInput};
    for (const char* const name : names.empty() ? std::span(kOnlyStandardInput) : names) {
        const auto fail = [&] {
            throw Failure("cannot read '" + std::string(name) + "': " + std::strerror(errno));
        };
        std::ifstream file;
        errno = 0;
        if (!is_standard_input(name)) file.open(name, std::ios::binary);
        if (!file) fail();
        std::istream& in = is_standard_input(name) ? std::cin : file;
        use(in, std::string_view(name));
        if (in.bad()) fail();
    }
}

constexpr std::size_t kBlock = 0x10000;

// Calls `use` with the bytes of all inputs, up to kBlock at a time, until it gives false or the
// output fails.
template <class Use> void for_each_block(std::span<char* const> names, const Use& use) {
    std::vector<char> block(kBlock);
    bool wanted = true;
    for_each_input(names, [&](std::istream& in, std::string_view) {
        while (wanted && std::cout) {
            in.read(block.data(), kBlock);
            if (in.gcount() <= 0) break;
            wanted = use(std::string_view(block.data(), static_cast<std::size_t>(in.gcount())));
        }
    });
}

// The length of UTF-8 text without the character at its end, if that may go on behind it.
std::size_t length_of_whole_characters(std::string_view text) {
    for (std::size_t n = 1; n <= 3 && n <= text.size(); ++n) {
        const auto byte = static_cast<unsigned char>(text[text.size() - n]);
        if ((byte & 0xC0) == 0x80) continue;
        const std::size_t length = byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
        return length > n ? text.size() - n : text.size();
    }
    return text.size();
}

// ---- The options of a verb: letters ahead of its values.

struct Options {
    bool ignoreCase = false;            // -i
    bool decode = false;                // -d
    std::chrono::milliseconds limit{0}; // -t MILLISECONDS
    std::span<char* const> values;
};

std::chrono::milliseconds limit_of(std::string_view text) {
    int limit = 0;
    const char* const end = text.data() + text.size();
    if (std::from_chars(text.data(), end, limit).ptr != end || limit <= 0)
        throw UsageError("'" + std::string(text) + "' is no number of milliseconds");
    return std::chrono::milliseconds(limit);
}

// `known` are the letters that the verb understands.
Options parse_options(const Arguments& arguments, std::string_view known) {
    Options options;
    std::span<char* const> rest = arguments.values;
    for (; rest.size() > arguments.plain.size() && rest[0][0] == '-' && rest[0][1] != 0;
         rest = rest.subspan(1)) {
        const std::string_view word = rest[0];
        if (word.size() != 2 || known.find(word[1]) == known.npos)
            throw UsageError("there is no option '" + std::string(word) + "' here");
        switch (word[1]) {
        case 'i':
            options.ignoreCase = true;
            break;
        case 'd':
            options.decode = true;
            break;
        default:
            rest = rest.subspan(1);
            if (rest.empty()) throw UsageError("'-t' lacks its milliseconds");
            options.limit = limit_of(rest[0]);
        }
    }
    options.values = rest;
    return options;
}

// ---- Searching.

using Ranges = std::vector<std::pair<unsigned, unsigned>>; // in UTF-16 units

struct Line {
    std::string_view file;
    std::size_t number;
    const std::string& bytes;
};

void print_line(const Line& line, bool withFile) {
    if (withFile) std::cout << line.file << ':';
    std::cout << line.bytes << '\n';
}

void print_record(const Line& line, const Ranges& ranges, bool first) {
    std::cout << (first ? "\n" : ",\n") << "{\"file\":" << Quoted{line.file}
              << ",\"line\":" << line.number << ",\"text\":"
              << Quoted{std::string_view(core::to_utf8(core::from_utf8(line.bytes)))}
              << ",\"ranges\":[";
    for (const auto& range : ranges)
        std::cout << (&range == ranges.data() ? "" : ",") << '[' << range.first << ','
                  << range.second << ']';
    std::cout << "]}";
}

constexpr std::size_t kLongestLine = 64 << 20;

// The line of this number without its end; false if there is none. Input may be one endless line.
bool read_line(std::istream& in, std::string_view name, std::size_t number, std::string& line) {
    line.clear();
    char part[0x1000];
    for (;;) {
        in.getline(part, sizeof part);
        const auto n = static_cast<std::size_t>(in.gcount()); // with the line feed, if it was there
        const bool isFull = n == sizeof part - 1 && in.fail() && !in.eof() && !in.bad();
        line.append(part, isFull || in.eof() || n == 0 ? n : n - 1);
        if (!isFull) return n != 0 || !line.empty();
        if (line.size() > kLongestLine)
            throw Failure("line " + std::to_string(number) + " of '" + std::string(name) +
                          "' is longer than 64 MiB");
        in.clear();
    }
}

template <class Use> void for_each_line(std::span<char* const> files, const Use& use) {
    for_each_input(files, [&](std::istream& in, std::string_view name) {
        std::string bytes;
        for (std::size_t number = 1; std::cout && read_line(in, name, number, bytes); ++number) {
            if (bytes.ends_with('\r')) bytes.pop_back();
            use(Line{name, number, bytes});
        }
    });
}

// Prints the lines that `test` finds something in; it fills in the ranges, if it knows any.
using LineTest = std::function<bool(const stdx::ustring& line, Ranges& ranges)>;

int search(std::span<char* const> files, bool json, const LineTest& test) {
    bool found = false;
    if (json) std::cout << '[';
    for_each_line(files, [&](const Line& line) {
        Ranges ranges;
        if (!test(core::from_utf8(line.bytes), ranges)) return;
        if (json)
            print_record(line, ranges, !found);
        else
            print_line(line, files.size() > 1);
        found = true;
    });
    if (json) std::cout << "\n]\n";
    return found ? kSuccess : kFailure;
}

// The value that the verb searches for; the rest are files.
stdx::ustring wanted_of(const Options& options, const char* what) {
    if (options.values.empty()) throw UsageError(std::string("expected ") + what);
    return core::from_utf8(options.values[0]);
}

int like(const Arguments& arguments) {
    const Options options = parse_options(arguments, "i");
    const stdx::ustring mask = wanted_of(options, "a mask");
    const auto create = options.ignoreCase ? core::create_like_mask_nocase : core::create_like_mask;
    const auto compiled = create(mask.view(), u'\\', core::system_character_order());
    return search(options.values.subspan(1), arguments.json,
                  [&](const stdx::ustring& line, Ranges&) { return compiled->match(line); });
}

core::Matcher matcher_of(const Options& options) {
    const stdx::ustring pattern = wanted_of(options, "a regular expression");
    try {
        core::Matcher matcher(pattern, options.ignoreCase ? core::Matcher::kIgnoreCase : 0);
        matcher.setTimeLimit(options.limit);
        return matcher;
    } catch (const core::RegexException& exception) {
        throw UsageError(core::to_utf8(exception.description()).c_str());
    }
}

int match(const Arguments& arguments) {
    const Options options = parse_options(arguments, "it");
    core::Matcher matcher = matcher_of(options);
    return search(options.values.subspan(1), arguments.json,
                  [&](const stdx::ustring& line, Ranges& ranges) {
                      for (matcher.reset(line); matcher.find();) {
                          ranges.emplace_back(matcher.start(), matcher.end());
                          if (!arguments.json) break;
                      }
                      return !ranges.empty();
                  });
}

int find(const Arguments& arguments) {
    const Options options = parse_options(arguments, "i");
    const stdx::ustring phrase = wanted_of(options, "a phrase");
    const auto state =
        core::begin_string_search(phrase, core::StringMatchMode::Anywhere, options.ignoreCase);
    return search(options.values.subspan(1), arguments.json,
                  [&](const stdx::ustring& line, Ranges& ranges) {
                      state->search(line, &ranges);
                      return state->getSearchStatus().first == core::StringSearchStatus::All;
                  });
}

// ---- Converting.

int hash(const Arguments& arguments) {
    const Options options = parse_options(arguments, "");
    bool first = true;
    if (arguments.json) std::cout << '[';
    for_each_line(options.values, [&](const Line& line) {
        const stdx::ustring text = core::from_utf8(line.bytes);
        const std::uint32_t exact = core::hash(text.view());
        const std::uint32_t noCase = core::hash_nocase(text.view());
        if (arguments.json)
            std::cout << (std::exchange(first, false) ? "\n" : ",\n")
                      << "{\"text\":" << Quoted{std::string_view(core::to_utf8(text))}
                      << ",\"hash\":" << exact << ",\"hashNoCase\":" << noCase << '}';
        else
            std::cout << std::right << std::setw(10) << exact << ' ' << std::setw(10) << noCase
                      << ' ' << line.bytes << '\n';
    });
    if (arguments.json) std::cout << "\n]\n";
    return kSuccess;
}

void encode_base64(std::span<char* const> files) {
    core::Base64Encoder encoder;
    std::vector<char> text(encoder.max_size(kBlock));
    const auto print = [&](const char* end) { std::cout.write(text.data(), end - text.data()); };
    for_each_block(files, [&](std::string_view block) {
        print(encoder.encode(block.data(), block.size(), text.data()));
        return true;
    });
    print(encoder.finish(text.data()));
    std::cout << '\n';
}

void decode_base64(std::span<char* const> files) {
    core::Base64Decoder decoder;
    std::vector<std::uint8_t> bytes(core::Base64Decoder::max_size(kBlock));
    const auto print = [&](const std::uint8_t* end) {
        std::cout.write(reinterpret_cast<const char*>(bytes.data()), end - bytes.data());
    };
    for_each_block(files, [&](std::string_view block) {
        print(decoder.decode(block.data(), block.size(), bytes.data()));
        return !decoder.is_ended();
    });
    std::uint8_t* end = bytes.data();
    if (!decoder.finish(end))
        throw Failure("the input is no base64 text: it breaks off, or '=' stands inside");
    print(end);
}

int base64(const Arguments& arguments) {
    const Options options = parse_options(arguments, "d");
    (options.decode ? decode_base64 : encode_base64)(options.values);
    return kSuccess;
}

using CaseMapping = stdx::ustring (*)(const char16_t* begin, const char16_t* end);

CaseMapping mapping_of(std::string_view name) {
    constexpr std::pair<std::string_view, CaseMapping> kMappings[] = {
        {"upper", core::to_upper},
        {"lower", core::to_lower},
        {"title", core::to_title},
        {"fold", core::fold_case},
    };
    for (const auto& [known, mapping] : kMappings)
        if (known == name) return mapping;
    throw UsageError("there is no case '" + std::string(name) + "': upper, lower, title or fold");
}

int change_case(const Arguments& arguments) {
    const Options options = parse_options(arguments, "");
    if (options.values.empty()) throw UsageError("expected upper, lower, title or fold");
    const CaseMapping mapping = mapping_of(options.values[0]);
    const auto print = [&](std::string_view bytes) {
        const stdx::ustring text = core::from_utf8(bytes);
        std::cout << core::to_utf8(mapping(text.cbegin(), text.cend()));
    };
    std::string bytes; // with the start of a character of the block before
    for_each_block(options.values.subspan(1), [&](std::string_view block) {
        bytes += block;
        const std::size_t whole = length_of_whole_characters(bytes);
        print(std::string_view(bytes).substr(0, whole));
        bytes.erase(0, whole);
        return true;
    });
    print(bytes);
    return kSuccess;
}

constexpr Command kVerbs[] = {
    {"like", "[-i] MASK [FILE]...", "the lines that a mask covers: % _ [a-z], escape \\", like},
    {"match", "[-i] [-t MS] REGEX [FILE]...", "the lines that match; -t: time for each", match},
    {"find", "[-i] PHRASE [FILE]...", "the lines that hold all words of a phrase", find},
    {"hash", "[FILE]...", "both hashes of each line, exact and without case", hash},
    {"base64", "[-d] [FILE]...", "to base64, or back", base64},
    {"case", "upper|lower|title|fold [FILE]...", "change the case, unit by unit", change_case},
};

} // namespace

int text_command(const Arguments& arguments) {
    return run_verb("text", kVerbs, arguments);
}

} // namespace orb
