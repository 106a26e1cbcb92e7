// A buffered file against plain bytes: whatever is read, written, sought and cut, in whatever order,
// both agree. The first two bytes choose the size of the buffer and how much the file behind it
// gives at a time.
#include "../tests/files/ChoppyFile.h"
#include "../tests/files/FileModel.h"

#include <core/files/BufferedFile.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 4096;
    if (size < 2 || size > kLongest) return 0;
    const unsigned bufferSize = data[0] == 255 ? 8192 : data[0] + 1u;
    core::InterfacePtr<core::IFileEx> inner;
    if (data[1] == 0)
        inner = core::create_memory_file(0);
    else
        inner = core::make_object<test::ChoppyFile>(data[1] * 4u);
    const auto file = core::create_buffered_file(inner.get(), bufferSize);

    test::FileModel model;
    if (const auto difference = test::run_program(*file, model, {data + 2, size - 2})) {
        std::fprintf(stderr, "%s\n", difference->c_str());
        std::abort();
    }
    return 0;
}
