#include <core/files/TextFiles.h>

#include "ProcessFileSystem.h"
#include "streams/Base64Streams.h"

#include <core/component/IllegalArgumentException.h>
#include <core/files/FileException.h>
#include <core/files/FileStreams.h>
#include <core/files/FileSystemFunctions.h>
#include <core/numbers/Date.h>
#include <core/streams/LineSeparator.h>
#include <core/streams/StreamFunctions.h>
#include <core/text/Hex.h>
#include <core/text/Split.h>

#include <limits>

namespace core {

namespace {

// The next `n` bytes, fewer only at the end of the file.
unsigned read_whole(IFile& file, void* to, unsigned n) {
    unsigned filled = 0;
    while (filled < n) {
        const unsigned read = file.read(static_cast<char*>(to) + filled, n - filled);
        if (read == 0) break;
        filled += read;
    }
    return filled;
}

// The units of a file that should have `size` bytes from here on.
template <class String> String read_image(IFile& file, std::uint64_t size) {
    constexpr unsigned kUnit = sizeof(typename String::value_type);
    String text;
    const std::uint64_t units = size / kUnit;
    if (units * kUnit > std::numeric_limits<unsigned>::max()) throw std::bad_alloc();
    text._resize_nofill(elm::checked_size(units));
    const unsigned read = read_whole(file, text.data(), text.size() * kUnit);
    text._resize_nofill(read / kUnit);
    return text;
}

template <class String> bool image_of(const URL& url, String& text, Date* modified) {
    text.clear();
    try {
        const auto stat = get_file_stat(url);
        if (!stat) return false;
        const auto file = process_file_system().open(url, kFileOpenForRead);
        if (modified) *modified = stat->modificationDate();
        text = read_image<String>(*file, stat->size());
        return true;
    } catch (const FileException&) {
        return false;
    }
}

constexpr unsigned kBlock = 8192; // bytes

} // namespace

void load_utf8(IFile* file, stdx::ustring& text) {
    InputFileStream in;
    in.open(file, kUTF8Encoding, false, kWindowsLineSeparator);
    text = read_stream(in.reader());
}

void save_utf8(IFile* file, const stdx::ustring& text) {
    const stdx::ustring lines = replace_all(text, kWindowsLineSeparator, kDefaultLineSeparator);
    OutputFileStream out;
    out.open(file, kUTF8Encoding, true, kWindowsLineSeparator);
    out->write(lines.c_str(), lines.size());
    out.close();
}

bool get_text_from_file(const URL& url, stdx::ustring& text, Date* modified) {
    return image_of(url, text, modified);
}

bool get_text_from_file(const URL& url, stdx::string& text, Date* modified) {
    return image_of(url, text, modified);
}

bool get_text_from_file(const InterfacePtr<IFileEx>& file, stdx::ustring& text) {
    text.clear();
    if (!file) return false;
    try {
        const auto size = static_cast<std::uint64_t>(file->seek(0, kSeekFromEnd));
        if (size == 0) return true;
        file->seek(0, kSeekFromStart);
        text = read_image<stdx::ustring>(*file, size);
        return true;
    } catch (const FileException&) {
        return false;
    }
}

// ---- Base64 and hexadecimal digits.

void encode_base64(IFile* from, IWriter* to, unsigned lineLength, bool urlAlphabet) {
    ORB_ASSERT(from != 0 && to != 0);
    char block[kBlock];
    Base64Writer writer(*to, lineLength, urlAlphabet);
    while (const unsigned n = from->read(block, kBlock)) writer.write(block, n);
    writer.finish();
}

bool decode_base64(IReader* from, IFile* to, bool urlAlphabet) {
    ORB_ASSERT(from != 0 && to != 0);
    return read_base64(*from, urlAlphabet, [&](const std::uint8_t* bytes, std::size_t n) {
        to->write(bytes, static_cast<unsigned>(n));
        return true;
    });
}

void encode_hex(IFile* from, IWriter* to) {
    ORB_ASSERT(from != 0 && to != 0);
    char block[kBlock];
    while (const unsigned n = from->read(block, kBlock)) {
        const stdx::ustring digits = bin_hex({block, n});
        to->write(digits.c_str(), digits.size());
    }
}

bool decode_hex(IReader* from, IFile* to) {
    ORB_ASSERT(from != 0 && to != 0);
    char block[kBlock];
    unsigned filled = 0;
    const auto write = [&] {
        if (filled != 0) to->write(block, filled);
        filled = 0;
    };
    bool isGood = true;
    while (isGood && !from->eof()) {
        // A digit is taken only when it is one: "0" makes a pair of it to look at.
        char16_t pair[2] = {from->peek(), u'0'};
        isGood = hex_bin(pair) >= 0;
        if (!isGood) break;
        from->get();
        pair[1] = from->peek();
        const int byte = hex_bin(pair);
        isGood = byte >= 0;
        if (!isGood) break;
        from->get();
        block[filled++] = static_cast<char>(byte);
        if (filled == kBlock) write();
    }
    write();
    return isGood;
}

} // namespace core
