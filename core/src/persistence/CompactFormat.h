// The records of compact storages; docs/formats/storages.md has the whole format. All numbers are
// little-endian.
//
// | signature | the transform's class, only with kCompactTransformed | sections |
//
// The sections go through the transform, if there is one. The first is a length and the text of the
// list; each further one is an attachment: a header and its bytes.
#pragma once

#include <core/component/Guid.h>

#include "files/FileBlocks.h"

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>

namespace core {

static_assert(std::endian::native == std::endian::little, "numbers are stored as they lie");

// A number anywhere in a record.
template <std::unsigned_integral T> class Little {
public:
    Little() = default;
    Little(T value) noexcept { std::memcpy(bytes_, &value, sizeof value); }
    operator T() const noexcept {
        T value;
        std::memcpy(&value, bytes_, sizeof value);
        return value;
    }

private:
    std::byte bytes_[sizeof(T)];
};

using CompactSignature = Little<std::uint16_t>;
inline constexpr std::uint16_t kCompactPlain = 0x0101;
inline constexpr std::uint16_t kCompactTransformed = 0x0102;

// The fields of the class, each little-endian: as they lie.
using CompactTransformClass = _GUID;
static_assert(sizeof(CompactTransformClass) == 16);

using CompactTextLength = Little<std::uint64_t>;

struct CompactAttachment {
    Little<std::uint32_t> index;  // 0  0, 1, 2 and so on
    Little<std::uint64_t> length; // 4
};
static_assert(sizeof(CompactAttachment) == 12 && offsetof(CompactAttachment, length) == 4);

template <class Record> void write_record(IFile& file, const Record& record) {
    file.write(&record, sizeof record);
}
// False where the file ends.
template <class Record> bool read_record(IFile& file, Record& record) {
    return read_fully(file, reinterpret_cast<std::byte*>(&record), sizeof record) == sizeof record;
}

} // namespace core
