// The reader reads its source in blocks and copies lines out of them. A block is never changed: a
// line separator stands in it as it stood in the source, and "\n" is shown in its place.
#include <core/streams/IBufferedReader.h>

#include "LineEnds.h"
#include "StdStringBuffer.h"
#include "UnitMemory.h"
#include "WindowReader.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/streams/IOException.h>
#include <core/streams/LineSeparator.h>

#include <algorithm>

namespace core {

namespace {

constexpr unsigned kPiece = 8192; // units
constexpr std::u16string_view kLineEnd = kDefaultLineSeparator;

// The size of a block for a separator: a piece goes behind the longest beginning of one.
unsigned block_size(std::size_t separator) {
    if (separator <= 1) return kPiece;
    if (separator <= kPiece) return 2 * kPiece;
    const unsigned size = elm::checked_size(separator + kPiece);
    return (size + LineEnds::kGroup - 1) / LineEnds::kGroup * LineEnds::kGroup;
}

} // namespace

class BufferedReader
    : public ObjectRoot
    , public SCOM_Class<BufferedReader, &CLSID_BufferedReader>
    , public WindowReader<BufferedReader, IBufferedReader> {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<BufferedReader, IBufferedReader, Via<IReader, IBufferedReader>,
                             ITextWindow>();
    }

    void open(IReader* source, const char16_t* lineSeparator) final;
    void close() final;
    stdx::ustring readLine() final;
    unsigned readLine(IStringBuffer* to) final { return take_line(*to); }
    unsigned readTo(IStringBuffer* to, unsigned n) final;
    bool eof() final { return at_ >= ends_.listed() && (!source_ || units().empty()); }

    std::u16string_view units() {
        for (;;) {
            const std::u16string_view here = units_of_block();
            if (!here.empty() || !refill(kPiece)) return here;
        }
    }
    void pass(unsigned n) noexcept {
        const bool isReplaced = n != 0 && filters() && ends_.next(at_) == at_;
        at_ += isReplaced ? ends_.separator_size() : n;
    }

private:
    bool filters() const noexcept { return ends_.separator_size() != 0; }
    std::u16string_view units_of_block() noexcept;
    bool refill(unsigned least);
    template <class Buffer> unsigned take_line(Buffer& to);
    unsigned take_long_line(IStringBuffer& to);
    void pass_line_end(unsigned end);
    void drop_block() noexcept;

    InterfacePtr<IReader> source_;
    UnitMemory block_;
    LineEnds ends_;         // of the block
    unsigned at_ = 0;       // in the block
    bool isCutOff_ = false; // the block is the beginning of a separator that the text ends with
    StaticObject<StdStringBuffer> line_;
};

void BufferedReader::open(IReader* source, const char16_t* lineSeparator) {
    if (!source) throw IOException(IOException::Error::NoSource);
    const std::u16string_view separator = units_of(lineSeparator, kAllUnits);
    const unsigned size = block_size(separator.size());
    if (size != block_.capacity()) block_ = UnitMemory(size);
    ends_ = LineEnds(separator);
    drop_block();
    source_ = {source, true};
}

void BufferedReader::close() {
    drop_block();
    line_.clear();
    source_.reset();
}

void BufferedReader::drop_block() noexcept {
    ends_.start(nullptr, 0);
    at_ = 0;
    isCutOff_ = false;
}

// What comes next of the block; nothing behind its last unit.
std::u16string_view BufferedReader::units_of_block() noexcept {
    unsigned end = ends_.size();
    if (filters() && at_ != end) {
        end = ends_.next(at_);
        if (end == at_ && end != ends_.size()) return kLineEnd;
    }
    return {block_.data() + at_, end - at_};
}

// Reads until `least` units have arrived. False if nothing is left. If the source fails, what it
// gave before that is there.
bool BufferedReader::refill(unsigned least) {
    if (!source_) throw IOException(IOException::Error::NoSource);
    // What may be the beginning of a separator comes from the last block.
    const unsigned held = ends_.held();
    ends_.separator().copy(block_.data(), held);
    unsigned arrived = 0;
    while (arrived < least) {
        const unsigned filled = held + arrived;
        const unsigned wanted = std::min(kPiece, block_.capacity() - filled);
        const unsigned n = source_->read(block_.data() + filled, wanted);
        if (n == 0) break;
        arrived += n;
        isCutOff_ = false;
        at_ = 0;
        ends_.start(block_.data(), held + arrived);
    }
    if (arrived == 0) {
        isCutOff_ = held != 0;
        at_ = 0;
        ends_.start_plain(block_.data(), held);
    }
    return ends_.size() != 0;
}

template <class Buffer> unsigned BufferedReader::take_line(Buffer& to) {
    const unsigned end = ends_.next_listed(at_);
    if (end >= ends_.listed()) return take_long_line(to);
    const unsigned size = end - at_;
    if (size != 0) to.append(block_.data() + at_, size);
    pass_line_end(end);
    return size;
}

// A line whose end is not known yet, or lies in another block.
unsigned BufferedReader::take_long_line(IStringBuffer& to) {
    unsigned taken = 0;
    while (at_ != ends_.size() || refill(kPiece)) {
        if (isCutOff_) { // what is left of it is the line end
            at_ = ends_.size();
            break;
        }
        const unsigned end = ends_.next(at_), size = end - at_;
        if (size != 0) to.append(block_.data() + at_, size);
        taken += size;
        at_ = end;
        if (end == ends_.size()) continue; // the line goes on
        pass_line_end(end);
        break;
    }
    return taken;
}

void BufferedReader::pass_line_end(unsigned end) {
    const bool isReturn = block_.data()[end] == u'\r';
    if (filters()) {
        at_ = end + ends_.separator_size();
        return;
    }
    at_ = end + 1;
    if (isReturn && (at_ != ends_.size() || refill(kPiece)) && block_.data()[at_] == u'\n') ++at_;
}

stdx::ustring BufferedReader::readLine() {
    line_.clear();
    take_line<StdStringBuffer>(line_);
    return line_.toString();
}

// When all is wanted, what arrives is handed on at once, before the source may fail.
unsigned BufferedReader::readTo(IStringBuffer* to, unsigned n) {
    if (n != kAllUnits) return WindowReader::readTo(to, n);
    unsigned taken = 0;
    do {
        for (auto run = units_of_block(); !run.empty(); run = units_of_block()) {
            const auto size = static_cast<unsigned>(run.size());
            to->append(run.data(), size);
            pass(size);
            taken += size;
        }
    } while (refill(1));
    return taken;
}

InterfacePtr<IBufferedReader> create_buffered_reader() {
    return make_object<BufferedReader>();
}

} // namespace core

ORBCORE_REGISTER(core::BufferedReader);
