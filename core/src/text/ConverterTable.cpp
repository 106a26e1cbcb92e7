#include "ConverterTable.h"

#include <core/component/Utf8.h>
#include <core/concurrency/LockGuards.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/Thread.h>
#include <core/text/ConverterException.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <new>
#include <unordered_map>
#include <vector>

#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>
#include <unicode/uset.h>

namespace core {
namespace {

// Names may come from outside, in countless spellings: what passes this number works as well, but
// is not kept.
constexpr std::size_t kMostEncodings = 512;

// ---- Converters of ICU.

// ICU's own callbacks pass over characters that are ignorable by default, such as the soft hyphen,
// in silence. Here each character that the encoding lacks counts.
void U_CALLCONV write_substitute(const void*, UConverterFromUnicodeArgs* args, const UChar*,
                                 std::int32_t, UChar32, UConverterCallbackReason reason,
                                 UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return; // no character: the converter is reset or closed
    *status = U_ZERO_ERROR;
    ucnv_cbFromUWriteSub(args, 0, status);
}

UniqueConverter open_converter(const stdx::string& key) {
    UErrorCode status = U_ZERO_ERROR;
    UniqueConverter converter(ucnv_open(key.c_str(), &status));
    if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
    if (U_FAILURE(status)) return nullptr;
    UErrorCode refused = U_ZERO_ERROR; // by encodings without single bytes, which keep their own
    ucnv_setSubstChars(converter.get(), "?", 1, &refused);
    ucnv_setFromUCallBack(converter.get(), write_substitute, nullptr, nullptr, nullptr, &status);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &status);
    return converter;
}

// ---- Kernels.

std::unique_ptr<const SingleByteKernel> make_single_byte_kernel(UConverter* converter) {
    auto kernel = std::make_unique<SingleByteKernel>();
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        const char bytes[] = {static_cast<char>(byte)};
        char16_t units[2];
        UErrorCode status = U_ZERO_ERROR;
        if (ucnv_toUChars(converter, units, 2, bytes, 1, &status) == 1 && U_SUCCESS(status))
            kernel->set_character(static_cast<std::uint8_t>(byte), units[0]);
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<USet, decltype(&uset_close)> known(uset_openEmpty(), uset_close);
    ucnv_getUnicodeSet(converter, known.get(), UCNV_ROUNDTRIP_AND_FALLBACK_SET, &status);
    if (U_FAILURE(status)) return nullptr;
    const int ranges = uset_getItemCount(known.get());
    for (int i = 0; i < ranges; ++i) {
        UChar32 first = 0, last = 0;
        // Sequences and characters beyond 16 bits need more than a table.
        if (uset_getItem(known.get(), i, &first, &last, nullptr, 0, &status) != 0 || last > 0xFFFF)
            return nullptr;
        for (UChar32 code = first; code <= last; ++code) {
            const auto unit = static_cast<char16_t>(code);
            char bytes[2];
            if (ucnv_fromUChars(converter, bytes, 2, &unit, 1, &status) != 1) return nullptr;
            kernel->set_byte(unit, bytes[0]);
        }
    }
    kernel->finish();
    return kernel;
}

// The kernel of an encoding of one byte a character, one for all its names; null if there is none.
const ConverterKernel* single_byte_kernel(const stdx::ustring& name, UConverter* converter) {
    static auto& mutex = *new std::mutex;
    static auto& kernels = *new std::map<stdx::ustring, std::unique_ptr<const SingleByteKernel>>;
    const std::lock_guard guard(mutex);
    const auto [place, isNew] = kernels.try_emplace(name);
    if (isNew) place->second = make_single_byte_kernel(converter);
    return place->second.get();
}

// Options change what an encoding does: they are ICU's affair.
const ConverterKernel* kernel_of(const Encoding& encoding, UConverter* converter) {
    if (encoding.key.find(',') != stdx::string::npos ||
        encoding.name.find(u',') != stdx::ustring::npos)
        return nullptr;
    switch (encoding.type) {
    case UCNV_UTF8:
        return &utf8_kernel();
    case UCNV_UTF16_LittleEndian:
        return &utf16_little_kernel();
    case UCNV_UTF16_BigEndian:
        return &utf16_big_kernel();
    case UCNV_SBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
        return single_byte_kernel(encoding.name, converter);
    default:
        return nullptr;
    }
}

// ---- The table.

[[noreturn]] void refuse(std::u16string_view name) {
    throw ConverterException(ConverterException::Error::BadName, stdx::ustring(name));
}

std::shared_ptr<Encoding> make_encoding(std::u16string_view name) {
    auto encoding = std::make_shared<Encoding>();
    for (const char16_t unit : name) {
        // ICU looks for names that it does not know in the folder of its data: not in others.
        if (unit == 0 || unit > 0x7F || unit == u'/' || unit == u'\\') refuse(name);
        encoding->key += static_cast<char>(unit);
    }
    if (encoding->key.empty()) refuse(name); // to ICU it means the encoding of the system
    const UniqueConverter converter = open_converter(encoding->key);
    if (!converter) refuse(name);
    UErrorCode status = U_ZERO_ERROR;
    encoding->name = from_utf8(ucnv_getName(converter.get(), &status));
    encoding->type = ucnv_getType(converter.get());
    encoding->maxCharSize = static_cast<unsigned>(ucnv_getMaxCharSize(converter.get()));
    encoding->kernel = kernel_of(*encoding, converter.get());
    return encoding;
}

class EncodingTable {
public:
    EncodingPtr find(std::u16string_view name) {
        const stdx::ustring key(name);
        {
            const ReaderLock lock(mutex_);
            if (const auto row = rows_.find(key); row != rows_.end()) return row->second;
        }
        const std::shared_ptr<Encoding> made = make_encoding(name); // outside the lock: it is slow
        const WriterLock lock(mutex_);
        if (const auto row = rows_.find(key); row != rows_.end()) return row->second;
        if (rows_.size() == kMostEncodings) return made;
        made->index = rows_.size();
        rows_.emplace(key, made);
        return made;
    }

private:
    RWMutex mutex_;
    std::unordered_map<stdx::ustring, EncodingPtr> rows_;
};

// ---- Threads.

class ThreadConvertersData final : public Thread::TLSData {
public:
    UConverter* converter(const Encoding& encoding) {
        const std::size_t index = *encoding.index;
        if (index >= converters_.size()) converters_.resize(index + 1);
        if (!converters_[index]) converters_[index] = encoding.open();
        return converters_[index].get();
    }

    static ThreadConvertersData& of(Thread& thread) {
        static const Thread::TLSIndex slot = Thread::allocTLS();
        auto* data = static_cast<ThreadConvertersData*>(thread.getTLSValue(slot));
        if (!data) thread.setTLSValue(slot, data = new ThreadConvertersData);
        return *data;
    }

private:
    std::vector<UniqueConverter> converters_; // by the index of the encoding
};

} // namespace

bool Encoding::knows_signatures() const noexcept {
    static constexpr UConverterType kForms[] = {
        UCNV_UTF8,
        UCNV_UTF16_BigEndian,
        UCNV_UTF16_LittleEndian,
        UCNV_UTF32_BigEndian,
        UCNV_UTF16,
        UCNV_UTF32,
        UCNV_UTF32_LittleEndian,
        UCNV_UTF7,
        UCNV_SCSU,
        UCNV_BOCU1,
        UCNV_CESU8,
    };
    return std::find(std::begin(kForms), std::end(kForms), type) != std::end(kForms);
}

UniqueConverter Encoding::open() const {
    UniqueConverter converter = open_converter(key);
    if (!converter) refuse(from_utf8(key));
    return converter;
}

EncodingPtr find_encoding(std::u16string_view name) {
    static auto& table = *new EncodingTable; // converters may be made at exit
    return table.find(name);
}

EncodingPtr utf8_encoding() {
    return std::make_shared<Encoding>(
        Encoding{"UTF-8", u"UTF-8", UCNV_UTF8, 3, &utf8_kernel(), std::nullopt});
}

ThreadConverter::ThreadConverter(const Encoding& encoding) {
    Thread* const thread = current_thread();
    if (thread && encoding.index) {
        converter_ = ThreadConvertersData::of(*thread).converter(encoding);
    } else {
        own_ = encoding.open();
        converter_ = own_.get();
    }
}

} // namespace core
