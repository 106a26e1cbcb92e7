// An attachment in a stream of bytes: a list of a number, which is 0, and blobs.
#pragma once

#include "ForwardOnlyFile.h"

#include <core/component/InterfaceMap.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/streams/IFile.h>
#include <core/streams/IListStream.h>

namespace core {

// Reads it where it lies, a blob in memory at a time.
class BinaryStreamInFile
    : public ObjectRoot
    , public SCOM_InternalClass<BinaryStreamInFile>
    , public IFile
    , public IForwardOnlyFile {
public:
    static const InterfaceEntry* _GetEntries() noexcept;

    explicit BinaryStreamInFile(IListInStream* list);
    // What fails goes to the technical log, where no read has failed before.
    ~BinaryStreamInFile();

    URL url() override;
    unsigned read(void* dst, unsigned n) override;
    void write(const void* src, unsigned n) override;
    void flush() override {}

    void finish() override;

    // What was read of the attachment and is still unused, the next blob if there is none such;
    // empty at the end.
    std::string_view ahead();
    void pass(std::size_t n) noexcept { at_ += static_cast<unsigned>(n); }

private:
    bool next_blob();

    InterfacePtr<IListInStream> list_;
    stdx::string blob_;
    unsigned at_ = 0;     // in the blob
    bool begun_ = false;  // the number was read
    bool failed_ = false; // a read threw: the place in the list is not known
    bool finished_ = false;
};

} // namespace core
