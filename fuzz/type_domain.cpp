// Stored patterns of types: 'b' and the bytes of a list, or its text in UTF-8. What is read keeps
// within its limits, comes back from both forms, and makes a domain.
#include "../tests/lists/ListSources.h"

#include <core/component/Utf8.h>
#include <core/values/TypeDomain.h>

#include <cstdint>
#include <cstdlib>
#include <optional>

namespace {

using core::TypeDomainPattern;

template <class Source> TypeDomainPattern read(const core::InterfacePtr<Source>& source) {
    core::ListInStream list(source.get());
    TypeDomainPattern pattern;
    pattern.deserialize(list);
    return pattern;
}

std::optional<TypeDomainPattern> read(std::string_view input) {
    try {
        if (input.starts_with('b')) return read(test::make_file(std::string(input.substr(1)), 7));
        return read(
            test::make_reader(std::u16string(std::u16string_view(core::from_utf8(input))), 7));
    } catch (const core::ListStreamException&) {
        return std::nullopt;
    }
}

void require(bool holds) {
    if (!holds) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto pattern = read({reinterpret_cast<const char*>(data), size});
    if (!pattern) return 0;
    const core::NumericQualifiers& number = pattern->getNumericQualifiers();
    require(number.digits <= 64 && number.fraction <= number.digits);
    require(!pattern->contains(core::CLSID_UndefinedType) && !pattern->contains(core::kUUIDNull));
    require(core::TypeDomain(*pattern).size() <= pattern->size());

    const auto write = [&](core::IListOutStream& stream) {
        core::ListOutStream list(&stream);
        pattern->serialize(list);
    };
    for (const TypeDomainPattern& again : {read(test::make_file(test::bytes_of(write), 0)),
                                           read(test::make_reader(test::text_of(write), 0))}) {
        require(again == *pattern);
        for (const _GUID& type : pattern->types()) require(again.hasEqualQualifier(*pattern, type));
        require(again.isSubset(*pattern) && again.hash() == pattern->hash());
    }
    return 0;
}
