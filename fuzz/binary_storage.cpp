// Lists of bytes with attachments: the first line is a program of reads, the rest is the file.
#include "../tests/persistence/StorageFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    test::fuzz_storage(test::kBinary, data, size);
    return 0;
}
