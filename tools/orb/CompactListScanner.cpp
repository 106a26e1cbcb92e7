#include "ListScanners.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/persistence/CompactPersistenceStorage.h>

#include <bit>
#include <optional>

namespace orb {
namespace {

static_assert(std::endian::native == std::endian::little, "numbers are read as they lie");

// A text and the sections behind it. Both are read side by side: the attachments stand in the text in
// the order of their sections.
class CompactScanner final : public ListScanner {
public:
    CompactScanner(ListCursorPtr file, bool attachments)
        : file_(std::move(file)), every_(attachments) {
        pass_signature();
        const auto length = record<std::uint64_t>("the length of the text");
        const std::uint64_t begin = file_->offset();
        check_length(length, "the text");
        text_ = text_scanner(core::make_object<ListCursor>(file_->source(), begin, begin + length));
        file_->move_to(begin + length);
    }

    const char* form() const override { return "compact"; }
    std::string carrier() const override { return "section " + std::to_string(section_->number); }
    std::string place() const override { return text_->place(); }
    const ListItem& item() const noexcept override { return ofNumber_ ? number_ : text_->item(); }

    ListEvent next() override {
        if (std::exchange(attached_, {})) isSectionFound_ = false;
        if (ofNumber_ = std::exchange(isNumberNext_, false); ofNumber_) return ListEvent::Item;
        const ListEvent event = ahead_ ? *std::exchange(ahead_, std::nullopt) : text_->next();
        if (event == ListEvent::Begin) return begin();
        if (event == ListEvent::Attachment)
            fail(place(), "attachments of this file are sections, but this one is in the text");
        if (event == ListEvent::EndOfFile) end();
        return event;
    }

    unsigned read(void* to, unsigned n) override {
        n = attached_->read(to, n);
        if (n == 0 && attached_->offset() != file_->offset()) fail_at(section_->offset, kChanged);
        return n;
    }

private:
    // A list of one number may point to a section.
    ListEvent begin() {
        ahead_ = text_->next();
        const auto* const first =
            *ahead_ == ListEvent::Item ? std::get_if<Unsigned>(&text_->item()) : nullptr;
        if (!first) return ListEvent::Begin;
        const std::uint64_t number = first->value;
        find_section();
        const std::string fault = fault_of_pointer(number);
        const std::string where = fault.empty() ? fault : place();
        ahead_ = text_->next();
        if (*ahead_ == ListEvent::End) {
            if (!fault.empty()) fail(where, fault);
            if (section_ && section_->number == number) {
                ahead_ = {};
                attached_ = core::make_object<ListCursor>(
                    file_->source(), file_->offset() - section_->length, file_->offset());
                return ListEvent::Attachment;
            }
        }
        number_ = Unsigned{number};
        isNumberNext_ = true;
        return ListEvent::Begin;
    }

    void end() {
        find_section();
        if (section_)
            fail_at(section_->offset,
                    "no list points to section " + std::to_string(section_->number));
    }

    // What is wrong if a list of this number is one that points to a section. A number that is no
    // section's is one of the text's own, except in a gap between sections.
    std::string fault_of_pointer(std::uint64_t number) const {
        const auto section = [](std::uint64_t n) { return "section " + std::to_string(n); };
        const bool isInGap = section_ && number >= expected_ && number < section_->number;
        if (!isInGap && (!every_ || (section_ && number == section_->number))) return {};
        if (number < expected_) return section(number) + " is pointed to a second time";
        if (isInGap || !section_) return "there is no " + section(number);
        return section(section_->number) + " is to be pointed to before " + section(number);
    }

    // ---- The file.

    void pass_signature() {
        const auto signature = record<std::uint16_t>("the signature");
        if (signature == kPlain) return;
        if (signature != kFiltered) fail_at(0, "no signature 01 01 or 02 01 stands here");
        const auto clsid = record<_GUID>("the class of the filter");
        const auto filter = core::create_object<core::ICompactStreamTransform>(clsid);
        if (!filter)
            fail_at(sizeof signature,
                    "no filter of the class " +
                        std::string(core::to_utf8(core::to_string(clsid)).view()) +
                        " is known: --component loads one");
        isFiltered_ = true;
        file_ = core::make_object<ListCursor>(
            source_of(file_->source()->name(), filter->wrapInput(file_.get())));
    }

    // Goes behind the attachment that was, to the next section if there is any.
    void find_section() {
        if (std::exchange(isSectionFound_, true)) return;
        if (section_) expected_ = std::uint64_t{section_->number} + 1;
        section_.reset();
        if (file_->peek() < 0) return;
        Section section;
        section.offset = file_->offset();
        section.number = record<std::uint32_t>("the number of a section");
        section.length = record<std::uint64_t>("the length of a section");
        const std::string name = "section " + std::to_string(section.number);
        if (section.number < expected_)
            fail_at(section.offset, name + " is not in its place: numbers ascend from 0 on");
        check_length(section.length, name);
        file_->move_to(file_->offset() + section.length);
        section_ = section;
    }

    template <class T> T record(const char* what) {
        const std::uint64_t offset = file_->offset();
        T value;
        auto* const to = reinterpret_cast<char*>(&value);
        for (unsigned size = 0; size != sizeof value;) {
            const unsigned n = file_->read(to + size, static_cast<unsigned>(sizeof value) - size);
            if (n == 0) fail_at(offset, std::string("the file ends inside of ") + what);
            size += n;
        }
        return value;
    }
    void check_length(std::uint64_t length, const std::string& what) {
        const std::uint64_t begin = file_->offset();
        if (length > ListCursor::kEndOfFile - begin || !file_->source()->reaches(begin + length))
            fail_at(begin - sizeof length, what + " has a length of " + std::to_string(length) +
                                               ", but the file ends before");
    }

    [[noreturn]] void fail(const std::string& where, const std::string& what) const {
        throw Failure("'" + file_->source()->name() + "', " + where + ": " + what);
    }
    [[noreturn]] void fail_at(std::uint64_t offset, const std::string& what) const {
        fail("offset " + std::to_string(offset) + (isFiltered_ ? " behind the filter" : ""), what);
    }

    static constexpr std::uint16_t kPlain = 0x0101, kFiltered = 0x0102;
    static constexpr char kChanged[] = "the file has changed meanwhile";

    ListCursorPtr file_; // behind `section_`
    bool every_, isFiltered_ = false;
    std::unique_ptr<ListScanner> text_;

    struct Section {
        std::uint64_t offset;
        std::uint32_t number;
        std::uint64_t length;
    };
    std::optional<Section>
        section_;                 // the next that a list is to point to, or the attachment at hand
    std::uint64_t expected_ = 0;  // its number, unless some are missing
    bool isSectionFound_ = false; // `section_` and `expected_` are of now
    ListCursorPtr attached_;      // the attachment at hand

    // What was read ahead behind the begin of a list: a number, and an event behind this.
    ListItem number_;
    bool isNumberNext_ = false, ofNumber_ = false; // ofNumber_: item() is the number
    std::optional<ListEvent> ahead_;
};

} // namespace

std::unique_ptr<ListScanner> compact_scanner(ListCursorPtr file, bool attachments) {
    return std::make_unique<CompactScanner>(std::move(file), attachments);
}

} // namespace orb
