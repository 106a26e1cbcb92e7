// Files by URL beside the system's own calls. What should hold: opening and closing costs the calls
// that sharing needs, not the way there; a copy goes at the kernel's speed.
#include <core/component/SCOM_Process.h>
#include <core/files/FileObject.h>
#include <core/files/FileSystemFunctions.h>
#include <core/runtime/Process.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A process, and a directory with a file of 16 MiB and a hundred small ones.
struct Setting {
    Setting() {
        host.construct(nullptr);
        host.init(nullptr);
        char name[] = "/tmp/orb-bench-XXXXXX";
        directory = ::mkdtemp(name);
        std::ofstream(directory + "/large") << std::string(16 << 20, 'x');
        for (int i = 0; i != 100; ++i) std::ofstream(directory + "/small" + std::to_string(i));
    }
    ~Setting() { std::filesystem::remove_all(directory); }

    core::URL url(const char* name) const {
        const std::string path = directory + name;
        return core::file_url(stdx::ustring(path.begin(), path.end()));
    }

    core::Process& host = *new core::Process;
    std::string directory;
};

const Setting& setting() {
    static const Setting made;
    return made;
}

core::IFileSystem& files() {
    return *core::get_service<core::IFileSystem>();
}

void open_close(benchmark::State& state) {
    const core::URL url = setting().url("/small1");
    for (auto _ : state) benchmark::DoNotOptimize(files().open(url, core::kFileOpenForRead).get());
}
BENCHMARK(open_close)->Name("open_close/orbcore");

// What lies below the file system.
void open_close_object(benchmark::State& state) {
    const core::URL url = setting().url("/small1");
    const stdx::ustring path = core::file_path(url);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            core::make_object<core::FileObject>(url, path, core::kFileOpenForRead).get());
}
BENCHMARK(open_close_object)->Name("open_close_object/orbcore");

void open_close_plain(benchmark::State& state) {
    const std::string path = setting().directory + "/small1";
    for (auto _ : state) {
        const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        benchmark::DoNotOptimize(fd);
        ::close(fd);
    }
}
BENCHMARK(open_close_plain)->Name("open_close/system");

void find(benchmark::State& state) {
    const core::URL url = setting().url("/small1");
    for (auto _ : state) benchmark::DoNotOptimize(files().find(url, nullptr)->size());
}
BENCHMARK(find)->Name("find/orbcore");

void find_plain(benchmark::State& state) {
    const std::string path = setting().directory + "/small1";
    for (auto _ : state) benchmark::DoNotOptimize(std::filesystem::file_size(path));
}
BENCHMARK(find_plain)->Name("find/std");

void list(benchmark::State& state) {
    const core::URL url = setting().url("");
    for (auto _ : state) {
        std::uint64_t sizes = 0;
        for (auto stat = files().find(url, u"small*"); stat;) {
            sizes += stat->size() + stat->url().text().size();
            if (!stat->next()) break;
        }
        benchmark::DoNotOptimize(sizes);
    }
}
BENCHMARK(list)->Name("list/orbcore/100");

void list_plain(benchmark::State& state) {
    for (auto _ : state) {
        std::uint64_t sizes = 0;
        for (const auto& entry : std::filesystem::directory_iterator(setting().directory)) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with("small"))
                sizes += entry.file_size() + entry.path().native().size();
        }
        benchmark::DoNotOptimize(sizes);
    }
}
BENCHMARK(list_plain)->Name("list/std/100");

void copy(benchmark::State& state) {
    const core::URL from = setting().url("/large"), to = setting().url("/copy");
    for (auto _ : state) files().copy(from, to);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) << 24);
}
BENCHMARK(copy)->Name("copy/orbcore/16MiB")->Unit(benchmark::kMillisecond);

void copy_plain(benchmark::State& state) {
    const std::string from = setting().directory + "/large", to = setting().directory + "/copy";
    for (auto _ : state)
        std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) << 24);
}
BENCHMARK(copy_plain)->Name("copy/std/16MiB")->Unit(benchmark::kMillisecond);

} // namespace
