// Whether a text fits an encoding: `Converter` writes "?" for a character that the encoding lacks,
// this tells beforehand.
//
//   if (!core::EncodingTester(u"windows-1251").performTest(text)) ...   // information would be lost
//
// An object serves one thread at a time.
#pragma once

#include <core/platform/api.h>
#include <core/text/ConverterException.h>
#include <elm/string>

#include <memory>

namespace core {

class ORBCORE_API EncodingTester {
public:
    // Throws ConverterException with Error::BadName for a name that is empty or not known.
    explicit EncodingTester(const stdx::ustring& name);
    EncodingTester(EncodingTester&&) noexcept;
    EncodingTester& operator=(EncodingTester&&) noexcept;
    ~EncodingTester();

    // False if a character is not in the encoding, or half of a surrogate pair stands in the text.
    // Only what gives the first 8,192 bytes is looked at.
    bool performTest(const stdx::ustring& text);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace core
