// The text in front of a reader, scanned where it lies.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/streams/IReader.h>

namespace core {

// Readers that hold text in memory hand out a window on it, others give a unit at a time; a parser
// sees no difference. The reader itself stands still until sync(), which is to be called before
// anybody else uses it and before the cursor ends.
class TextCursor {
public:
    TextCursor(IReader* reader, ITextWindow* window) : reader_(reader), window_(window) {}

    // Whether there is a unit here; loads the next window when the present one is used up. What
    // at() and end() gave before is void then.
    bool more() { return at_ != end_ || fill(); }
    // The units that lie in memory from here on.
    const char16_t* at() const noexcept { return at_; }
    const char16_t* end() const noexcept { return end_; }
    void move_to(const char16_t* to) noexcept { at_ = to; }

    // The unit here, where there is one.
    char16_t unit() const noexcept { return *at_; }
    void pass() noexcept { ++at_; }

    // Passes the unit if it stands here.
    bool take(char16_t unit) {
        if (!more() || *at_ != unit) return false;
        ++at_;
        return true;
    }

    // Puts the reader where the cursor is. The window is asked for again then.
    void sync() {
        if (at_ != begin_) {
            if (window_)
                window_->advance(static_cast<unsigned>(at_ - begin_));
            else
                reader_->get();
        }
        begin_ = at_ = end_;
    }

private:
    bool fill() {
        sync();
        unsigned size = 0;
        if (window_) {
            begin_ = window_->window(size);
        } else if (!reader_->eof()) {
            unit_ = reader_->peek();
            begin_ = &unit_;
            size = 1;
        }
        at_ = begin_;
        end_ = begin_ + size;
        return size != 0;
    }

    IReader* reader_;
    ITextWindow* window_; // null for a reader that has none
    char16_t unit_ = 0;
    const char16_t* begin_ = nullptr; // where the reader stands
    const char16_t* at_ = nullptr;
    const char16_t* end_ = nullptr;
};

} // namespace core
