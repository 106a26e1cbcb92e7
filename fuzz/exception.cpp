// Stored exceptions: 'b' and the bytes of a list, or its text in UTF-8. What is read can be thrown
// again, and comes back from both forms as it was written.
#include "../tests/exceptions/StoredExceptions.h"

#include <core/component/Exception.h>
#include <core/component/Utf8.h>
#include <core/runtime/Process.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

using Object = core::InterfacePtr<core::IExceptionObject>;

Object read(std::string_view input) {
    try {
        if (input.starts_with('b')) return test::from_bytes(std::string(input.substr(1)));
        return test::from_text(std::u16string(std::u16string_view(core::from_utf8(input))));
    } catch (const core::ListStreamException&) {
    } catch (const std::invalid_argument&) {}
    return nullptr;
}

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

bool throws_itself(core::IExceptionObject* object) {
    bool same = false;
    try {
        object->rethrow();
    } catch (const core::Exception& exception) {
        same = exception.objectClass() == object->exception()->objectClass() && exception.object();
    }
    return same;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    [[maybe_unused]] static core::Process& host = *[] {
        auto* const made = new core::Process;
        made->construct(nullptr);
        made->init(nullptr);
        return made;
    }();
    const Object object = read({reinterpret_cast<const char*>(data), size});
    if (!object) return 0;
    require(throws_itself(object.get()), "an object throws an exception of its class");
    const std::u16string text = test::to_text(object.get());
    require(test::to_text(test::from_text(text).get()) == text, "text comes back");
    const std::string bytes = test::to_bytes(object.get());
    require(test::to_bytes(test::from_bytes(bytes).get()) == bytes, "bytes come back");
    return 0;
}
