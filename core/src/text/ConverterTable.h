// The encodings that were named so far, and the converters of ICU that threads keep for them.
#pragma once

#include "ConverterKernel.h"

#include <elm/string>

#include <memory>
#include <optional>

#include <unicode/ucnv.h>

namespace core {

struct CloseConverter {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using UniqueConverter = std::unique_ptr<UConverter, CloseConverter>;

// A row of the table. Once made it never changes.
struct Encoding {
    stdx::string key;   // the name as it was asked for
    stdx::ustring name; // ICU's
    UConverterType type;
    unsigned maxCharSize;                    // bytes of one unit, at most
    const ConverterKernel* kernel = nullptr; // null: all work is ICU's
    std::optional<std::size_t> index;        // none: beyond the table, no thread keeps a converter

    // Whether texts in it may begin with U+FEFF as a signature.
    bool knows_signatures() const noexcept;
    // A new converter of ICU's: it stops at bytes that are no text, and writes "?", where a single
    // byte can be written, for what the encoding lacks.
    UniqueConverter open() const;
};

using EncodingPtr = std::shared_ptr<const Encoding>;

// The row of a name. Throws ConverterException with Error::BadName.
EncodingPtr find_encoding(std::u16string_view name);

// UTF-8, made without a look at ICU: it is there before anything else.
EncodingPtr utf8_encoding();

// The calling thread's converter for an encoding; on a thread that can keep none, one for the life
// of this object.
class ThreadConverter {
public:
    explicit ThreadConverter(const Encoding& encoding);
    UConverter* get() const noexcept { return converter_; }

private:
    UniqueConverter own_;
    UConverter* converter_;
};

} // namespace core
