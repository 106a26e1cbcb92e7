// List files as a run of events, for tools that do not know what a list holds. Texts name the kinds of
// items by their spelling, bytes by their tags; what both leave open is told at `ListItem`.
#pragma once

#include <core/component/Guid.h>
#include <core/numbers/Numeric.h>
#include <core/streams/IFile.h>
#include <core/streams/IListStream.h>

#include <memory>
#include <string>
#include <variant>

namespace orb {

// An integer is a Numeric where it needs more than 64 bits. In a text a number with "." or "e" is a
// double if the double is spelled like this, else a Numeric; a bare word of neither digits nor a GUID
// is base64. In bytes the tags of zero and of one byte are integers, those of bytes are strings.
struct Unsigned {
    std::uint64_t value;
};
struct Negative {
    std::int64_t value;
};
struct Blob {
    stdx::string bytes;
};
using ListItem =
    std::variant<Unsigned, Negative, float, double, _GUID, core::Numeric, stdx::ustring, Blob>;

void put_item(core::IListOutStream& out, const ListItem& item);

enum class ListEvent { Begin, End, Item, EndOfFile };

// Reads block by block and holds one item in memory at a time.
class ListScanner {
public:
    virtual ~ListScanner() = default;

    // Throws Failure with the place and what is wrong there.
    virtual ListEvent next() = 0;
    virtual const char* form() const = 0; // "text" or "binary"

    const ListItem& item() const noexcept { return item_; } // behind ListEvent::Item

protected:
    // Where lists begin and end; false if the limit of depth is passed or no list is open.
    bool enter() noexcept { return ++depth_ <= core::kMaxListDepth; }
    bool leave() noexcept { return depth_ != 0 && depth_-- != 0; }

    ListItem item_;
    unsigned depth_ = 0;
};

enum class ListForm { Found, Text, Binary };

// A scanner of a file, or of standard input for "-". `Found`: the first byte tells the form, for a
// list begins with another byte in each.
std::unique_ptr<ListScanner> open_list(const std::string& name, ListForm form);

} // namespace orb
