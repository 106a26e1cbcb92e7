// Every kind of file against plain bytes.
#include "ChoppyFile.h"
#include "FileModel.h"
#include "FilesTest.h"

#include <core/files/BufferedFile.h>
#include <core/files/PartFile.h>
#include <core/files/SharedMemoryBlock.h>
#include <core/files/ShiftedFile.h>
#include <core/files/TempFile.h>

#include <random>

namespace {

using namespace test;
using File = core::InterfacePtr<core::IFileEx>;

class EveryFile : public FilesTest {
protected:
    void expect_model(const char* what, const std::function<File(FileModel&)>& make) {
        SCOPED_TRACE(what);
        for (unsigned seed = 0; seed < 60; ++seed) {
            std::mt19937 random(seed);
            std::vector<std::uint8_t> program(2 * (50 + random() % 200));
            for (auto& byte : program) byte = static_cast<std::uint8_t>(random());
            FileModel model;
            const File object = make(model);
            const auto difference = run_program(*object, model, program);
            ASSERT_FALSE(difference) << *difference << ", seed " << seed;
        }
    }

    File real() { return open(file("a", ""), 24); }
    static File memory() { return core::create_memory_file(0); }
    static File filled(const std::string& text) {
        File made = memory();
        write(*made, text);
        made->seek(0, core::kSeekFromStart);
        return made;
    }
};

std::string sample(std::size_t n) {
    std::string text(n, '\0');
    for (std::size_t i = 0; i < n; ++i) text[i] = static_cast<char>(i * 7 + i / 256);
    return text;
}

TEST_F(EveryFile, BehavesAsBytes) {
    expect_model("a real file", [&](FileModel&) { return real(); });
    expect_model("memory", [&](FileModel&) { return memory(); });
    for (const unsigned threshold : {0u, 700u, 100'000u})
        expect_model("a temporary file",
                     [&](FileModel&) { return core::create_temp_file(threshold); });
    expect_model("a buffered temporary file",
                 [&](FileModel&) { return core::create_buffered_temp_file(700, 64); });
}

TEST_F(EveryFile, BehavesAsBytesThroughABuffer) {
    expect_model("over a real file",
                 [&](FileModel&) { return core::create_buffered_file(real().get(), 64); });
    for (const unsigned size : {1u, 7u, 64u, 1000u, 8192u}) {
        SCOPED_TRACE(size);
        expect_model("over memory",
                     [&](FileModel&) { return core::create_buffered_file(memory().get(), size); });
        expect_model("over a file that reads too little", [&](FileModel&) {
            return core::create_buffered_file(core::make_object<ChoppyFile>(9u).get(), size);
        });
    }
}

TEST_F(EveryFile, BehavesAsBytesThroughAWindow) {
    const std::string text = sample(5000);
    expect_model("behind a preamble", [&](FileModel&) {
        const auto shifted = core::create_object<core::IShiftedFile>(core::CLSID_ShiftedFile);
        shifted->attach(memory().get(), filled("preamble").get(), 8);
        return shifted;
    });
    expect_model("a part", [&](FileModel& model) {
        const auto part = core::create_object<core::IPartFile>(core::CLSID_PartFile);
        const File whole = filled(text);
        whole->seek(1000, core::kSeekFromStart);
        part->attach(whole.get(), 3000);
        model = {text.substr(1000, 3000), false, true};
        return File(part);
    });
    expect_model("a shared block", [&](FileModel& model) {
        const auto block =
            core::create_object<core::ISharedMemoryBlock>(core::CLSID_SharedMemoryBlock);
        block->assign(filled(text).get());
        model = {text, false};
        return block->connect(core::URL());
    });
}

} // namespace
