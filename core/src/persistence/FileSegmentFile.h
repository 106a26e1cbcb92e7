// Windows on files, made in code.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/persistence/FileSegmentFile.h>

#include <cstdint>

namespace core {

InterfacePtr<IFileEx> make_file_segment(IFileEx* file, std::uint64_t start, std::uint64_t length);

} // namespace core
