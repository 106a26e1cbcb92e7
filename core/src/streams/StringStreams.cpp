#include <core/streams/StringStreams.h>

#include <core/streams/StreamFunctions.h>

namespace core {

BaseOutputStream::~BaseOutputStream() = default;

int FormattedOutputStream::printf(const char16_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    struct End {
        std::va_list& list;
        ~End() { va_end(list); }
    } end{arguments};
    return writer_vprintf(writer_, format, arguments);
}

StringOutputStream::~StringOutputStream() {
    close();
}

void StringOutputStream::open(const stdx::ustring& text) {
    open(create_std_string_buffer(text).get());
}

void StringOutputStream::open(IStringBuffer* buffer) {
    auto writer = make_object<StringWriter>();
    writer->open(buffer ? buffer : create_std_string_buffer().get());
    stringWriter_ = std::move(writer);
    setWriter(stringWriter_.get());
}

InterfacePtr<IStringBuffer> StringOutputStream::close() {
    setWriter(nullptr);
    InterfacePtr<IStringWriter> writer = std::move(stringWriter_);
    return writer ? writer->detach() : nullptr;
}

void StringInputStream::open(const stdx::ustring& text) {
    open(create_std_string_buffer(text).get());
}

void StringInputStream::open(IStringBuffer* buffer) {
    auto reader = make_object<StringReader>();
    reader->open(buffer);
    reader_ = std::move(reader);
}

void StringInputStream::close() {
    if (reader_) reader_->close();
    reader_.reset();
}

} // namespace core
