// Values from lists: the first byte picks the form, the rest is text or bytes. Whatever is read can be
// written, and comes back equal.
#include "../tests/persistence/StorageProgram.h"
#include "../tests/support/ProcessTest.h"

#include <core/values/Value.h>

#include <cstdlib>

namespace {

using namespace test;

constexpr char kText = 't', kBytes = 'b';

core::Value read(const StorageKind& kind, std::string_view bytes) {
    const auto file = source_of(bytes, true);
    core::Value value;
    core::GenericValue::deserialize(open_in(kind, file.get()).get(), value);
    return value;
}

core::Value written_and_read(const StorageKind& kind, const core::Value& value) {
    return read(kind, stored(kind, [&](core::IOutPersistenceStorage& storage) {
                    value.serialize(&storage);
                }));
}

// Text drops the fractions of seconds, so the first reading may differ, but no further one.
void check(const core::Value& value) {
    for (const StorageKind& kind : {kStream, kBinary}) {
        const core::Value first = written_and_read(kind, value);
        if (!(written_and_read(kind, first) == first)) std::abort();
        if (kind.out == kBinary.out && !(first == value)) std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ManualProcess process(nullptr);
    if (size == 0) return 0;
    const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    try {
        if (data[0] == kText) {
            core::Value value;
            core::GenericValue::fromString(core::from_utf8(rest), value);
            check(value);
        } else if (data[0] == kBytes) {
            check(read(kBinary, rest));
        }
    } catch (const core::ListStreamException&) {
    } catch (const core::IOException&) {}
    return 0;
}
