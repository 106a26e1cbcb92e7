// Defined in `storage`, where the exceptions of storages live.
#pragma once

namespace core {

class URL;

// Throws `StorageException` with code `BadFormat`.
[[noreturn]] void throw_bad_storage_format(const URL& url);

} // namespace core
