// Files beside plain system calls with an equal buffer, std::fstream, QFile and GIO. What should
// hold: random access through a buffered file costs at most 1.2 times hand-written pread with the
// same buffer, and records in sequence at most 1.3 times a loop over read that the compiler sees
// through; the other peers are left behind. A file in memory writes as fast as a vector from
// records of 100 bytes on; what remains below is the call.
#include <core/files/BufferedFile.h>
#include <core/files/FileObject.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/IFileIOManager.h>
#include <core/files/MemoryFile.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#ifdef ORBCORE_PEER_GIO
#include <gio/gio.h> // before Qt, which takes its names for keywords
#endif
#ifdef ORBCORE_PEER_QT
#include <QFile>
#endif

namespace {

constexpr unsigned kBuffer = 32768;
constexpr std::size_t kSize = 8 << 20;
constexpr unsigned kRecord = 100;
constexpr std::size_t kRecords = kSize / kRecord;

using File = core::InterfacePtr<core::IFileEx>;

// A file of `kSize` bytes that lives as long as the program.
class Sample {
public:
    Sample() {
        std::string name = (std::filesystem::temp_directory_path() / "files_bench.XXXXXX").string();
        ::close(::mkstemp(name.data()));
        path = name;
        const std::string bytes(kSize, 'x');
        std::ofstream(path, std::ios::binary) << bytes;
    }
    ~Sample() { std::filesystem::remove(path); }

    std::filesystem::path path;
};
const Sample& sample() {
    static const Sample file;
    return file;
}

File open_file(int mode) {
    const stdx::ustring path(sample().path.u16string());
    return core::make_object<core::FileObject>(core::file_url(path), path, mode);
}

// Places of records: runs of neighbours, then a jump, as in an index or a storage.
const std::vector<std::size_t>& places() {
    static const std::vector<std::size_t> made = [] {
        std::mt19937 random(1);
        std::vector<std::size_t> list;
        while (list.size() < 20'000) {
            const std::size_t start = random() % (kRecords - 100);
            for (std::size_t i = 0; i < 50; ++i) list.push_back((start + random() % 100) * kRecord);
        }
        return list;
    }();
    return made;
}

// The hand-written peer: one buffer over a descriptor.
class PlainBuffer {
public:
    explicit PlainBuffer(int flags) : fd_(::open(sample().path.c_str(), flags)), buffer_(kBuffer) {}
    ~PlainBuffer() {
        flush();
        ::close(fd_);
    }

    std::size_t read(char* to, std::size_t n) {
        const std::size_t wanted = n;
        while (n > end_ - at_) {
            std::memcpy(to, buffer_.data() + at_, end_ - at_);
            to += end_ - at_;
            n -= end_ - at_;
            at_ = 0;
            const ssize_t got = ::read(fd_, buffer_.data(), buffer_.size());
            end_ = got > 0 ? static_cast<std::size_t>(got) : 0;
            if (end_ == 0) return wanted - n;
        }
        std::memcpy(to, buffer_.data() + at_, n);
        at_ += n;
        return wanted;
    }
    void read_at(std::size_t offset, char* to, std::size_t n) {
        if (offset < start_ || offset + n > start_ + end_) {
            start_ = offset;
            const ssize_t got =
                ::pread(fd_, buffer_.data(), buffer_.size(), static_cast<off_t>(offset));
            end_ = got > 0 ? static_cast<std::size_t>(got) : 0;
        }
        std::memcpy(to, buffer_.data() + (offset - start_), n);
    }
    void write(const char* from, std::size_t n) {
        if (n > buffer_.size() - pending_) flush();
        std::memcpy(buffer_.data() + pending_, from, n);
        pending_ += n;
    }
    void flush() {
        if (pending_ && ::write(fd_, buffer_.data(), pending_) < 0) std::abort();
        pending_ = 0;
    }
    void write_at(std::size_t offset, const char* from, std::size_t n) {
        if (::pwrite(fd_, from, n, static_cast<off_t>(offset)) < 0) std::abort();
    }

private:
    int fd_;
    std::vector<char> buffer_;
    std::size_t start_ = 0, at_ = 0, end_ = 0, pending_ = 0;
};

void count(benchmark::State& state, std::size_t records) {
    state.SetItemsProcessed(static_cast<std::int64_t>(records) *
                            static_cast<std::int64_t>(state.iterations()));
}

// ---- Reading in sequence.

template <class Open, class Read> void read_records(benchmark::State& state, Open open, Read read) {
    char record[kRecord];
    for (auto _ : state) {
        auto file = open();
        std::size_t records = 0;
        while (read(file, record)) ++records;
        if (records != kRecords) state.SkipWithError("records are missing");
    }
    count(state, kRecords);
}

void read_orbcore(benchmark::State& state) {
    read_records(
        state, [] { return core::create_buffered_file(open_file(264).get(), kBuffer); },
        [](File& file, char* to) { return file->read(to, kRecord) == kRecord; });
}
void read_orbcore_ro(benchmark::State& state) {
    read_records(
        state, [] { return core::create_buffered_file_ro(open_file(264).get(), kBuffer); },
        [](core::InterfacePtr<core::IFile>& file, char* to) {
            return file->read(to, kRecord) == kRecord;
        });
}
void read_plain(benchmark::State& state) {
    read_records(
        state, [] { return PlainBuffer(O_RDONLY); },
        [](PlainBuffer& file, char* to) { return file.read(to, kRecord) == kRecord; });
}
void read_fstream(benchmark::State& state) {
    std::vector<char> buffer(kBuffer);
    read_records(
        state,
        [&] {
            std::ifstream in;
            in.rdbuf()->pubsetbuf(buffer.data(), kBuffer);
            in.open(sample().path, std::ios::binary);
            return in;
        },
        [](std::ifstream& in, char* to) { return static_cast<bool>(in.read(to, kRecord)); });
}
BENCHMARK(read_orbcore)->Name("read_sequence/orbcore");
BENCHMARK(read_orbcore_ro)->Name("read_sequence_ro/orbcore");
BENCHMARK(read_plain)->Name("read_sequence/plain");
BENCHMARK(read_plain)->Name("read_sequence_ro/plain");
BENCHMARK(read_fstream)->Name("read_sequence/fstream");

// ---- Writing in sequence.

template <class Open, class Write>
void write_records(benchmark::State& state, Open open, Write write) {
    const std::string record(kRecord, 'w');
    for (auto _ : state) {
        auto file = open();
        for (std::size_t i = 0; i < kRecords; ++i) write(file, record.data());
    }
    count(state, kRecords);
}

void write_orbcore(benchmark::State& state) {
    write_records(
        state, [] { return core::create_buffered_file(open_file(24).get(), kBuffer); },
        [](File& file, const char* from) { file->write(from, kRecord); });
}
void write_plain(benchmark::State& state) {
    write_records(
        state, [] { return PlainBuffer(O_RDWR); },
        [](PlainBuffer& file, const char* from) { file.write(from, kRecord); });
}
void write_fstream(benchmark::State& state) {
    std::vector<char> buffer(kBuffer);
    write_records(
        state,
        [&] {
            std::fstream out;
            out.rdbuf()->pubsetbuf(buffer.data(), kBuffer);
            out.open(sample().path, std::ios::binary | std::ios::in | std::ios::out);
            return out;
        },
        [](std::fstream& out, const char* from) { out.write(from, kRecord); });
}
BENCHMARK(write_orbcore)->Name("write_sequence/orbcore");
BENCHMARK(write_plain)->Name("write_sequence/plain");
BENCHMARK(write_fstream)->Name("write_sequence/fstream");

// ---- Random access: a seek and a record.

template <class Access> void at_places(benchmark::State& state, Access access) {
    char record[kRecord] = {};
    for (auto _ : state)
        for (const std::size_t place : places()) access(place, record);
    count(state, places().size());
}

void random_read_orbcore(benchmark::State& state) {
    const File file = core::create_buffered_file(open_file(264).get(), kBuffer);
    at_places(state, [&](std::size_t place, char* to) {
        file->seek(static_cast<long long>(place), core::kSeekFromStart);
        file->read(to, kRecord);
    });
}
void random_read_plain(benchmark::State& state) {
    PlainBuffer file(O_RDONLY);
    at_places(state, [&](std::size_t place, char* to) { file.read_at(place, to, kRecord); });
}
void random_read_fstream(benchmark::State& state) {
    std::vector<char> buffer(kBuffer);
    std::ifstream in;
    in.rdbuf()->pubsetbuf(buffer.data(), kBuffer);
    in.open(sample().path, std::ios::binary);
    at_places(state, [&](std::size_t place, char* to) {
        in.seekg(static_cast<std::streamoff>(place));
        in.read(to, kRecord);
    });
}
BENCHMARK(random_read_orbcore)->Name("read_random/orbcore");
BENCHMARK(random_read_plain)->Name("read_random/pread");
BENCHMARK(random_read_fstream)->Name("read_random/fstream");

void random_write_orbcore(benchmark::State& state) {
    const File file = core::create_buffered_file(open_file(24).get(), kBuffer);
    at_places(state, [&](std::size_t place, char* from) {
        file->seek(static_cast<long long>(place), core::kSeekFromStart);
        file->write(from, kRecord);
    });
}
void random_write_plain(benchmark::State& state) {
    PlainBuffer file(O_RDWR);
    at_places(state, [&](std::size_t place, char* from) { file.write_at(place, from, kRecord); });
}
void random_write_fstream(benchmark::State& state) {
    std::vector<char> buffer(kBuffer);
    std::fstream out;
    out.rdbuf()->pubsetbuf(buffer.data(), kBuffer);
    out.open(sample().path, std::ios::binary | std::ios::in | std::ios::out);
    at_places(state, [&](std::size_t place, char* from) {
        out.seekp(static_cast<std::streamoff>(place));
        out.write(from, kRecord);
    });
}
BENCHMARK(random_write_orbcore)->Name("write_random/orbcore");
BENCHMARK(random_write_plain)->Name("write_random/pwrite");
BENCHMARK(random_write_fstream)->Name("write_random/fstream");

#ifdef ORBCORE_PEER_QT
void read_qfile(benchmark::State& state) {
    char record[kRecord];
    for (auto _ : state) {
        QFile file(QString::fromStdString(sample().path));
        file.open(QIODevice::ReadOnly);
        while (file.read(record, kRecord) == kRecord) benchmark::DoNotOptimize(record);
    }
    count(state, kRecords);
}
void write_qfile(benchmark::State& state) {
    const std::string record(kRecord, 'w');
    for (auto _ : state) {
        QFile file(QString::fromStdString(sample().path));
        file.open(QIODevice::ReadWrite);
        for (std::size_t i = 0; i < kRecords; ++i) file.write(record.data(), kRecord);
    }
    count(state, kRecords);
}
void random_read_qfile(benchmark::State& state) {
    QFile file(QString::fromStdString(sample().path));
    file.open(QIODevice::ReadOnly);
    at_places(state, [&](std::size_t place, char* to) {
        file.seek(static_cast<qint64>(place));
        file.read(to, kRecord);
    });
}
void random_write_qfile(benchmark::State& state) {
    QFile file(QString::fromStdString(sample().path));
    file.open(QIODevice::ReadWrite);
    at_places(state, [&](std::size_t place, char* from) {
        file.seek(static_cast<qint64>(place));
        file.write(from, kRecord);
    });
}
BENCHMARK(read_qfile)->Name("read_sequence/qfile");
BENCHMARK(write_qfile)->Name("write_sequence/qfile");
BENCHMARK(random_read_qfile)->Name("read_random/qfile");
BENCHMARK(random_write_qfile)->Name("write_random/qfile");
#endif

#ifdef ORBCORE_PEER_GIO
template <class Action> void with_gio_input(Action action) {
    GFile* const file = g_file_new_for_path(sample().path.c_str());
    GInputStream* const raw = G_INPUT_STREAM(g_file_read(file, nullptr, nullptr));
    GInputStream* const in = g_buffered_input_stream_new_sized(raw, kBuffer);
    action(in);
    g_object_unref(in);
    g_object_unref(raw);
    g_object_unref(file);
}
void read_gio(benchmark::State& state) {
    char record[kRecord];
    for (auto _ : state)
        with_gio_input([&](GInputStream* in) {
            gsize got = kRecord;
            while (got == kRecord)
                g_input_stream_read_all(in, record, kRecord, &got, nullptr, nullptr);
        });
    count(state, kRecords);
}
void random_read_gio(benchmark::State& state) {
    with_gio_input([&](GInputStream* in) {
        at_places(state, [&](std::size_t place, char* to) {
            gsize got = 0;
            g_seekable_seek(G_SEEKABLE(in), static_cast<goffset>(place), G_SEEK_SET, nullptr,
                            nullptr);
            g_input_stream_read_all(in, to, kRecord, &got, nullptr, nullptr);
        });
    });
}
BENCHMARK(read_gio)->Name("read_sequence/gio");
BENCHMARK(random_read_gio)->Name("read_random/gio");
#endif

// ---- Memory.

constexpr std::size_t kMemory = 1 << 20;

void memory_write_orbcore(benchmark::State& state) {
    const std::string record(static_cast<std::size_t>(state.range(0)), 'm');
    for (auto _ : state) {
        const auto file = core::create_memory_file(0);
        for (std::size_t i = 0; i < kMemory; i += record.size())
            file->write(record.data(), static_cast<unsigned>(record.size()));
    }
}
template <class Bytes> void memory_write_bytes(benchmark::State& state) {
    const std::string record(static_cast<std::size_t>(state.range(0)), 'm');
    for (auto _ : state) {
        Bytes bytes;
        for (std::size_t i = 0; i < kMemory; i += record.size())
            bytes.insert(bytes.end(), record.begin(), record.end());
        benchmark::DoNotOptimize(bytes.data());
    }
}
void memory_read_orbcore(benchmark::State& state) {
    std::string record(static_cast<std::size_t>(state.range(0)), 'm');
    const auto file = core::create_memory_file(0);
    const std::string all(kMemory, 'x');
    file->write(all.data(), kMemory);
    for (auto _ : state) {
        file->seek(0, core::kSeekFromStart);
        while (file->read(record.data(), static_cast<unsigned>(record.size())))
            benchmark::DoNotOptimize(record.data());
    }
}
void memory_read_bytes(benchmark::State& state) {
    std::string record(static_cast<std::size_t>(state.range(0)), 'm');
    const std::vector<char> bytes(kMemory, 'x');
    for (auto _ : state)
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t part = std::min(record.size(), bytes.size() - at);
            std::memcpy(record.data(), bytes.data() + at, part);
            benchmark::DoNotOptimize(record.data());
            at += part;
        }
}
BENCHMARK(memory_write_orbcore)->Name("memory_write/orbcore")->Arg(16)->Arg(100)->Arg(4096);
BENCHMARK(memory_write_bytes<std::string>)
    ->Name("memory_write/string")
    ->Arg(16)
    ->Arg(100)
    ->Arg(4096);
BENCHMARK(memory_write_bytes<std::vector<char>>)
    ->Name("memory_write/vector")
    ->Arg(16)
    ->Arg(100)
    ->Arg(4096);
BENCHMARK(memory_read_orbcore)->Name("memory_read/orbcore")->Arg(16)->Arg(100)->Arg(4096);
BENCHMARK(memory_read_bytes)->Name("memory_read/vector")->Arg(16)->Arg(100)->Arg(4096);

// ---- Opening: the sharing rules cost a second descriptor and three locks.

void open_orbcore(benchmark::State& state) {
    const stdx::ustring path(sample().path.u16string());
    for (auto _ : state) {
        core::IFileIOManager& manager = core::file_io_manager();
        manager.close(manager.open(path, 264));
    }
}
void open_plain(benchmark::State& state) {
    for (auto _ : state) ::close(::open(sample().path.c_str(), O_RDONLY | O_CLOEXEC));
}
BENCHMARK(open_orbcore)->Name("open_close/orbcore");
BENCHMARK(open_plain)->Name("open_close/plain");

} // namespace
