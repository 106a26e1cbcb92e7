// The file behind `IMemoryFile`.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/MemoryFile.h>
#include <core/files/URL.h>

#include <kiln/buffer_pools.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace core {

// Invariants:
//  - `pages_` has an entry for every byte below `size_`, and one more byte;
//  - a page that was never written is null and stands for zeros;
//  - in the other pages the bytes below `size_` count, the rest is rubbish.
class MemoryFile
    : public ObjectRoot
    , public SCOM_Class<MemoryFile, &CLSID_MemoryFile>
    , public IMemoryFile
    , public IByteWindow {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<MemoryFile, IMemoryFile, IFileEx, IFile, IByteWindow>();
    }

    MemoryFile() = default;
    explicit MemoryFile(unsigned size); // takes the pages for so many bytes
    ~MemoryFile();

    URL url() override { return url_; }
    unsigned read(void* dst, unsigned n) override;
    void write(const void* src, unsigned n) override;
    void flush() override {}
    long long seek(long long offset, int origin) override;
    long long setEOF() override;
    std::uint64_t memoryUsage() override;
    void setURL(const URL& url) override { url_ = url; }

    const std::uint8_t* window(unsigned& size) override;
    void advance(unsigned n) override { position_ += n; }

private:
    static constexpr std::size_t kPage = 8192;

    void make_pages(std::uint64_t begin, std::uint64_t end);
    void clear(std::uint64_t begin, std::uint64_t end) noexcept;

    kiln::BufferPool& pool_ = kiln::buffer_pools().kib8;
    std::vector<std::byte*> pages_;
    std::uint32_t size_ = 0;
    std::uint32_t position_ = 0; // may lie behind `size_`
    URL url_;
};

} // namespace core
