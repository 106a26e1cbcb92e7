// ICU's converter keeps what a piece leaves unfinished: bytes of a character, units that found no
// room, modes of the encoding. Whenever it keeps nothing, a kernel takes the text up to the next
// place that needs it, and it is fed just enough to pass that place.
#include <core/text/StreamConverter.h>

#include <core/component/IllegalArgumentException.h>
#include <core/text/Converter.h>

#include "ConverterTable.h"

#include <algorithm>
#include <new>

namespace core {
namespace {

// At most so much at a time: ICU takes no larger rooms than 2^30 - 1 units, and fills none from
// such pieces.
constexpr std::ptrdiff_t kPiece = 0x10000, kLargestRoom = 0x1000000;

// ---- What differs between the directions.

void run(const ConverterKernel& kernel, Widening& text) {
    kernel.widen(text);
}
void run(const ConverterKernel& kernel, Narrowing& text) {
    kernel.narrow(text);
}

void call_icu(UConverter* converter, Widening& text, const char* inEnd, char16_t* outEnd,
              bool flush, UErrorCode* status) {
    ucnv_toUnicode(converter, &text.out, outEnd, &text.in, inEnd, nullptr, flush, status);
}
void call_icu(UConverter* converter, Narrowing& text, const char16_t* inEnd, char* outEnd,
              bool flush, UErrorCode* status) {
    ucnv_fromUnicode(converter, &text.out, outEnd, &text.in, inEnd, nullptr, flush, status);
}

std::int32_t count_pending(const UConverter* converter, const Widening*) {
    UErrorCode status = U_ZERO_ERROR;
    return ucnv_toUCountPending(converter, &status);
}
std::int32_t count_pending(const UConverter* converter, const Narrowing*) {
    UErrorCode status = U_ZERO_ERROR;
    return ucnv_fromUCountPending(converter, &status);
}

unsigned count_refused(const UConverter* converter, const Widening*) {
    UErrorCode status = U_ZERO_ERROR;
    char bytes[64];
    std::int8_t count = sizeof bytes;
    ucnv_getInvalidChars(converter, bytes, &count, &status);
    return U_SUCCESS(status) ? static_cast<unsigned>(count) : 0;
}
unsigned count_refused(const UConverter*, const Narrowing*) {
    return 0; // nothing is refused: what the encoding lacks is substituted
}

// ---- What is common to them.

template <class From, class To> class Stream {
public:
    using Text = Conversion<From, To>;

    explicit Stream(const stdx::ustring& name)
        : name_(name.empty() ? Converter::system().name() : name),
          encoding_(find_encoding(name_.view())),
          converter_(encoding_->open()) {}

    // True if more room is needed.
    bool convert(const From** in, unsigned inLength, To** out, unsigned outLength) {
        ORB_ASSERT(out != nullptr);
        const From* const from = in ? *in : nullptr;
        Text text{from, from + (in ? inLength : 0), *out, *out + outLength};
        UErrorCode status = U_ZERO_ERROR;
        const bool more = in ? convert(text, &status) : flush(text, &status);
        if (in) *in = text.in;
        *out = text.out;
        if (U_FAILURE(status)) fail(status);
        return more;
    }

    const char16_t* signature() const noexcept {
        return encoding_->knows_signatures() ? u"\uFEFF" : nullptr;
    }
    unsigned pending() const noexcept {
        const std::int32_t count = count_pending(converter_.get(), static_cast<Text*>(nullptr));
        return static_cast<unsigned>(std::max(count, 0));
    }
    unsigned refused() const noexcept { return refused_; }
    unsigned max_char_size() const noexcept { return encoding_->maxCharSize; }
    const stdx::ustring& name() const noexcept { return name_; }
    void reset() noexcept {
        ucnv_reset(converter_.get());
        holdsOutput_ = false;
        refused_ = 0;
    }

private:
    bool convert(Text& text, UErrorCode* status) {
        const ConverterKernel* const kernel = encoding_->kernel;
        for (;;) {
            const bool idle = !holdsOutput_ && pending() == 0;
            if (kernel && idle) run(*kernel, text);
            if (text.in == text.inEnd && !holdsOutput_) return false;
            if (text.out == text.outEnd) return true;
            const std::ptrdiff_t piece = holdsOutput_ ? 0
                                         : !kernel    ? kPiece
                                         : idle       ? kLongestCharacter
                                                      : 1;
            if (call_icu(text, piece, false, status)) return true;
            if (U_FAILURE(*status)) return false;
        }
    }

    bool flush(Text& text, UErrorCode* status) {
        if (call_icu(text, 0, true, status)) return true;
        if (U_SUCCESS(*status)) reset();
        return false;
    }

    // True if the room is full.
    bool call_icu(Text& text, std::ptrdiff_t piece, bool flush, UErrorCode* status) {
        core::call_icu(converter_.get(), text, text.in + std::min(piece, text.inEnd - text.in),
                       text.out + std::min(kLargestRoom, text.outEnd - text.out), flush, status);
        holdsOutput_ = *status == U_BUFFER_OVERFLOW_ERROR;
        if (holdsOutput_) *status = U_ZERO_ERROR;
        return holdsOutput_;
    }

    [[noreturn]] void fail(UErrorCode status) {
        if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
        refused_ = count_refused(converter_.get(), static_cast<Text*>(nullptr));
        throw ConverterException(ConverterException::Error::BadData, name_);
    }

    stdx::ustring name_;
    EncodingPtr encoding_;
    UniqueConverter converter_;
    bool holdsOutput_ = false; // ICU may keep units that found no room
    unsigned refused_ = 0;
};

stdx::ustring text_of(const char16_t* name) {
    return name ? stdx::ustring(name) : stdx::ustring();
}

} // namespace

// ---- To Unicode.

struct StreamConverterToUnicode::State : Stream<char, char16_t> {
    using Stream::Stream;
};

StreamConverterToUnicode::StreamConverterToUnicode() : StreamConverterToUnicode(nullptr) {}
StreamConverterToUnicode::StreamConverterToUnicode(const char16_t* name)
    : StreamConverterToUnicode(text_of(name)) {}
StreamConverterToUnicode::StreamConverterToUnicode(const stdx::ustring& name)
    : state_(std::make_unique<State>(name)) {}
StreamConverterToUnicode::StreamConverterToUnicode(StreamConverterToUnicode&&) noexcept = default;
StreamConverterToUnicode&
StreamConverterToUnicode::operator=(StreamConverterToUnicode&&) noexcept = default;
StreamConverterToUnicode::~StreamConverterToUnicode() = default;

bool StreamConverterToUnicode::widen(const char** in, unsigned inLength, char16_t** out,
                                     unsigned outLength) {
    return state_->convert(in, inLength, out, outLength);
}
const char16_t* StreamConverterToUnicode::signature() const noexcept {
    return state_->signature();
}
unsigned StreamConverterToUnicode::pending() const noexcept {
    return state_->pending();
}
unsigned StreamConverterToUnicode::refused() const noexcept {
    return state_->refused();
}
void StreamConverterToUnicode::reset() noexcept {
    state_->reset();
}
const stdx::ustring& StreamConverterToUnicode::name() const noexcept {
    return state_->name();
}

// ---- From Unicode.

struct StreamConverterFromUnicode::State : Stream<char16_t, char> {
    using Stream::Stream;
};

StreamConverterFromUnicode::StreamConverterFromUnicode() : StreamConverterFromUnicode(nullptr) {}
StreamConverterFromUnicode::StreamConverterFromUnicode(const char16_t* name)
    : StreamConverterFromUnicode(text_of(name)) {}
StreamConverterFromUnicode::StreamConverterFromUnicode(const stdx::ustring& name)
    : state_(std::make_unique<State>(name)) {}
StreamConverterFromUnicode::StreamConverterFromUnicode(StreamConverterFromUnicode&&) noexcept =
    default;
StreamConverterFromUnicode&
StreamConverterFromUnicode::operator=(StreamConverterFromUnicode&&) noexcept = default;
StreamConverterFromUnicode::~StreamConverterFromUnicode() = default;

bool StreamConverterFromUnicode::narrow(const char16_t** in, unsigned inLength, char** out,
                                        unsigned outLength) {
    return state_->convert(in, inLength, out, outLength);
}
unsigned StreamConverterFromUnicode::maxCharSize() const noexcept {
    return state_->max_char_size();
}
const char16_t* StreamConverterFromUnicode::signature() const noexcept {
    return state_->signature();
}
unsigned StreamConverterFromUnicode::pending() const noexcept {
    return state_->pending();
}
void StreamConverterFromUnicode::reset() noexcept {
    state_->reset();
}
const stdx::ustring& StreamConverterFromUnicode::name() const noexcept {
    return state_->name();
}

} // namespace core
