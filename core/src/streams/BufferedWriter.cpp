#include <core/streams/IBufferedWriter.h>

#include "StringBuffer.h"
#include "UnitScan.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/streams/IOException.h>
#include <core/streams/LineSeparator.h>

#include <algorithm>

namespace core {

namespace {

constexpr unsigned kCapacity = 65536; // units
constexpr unsigned kBlock = 8192;
constexpr char16_t kLineEnd = kDefaultLineSeparator[0];

} // namespace

class BufferedWriter
    : public ObjectRoot
    , public SCOM_Class<BufferedWriter, &CLSID_BufferedWriter>
    , public IBufferedWriter {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<BufferedWriter, IBufferedWriter, Via<IWriter, IBufferedWriter>>();
    }

    void open(IWriter* target, const char16_t* lineSeparator) final;
    void close() final;
    void newLine() final { collect(separator_.view()); }
    stdx::ustring lineSeparator() final { return separator_; }

    void put(char16_t unit) final;
    void write(const char16_t* text, unsigned n) final;
    void write(IStringBuffer* source, unsigned pos, unsigned n) final;
    void flush() final;

private:
    void collect(std::u16string_view text);
    void hand_on();

    InterfacePtr<IWriter> target_;
    StaticObject<StringBuffer> buffer_; // never longer than kCapacity
    stdx::ustring separator_;
};

void BufferedWriter::open(IWriter* target, const char16_t* lineSeparator) {
    if (!target) throw IOException(IOException::Error::NoTarget);
    buffer_.clear();
    buffer_.reserve(kCapacity);
    separator_ = units_of(lineSeparator, kAllUnits);
    target_ = {target, true};
}

void BufferedWriter::close() {
    if (!target_) return;
    struct Release {
        InterfacePtr<IWriter>& target;
        ~Release() { target.reset(); }
    } release{target_};
    hand_on();
}

void BufferedWriter::flush() {
    if (!target_) throw IOException(IOException::Error::NoTarget);
    hand_on();
}

// The buffer is empty afterwards also when the target throws.
void BufferedWriter::hand_on() {
    if (buffer_.isEmpty()) return;
    struct Clear {
        StringBuffer& buffer;
        ~Clear() { buffer.clear(); }
    } clear{buffer_};
    target_->write(&buffer_, 0, kAllUnits);
}

void BufferedWriter::collect(std::u16string_view text) {
    if (!target_) throw IOException(IOException::Error::NoTarget);
    while (!text.empty()) {
        const auto n = static_cast<unsigned>(std::min<std::size_t>(text.size(), kCapacity));
        if (buffer_.length() + n > kCapacity) hand_on();
        buffer_.append(text.data(), n);
        text.remove_prefix(n);
    }
}

void BufferedWriter::put(char16_t unit) {
    if (unit == kLineEnd && !separator_.empty()) return newLine();
    collect({&unit, 1});
}

void BufferedWriter::write(const char16_t* text, unsigned n) {
    std::u16string_view units = units_of(text, n);
    if (separator_.empty()) return collect(units);
    for (;;) {
        const std::size_t line = find_unit(units, kLineEnd);
        collect(units.substr(0, line));
        if (line == units.size()) break;
        newLine();
        units.remove_prefix(line + 1);
    }
}

void BufferedWriter::write(IStringBuffer* source, unsigned pos, unsigned n) {
    if (!target_) throw IOException(IOException::Error::NoTarget);
    const unsigned size = source->length();
    if (pos > size) throw_out_of_bounds(pos, size);
    char16_t block[kBlock];
    for (n = std::min(n, size - pos); n != 0;) {
        const unsigned copied = source->copy(pos, block, std::min(n, kBlock));
        if (copied == 0) break;
        write(block, copied);
        pos += copied;
        n -= copied;
    }
}

InterfacePtr<IBufferedWriter> create_buffered_writer() {
    return make_object<BufferedWriter>();
}

} // namespace core

ORBCORE_REGISTER(core::BufferedWriter);
