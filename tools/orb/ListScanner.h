// List files as a run of events, for tools that do not know what a list holds. Texts name the kinds of
// items by their spelling, bytes by their tags; what both leave open is told at `ListItem`.
#pragma once

#include <core/component/Guid.h>
#include <core/numbers/Numeric.h>
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

// An attachment is the whole list that holds it or points to it.
enum class ListEvent { Begin, End, Item, Attachment, EndOfFile };

// Reads block by block and holds one item in memory at a time; attachments pass piece by piece.
class ListScanner {
public:
    virtual ~ListScanner() = default;

    // Throws Failure with the place and what is wrong there. What was not read of an attachment is
    // looked at all the same.
    virtual ListEvent next() = 0;
    virtual const ListItem& item() const noexcept = 0; // behind ListEvent::Item

    // Behind ListEvent::Attachment: its next bytes, 0 at the end; and what carries it in the file.
    virtual unsigned read(void* to, unsigned n) = 0;
    virtual std::string carrier() const = 0;

    virtual const char* form() const = 0;  // "text", "binary" or "compact"
    virtual std::string place() const = 0; // of what came last: "line 1, column 2" or "offset 3"
};

enum class ListForm { Found, Text, Binary, Compact };

struct ListReading {
    ListForm form = ListForm::Found; // `Found`: the first bytes tell it, they differ in each
    // Whether every list of the shape of an attachment is one. In bytes that is a list of 0 and blobs,
    // none is taken for an attachment otherwise; in the compact form it is a list of one number, and
    // otherwise the one that is the number of the next section.
    bool attachments = false;
};

// A scanner of a file, or of standard input for "-".
std::unique_ptr<ListScanner> open_list(const std::string& name, const ListReading& reading);

} // namespace orb
