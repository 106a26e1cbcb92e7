#include "ListScanner.h"

#include "Command.h"

#include <core/component/Exception.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/component/Utf8.h>
#include <core/files/IFileReader.h>
#include <core/streams/LineSeparator.h>
#include <core/streams/ListTags.h>
#include <core/text/Base64.h>
#include <core/text/Characters.h>
#include <core/text/Numbers.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <unistd.h>

namespace orb {
namespace {

// ---- Files.

// What is read of a descriptor. The first byte may be looked at before.
class InputFile
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<InputFile>
    , public core::IFile {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<InputFile, core::IFile>();
    }
    explicit InputFile(const std::string& name)
        : name_(name),
          file_(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC)) {
        if (file_ < 0) fail();
    }
    ~InputFile() {
        if (file_ > STDIN_FILENO) close(file_);
    }

    core::URL url() override { return {}; }
    unsigned read(void* to, unsigned n) override {
        if (at_ == end_) fill();
        n = std::min(n, static_cast<unsigned>(end_ - at_));
        std::memcpy(to, at_, n);
        at_ += n;
        return n;
    }
    void write(const void*, unsigned) override { throw Failure("'" + name_ + "' is only read"); }
    void flush() override {}

    // -1 at the end.
    int peek() {
        if (at_ == end_) fill();
        return at_ == end_ ? -1 : static_cast<unsigned char>(*at_);
    }
    int take() {
        const int byte = peek();
        if (byte >= 0) ++at_;
        return byte;
    }
    const std::string& name() const noexcept { return name_; }

private:
    void fill() {
        ssize_t size;
        do size = ::read(file_, block_, sizeof block_);
        while (size < 0 && errno == EINTR);
        if (size < 0) fail();
        at_ = block_;
        end_ = block_ + size;
    }
    [[noreturn]] void fail() const {
        throw Failure("cannot read '" + name_ + "': " + std::strerror(errno));
    }

    std::string name_;
    int file_;
    char block_[0x8000];
    const char *at_ = block_, *end_ = block_;
};

using FilePtr = core::InterfacePtr<InputFile>;

// ---- Text.

class TextScanner final : public ListScanner {
public:
    explicit TextScanner(const FilePtr& file)
        : name_(file->name()), reader_(core::create_file_reader()) {
        reader_->open(file.get(), core::kUTF8Encoding, true);
    }

    const char* form() const override { return "text"; }

    ListEvent next() override {
        skip_spaces();
        mark();
        if (behind_) {
            if (more() && unit() == u',') {
                pass();
                behind_ = false;
                afterComma_ = true;
                skip_spaces();
                mark();
            } else if (more() && unit() != u'}') {
                fail("a comma or a closing brace is missing");
            }
        }
        if (!more()) return end_of_file();
        if (unit() == u'{') return begin();
        if (unit() == u'}' && !afterComma_) return end();
        item_ = unit() == u'"' ? ListItem(quoted()) : bare();
        afterComma_ = false;
        behind_ = true;
        return ListEvent::Item;
    }

private:
    ListEvent begin() {
        pass();
        if (!enter()) fail("lists lie too deep within each other");
        afterComma_ = behind_ = false;
        return ListEvent::Begin;
    }
    ListEvent end() {
        pass();
        if (!leave()) fail("a list ends that has not begun");
        behind_ = true;
        return ListEvent::End;
    }
    ListEvent end_of_file() {
        if (depth_ != 0) fail("the file ends inside of a list");
        if (afterComma_) fail("an item is missing behind the comma");
        return ListEvent::EndOfFile;
    }

    stdx::ustring quoted() {
        stdx::ustring text;
        pass();
        for (;;) {
            if (!more()) fail("the string has no end");
            const char16_t c = unit();
            pass();
            if (c != u'"') {
                text.push_back(c);
            } else if (more() && unit() == u'"') {
                text.push_back(c);
                pass();
            } else if (more() && unit() == u'\\') {
                pass();
                text.push_back(escape());
            } else {
                return text;
            }
        }
    }
    char16_t escape() {
        unsigned code = 0;
        for (int i = 0; i != 4; ++i) {
            if (!more() || !core::is_xdigit(unit())) {
                mark();
                fail("four hexadecimal digits are expected");
            }
            code = code << 4 | static_cast<unsigned>(core::xdigit(unit()));
            pass();
        }
        return static_cast<char16_t>(code);
    }

    // A number, a GUID or base64; nothing at all is a blob without bytes.
    ListItem bare() {
        std::string word;
        for (; more() && unit() != u',' && unit() != u'}'; pass()) {
            if (unit() == u'{' || unit() == u'"' || unit() > 0x7E)
                fail("this is no item of a list");
            word += static_cast<char>(unit());
        }
        while (!word.empty() && core::is_space(word.back())) word.pop_back();
        if (std::optional<ListItem> number = number_of(word)) return std::move(*number);
        _GUID guid;
        if (word.size() == core::kGuidTextLength && core::from_string(word.c_str(), guid))
            return guid;
        Blob blob;
        core::Base64Decoder decoder;
        std::string bytes(core::Base64Decoder::max_size(word.size()), '\0');
        auto* const begin = reinterpret_cast<std::uint8_t*>(bytes.data());
        std::uint8_t* end = decoder.decode(word.data(), word.size(), begin);
        if (decoder.is_ended() || !decoder.finish(end)) fail("this is no item of a list");
        blob.bytes.assign(bytes.data(), static_cast<unsigned>(end - begin));
        return blob;
    }

    static std::optional<ListItem> number_of(const std::string& word) {
        const char* const first = word.data();
        const char* const last = first + word.size();
        std::uint64_t large;
        if (const auto end = std::from_chars(first, last, large);
            end.ptr == last && end.ec == std::errc())
            return Unsigned{large};
        std::int64_t small;
        if (const auto end = std::from_chars(first, last, small);
            end.ptr == last && end.ec == std::errc())
            return Negative{small};
        constexpr std::size_t kLongestDouble = 31;
        if (word.size() <= kLongestDouble) {
            const char* end;
            const double value = core::string_tod(word.c_str(), &end);
            if (end == last && !word.empty() &&
                core::to_utf8(core::string_dto(value).view()) == stdx::string(word.c_str()))
                return value;
        }
        if (std::optional<core::Numeric> number = core::Numeric::parse(word))
            return std::move(*number);
        return std::nullopt;
    }

    // ---- Units, and where they stand.

    bool more() {
        if (at_ == size_) {
            try {
                size_ = reader_->read(block_, kBlock);
            } catch (const core::Exception& fault) {
                mark();
                fail(std::string(core::to_utf8(fault.description()).view()));
            }
            at_ = 0;
        }
        return at_ != size_;
    }
    char16_t unit() const noexcept { return block_[at_]; }
    void pass() noexcept {
        if (block_[at_++] == u'\n') {
            ++line_;
            column_ = 1;
        } else if ((block_[at_ - 1] & 0xFC00) != 0xDC00) {
            ++column_; // a pair of surrogates is one character
        }
    }
    void skip_spaces() {
        while (more() && core::is_space(unit())) pass();
    }
    // What follows begins here.
    void mark() noexcept {
        markedLine_ = line_;
        markedColumn_ = column_;
    }
    [[noreturn]] void fail(const std::string& what) const {
        throw Failure("'" + name_ + "', line " + std::to_string(markedLine_) + ", column " +
                      std::to_string(markedColumn_) + ": " + what);
    }

    std::string name_;
    core::InterfacePtr<core::IFileReader> reader_;
    static constexpr unsigned kBlock = 8192;
    char16_t block_[kBlock];
    unsigned at_ = 0, size_ = 0;
    std::uint64_t line_ = 1, column_ = 1, markedLine_ = 1, markedColumn_ = 1;
    bool behind_ = false;     // an item: a comma or an end follows
    bool afterComma_ = false; // an item follows
};

// ---- Bytes.

class BinaryScanner final : public ListScanner {
public:
    explicit BinaryScanner(FilePtr file) : file_(std::move(file)) {}

    const char* form() const override { return "binary"; }

    // Commas are passed wherever they stand: the items of an object have none.
    ListEvent next() override {
        using namespace core::list_tag;
        for (;;) {
            mark_ = offset_ - (tag_ != 0);
            if (tag_ == 0) {
                mark_ = offset_;
                const int byte = file_->take();
                if (byte < 0) {
                    if (depth_ != 0) fail("the file ends inside of a list");
                    return ListEvent::EndOfFile;
                }
                ++offset_;
                tag_ = static_cast<std::uint8_t>(byte);
                if (tag_ == 0) fail("a tag is 0");
            }
            const std::uint8_t taken = first_of(tag_);
            tag_ = static_cast<std::uint8_t>(tag_ & ~taken);
            if (taken == kBegin) {
                if (!enter()) fail("lists lie too deep within each other");
                return ListEvent::Begin;
            }
            if (taken == kEnd) {
                if (!leave()) fail("a list ends that has not begun");
                return ListEvent::End;
            }
            if (taken != kComma) {
                item_ = item_of(taken);
                return ListEvent::Item;
            }
        }
    }

private:
    ListItem item_of(std::uint8_t type) {
        using namespace core::list_tag;
        if (type < kUInt8) return Unsigned{type - std::uint64_t{kZero}};
        if (type <= kNegative64) return integer_of(type);
        switch (type) {
        case kFloat:
            return read_as<float>();
        case kDouble:
            return read_as<double>();
        case kGuid:
            return read_as<_GUID>();
        case kNumeric:
            return numeric();
        case kUnits8:
            return string(number(1), 2);
        case kUnits16:
            return string(number(2), 2);
        case kUnits64:
            return string(number(8), 2);
        case kBytes8:
            return string(number(1), 1);
        case kBytes16:
            return string(number(2), 1);
        case kBytes64:
            return string(number(8), 1);
        default:
            fail("there is no tag " + std::to_string(type));
        }
    }

    ListItem integer_of(std::uint8_t type) {
        const std::uint64_t magnitude = number(core::list_tag::width_of_integer(type));
        if (!core::list_tag::is_negative_integer(type)) return Unsigned{magnitude};
        if (magnitude > std::uint64_t{1} << 63) fail("a negative number has more than 64 bits");
        return Negative{static_cast<std::int64_t>(0 - magnitude)};
    }

    core::Numeric numeric() {
        const int tag = file_->take();
        ++offset_;
        if (tag != core::list_tag::kBytes8 && tag != core::list_tag::kBytes16 &&
            tag != core::list_tag::kBytes64 && tag != core::list_tag::kUInt8)
            fail("a decimal lacks its text");
        constexpr unsigned kWidths[] = {1, 2, 8};
        const stdx::ustring text = string(
            tag == core::list_tag::kUInt8 ? 1 : number(kWidths[tag - core::list_tag::kBytes8]), 1);
        std::optional<core::Numeric> value = core::Numeric::parse(text.view());
        if (!value) fail("a decimal is none");
        return std::move(*value);
    }

    // Memory is taken as the data arrive.
    stdx::ustring string(std::uint64_t count, unsigned width) {
        constexpr std::uint64_t kMostUnits = 0x7FFFFFFF;
        if (count > kMostUnits) fail("a string has more than 2^31 units");
        stdx::ustring text;
        for (; count != 0; --count) text.push_back(static_cast<char16_t>(number(width)));
        return text;
    }

    template <class T> T read_as() {
        T value;
        auto* to = reinterpret_cast<char*>(&value);
        for (std::size_t i = 0; i != sizeof value; ++i) to[i] = static_cast<char>(byte());
        return value;
    }
    std::uint64_t number(unsigned width) {
        std::uint64_t value = 0;
        for (unsigned i = 0; i != width; ++i) value |= std::uint64_t{byte()} << (8 * i);
        return value;
    }
    unsigned byte() {
        const int byte = file_->take();
        if (byte < 0) fail("the file ends inside of an item");
        ++offset_;
        return static_cast<unsigned>(byte);
    }
    [[noreturn]] void fail(const std::string& what) const {
        throw Failure("'" + file_->name() + "', offset " + std::to_string(mark_) + ": " + what);
    }

    FilePtr file_;
    std::uint64_t offset_ = 0, mark_ = 0; // mark_: of the tag at hand
    std::uint8_t tag_ = 0;                // what of it was not taken yet
};

} // namespace

void put_item(core::IListOutStream& out, const ListItem& item) {
    struct {
        core::IListOutStream& to;
        void operator()(const Unsigned& value) const { to.putUInt64(value.value); }
        void operator()(const Negative& value) const { to.putInt64(value.value); }
        void operator()(float value) const { to.putFloat(value); }
        void operator()(double value) const { to.putDouble(value); }
        void operator()(const _GUID& value) const { to.putGuid(value); }
        void operator()(const core::Numeric& value) const { to.putNumeric(value); }
        void operator()(const stdx::ustring& value) const { to.putString(value); }
        void operator()(const Blob& value) const { to.putBytes(value.bytes); }
    } const put{out};
    std::visit(put, item);
}

std::unique_ptr<ListScanner> open_list(const std::string& name, ListForm form) {
    FilePtr file = core::make_object<InputFile>(name);
    // A list begins with bit 6 of a tag, and without bit 5, which "{", spaces and marks of UTF-8 and
    // UTF-16 have, or lie below.
    const int first = file->peek();
    const bool beginsBinary = first >= 0x40 && first < 0x60;
    if (form == ListForm::Binary || (form == ListForm::Found && beginsBinary))
        return std::make_unique<BinaryScanner>(std::move(file));
    return std::make_unique<TextScanner>(file);
}

} // namespace orb
