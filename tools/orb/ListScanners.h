// The scanners of the three forms; docs/formats tells the forms.
#pragma once

#include "Command.h"
#include "ListScanner.h"
#include "ListSource.h"

namespace orb {

// What the scanners of texts and of bytes share. They call `fail` where `place()` is.
class ListScannerBase : public ListScanner {
public:
    const ListItem& item() const noexcept final { return item_; }

protected:
    explicit ListScannerBase(std::string name) : name_(std::move(name)) {}

    // Where lists begin and end: the limit of depth, and whether a list is open.
    void enter() {
        if (++depth_ > core::kMaxListDepth) fail("lists lie too deep within each other");
    }
    void leave() {
        if (depth_-- == 0) fail("a list ends that has not begun");
    }
    [[noreturn]] void fail(const std::string& what) const {
        throw Failure("'" + name_ + "', " + place() + ": " + what);
    }

    ListItem item_;
    unsigned depth_ = 0;

private:
    std::string name_;
};

std::unique_ptr<ListScanner> text_scanner(const ListCursorPtr& file);
std::unique_ptr<ListScanner> binary_scanner(ListCursorPtr file, bool attachments);
std::unique_ptr<ListScanner> compact_scanner(ListCursorPtr file, bool attachments);

} // namespace orb
