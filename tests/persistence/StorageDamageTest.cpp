// Damaged storages end in the one exception that is told and in nothing else; faults of files are
// told to whoever can hear of them.
#include "StorageProgram.h"
#include "support/ProcessTest.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/TechLog.h>
#include <core/files/FileException.h>

#include <limits>
#include <random>

namespace {

using namespace core;
using namespace test;

class StorageDamage : public ProcessTest {};

// Under the thread sanitizer each storage costs some 200 KB of its memory for good.
#ifdef __SANITIZE_THREAD__
constexpr unsigned kFewer = 16;
#else
constexpr unsigned kFewer = 1;
#endif

std::string sample(const StorageKind& kind) {
    return stored(kind, [](IOutPersistenceStorage& storage) {
        ListOutStream& list = *storage.listStream();
        list->beginList();
        list->putInt32(-70'000);
        put_attachment(storage, "some bytes of an attachment");
        put_attachment(storage, "");
        list->putString(u"text \u0416");
        list->beginList();
        put_attachment(storage, std::string(70, 'x'));
        list->endList();
        list->endList();
    });
}

constexpr std::string_view kPrograms[] = {"{iffs{f}}", "{ioos{o}}", "{ipps{p}}", "{inns{n}}",
                                          "{if~}"};

bool ends_badly(const std::string& result) {
    return result.ends_with(kRefused) || result.ends_with(kNoUtf8);
}

TEST_F(StorageDamage, ACutStorageIsRefused) {
    for (const StorageKind& kind : kKinds) {
        const std::string bytes = sample(kind);
        EXPECT_EQ(run(kind, "{iffs{f}}", bytes),
                  "-70000;some bytes of an attachment;;text \u0416;" + std::string(70, 'x') + ';');
        for (std::size_t size = 0; size != bytes.size(); ++size)
            for (const bool seekable : {false, true}) {
                // The mark of the encoding alone may be missing.
                for (const std::string_view operations : {"{iffs{f}}", "{ioos{o}}"}) {
                    EXPECT_TRUE(ends_badly(run(kind, operations, bytes.substr(0, size), seekable)))
                        << kind.name << size;
                }
                run(kind, "{inns{n}}", bytes.substr(0, size), seekable);
            }
    }
}

TEST_F(StorageDamage, AChangedStorageIsReadOrRefused) {
    std::mt19937 random(1);
    for (const StorageKind& kind : kKinds) {
        const std::string bytes = sample(kind);
        unsigned refused = 0;
        for (std::size_t i = 0; i < bytes.size(); i += kFewer)
            for (const char change :
                 {'\x01', '\x80', '\xFF', static_cast<char>(1 + random() % 255)}) {
                std::string changed = bytes;
                changed[i] ^= change;
                for (const std::string_view operations : kPrograms) {
                    const std::string result = run(kind, operations, changed, false);
                    EXPECT_EQ(run(kind, operations, changed, true), result) << kind.name << i;
                    refused += ends_badly(result);
                }
            }
        EXPECT_GT(refused, bytes.size() / kFewer) << kind.name;
    }
}

TEST_F(StorageDamage, NoiseIsReadOrRefused) {
    std::mt19937 random(1);
    for (unsigned round = 0; round != 3000 / kFewer; ++round)
        for (const StorageKind& kind : kKinds) {
            std::string bytes(random() % 60, 0);
            for (char& c : bytes) c = static_cast<char>(random());
            if (bytes.size() > 20 && random() % 2 == 0) // what begins well gets further
                bytes.replace(0, 12, sample(kind), 0, 12);
            for (const std::string_view operations : {"{iffs{f}}", "{pos", "fofo"})
                EXPECT_EQ(run(kind, operations, bytes, false), run(kind, operations, bytes, true));
        }
}

// ---- Files that fail.

// Gives and takes so many bytes, then throws.
class FailingFile
    : public ObjectRoot
    , public SCOM_InternalClass<FailingFile>
    , public BytesIO {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<FailingFile, IFile>(); }
    FailingFile(std::string data, std::size_t allowed)
        : BytesIO(std::move(data)), allowed_(allowed) {}

    unsigned read(void* to, unsigned n) override {
        if (at >= allowed_) fail();
        return BytesIO::read(to, std::min(n, static_cast<unsigned>(allowed_ - at)));
    }
    void write(const void* from, unsigned n) override {
        if (bytes.size() + n > allowed_) fail();
        BytesIO::write(from, n);
    }

private:
    [[noreturn]] static void fail() { throw_file_exception(ORB_FILE_HERE, {}, ENOSPC); }

    std::size_t allowed_;
};

// Wherever writing fails, the caller hears of it, at last by `close`; the storage is closed then.
TEST_F(StorageDamage, WhatCannotBeWrittenIsTold) {
    const auto save = [](IOutPersistenceStorage& storage) {
        (*storage.listStream())->beginList();
        put_attachment(storage,
                       std::string(20'000, 'x')); // its release fails, in storages of bytes
        put_attachment(storage, std::string(20'000, 'y'));
        (*storage.listStream())->endList();
    };
    for (const StorageKind& kind : kKinds) {
        const std::size_t whole = stored(kind, save).size();
        for (const std::size_t allowed : {std::size_t{0}, std::size_t{10'000}, whole - 1, whole}) {
            SCOPED_TRACE(kind.name + std::to_string(allowed));
            const auto file = make_object<FailingFile>("", allowed);
            const auto storage = open_out(kind, file.get());
            bool told = false;
            const auto attempt = [&](auto step) {
                try {
                    step();
                } catch (const FileException& exception) {
                    told = exception.error() == FileException::Error::DeviceFull;
                } catch (const IOException& exception) {
                    told = exception.error() == IOException::Error::TargetFault;
                }
            };
            attempt([&] { save(*storage); });
            attempt([&] { attach(*storage, nullptr); });
            EXPECT_EQ(told, allowed != whole);
            EXPECT_THROW(storage->listStream(), ListStreamException);
        }
    }
}

// Of two attachments that are open at a time the release of the second writes the first.
TEST_F(StorageDamage, AFailedReleaseIsToldByTheNextCall) {
    const auto full = make_object<FailingFile>("", std::size_t{0});
    const auto storage = open_out(kStream, full.get());
    auto first = storage->binFile(), second = storage->binFile();
    first->write(std::string(200'000, 'x').data(), 200'000);
    first.reset();
    second.reset();
    EXPECT_THROW((*storage->listStream())->putInt8(1), IOException);
}

TEST_F(StorageDamage, FaultsOfFilesPass) {
    for (const StorageKind& kind : kKinds) {
        const std::string bytes = sample(kind);
        const auto file = make_object<FailingFile>(bytes, bytes.size() / 2);
        bool told = false;
        try {
            run(kind, "{iffs{f}}", file.get());
        } catch (const FileException&) {
            told = true;
        } catch (const IOException& exception) {
            told = exception.error() == IOException::Error::SourceFault;
        }
        EXPECT_TRUE(told) << kind.name;
    }
}

// ---- Attachments that are passed.

int logged = 0;

constexpr _GUID CLSID_CountingLog = "2c5235ae-8352-4455-8e36-50db771993b8"_guid;

class CountingLog
    : public ObjectRoot
    , public SCOM_Class<CountingLog, &CLSID_CountingLog>
    , public ITechLog {
public:
    static constexpr auto categories = core::categories(&CATID_TechLog);
    static const InterfaceEntry* _GetEntries() { return interface_map<CountingLog, ITechLog>(); }
    void writeException(const Exception&, const stdx::ustring&) override { ++logged; }
};

TEST_F(StorageDamage, AHolderFetchesLateAndTellsWhatFailsInPassing) {
    const std::string bytes = stored(kBinary, [](IOutPersistenceStorage& storage) {
        put_attachment(storage, "first");
        put_attachment(storage, "second");
        put_attachment(storage, "third");
    });
    logged = 0;
    const auto storage = open_in(kBinary, source_of(bytes, true).get());
    {
        const ForwardOnlyBinFileHolder unused(storage.get());
        ForwardOnlyBinFileHolder holder(storage.get());
        IFile* const file = holder.file();
        EXPECT_EQ(holder.file(), file);
        char byte;
        file->read(&byte, 1);
    }
    {
        ForwardOnlyBinFileHolder holder(storage.get());
        EXPECT_EQ(read_all(*holder.file()), "second");
        holder.closeForwardOnlyBinFile();
        EXPECT_EQ(holder.file(), nullptr);
        holder.closeForwardOnlyBinFile();
    }
    EXPECT_EQ(read_all(*storage->forwardOnlyBinFile()), "third");
    EXPECT_EQ(logged, 0);

    // The list of the attachment has no end. Who asks is told, for others there is the log.
    const std::string cut = bytes.substr(0, 8);
    for (const bool asks : {false, true}) {
        const auto damaged = open_in(kBinary, source_of(cut, true).get());
        ForwardOnlyBinFileHolder holder(damaged.get());
        EXPECT_EQ(read_all(*holder.file()), "first");
        if (!asks) continue;
        EXPECT_THROW(holder.closeForwardOnlyBinFile(), ListStreamException);
    }
    EXPECT_EQ(logged, 1);
    // Behind a failed read there is nothing to tell.
    EXPECT_EQ(run(kBinary, "p", bytes.substr(0, 5)), kRefused);
    EXPECT_EQ(logged, 1);
}

} // namespace

ORBCORE_REGISTER(CountingLog);
