#include <core/streams/IStringWriter.h>

#include <core/component/ClassDescriptor.h>
#include <core/streams/IOException.h>

namespace core {

const InterfaceEntry* StringWriter::_GetEntries() {
    return interface_map<StringWriter, IStringWriter, Via<IWriter, IStringWriter>>();
}

void StringWriter::open(IStringBuffer* buffer) {
    buffer_ = buffer ? InterfacePtr<IStringBuffer>(buffer, true) : create_string_buffer();
}

IStringBuffer& StringWriter::target() {
    if (!buffer_) throw IOException(IOException::Error::NoTarget);
    return *buffer_;
}

void StringWriter::put(char16_t unit) {
    target().append(unit);
}
void StringWriter::write(const char16_t* text, unsigned n) {
    target().append(text, n);
}
void StringWriter::write(IStringBuffer* source, unsigned pos, unsigned n) {
    target().append(source, pos, n);
}
void StringWriter::flush() {
    target();
}

} // namespace core

ORBCORE_REGISTER(core::StringWriter);
