#include "FilesTest.h"

#include <core/component/IllegalStateException.h>
#include <core/concurrency/Thread.h>
#include <core/files/TempFile.h>
#include <core/files/TempFileHost.h>

#include <chrono>
#include <csignal>
#include <thread>

#include <sys/resource.h>

namespace {

using namespace test;
using File = core::InterfacePtr<core::IFileEx>;
using Host = core::InterfacePtr<core::ITempFileHost>;

class TempFiles : public FilesTest {
protected:
    TempFiles() { table()->setDefaultHost(core::create_temp_file_host(wide(directory_)).get()); }
    ~TempFiles() { table()->setDefaultHost(nullptr); }

    static core::ITempFileService& service() {
        return *core::get_service<core::ITempFileService>();
    }
    static core::InterfacePtr<core::ITempFileServiceTable> table() {
        return core::InterfacePtr<core::ITempFileServiceTable>(&service());
    }
    std::size_t files() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(directory_), fs::directory_iterator()));
    }
    static bool within_seconds(const std::function<bool()>& condition) {
        for (int i = 0; i < 500; ++i) {
            if (condition()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return false;
    }
};
using TempHosts = TempFiles;

TEST_F(TempFiles, SpillWhenTheyOutgrowTheirThreshold) {
    {
        const File object = core::create_temp_file(10);
        char byte = 0;
        EXPECT_EQ(object->read(&byte, 1), 0u);
        write(*object, "01234");
        write(*object, "56789");
        EXPECT_EQ(files(), 0u);
        object->seek(3, core::kSeekFromStart);
        write(*object, "xxx"); // within the ten
        EXPECT_EQ(files(), 0u);
        write(*object, "yyyyy");
        EXPECT_EQ(files(), 1u);
        EXPECT_EQ(object->seek(0, core::kSeekFromCurrent), 11);
        object->seek(0, core::kSeekFromStart);
        EXPECT_EQ(read_all(*object), "012xxxyyyyy");
        const fs::path path = fs::directory_iterator(directory_)->path();
        EXPECT_EQ(path.filename().string().substr(0, 4), "orbl");
        EXPECT_EQ(path.extension(), ".tmp");
        EXPECT_EQ(object->url(), core::file_url(wide(path)));
        EXPECT_EQ(error_of([&] { open(path, 264); }), Error::Sharing);
    }
    EXPECT_EQ(files(), 0u);
    const File large = core::create_temp_file(4);
    write(*large, "01234");
    EXPECT_EQ(files(), 1u);
    const File far = core::create_temp_file(0xFFFFFFFF);
    EXPECT_EQ(far->seek(1ll << 33, core::kSeekFromStart), 1ll << 33);
    EXPECT_EQ(files(), 2u);
}

TEST_F(TempFiles, KeepAllWhenSpillingFails) {
    const File object = core::create_temp_file(1000);
    write(*object, std::string(1000, 'a'));
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit former;
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &former), 0);
    const rlimit small = {100, former.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const Error error = error_of([&] { write(*object, "b"); });
    ::setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_EQ(error, Error::Failure);
    EXPECT_EQ(files(), 0u);
    EXPECT_EQ(object->seek(0, core::kSeekFromCurrent), 1000);
    write(*object, "b");
    object->seek(0, core::kSeekFromStart);
    EXPECT_EQ(read_all(*object), std::string(1000, 'a') + "b");
}

TEST_F(TempFiles, AreHandedOver) {
    for (const char* const text : {"", "small", "larger than it may be in memory"}) {
        const auto object = core::create_object<core::ITempFile>(core::CLSID_TempFile);
        object->setThreshold(10);
        const File data(object);
        write(*data, text);
        const core::URL url = object->realize();
        const fs::path path = std::u16string(core::file_path(url).view());
        EXPECT_EQ(contents(path), text);
        EXPECT_EQ(data->seek(0, core::kSeekFromEnd), 0); // empty again
        service().release(wide(path));
        EXPECT_FALSE(fs::exists(path));
    }
}

TEST_F(TempHosts, ReportDirectoriesThatTakeNoFiles) {
    for (const char* const name : {"none", "a"}) {
        file("a", "");
        const auto host = core::create_temp_file_host(wide(directory_ / name));
        EXPECT_EQ(error_of([&] { host->create(); }), Error::GetTmpFileName);
        service().setThreadHost(host.get());
        EXPECT_EQ(error_of([&] { write(*core::create_temp_file(0), "x"); }), Error::GetTmpFileName);
        service().setThreadHost(nullptr);
    }
    EXPECT_THROW(service().create(u"/x"), core::Exception);
}

TEST_F(TempHosts, RemoveReleasedFilesOnceNobodyHasThem) {
    const stdx::ustring name = service().create(u".txt");
    const fs::path path = std::u16string(name.view());
    EXPECT_EQ(path.parent_path(), directory_);
    EXPECT_EQ(path.extension(), ".txt");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0660));
    {
        const auto used = open(path, 264);
        service().release(name);
        EXPECT_TRUE(fs::exists(path));
    }
    EXPECT_TRUE(within_seconds([&] { return !fs::exists(path); }));
    service().release(u"/etc/hostname"); // none of its files
    EXPECT_TRUE(fs::exists("/etc/hostname"));
}

TEST_F(TempHosts, ClearWhatDeadProcessesLeft) {
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(2);
    const fs::path left = file("orblABCDEF", ""), fresh = file("orblFRESH1", ""),
                   other = file("other", ""), used = file("orblUSED01", "");
    Peer peer;
    ASSERT_GE(peer.open(used, 24), 0);
    for (const fs::path& path : {left, other, used}) fs::last_write_time(path, old);
    const Host host = core::create_temp_file_host(wide(directory_));
    EXPECT_TRUE(within_seconds([&] { return !fs::exists(left); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    for (const fs::path& path : {fresh, other, used}) EXPECT_TRUE(fs::exists(path)) << path;
}

TEST_F(TempHosts, OfOtherKinds) {
    const fs::path lazy = directory_ / "made" / "late";
    const Host late = core::create_lazy_temp_file_host(wide(lazy));
    EXPECT_EQ(late->directory(), wide(lazy));
    EXPECT_FALSE(fs::exists(lazy));
    late->release(late->create());
    EXPECT_TRUE(fs::exists(lazy));

    for (const bool removeDirectory : {false, true}) {
        auto host = core::create_temp_file_host_auto(wide(lazy), removeDirectory);
        host->create();
        host->clear();
        EXPECT_TRUE(fs::is_empty(lazy));
        host->create();
        host.reset();
        EXPECT_EQ(fs::exists(lazy), !removeDirectory);
    }
}

// Made by a thread that still runs while the process ends; the file stays open, so that the host's
// own thread has a reason to go on.
TEST_F(TempHosts, CleanNoLongerThanTheirProcessLives) {
    Host late;
    int handle = -1;
    core::InterfacePtr<core::SCOM_ProcessData> data;
    {
        ManualProcess process;
        data = process.host().processData();
        const auto is_closed = [] {
            const auto thread = core::create_thread([] {});
            thread->start();
            return thread->state() == core::Thread::State::Terminated;
        };
        const auto thread = core::create_thread([&] {
            while (!is_closed()) core::Thread::yield();
            late = core::create_temp_file_host(wide(directory_));
            const stdx::ustring name = late->create(u".txt");
            handle = core::file_io_manager().open(name, core::kFileRead);
            late->release(name);
        });
        thread->start();
    }
    EXPECT_TRUE(within_seconds([&] { return data->references() == 1; })) << "somebody is inside";
    core::file_io_manager().close(handle);
}

TEST_F(TempHosts, AreSetForAThread) {
    fs::create_directory(directory_ / "own");
    const Host own = core::create_temp_file_host(wide(directory_ / "own"));
    EXPECT_FALSE(service().setThreadHost(own.get()));
    EXPECT_EQ(service().threadHost(), own);
    EXPECT_EQ(service().directory(), wide(directory_ / "own"));
    stdx::ustring elsewhere;
    const auto thread = core::create_thread([&] { elsewhere = service().directory(); });
    thread->start();
    thread->join();
    EXPECT_EQ(elsewhere, wide(directory_));

    const File object = core::create_temp_file(0);
    write(*object, "x");
    EXPECT_EQ(service().setThreadHost(nullptr), own);
    EXPECT_EQ(service().directory(), wide(directory_));
    EXPECT_EQ(fs::path(std::u16string(core::file_path(object->url()).view())).parent_path(),
              directory_ / "own");
}

TEST_F(TempHosts, ServeManyThreads) {
    std::vector<core::InterfacePtr<core::Thread>> threads;
    for (int i = 0; i < 4; ++i) {
        threads.push_back(core::create_thread([] {
            for (int round = 0; round < 50; ++round) {
                const File object = core::create_temp_file(2);
                write(*object, "12345");
                object->seek(0, core::kSeekFromStart);
                EXPECT_EQ(read_all(*object), "12345");
            }
        }));
        threads.back()->start();
    }
    for (const auto& thread : threads) thread->join();
    EXPECT_EQ(files(), 0u);
}

} // namespace
