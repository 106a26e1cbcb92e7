// Text streams and byte buffers beside their peers. What should hold: lines of a file are read, and
// decoded to UTF-16, in less time than std::getline takes, which decodes nothing; writing costs what
// it costs others; bytes go into a byte buffer as fast as by memcpy.
#include <core/component/Object.h>
#include <core/files/FileStreams.h>
#include <core/streams/IByteBuffer.h>
#include <core/streams/IStringBuffer.h>
#include <core/streams/LineSeparator.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#ifdef ORBCORE_PEER_QT
#include <QFile>
#include <QTextStream>
#endif

namespace {

constexpr std::size_t kFileSize = 16 << 20; // from the page cache, as the 100 MB files are

const char* const kLineEnds[] = {"\n", "\r\n"};

// Lines of 20 to 100 bytes, every eighth of them Russian.
std::string some_text(const char* lineEnd) {
    std::string text;
    unsigned state = 1;
    while (text.size() < kFileSize) {
        state = state * 1664525 + 1013904223;
        if (state >> 29 == 0)
            text += "\u0421\u0447\u0435\u0442 \u043D\u0430 \u043E\u043F\u043B\u0430\u0442\u0443 ";
        text.append(20 + (state >> 16) % 80, static_cast<char>('a' + (state >> 8) % 26));
        text += lineEnd;
    }
    return text;
}

// A file that goes with the program.
class TempFile {
public:
    explicit TempFile(const std::string& contents = {})
        : path_(std::filesystem::temp_directory_path() /
                ("streams_bench." + std::to_string(::getpid()) + "." + std::to_string(next_++))) {
        std::ofstream(path_, std::ios::binary) << contents;
    }
    ~TempFile() { std::filesystem::remove(path_); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const char* path() const { return path_.c_str(); }

private:
    static inline int next_ = 0;
    std::filesystem::path path_;
};

const TempFile& text_file(int lineEnd) {
    static const TempFile files[] = {TempFile(some_text(kLineEnds[0])),
                                     TempFile(some_text(kLineEnds[1]))};
    return files[lineEnd];
}

// A plain descriptor as a file.
class DescriptorFile
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<DescriptorFile>
    , public core::IFile {
public:
    DescriptorFile(const char* path, int flags) : fd_(::open(path, flags)) {}
    ~DescriptorFile() { ::close(fd_); }
    DescriptorFile(const DescriptorFile&) = delete;
    DescriptorFile& operator=(const DescriptorFile&) = delete;

    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<DescriptorFile, core::IFile>();
    }

    core::URL url() override { return {}; }
    unsigned read(void* dst, unsigned n) override {
        return static_cast<unsigned>(::read(fd_, dst, n));
    }
    void write(const void* src, unsigned n) override {
        if (::write(fd_, src, n) != static_cast<ssize_t>(n)) std::abort();
    }
    void flush() override {}

private:
    int fd_;
};

void count_bytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) *
                            static_cast<std::int64_t>(state.iterations()));
}

// --- reading lines ---

template <class ReadLine>
void read_lines(benchmark::State& state, ReadLine readLine, const char16_t* separator = nullptr) {
    const char* const path = text_file(static_cast<int>(state.range(0))).path();
    for (auto _ : state) {
        core::InputFileStream in;
        const auto file = core::make_object<DescriptorFile>(path, O_RDONLY);
        in.open(file.get(), core::kUTF8Encoding, false, separator);
        std::size_t units = 0;
        while (!in->eof()) units += readLine(*in.reader());
        benchmark::DoNotOptimize(units);
    }
    count_bytes(state, kFileSize);
}

void lines_into_buffer(benchmark::State& state, const char16_t* separator) {
    const auto line = core::create_std_string_buffer();
    const auto read = [&](core::IBufferedReader& reader) {
        line->clear();
        return reader.readLine(line.get());
    };
    read_lines(state, read, separator);
}
void lines_orbcore(benchmark::State& state) {
    lines_into_buffer(state, nullptr);
}
void lines_orbcore_separator(benchmark::State& state) {
    lines_into_buffer(state, core::kWindowsLineSeparator);
}
void lines_orbcore_string(benchmark::State& state) {
    read_lines(state, [](core::IBufferedReader& reader) { return reader.readLine().size(); });
}

void lines_getline(benchmark::State& state) {
    for (auto _ : state) {
        std::ifstream in(text_file(static_cast<int>(state.range(0))).path(), std::ios::binary);
        std::string line;
        std::size_t bytes = 0;
        while (std::getline(in, line)) bytes += line.size();
        benchmark::DoNotOptimize(bytes);
    }
    count_bytes(state, kFileSize);
}

// A string of its own for each line.
void line_strings_getline(benchmark::State& state) {
    for (auto _ : state) {
        std::ifstream in(text_file(static_cast<int>(state.range(0))).path(), std::ios::binary);
        std::size_t bytes = 0;
        for (bool more = true; more;) {
            std::string line;
            more = static_cast<bool>(std::getline(in, line));
            bytes += line.size();
        }
        benchmark::DoNotOptimize(bytes);
    }
    count_bytes(state, kFileSize);
}

// Reads what the others read, and looks at nothing.
void lines_plain_read(benchmark::State& state) {
    for (auto _ : state) {
        const int fd = ::open(text_file(static_cast<int>(state.range(0))).path(), O_RDONLY);
        char block[8192];
        std::size_t bytes = 0;
        for (ssize_t n; (n = ::read(fd, block, sizeof block)) > 0;)
            bytes += static_cast<std::size_t>(n);
        benchmark::DoNotOptimize(bytes);
        ::close(fd);
    }
    count_bytes(state, kFileSize);
}

#ifdef ORBCORE_PEER_QT
void lines_qt(benchmark::State& state) {
    for (auto _ : state) {
        QFile file(text_file(static_cast<int>(state.range(0))).path());
        file.open(QIODevice::ReadOnly);
        QTextStream in(&file);
        in.setCodec("UTF-8");
        QString line;
        long long units = 0;
        while (in.readLineInto(&line)) units += line.size();
        benchmark::DoNotOptimize(units);
    }
    count_bytes(state, kFileSize);
}
#endif

// --- writing lines ---

constexpr std::size_t kLines = 100'000;
const std::u16string kLine =
    u"A line of the kind that reports consist of, \u0438\u0442\u043E\u0433\u043E";
const std::string kNarrowLine =
    "A line of the kind that reports consist of, \u0438\u0442\u043E\u0433\u043E";

void write_orbcore(benchmark::State& state) {
    const TempFile target;
    for (auto _ : state) {
        core::OutputFileStream out;
        const auto file = core::make_object<DescriptorFile>(target.path(), O_WRONLY | O_TRUNC);
        out.open(file.get(), core::kUTF8Encoding, false, core::kWindowsLineSeparator);
        for (std::size_t i = 0; i < kLines; ++i) {
            out->write(kLine.c_str(), static_cast<unsigned>(kLine.size()));
            out->put(u'\n');
        }
        out.close();
    }
    count_bytes(state, kLines * (kNarrowLine.size() + 2));
}

void write_ofstream(benchmark::State& state) {
    const TempFile target;
    for (auto _ : state) {
        std::ofstream out(target.path(), std::ios::binary);
        for (std::size_t i = 0; i < kLines; ++i) out << kNarrowLine << "\r\n";
    }
    count_bytes(state, kLines * (kNarrowLine.size() + 2));
}

#ifdef ORBCORE_PEER_QT
void write_qt(benchmark::State& state) {
    const TempFile target;
    const QString line = QString::fromStdU16String(kLine);
    for (auto _ : state) {
        QFile file(target.path());
        file.open(QIODevice::WriteOnly);
        QTextStream out(&file);
        out.setCodec("UTF-8");
        for (std::size_t i = 0; i < kLines; ++i) out << line << "\r\n";
    }
    count_bytes(state, kLines * (kNarrowLine.size() + 2));
}
#endif

// --- growing text ---

template <class Target, class Append>
void append(benchmark::State& state, Target make, Append appendTo) {
    const std::u16string piece(static_cast<std::size_t>(state.range(0)), u'x');
    const auto pieces = static_cast<int>(200'000 / state.range(0));
    for (auto _ : state) {
        auto target = make();
        for (int i = 0; i < pieces; ++i) appendTo(target, piece);
        benchmark::DoNotOptimize(target);
    }
    count_bytes(state, piece.size() * 2 * static_cast<std::size_t>(pieces));
}

const auto kAppendToBuffer = [](auto& buffer, const std::u16string& piece) {
    buffer->append(piece.data(), static_cast<unsigned>(piece.size()));
};

void append_chunks(benchmark::State& state) {
    append(
        state, [] { return core::create_string_buffer(); }, kAppendToBuffer);
}
void append_string(benchmark::State& state) {
    append(
        state, [] { return core::create_std_string_buffer(); }, kAppendToBuffer);
}
void append_u16string(benchmark::State& state) {
    append(
        state, [] { return std::u16string(); },
        [](std::u16string& text, const std::u16string& piece) { text += piece; });
}

// --- numbers in byte buffers ---

constexpr int kNumbers = 4096;

void ints_orbcore(benchmark::State& state) {
    const auto buffer = core::allocate_byte_buffer(kNumbers * 4, core::ByteOrder::Little);
    for (auto _ : state) {
        buffer->clear();
        for (int i = 0; i < kNumbers; ++i) buffer->putInt(i);
        buffer->flip();
        int sum = 0;
        while (buffer->hasRemaining()) sum ^= buffer->getInt();
        benchmark::DoNotOptimize(sum);
    }
}

void ints_memcpy(benchmark::State& state) {
    std::vector<char> memory(kNumbers * 4);
    for (auto _ : state) {
        char* at = memory.data();
        for (int i = 0; i < kNumbers; ++i, at += 4) {
            std::memcpy(at, &i, 4);
            benchmark::ClobberMemory();
        }
        int sum = 0;
        for (at = memory.data(); at != memory.data() + memory.size(); at += 4) {
            int value;
            std::memcpy(&value, at, 4);
            benchmark::DoNotOptimize(value);
            sum ^= value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void bytes_orbcore(benchmark::State& state) {
    const auto buffer = core::allocate_byte_buffer(kNumbers * 4);
    std::vector<char> block(kNumbers * 4);
    for (auto _ : state) {
        buffer->clear();
        buffer->put(block.data(), kNumbers * 4);
        buffer->flip();
        buffer->get(block.data(), kNumbers * 4);
        benchmark::ClobberMemory();
    }
}
void bytes_memcpy(benchmark::State& state) {
    std::vector<char> memory(kNumbers * 4), block(kNumbers * 4);
    for (auto _ : state) {
        std::memcpy(memory.data(), block.data(), block.size());
        benchmark::ClobberMemory();
        std::memcpy(block.data(), memory.data(), block.size());
        benchmark::ClobberMemory();
    }
}

void both_line_ends(benchmark::internal::Benchmark* b) {
    b->Arg(0)->Arg(1)->ArgName("crlf")->Unit(benchmark::kMillisecond);
}
void windows_line_ends(benchmark::internal::Benchmark* b) {
    b->Arg(1)->ArgName("crlf")->Unit(benchmark::kMillisecond);
}

BENCHMARK(lines_orbcore)->Name("read_lines/orbcore")->Apply(both_line_ends);
BENCHMARK(lines_getline)->Name("read_lines/getline")->Apply(both_line_ends);
#ifdef ORBCORE_PEER_QT
BENCHMARK(lines_qt)->Name("read_lines/qt")->Apply(both_line_ends);
#endif
BENCHMARK(lines_plain_read)->Name("read_lines/plain_read")->Apply(both_line_ends);
BENCHMARK(lines_orbcore_string)->Name("read_line_strings/orbcore")->Apply(both_line_ends);
BENCHMARK(line_strings_getline)->Name("read_line_strings/getline")->Apply(both_line_ends);
BENCHMARK(lines_orbcore_separator)->Name("read_separated_lines/orbcore")->Apply(windows_line_ends);
BENCHMARK(lines_getline)->Name("read_separated_lines/getline")->Apply(windows_line_ends);
BENCHMARK(write_orbcore)->Name("write_lines/orbcore")->Unit(benchmark::kMillisecond);
BENCHMARK(write_ofstream)->Name("write_lines/ofstream")->Unit(benchmark::kMillisecond);
#ifdef ORBCORE_PEER_QT
BENCHMARK(write_qt)->Name("write_lines/qt")->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(append_chunks)->Name("append/orbcore")->Arg(1)->Arg(10)->Arg(1000);
BENCHMARK(append_string)->Name("append_one_string/orbcore")->Arg(1)->Arg(10)->Arg(1000);
BENCHMARK(append_u16string)->Name("append/u16string")->Arg(1)->Arg(10)->Arg(1000);
BENCHMARK(append_u16string)->Name("append_one_string/u16string")->Arg(1)->Arg(10)->Arg(1000);
BENCHMARK(ints_orbcore)->Name("byte_buffer_ints/orbcore");
BENCHMARK(ints_memcpy)->Name("byte_buffer_ints/memcpy");
BENCHMARK(bytes_orbcore)->Name("byte_buffer_bytes/orbcore");
BENCHMARK(bytes_memcpy)->Name("byte_buffer_bytes/memcpy");

} // namespace
