#include "StdStringBuffer.h"

#include <core/component/Object.h>
#include <core/text/StreamConverter.h>

#include <algorithm>

namespace core {

void StdStringBuffer::setLength(unsigned n) {
    elm::checked_size(n);
    if (n > text_.capacity()) text_.reserve(text_.increase_capacity(n));
    text_._resize_nofill(n);
}

unsigned StdStringBuffer::append(StreamConverterToUnicode& converter, const char* bytes,
                                 unsigned n) {
    const char* in = bytes;
    for (bool more = true; more;) {
        const unsigned old = text_.size();
        const unsigned left = n - static_cast<unsigned>(in - bytes);
        const unsigned room = std::clamp(left, 16u, 65536u);
        char16_t* const to = text_._append(room);
        char16_t* out = to;
        const auto decoded = [&] { text_._resize_nofill(old + static_cast<unsigned>(out - to)); };
        try {
            more = converter.widen(bytes ? &in : nullptr, left, &out, room);
        } catch (...) {
            decoded();
            throw;
        }
        decoded();
    }
    return static_cast<unsigned>(in - bytes);
}

void StdStringBuffer::insert(unsigned pos, const char16_t* text, unsigned n) {
    checked_count(pos, 0);
    text_.insert(pos, units_of(text, n));
}

// A string that others share would have to be copied to keep its memory.
void StdStringBuffer::clear() {
    if (text_._get_refs() == 1)
        text_._resize_nofill(0);
    else
        text_.clear();
}

void StdStringBuffer::erase(unsigned pos, unsigned n) {
    text_.erase(pos, checked_count(pos, n));
}

void StdStringBuffer::setCharAt(unsigned pos, char16_t unit) {
    if (pos >= text_.size()) throw_out_of_bounds(pos, text_.size());
    text_.data()[pos] = unit;
}

void StdStringBuffer::replace(unsigned pos, unsigned n, const char16_t* text, unsigned size) {
    text_.replace(pos, checked_count(pos, n), units_of(text, size));
}

InterfacePtr<IStringBufferIterator> StdStringBuffer::createIterator(unsigned pos) {
    checked_count(pos, 0);
    return make_object<StdStringBufferIterator>(*this, pos);
}

bool StdStringBufferIterator::next() {
    if (position() == buffer_->length()) return false;
    ++position_;
    return true;
}

bool StdStringBufferIterator::prev() {
    if (position() == 0) return false;
    --position_;
    return true;
}

char16_t StdStringBufferIterator::current() {
    const std::u16string_view here = units();
    return here.empty() ? u'\0' : here.front();
}

InterfacePtr<IStringBuffer> create_std_string_buffer(IStringFormatter* formatter) {
    return make_object<StdStringBuffer>(formatter);
}

InterfacePtr<IStringBuffer> create_std_string_buffer(const stdx::ustring& text,
                                                     IStringFormatter* formatter) {
    return make_object<StdStringBuffer>(text, formatter);
}

} // namespace core
