// The string buffer over one string.
#pragma once

#include "StringBufferBase.h"
#include "UnitCopy.h"
#include "WindowReader.h"

namespace core {

class StdStringBuffer
    : public ObjectRoot
    , public SCOM_InternalClass<StdStringBuffer>
    , public StringBufferBase {
public:
    explicit StdStringBuffer(IStringFormatter* formatter = nullptr) : StringBufferBase(formatter) {}
    StdStringBuffer(const stdx::ustring& text, IStringFormatter* formatter)
        : StringBufferBase(formatter), text_(text) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<StdStringBuffer, IStringBuffer>();
    }

    unsigned length() final { return text_.size(); }
    void setLength(unsigned n) final;
    unsigned capacity() final { return text_.capacity(); }
    void reserve(unsigned n) final { text_.reserve(elm::checked_size(n)); }
    void compact() final {}

    using StringBufferBase::append;
    void append(char16_t unit) final { text_.push_back(unit); }
    void append(const char16_t* text, unsigned n) final {
        // The string may move, and what lies in it.
        const bool isInside = text >= text_.cbegin() && text <= text_.cend();
        if (n == kAllUnits || !text || isInside)
            text_.append(units_of(text, n));
        else
            copy_units(text_._append(n), text, n);
    }
    unsigned append(StreamConverterToUnicode& converter, const char* bytes, unsigned n) final;

    using StringBufferBase::insert;
    void insert(unsigned pos, const char16_t* text, unsigned n) final;

    void clear() final;
    void erase(unsigned pos, unsigned n) final;
    stdx::ustring toString() final { return text_; }
    void setCharAt(unsigned pos, char16_t unit) final;

    using StringBufferBase::replace;
    void replace(unsigned pos, unsigned n, const char16_t* text, unsigned size) final;

    InterfacePtr<IStringBufferIterator> createIterator(unsigned pos) final;

    std::u16string_view run(unsigned pos) final { return text_.view().substr(pos); }

private:
    InterfacePtr<IStringBuffer> create_like(IStringFormatter* formatter) final {
        return create_std_string_buffer(formatter);
    }

    stdx::ustring text_;
};

class StdStringBufferIterator
    : public ObjectRoot
    , public SCOM_InternalClass<StdStringBufferIterator>
    , public WindowReader<StdStringBufferIterator, IStringBufferIterator> {
public:
    StdStringBufferIterator(StdStringBuffer& buffer, unsigned pos)
        : buffer_(&buffer, true), position_(pos) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<StdStringBufferIterator, IStringBufferIterator,
                             Via<IReader, IStringBufferIterator>, ITextWindow>();
    }

    IStringBuffer* buffer() final { return buffer_.get(); }
    unsigned position() final { return position_ = std::min(position_, buffer_->length()); }
    bool next() final;
    bool prev() final;
    char16_t current() final;

    std::u16string_view units() { return buffer_->run(position()); }
    void pass(unsigned n) noexcept { position_ += n; }
    // What is appended while reading is not read: the target may be this very buffer.
    unsigned cut(unsigned n) { return std::min(n, buffer_->length() - position()); }

private:
    const InterfacePtr<StdStringBuffer> buffer_;
    unsigned position_;
};

} // namespace core
