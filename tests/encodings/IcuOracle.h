// What ICU alone makes of whole texts, under the library's rules: bytes that are no text are
// refused, each character that an encoding lacks is written as "?".
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>

namespace test {

class IcuOracle {
public:
    explicit IcuOracle(const char* encoding) {
        UErrorCode status = U_ZERO_ERROR;
        converter_.reset(ucnv_open(encoding, &status));
        UErrorCode refused = U_ZERO_ERROR;
        ucnv_setSubstChars(converter_.get(), "?", 1, &refused);
        ucnv_setFromUCallBack(converter_.get(), substitute, nullptr, nullptr, nullptr, &status);
        ucnv_setToUCallBack(converter_.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                            &status);
    }

    std::string narrow(std::u16string_view text) const {
        std::string bytes(16 * text.size() + 64, '\0');
        UErrorCode status = U_ZERO_ERROR;
        const int size =
            ucnv_fromUChars(converter_.get(), bytes.data(), static_cast<int>(bytes.size()),
                            text.data(), static_cast<int>(text.size()), &status);
        bytes.resize(static_cast<std::size_t>(size));
        return bytes;
    }
    // Nothing for bytes that are no text.
    std::optional<std::u16string> widen(std::string_view bytes) const {
        std::u16string text(4 * bytes.size() + 64, u'\0');
        UErrorCode status = U_ZERO_ERROR;
        const int size = ucnv_toUChars(converter_.get(), text.data(), static_cast<int>(text.size()),
                                       bytes.data(), static_cast<int>(bytes.size()), &status);
        if (U_FAILURE(status)) return {};
        text.resize(static_cast<std::size_t>(size));
        return text;
    }
    UConverterType type() const { return ucnv_getType(converter_.get()); }

private:
    struct Close {
        void operator()(UConverter* converter) const { ucnv_close(converter); }
    };

    static void U_CALLCONV substitute(const void*, UConverterFromUnicodeArgs* args, const UChar*,
                                      std::int32_t, UChar32, UConverterCallbackReason reason,
                                      UErrorCode* status) {
        if (reason > UCNV_IRREGULAR) return;
        *status = U_ZERO_ERROR;
        ucnv_cbFromUWriteSub(args, 0, status);
    }

    std::unique_ptr<UConverter, Close> converter_;
};

} // namespace test
