// URLs as items of lists.
#include <core/files/URL.h>
#include <core/streams/ListStream.h>

namespace core {

void URL::serialize(ListOutStream& stream) const {
    stream->beginList();
    stream->putString(text_);
    stream->putBool(withFragment_);
    stream->endList();
}

void URL::deserialize(ListInStream& stream) {
    stdx::ustring text;
    bool withFragment = false;
    stream->beginList();
    stream->getString(text);
    stream->getBool(withFragment);
    stream->skipList();
    stream->endList();
    *this = URL(text, withFragment);
}

} // namespace core
