#include <core/streams/IStringReader.h>

#include <core/component/ClassDescriptor.h>
#include <core/streams/IOException.h>

namespace core {

const InterfaceEntry* StringReader::_GetEntries() {
    return interface_map<StringReader, IStringReader, Via<IReader, IStringReader>, ITextWindow>();
}

// A store in chunks has no iterator while it is empty; an empty string reads the same.
void StringReader::open(IStringBuffer* buffer) {
    if (!buffer) throw IOException(IOException::Error::NoSource);
    iterator_ = buffer->isEmpty() ? create_std_string_buffer()->createIterator(0)
                                  : buffer->createIterator(0);
    window_ = InterfacePtr<ITextWindow>(iterator_);
    buffer_ = {buffer, true};
}

void StringReader::close() {
    window_.reset();
    iterator_.reset();
    buffer_.reset();
}

IStringBufferIterator& StringReader::iterator() {
    if (!iterator_) throw IOException(IOException::Error::NoSource);
    return *iterator_;
}

char16_t StringReader::get() {
    return iterator().get();
}
char16_t StringReader::peek() {
    return iterator().peek();
}
unsigned StringReader::read(char16_t* to, unsigned n) {
    return iterator().read(to, n);
}
unsigned StringReader::readUntil(char16_t stop, char16_t* to, unsigned n) {
    return iterator().readUntil(stop, to, n);
}
unsigned StringReader::readTo(IStringBuffer* to, unsigned n) {
    return iterator().readTo(to, n);
}
unsigned StringReader::readToUntil(char16_t stop, IStringBuffer* to, unsigned n) {
    return iterator().readToUntil(stop, to, n);
}
unsigned StringReader::skip(unsigned n) {
    return iterator().skip(n);
}
bool StringReader::eof() {
    return !iterator_ || iterator_->eof();
}

const char16_t* StringReader::window(unsigned& size) {
    iterator();
    return window_->window(size);
}
void StringReader::advance(unsigned n) {
    window_->advance(n);
}

} // namespace core

ORBCORE_REGISTER(core::StringReader);
