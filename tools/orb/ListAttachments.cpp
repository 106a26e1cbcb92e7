#include "ListAttachments.h"

#include <core/component/UnsupportedOperationException.h>
#include <core/streams/IWriter.h>
#include <core/streams/ListTags.h>
#include <core/text/Base64.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace orb {
namespace {

// The attachment in pieces of one size, the last one shorter; none is empty.
class Pieces {
public:
    explicit Pieces(ListScanner& list) : list_(list) {}

    std::string_view next() {
        unsigned size = 0;
        while (size != sizeof bytes_) {
            const unsigned n =
                list_.read(bytes_ + size, static_cast<unsigned>(sizeof bytes_) - size);
            if (n == 0) break;
            size += n;
        }
        return {bytes_, size};
    }

private:
    ListScanner& list_;
    char bytes_[core::list_tag::kFileChunk];
};

template <class Sink> void for_each_piece(ListScanner& list, Sink sink) {
    Pieces pieces(list);
    for (std::string_view piece; !(piece = pieces.next()).empty();) sink(piece);
}

// ---- Descriptions.

constexpr struct {
    std::string_view begin, kind;
} kKinds[] = {
    {"\x89PNG\r\n", "PNG"}, {"\xFF\xD8\xFF", "JPEG"}, {"GIF8", "GIF"},         {"%PDF-", "PDF"},
    {"PK\x03\x04", "ZIP"},  {"\x1F\x8B", "gzip"},     {"\x01\x01", "compact"},
};

// What bytes look like that begin like this.
std::string_view kind_of(std::string_view begin) {
    if (begin.empty()) return "empty";
    for (const auto& row : kKinds)
        if (begin.starts_with(row.begin)) return row.kind;
    const auto isText = [](char c) {
        return static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\r' || c == '\t';
    };
    return std::all_of(begin.begin(), begin.end(), isText) ? "text" : "bytes";
}

// Collects what a description tells.
class Description {
public:
    explicit Description(const ListScanner& list) : carrier_(list.carrier()) {}

    void add(std::string_view piece) {
        if (size_ == 0) kind_ = kind_of(piece.substr(0, kLookedAt));
        size_ += piece.size();
    }
    std::uint64_t size() const noexcept { return size_; }
    std::string text() const {
        return "{#" + carrier_ + ": " + std::string(kind_) + ", size " + std::to_string(size_) +
               '}';
    }

private:
    static constexpr std::size_t kLookedAt = 512;

    std::string carrier_;
    std::string_view kind_ = kind_of({});
    std::uint64_t size_ = 0;
};

Description description_of(ListScanner& list) {
    Description description(list);
    for_each_piece(list, [&](std::string_view piece) { description.add(piece); });
    return description;
}

// ---- Base64.

template <class Unit, class Write>
void write_base64(ListScanner& list, unsigned lineLength, Write write) {
    constexpr std::size_t kMost = core::list_tag::kFileChunk * 2;
    core::Base64Encoder encoder(lineLength);
    const auto text = std::make_unique<Unit[]>(kMost);
    const auto put = [&](const Unit* end) {
        if (end != text.get()) write(text.get(), static_cast<unsigned>(end - text.get()));
    };
    for_each_piece(list, [&](std::string_view piece) {
        put(encoder.encode(piece.data(), piece.size(), text.get()));
    });
    put(encoder.finish(text.get()));
}

class TextAttachment final : public core::IListStreamObject {
public:
    explicit TextAttachment(ListScanner& list) : list_(list) {}

    void toStream(core::IWriter* writer) override {
        constexpr unsigned kLine = 64;
        writer->write(u"#base64:");
        write_base64<char16_t>(list_, kLine,
                               [&](const char16_t* text, unsigned n) { writer->write(text, n); });
    }
    bool fromStream(core::IReader*) override { throw core::UnsupportedOperationException(); }
    void toBinary(core::IListOutStream*) override { throw core::UnsupportedOperationException(); }
    void fromBinary(core::IListInStream*) override { throw core::UnsupportedOperationException(); }

private:
    ListScanner& list_;
};

} // namespace

std::string describe_attachment(ListScanner& list) {
    return description_of(list).text();
}

std::uint64_t size_of_attachment(ListScanner& list) {
    return description_of(list).size();
}

void print_attachment(std::ostream& out, ListScanner& list) {
    out << "{#base64:";
    write_base64<char>(list, 0, [&](const char* text, unsigned n) { out.write(text, n); });
    out << '}';
}

void print_bytes(std::ostream& out, ListScanner& list) {
    for_each_piece(list, [&](std::string_view piece) { out << piece; });
}

void put_text_attachment(core::IListOutStream& out, ListScanner& list) {
    TextAttachment item(list);
    out.beginList();
    out.putObject(item);
    out.endList();
}

void put_binary_attachment(core::IListOutStream& out, ListScanner& list) {
    out.beginList();
    out.putInt32(0);
    for_each_piece(list, [&](std::string_view piece) {
        out.putBinary(piece.data(), static_cast<unsigned>(piece.size()));
    });
    out.endList();
}

std::string compare_attachments(ListScanner& a, ListScanner& b) {
    Description was(a), is(b);
    Pieces ofA(a), ofB(b);
    bool equal = true;
    std::uint64_t same = 0;
    for (;;) {
        const std::string_view x = ofA.next(), y = ofB.next();
        if (x.empty() && y.empty()) break;
        was.add(x);
        is.add(y);
        if (!equal) continue;
        const auto place = std::mismatch(x.begin(), x.end(), y.begin(), y.end());
        same += static_cast<std::uint64_t>(place.first - x.begin());
        equal = place.first == x.end() && place.second == y.end();
    }
    if (equal) return {};
    return was.text() + " -> " + is.text() + " from byte " + std::to_string(same) + " on";
}

} // namespace orb
