// Streams of lists by their front: what classes are given to store themselves and to read
// themselves back. The argument of the constructor chooses the form: a writer or reader for text, a
// file for bytes. The stream itself tells nothing of its form.
//
//   core::ListOutStream out(writer);
//   out->beginList();
//   out->putInt32(1);
//   out->endList();
//   out.close();
//
// Text streams borrow the writer or reader, which must live longer; byte streams hold the file. A
// byte stream that was not closed is completed when the last reference to it goes; faults of that are
// lost.
//
// Inside of a list a stream may be ahead of its reader or file, and bytes may be on their way: others
// use them when the outermost list has ended, for writing also after flush().
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <core/streams/IListStream.h>

namespace core {

class Date;

class ORBCORE_API ListOutStream {
public:
    explicit ListOutStream(IWriter* writer);
    explicit ListOutStream(IFile* file);
    explicit ListOutStream(IListOutStream* stream) noexcept : stream_(stream, true) {}

    IListOutStream* operator->() const noexcept { return stream_.get(); }
    IListOutStream* get() const noexcept { return stream_.get(); }
    explicit operator bool() const noexcept { return static_cast<bool>(stream_); }

    // Closes the stream and leaves this object empty; nothing happens to an empty one.
    void close();

private:
    InterfacePtr<IListOutStream> stream_;
};

class ORBCORE_API ListInStream {
public:
    explicit ListInStream(IReader* reader);
    explicit ListInStream(IFile* file);
    explicit ListInStream(IListInStream* stream) noexcept : stream_(stream, true) {}

    IListInStream* operator->() const noexcept { return stream_.get(); }
    IListInStream* get() const noexcept { return stream_.get(); }
    explicit operator bool() const noexcept { return static_cast<bool>(stream_); }

    // Starts on another source. A text stream is kept and put on the reader.
    void reinit(IReader* reader);
    void reinit(IFile* file);
    void reinit(IListInStream* stream) noexcept { stream_ = {stream, true}; }

private:
    InterfacePtr<IListInStream> stream_;
};

// A date as an item of lists.
class ORBCORE_API DateSerializer final : public IListStreamObject {
public:
    explicit DateSerializer(Date* date) noexcept : date_(date) {}

    void toStream(IWriter* writer) override;
    bool fromStream(IReader* reader) override;
    void toBinary(IListOutStream* stream) override;
    void fromBinary(IListInStream* stream) override;

private:
    Date* date_;
};

// Types that store themselves.
template <class T>
requires requires(const T& value, ListOutStream& stream) {
    value.serialize(stream);
}
void to_stream(ListOutStream& stream, const T& value) {
    value.serialize(stream);
}

template <class T>
requires requires(T& value, ListInStream& stream) {
    value.deserialize(stream);
}
void from_stream(ListInStream& stream, T& value) {
    value.deserialize(stream);
}

} // namespace core
