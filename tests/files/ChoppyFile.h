// A file that reads less than it is asked for, as pipes and networks do, and that remembers how it
// was used.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/MemoryFile.h>
#include <core/files/URL.h>

#include <algorithm>

namespace test {

class ChoppyFile
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<ChoppyFile>
    , public core::IFileEx {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<ChoppyFile, core::IFileEx, core::IFile>();
    }

    explicit ChoppyFile(unsigned most) : most_(most) {}

    core::URL url() override { return inner_->url(); }
    unsigned read(void* dst, unsigned n) override {
        ++reads;
        return inner_->read(dst, std::min(n, reads % most_ + 1));
    }
    void write(const void* src, unsigned n) override {
        ++writes;
        if (writes == failAt) {
            inner_->write(src, n / 2);
            throw failure;
        }
        inner_->write(src, n);
    }
    void flush() override { ++flushes; }
    long long seek(long long offset, int origin) override {
        ++seeks;
        return inner_->seek(offset, origin);
    }
    long long setEOF() override { return inner_->setEOF(); }

    unsigned reads = 0, writes = 0, seeks = 0, flushes = 0;
    unsigned failAt = 0; // this write moves half of its bytes and throws `failure`
    int failure = 7;

private:
    core::InterfacePtr<core::IMemoryFile> inner_ = core::create_memory_file(0);
    unsigned most_;
};

} // namespace test
