// Strings as streams, for the span of an open and a close.
//
//   core::StringOutputStream out;
//   out.open();
//   out.printf(u"%d of %d\n", part, total);
//   core::InterfacePtr<core::IStringBuffer> text = out.close();
#pragma once

#include <core/streams/IStringReader.h>
#include <core/streams/IStringWriter.h>

#include <cstdarg>

namespace core {

class ORBCORE_API BaseOutputStream {
public:
    BaseOutputStream() = default;
    BaseOutputStream(const BaseOutputStream&) = delete;
    BaseOutputStream& operator=(const BaseOutputStream&) = delete;
    virtual ~BaseOutputStream();
};

// What writes to a writer, which the derived class owns.
class ORBCORE_API FormattedOutputStream : public BaseOutputStream {
public:
    IWriter* writer() const noexcept { return writer_; } // lent; null if closed
    IWriter* operator->() const noexcept { return writer_; }

    // See writer_printf().
    int printf(const char16_t* format, ...);

protected:
    void setWriter(IWriter* writer) noexcept { writer_ = writer; }

private:
    IWriter* writer_ = nullptr;
};

class ORBCORE_API StringOutputStream : public FormattedOutputStream {
public:
    ~StringOutputStream() override;

    // Behind a text.
    void open(const stdx::ustring& text);
    // Into a buffer; null makes a new one over a string.
    void open(IStringBuffer* buffer = nullptr);
    // The buffer; null if there is none.
    InterfacePtr<IStringBuffer> close();

private:
    InterfacePtr<IStringWriter> stringWriter_;
};

class ORBCORE_API StringInputStream {
public:
    void open(const stdx::ustring& text);
    void open(IStringBuffer* buffer);
    void close();

    IStringReader* reader() const noexcept { return reader_.get(); } // lent; null if closed
    IStringReader* operator->() const noexcept { return reader_.get(); }

private:
    InterfacePtr<IStringReader> reader_;
};

} // namespace core
