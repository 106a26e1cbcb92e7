// An attachment as an item of a text: a word that names its code, and the bytes in that code.
//
//   #base64:YWJj      how attachments are written
//   #data:…           the code of old, read only: six bits a character over the alphabet of base64,
//                     in groups of four, the lowest bits first. A group is c0 + c1 * 2^6 + c2 * 2^12
//                     + c3 * 2^18 and stands for three bytes, the lowest first. "=" at the end of
//                     the last group stands for a character and a byte less, at most twice.
#pragma once

#include <core/streams/IFile.h>
#include <core/streams/ListStream.h>

namespace core {

class AttachmentItem final : public IListStreamObject {
public:
    // The bytes go out of the file from its position to its end, or into it.
    explicit AttachmentItem(IFile& file) noexcept : file_(file) {}

    void toStream(IWriter* writer) override;
    bool fromStream(IReader* reader) override;
    // Streams of bytes have another form of attachments: both throw
    // `UnsupportedOperationException`.
    void toBinary(IListOutStream* stream) override;
    void fromBinary(IListInStream* stream) override;

private:
    IFile& file_;
};

} // namespace core
