#include <core/streams/ListStream.h>

#include "BinaryListInStream.h"
#include "BinaryListOutStream.h"
#include "TextListInStream.h"
#include "TextListOutStream.h"

#include <core/component/Object.h>
#include <core/numbers/Date.h>

namespace core {

ListOutStream::ListOutStream(IWriter* writer) : stream_(make_object<TextListOutStream>(writer)) {}
ListOutStream::ListOutStream(IFile* file) : stream_(make_object<BinaryListOutStream>(file)) {}

void ListOutStream::close() {
    if (const InterfacePtr<IListOutStream> stream = std::move(stream_)) stream->close();
}

ListInStream::ListInStream(IReader* reader) : stream_(make_object<TextListInStream>(reader)) {}
ListInStream::ListInStream(IFile* file) : stream_(make_object<BinaryListInStream>(file)) {}

void ListInStream::reinit(IReader* reader) {
    if (const InterfacePtr<ITextListInStreamInit> text(stream_); text)
        text->init(reader);
    else
        stream_ = make_object<TextListInStream>(reader);
}
void ListInStream::reinit(IFile* file) {
    stream_ = make_object<BinaryListInStream>(file);
}

} // namespace core
