#include <core/text/EncodingTester.h>

#include "ConverterTable.h"

#include <algorithm>

namespace core {
namespace {

// Stops at each character that the encoding lacks: ICU's callback of this kind lets those pass that
// are ignorable by default, such as the soft hyphen.
void U_CALLCONV stop(const void*, UConverterFromUnicodeArgs*, const UChar*, std::int32_t, UChar32,
                     UConverterCallbackReason, UErrorCode*) {}

} // namespace

struct EncodingTester::State {
    UniqueConverter converter;
};

EncodingTester::EncodingTester(const stdx::ustring& name)
    : state_(std::make_unique<State>(State{find_encoding(name.view())->open()})) {
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(state_->converter.get(), stop, nullptr, nullptr, nullptr, &status);
}

EncodingTester::EncodingTester(EncodingTester&&) noexcept = default;
EncodingTester& EncodingTester::operator=(EncodingTester&&) noexcept = default;
EncodingTester::~EncodingTester() = default;

bool EncodingTester::performTest(const stdx::ustring& text) {
    constexpr unsigned kMostUnits = 0x100000; // far more than fill the buffer
    char buffer[8192];
    char* out = buffer;
    const char16_t* in = text.data();
    UErrorCode status = U_ZERO_ERROR;
    ucnv_resetFromUnicode(state_->converter.get());
    ucnv_fromUnicode(state_->converter.get(), &out, buffer + sizeof buffer, &in,
                     in + std::min(text.size(), kMostUnits), nullptr, true, &status);
    return U_SUCCESS(status) || status == U_BUFFER_OVERFLOW_ERROR;
}

} // namespace core
