#include "ListScanners.h"

#include <core/component/Exception.h>
#include <core/component/Utf8.h>
#include <core/files/IFileReader.h>
#include <core/streams/LineSeparator.h>
#include <core/text/Base64.h>
#include <core/text/Characters.h>
#include <core/text/Numbers.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>

namespace orb {
namespace {

std::optional<ListItem> integer_of(std::string_view word) {
    const auto read = [word](auto value, std::size_t begin) {
        const auto end = std::from_chars(word.data() + begin, word.data() + word.size(), value);
        const bool isWhole = end.ec == std::errc() && end.ptr == word.data() + word.size();
        return isWhole ? std::optional(value) : std::nullopt;
    };
    if (const auto large = read(std::uint64_t{}, word.starts_with('+'))) return Unsigned{*large};
    if (const auto small = read(std::int64_t{}, 0)) return Negative{*small};
    return std::nullopt;
}

enum class Spelling { OfWriters, OfReaders };

std::optional<double> real_of(const std::string& word, Spelling spelling) {
    constexpr std::size_t kLongest = 31;
    if (word.empty() || word.size() > kLongest || word.find('+') != word.npos) return std::nullopt;
    const char* end;
    const double value = core::string_tod(word.c_str(), &end);
    if (end != word.data() + word.size()) return std::nullopt;
    if (spelling == Spelling::OfWriters &&
        core::to_utf8(core::string_dto(value).view()).view() != word)
        return std::nullopt;
    return value;
}

std::optional<Blob> blob_of(const std::string& word) {
    core::Base64Decoder decoder;
    std::string bytes(core::Base64Decoder::max_size(word.size()), '\0');
    auto* const begin = reinterpret_cast<std::uint8_t*>(bytes.data());
    std::uint8_t* end = decoder.decode(word.data(), word.size(), begin);
    if (decoder.is_ended() || !decoder.finish(end)) return std::nullopt;
    Blob blob;
    blob.bytes.assign(bytes.data(), static_cast<unsigned>(end - begin));
    return blob;
}

// By its spelling; nothing at all is a blob without bytes.
std::optional<ListItem> bare_item(const std::string& word) {
    if (auto integer = integer_of(word)) return integer;
    if (const auto real = real_of(word, Spelling::OfWriters)) return *real;
    if (auto number = core::Numeric::parse(word)) return std::move(*number);
    _GUID guid;
    if (word.size() == core::kGuidTextLength && core::from_string(word.c_str(), guid)) return guid;
    if (auto blob = blob_of(word)) return std::move(*blob);
    if (const auto real = real_of(word, Spelling::OfReaders)) return *real;
    return std::nullopt;
}

// The value of a character of base64, or -1.
int digit_of(char16_t c) {
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    static constexpr auto kValues = [kAlphabet] {
        std::array<std::int8_t, 128> values;
        values.fill(-1);
        for (std::size_t i = 0; i != kAlphabet.size(); ++i)
            values[static_cast<std::size_t>(kAlphabet[i])] = static_cast<std::int8_t>(i);
        return values;
    }();
    return c < kValues.size() ? kValues[c] : -1;
}

class TextScanner final : public ListScannerBase {
public:
    explicit TextScanner(const ListCursorPtr& file)
        : ListScannerBase(file->source()->name()), reader_(core::create_file_reader()) {
        reader_->open(file.get(), core::kUTF8Encoding, true);
    }

    const char* form() const override { return "text"; }
    std::string carrier() const override { return code_ == Code::Base64 ? "base64" : "data"; }
    std::string place() const override {
        return "line " + std::to_string(markedLine_) + ", column " + std::to_string(markedColumn_);
    }

    ListEvent next() override {
        pass_attachment();
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

    unsigned read(void* to, unsigned n) override {
        while (decodedAt_ == decodedEnd_) {
            if (code_ == Code::None) return 0;
            decode();
        }
        n = std::min(n, static_cast<unsigned>(decodedEnd_ - decodedAt_));
        std::memcpy(to, decodedAt_, n);
        decodedAt_ += n;
        return n;
    }

private:
    ListEvent begin() {
        pass();
        enter();
        afterComma_ = behind_ = false;
        if (more() && unit() == u'#') return begin_attachment();
        return ListEvent::Begin;
    }
    ListEvent end() {
        leave();
        pass();
        behind_ = true;
        return ListEvent::End;
    }
    ListEvent end_of_file() {
        if (depth_ != 0) fail("the file ends inside of a list");
        if (afterComma_) fail("an item is missing behind the comma");
        return ListEvent::EndOfFile;
    }

    // ---- Items.

    stdx::ustring quoted() {
        stdx::ustring text;
        pass();
        for (;;) {
            if (!more()) fail("the string has no end");
            const char16_t *const first = block_ + at_, *const last = block_ + size_;
            const char16_t* const quote = std::find(first, last, u'"');
            text.append(std::u16string_view(first, quote));
            pass_to(quote);
            if (at_ == size_) continue;
            pass();
            if (more() && unit() == u'"') {
                text.push_back(u'"');
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

    ListItem bare() {
        std::string word;
        bool isForeign = false; // digits of another script, which integers may have
        for (; more() && unit() != u',' && unit() != u'}'; pass()) {
            const char16_t c = unit();
            if (c > 0x7E && core::is_digit(c)) {
                isForeign = true;
                word += core::for_digit<char>(static_cast<unsigned>(core::digit(c)));
            } else if (c == u'{' || c == u'"' || c > 0x7E) {
                mark();
                fail("this is no item of a list");
            } else {
                word += static_cast<char>(c);
            }
        }
        while (!word.empty() && core::is_space(word.back())) word.pop_back();
        std::optional<ListItem> item = isForeign ? integer_of(word) : bare_item(word);
        if (!item) fail("this is no item of a list");
        return std::move(*item);
    }

    // ---- Attachments: a word and the bytes in its code, which end the list.

    enum class Code { None, Base64, Old };

    ListEvent begin_attachment() {
        constexpr std::size_t kLongest = 8;
        std::string word;
        for (; more() && word.size() != kLongest && unit() <= 0x7E; pass()) {
            word += static_cast<char>(unit());
            if (word == "#base64:" || word == "#data:") {
                pass();
                code_ = word.size() == kLongest ? Code::Base64 : Code::Old;
                decoder_ = core::Base64Decoder();
                groupsEnd_ = false;
                return ListEvent::Attachment;
            }
        }
        fail("the list begins with '#', but is no attachment '#base64:' or '#data:'");
    }

    void pass_attachment() {
        char piece[1024];
        while (read(piece, sizeof piece) != 0) {}
    }

    // The next bytes, or none at the end of the code, where the list ends as well.
    void decode() {
        decodedAt_ = decodedEnd_ = decoded_;
        if (code_ == Code::Old ? decode_groups() : decode_run()) return;
        code_ = Code::None;
        skip_spaces();
        mark();
        if (!more()) fail("the file ends inside of an attachment");
        if (unit() != u'}') fail("this is neither of the attachment nor a closing brace");
        end();
    }

    // What lies in the block up to another character, "=" by itself.
    bool decode_run() {
        if (!more()) return false;
        const char16_t* const first = block_ + at_;
        const char16_t* const last = first + std::min(size_ - at_, kPiece);
        const char16_t* run = std::find_if(
            first, last, [](char16_t c) { return digit_of(c) < 0 && c != u'\r' && c != u'\n'; });
        if (run == first && *run == u'=') ++run;
        if (run != first) {
            mark();
            decodedEnd_ = decoder_.decode(first, static_cast<std::size_t>(run - first), decoded_);
            if (decoder_.is_ended()) fail("this is no base64");
            pass_to(run);
            return true;
        }
        if (decoder_.finish(decodedEnd_)) return false;
        mark();
        fail("the base64 ends inside of a group of four");
    }

    // Groups of four, the lowest bits first. One that is not complete ends the code and is dropped,
    // as it is by all who read it.
    bool decode_groups() {
        unsigned size = groupsEnd_ ? 0 : kGroup;
        while (size == kGroup && decodedEnd_ + kGroup <= std::end(decoded_)) {
            size = decode_group(decodedEnd_);
            decodedEnd_ += size;
        }
        groupsEnd_ = size != kGroup;
        return decodedEnd_ != decodedAt_;
    }
    unsigned decode_group(std::uint8_t* to) {
        std::uint32_t group = 0;
        unsigned missing = 0;
        for (unsigned i = 0; i != 4; ++i, pass()) {
            if (!more()) return 0;
            const int value = digit_of(unit());
            if (unit() == u'=' ? ++missing > 2 : value < 0 || missing != 0) return 0;
            if (missing == 0) group |= static_cast<std::uint32_t>(value) << 6 * i;
        }
        for (unsigned i = 0; i != kGroup; ++i) to[i] = static_cast<std::uint8_t>(group >> 8 * i);
        return kGroup - missing;
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
    void pass_to(const char16_t* place) noexcept {
        while (block_ + at_ != place) pass();
    }
    void skip_spaces() {
        while (more() && core::is_space(unit())) pass();
    }
    // What follows begins here.
    void mark() noexcept {
        markedLine_ = line_;
        markedColumn_ = column_;
    }

    core::InterfacePtr<core::IFileReader> reader_;
    static constexpr unsigned kBlock = 8192;
    char16_t block_[kBlock];
    unsigned at_ = 0, size_ = 0;
    std::uint64_t line_ = 1, column_ = 1, markedLine_ = 1, markedColumn_ = 1;
    bool behind_ = false;     // an item: a comma or an end follows
    bool afterComma_ = false; // an item follows

    static constexpr unsigned kPiece = 4096; // characters of base64
    static constexpr unsigned kGroup = 3;
    Code code_ = Code::None; // of the attachment at hand
    core::Base64Decoder decoder_;
    bool groupsEnd_ = false; // of the older code
    std::uint8_t decoded_[core::Base64Decoder::max_size(kPiece)];
    std::uint8_t *decodedAt_ = decoded_, *decodedEnd_ = decoded_;
};

} // namespace

std::unique_ptr<ListScanner> text_scanner(const ListCursorPtr& file) {
    return std::make_unique<TextScanner>(file);
}

} // namespace orb
