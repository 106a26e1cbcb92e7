// `orb convert`: files and pipes of any size from one encoding to another, block by block. What the
// output's encoding lacks becomes "?"; bytes that are no text in the input's end the command.

#include "Command.h"

#include <core/component/Utf8.h>
#include <core/text/StreamConverter.h>

#include <unicode/ucnv.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace orb {
namespace {

constexpr unsigned kBlock = 0x10000;

// ---- The command line.

struct Options {
    stdx::ustring from, to; // empty: the encoding of the system
    bool list = false;
    std::vector<std::string> files;
};

Options parse_options(const Arguments& arguments) {
    Options options;
    const std::span<char* const> words =
        arguments.values.first(arguments.values.size() - arguments.plain.size());
    for (std::size_t i = 0; i != words.size(); ++i) {
        const std::string_view word = words[i];
        const bool hasValue = i + 1 != words.size();
        if (word == "--from" && hasValue)
            options.from = core::from_utf8(words[++i]);
        else if (word == "--to" && hasValue)
            options.to = core::from_utf8(words[++i]);
        else if (word == "--list")
            options.list = true;
        else if (word.starts_with("--"))
            throw UsageError("'convert' has no option '" + std::string(word) +
                             "', or it lacks its value");
        else
            options.files.emplace_back(word);
    }
    options.files.insert(options.files.end(), arguments.plain.begin(), arguments.plain.end());
    if (options.files.empty()) options.files.emplace_back("-");
    return options;
}

// A line for each encoding: ICU's name, then all others.
void list_encodings() {
    for (int i = 0; i < ucnv_countAvailable(); ++i) {
        const char* const name = ucnv_getAvailableName(i);
        std::cout << name;
        UErrorCode status = U_ZERO_ERROR;
        const std::uint16_t aliases = ucnv_countAliases(name, &status);
        for (std::uint16_t alias = 0; alias < aliases; ++alias) {
            const char* const other = ucnv_getAlias(name, alias, &status);
            if (std::strcmp(other, name) != 0) std::cout << ' ' << other;
        }
        std::cout << '\n';
    }
}

// ---- Input.

class Input {
public:
    explicit Input(const std::string& name)
        : name_(name),
          file_(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (file_ < 0) fail();
    }
    ~Input() {
        if (file_ > STDIN_FILENO) close(file_);
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    // The bytes that are there, at most kBlock; 0 at the end.
    unsigned read_into(char* block) {
        for (;;) {
            const ssize_t size = read(file_, block, kBlock);
            if (size >= 0) return static_cast<unsigned>(size);
            if (errno != EINTR) fail();
        }
    }

private:
    [[noreturn]] void fail() const {
        throw Failure("cannot read '" + name_ + "': " + std::strerror(errno));
    }

    std::string name_;
    int file_;
};

// ---- The line on the terminal, from the second second on.

class Progress {
public:
    ~Progress() {
        if (shown_) std::fputs("\r\033[K", stderr);
    }
    void add(unsigned bytes) {
        using namespace std::chrono_literals;
        bytes_ += bytes;
        if (!isTerminal_ || Clock::now() < next_) return;
        next_ = Clock::now() + 200ms;
        shown_ = true;
        std::fprintf(stderr, "\r%.1f MiB converted", static_cast<double>(bytes_) / 0x100000);
    }

private:
    using Clock = std::chrono::steady_clock;

    const bool isTerminal_ = isatty(STDERR_FILENO) == 1;
    Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
    std::uint64_t bytes_ = 0;
    bool shown_ = false;
};

// ---- The conversion.

class Conversion {
public:
    explicit Conversion(const Options& options) : from_(options.from), to_(options.to) {}

    void convert_file(const std::string& name) {
        Input input(name);
        std::uint64_t offset = 0;
        unsigned size = 0;
        do {
            size = input.read_into(block_.get());
            const char* in = block_.get();
            try {
                widen(size == 0 ? nullptr : &in, size);
            } catch (const core::ConverterException&) {
                const auto taken = static_cast<std::uint64_t>(in - block_.get());
                throw Failure("'" + name + "' is no text in " + utf8_of(from_.name()) +
                              ": the bytes from offset " +
                              std::to_string(offset + taken - from_.refused()) +
                              (size == 0 ? " on end inside a character" : " on are bad"));
            }
            offset += size;
            progress_.add(size);
        } while (size != 0);
    }

    void finish() { narrow(nullptr, 0); }

private:
    static std::string utf8_of(const stdx::ustring& text) {
        return std::string(core::to_utf8(text.view()).view());
    }

    // A null `in` is the end of a file.
    void widen(const char** in, unsigned size) {
        const char* const end = in ? *in + size : nullptr;
        for (bool more = true; more;) {
            char16_t* out = units_.get();
            const auto deliver = [&] {
                const char16_t* text = units_.get();
                narrow(&text, static_cast<unsigned>(out - text));
            };
            try {
                more = from_.widen(in, in ? static_cast<unsigned>(end - *in) : 0, &out, kBlock);
            } catch (const core::ConverterException&) {
                deliver(); // what was good so far
                throw;
            }
            deliver();
        }
    }

    // A null `in` is the end of the output.
    void narrow(const char16_t** in, unsigned size) {
        const char16_t* const end = in ? *in + size : nullptr;
        for (bool more = true; more;) {
            char* out = bytes_.get();
            more = to_.narrow(in, in ? static_cast<unsigned>(end - *in) : 0, &out, kBlock);
            if (!std::cout.write(bytes_.get(), out - bytes_.get()))
                throw Failure(std::string("cannot write the output: ") + std::strerror(errno));
        }
    }

    core::StreamConverterToUnicode from_;
    core::StreamConverterFromUnicode to_;
    std::unique_ptr<char[]> block_ = std::make_unique<char[]>(kBlock);
    std::unique_ptr<char16_t[]> units_ = std::make_unique<char16_t[]>(kBlock);
    std::unique_ptr<char[]> bytes_ = std::make_unique<char[]>(kBlock);
    Progress progress_;
};

} // namespace

int convert_command(const Arguments& arguments) {
    const Options options = parse_options(arguments);
    if (options.list) {
        list_encodings();
        return kSuccess;
    }
    Conversion conversion(options);
    for (const std::string& file : options.files) conversion.convert_file(file);
    conversion.finish();
    return kSuccess;
}

} // namespace orb
