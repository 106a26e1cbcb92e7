#include "ListScanners.h"

#include <core/streams/ListTags.h>

#include <algorithm>
#include <bit>
#include <optional>

namespace orb {
namespace {

namespace tag = core::list_tag;

class BinaryScanner final : public ListScannerBase {
public:
    BinaryScanner(ListCursorPtr file, bool attachments)
        : ListScannerBase(file->source()->name()),
          file_(std::move(file)),
          attachments_(attachments) {}

    const char* form() const override { return "binary"; }
    std::string carrier() const override { return "blobs"; }
    std::string place() const override { return "offset " + std::to_string(mark_); }

    // Commas are passed wherever they stand: the items of an object have none.
    ListEvent next() override {
        pass_attachment();
        for (;;) {
            const std::optional<std::uint8_t> taken = take_tag();
            if (!taken) {
                if (depth_ != 0) fail("the file ends inside of a list");
                return ListEvent::EndOfFile;
            }
            if (*taken == tag::kBegin) {
                enter();
                if (!attachments_ || !is_attachment()) return ListEvent::Begin;
                take_tag(); // the 0
                inAttachment_ = true;
                return ListEvent::Attachment;
            }
            if (*taken == tag::kEnd) {
                leave();
                return ListEvent::End;
            }
            if (*taken != tag::kComma) {
                item_ = item_of(*taken);
                return ListEvent::Item;
            }
        }
    }

    unsigned read(void* to, unsigned n) override {
        while (left_ == 0 && inAttachment_) begin_blob();
        n = static_cast<unsigned>(std::min<std::uint64_t>(n, left_));
        if (n == 0) return 0;
        n = file_->read(to, n);
        if (n == 0) fail("the file ends inside of an item");
        left_ -= n;
        return n;
    }

private:
    // The first mark of the tag at hand or, behind the marks, its type; none at the end of the file.
    std::optional<std::uint8_t> take_tag() {
        mark_ = file_->offset() - (tag_ != 0);
        if (tag_ == 0) {
            const int byte = file_->take();
            if (byte < 0) return std::nullopt;
            tag_ = static_cast<std::uint8_t>(byte);
            if (tag_ == 0) fail("a tag is 0");
        }
        const std::uint8_t taken = tag::first_of(tag_);
        tag_ = static_cast<std::uint8_t>(tag_ & ~taken);
        return taken;
    }

    // ---- Attachments: a list of 0 and blobs.

    static bool is_blob(std::uint8_t type) noexcept {
        return type == tag::kZero || type == tag::kUInt8 ||
               (type >= tag::kBytes8 && type <= tag::kBytes64);
    }
    std::uint64_t length_of_blob(std::uint8_t type) {
        constexpr unsigned kWidths[] = {1, 2, 8};
        if (type == tag::kZero) return 0;
        return type == tag::kUInt8 ? 1 : number(kWidths[type - tag::kBytes8]);
    }

    // Looks ahead to the end of the list that has begun, and turns back. A fault on the way is the
    // first one of the file.
    bool is_attachment() {
        const std::uint64_t here = file_->offset(), mark = mark_;
        const std::uint8_t tag = tag_;
        const bool found = holds_blobs();
        file_->move_to(here);
        mark_ = mark;
        tag_ = tag;
        return found;
    }
    bool holds_blobs() {
        if (take_tag() != tag::kZero) return false;
        for (;;) {
            const std::optional<std::uint8_t> taken = take_tag();
            if (taken != tag::kComma) return taken == tag::kEnd;
            const std::optional<std::uint8_t> type = take_tag();
            if (!type || !is_blob(*type)) return false;
            if (!file_->skip(length_of_blob(*type))) fail("the file ends inside of an item");
        }
    }

    // The next blob, or the end of the list.
    void begin_blob() {
        const std::optional<std::uint8_t> taken = take_tag();
        inAttachment_ = taken == tag::kComma;
        if (taken == tag::kEnd) return leave();
        const std::optional<std::uint8_t> type = take_tag();
        if (!inAttachment_ || !type || !is_blob(*type)) fail("the file has changed meanwhile");
        left_ = length_of_blob(*type);
    }
    void pass_attachment() {
        char piece[4096];
        while (inAttachment_) read(piece, sizeof piece);
    }

    // ---- Items.

    ListItem item_of(std::uint8_t type) {
        if (type < tag::kUInt8) return Unsigned{type - std::uint64_t{tag::kZero}};
        if (type <= tag::kNegative64) return integer_of(type);
        switch (type) {
        case tag::kFloat:
            return read_as<float>();
        case tag::kDouble:
            return read_as<double>();
        case tag::kGuid:
            return read_as<_GUID>();
        case tag::kNumeric:
            return numeric();
        case tag::kUnits8:
            return string<char16_t>(number(1));
        case tag::kUnits16:
            return string<char16_t>(number(2));
        case tag::kUnits64:
            return string<char16_t>(number(8));
        case tag::kBytes8:
        case tag::kBytes16:
        case tag::kBytes64:
            return string<std::uint8_t>(length_of_blob(type));
        default:
            fail("there is no tag " + std::to_string(type));
        }
    }

    ListItem integer_of(std::uint8_t type) {
        const std::uint64_t magnitude = number(tag::width_of_integer(type));
        if (!tag::is_negative_integer(type)) return Unsigned{magnitude};
        if (magnitude > std::uint64_t{1} << 63) fail("a negative number has more than 64 bits");
        return Negative{static_cast<std::int64_t>(0 - magnitude)};
    }

    core::Numeric numeric() {
        const int type = file_->take();
        if (type == tag::kZero || type < 0 || !is_blob(static_cast<std::uint8_t>(type)))
            fail("a decimal lacks its text");
        const stdx::ustring text =
            string<std::uint8_t>(length_of_blob(static_cast<std::uint8_t>(type)));
        std::optional<core::Numeric> value = core::Numeric::parse(text.view());
        if (!value) fail("a decimal is none");
        return std::move(*value);
    }

    // Memory is taken as the data arrive.
    template <class Unit> stdx::ustring string(std::uint64_t count) {
        constexpr std::uint64_t kMostUnits = 0x7FFFFFFF;
        if (count > kMostUnits) fail("a string has more than 2^31 units");
        stdx::ustring text;
        Unit piece[2048];
        while (count != 0) {
            const auto n =
                static_cast<std::size_t>(std::min<std::uint64_t>(count, std::size(piece)));
            bytes(piece, n * sizeof(Unit));
            std::copy_n(piece, n, text._append(static_cast<unsigned>(n)));
            count -= n;
        }
        return text;
    }
    template <class T> T read_as() {
        T value;
        bytes(&value, sizeof value);
        return value;
    }
    std::uint64_t number(unsigned width) {
        std::uint64_t value = 0; // the low byte first, as numbers lie in memory
        bytes(&value, width);
        return value;
    }
    void bytes(void* to, std::size_t size) {
        for (auto* at = static_cast<char*>(to); size != 0;) {
            const unsigned n = file_->read(at, static_cast<unsigned>(size));
            if (n == 0) fail("the file ends inside of an item");
            at += n;
            size -= n;
        }
    }

    ListCursorPtr file_;
    bool attachments_;
    std::uint64_t mark_ = 0; // of the tag at hand
    std::uint8_t tag_ = 0;   // what of it was not taken yet
    bool inAttachment_ = false;
    std::uint64_t left_ = 0; // of the blob of the attachment
};

static_assert(std::endian::native == std::endian::little, "numbers are read as they lie");

} // namespace

std::unique_ptr<ListScanner> binary_scanner(ListCursorPtr file, bool attachments) {
    return std::make_unique<BinaryScanner>(std::move(file), attachments);
}

} // namespace orb
