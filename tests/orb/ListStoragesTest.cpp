// Storages of objects through `orb list`: shown, converted, compared, and the places of their faults.
#include "OrbCall.h"
#include "filter/Invert.h"
#include "persistence/StorageProgram.h"
#include "support/ProcessTest.h"

#include <core/text/Base64.h>
#include <gmock/gmock.h>

#include <random>

namespace {

using namespace test;
using testing::HasSubstr;

// ---- Compact files by hand.

struct Section {
    std::uint32_t number;
    std::string bytes;
    std::uint64_t claims = 0; // a length beyond its own
};

template <class Integer> std::string little(Integer value) {
    std::string bytes;
    for (std::size_t i = 0; i != sizeof value; ++i)
        bytes += static_cast<char>(static_cast<std::uint64_t>(value) >> 8 * i);
    return bytes;
}

std::string sections_of(std::string_view text, const std::vector<Section>& sections) {
    std::string file = little(std::uint64_t{text.size()});
    file += text;
    for (const Section& section : sections) {
        file += little(section.number) + little(section.bytes.size() + section.claims);
        file += section.bytes;
    }
    return file;
}
std::string compact(std::string_view text, const std::vector<Section>& sections) {
    return "\1\1" + sections_of(text, sections);
}

// The tool tells the same of a file and of a pipe. `verb`: with its options, by blanks.
OrbResult call_list(std::string_view verb, std::string_view bytes) {
    const ScratchFile file(bytes);
    std::vector<std::string> words = {"list"};
    for (std::size_t end; !verb.empty(); verb.remove_prefix(std::min(end + 1, verb.size()))) {
        end = std::min(verb.find(' '), verb.size());
        words.emplace_back(verb.substr(0, end));
    }
    OrbResult piped = call_orb(words, &file);
    words.push_back(file.path);
    OrbResult result = call_orb(words);
    EXPECT_EQ(result.exit, piped.exit);
    EXPECT_EQ(result.out, piped.out);
    if (const std::size_t name = piped.complaint.find("'-'"); name != std::string::npos)
        piped.complaint.replace(name + 1, 1, file.path);
    EXPECT_EQ(result.complaint, piped.complaint);
    return result;
}

TEST(OrbStorages, AreShown) {
    const std::string text = "\xEF\xBB\xBF{1,\r\n{#base64:YWI=},\r\n{#data:BCDE},{0,5}\r\n}";
    const std::string bytes("\x42\xC1\x9A\2ab\xE1\x9A\2cd\x89\x20\x20", 14);
    const std::string sections =
        compact("{1,{0},{1},\"x\",{0,5},{0},{1},{7}}", {{0, "ab"}, {1, "\x89PNG\r\n.."}});
    const struct {
        std::string_view verb;
        const std::string& file;
        std::string_view shown;
    } rows[] = {
        {"cat", text, "{1,\n  {#base64: text, size 2},\n  {#data: bytes, size 3},\n  {0, 5}\n}\n"},
        {"cat --bytes", text, "{1,\n  {#base64:YWI=},\n  {#base64:gTAQ},\n  {0, 5}\n}\n"},
        {"get --raw 0/1", text, "ab"},
        {"get 0/2", text, "{#data: bytes, size 3}\n"},
        {"get 0/1/0", text, ""},
        {"cat", bytes, "{1,\n  {0, \"ab\"},\n  {0, \"cd\", 8}\n}\n"},
        {"cat --attachments", bytes, "{1,\n  {#blobs: text, size 2},\n  {0, \"cd\", 8}\n}\n"},
        {"check --attachments", bytes,
         "binary, lists 2, items 4, depth 2, attachments 1 of 2 bytes\n"},
        {"cat", sections,
         "{1,\n  {#section 0: text, size 2},\n  {#section 1: PNG, size 8}, \"x\",\n  {0, 5},\n  "
         "{0},\n"
         "  {1},\n  {7}\n}\n"},
        {"get --raw 0/1", sections, "ab"},
        {"get 0/6", sections, "{1}\n"},
        {"--json check", sections,
         "{\"form\":\"compact\",\"lists\":5,\"items\":7,\"depth\":2,\"attachments\":2,"
         "\"attached\":10}\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.verb);
        const OrbResult result = call_list(row.verb, row.file);
        EXPECT_EQ(result.out, row.shown);
        EXPECT_EQ(result.complaint, "");
        EXPECT_EQ(result.exit, row.shown.empty() ? 1 : 0);
    }
}

TEST(OrbStorages, FaultsAreToldWithTheirPlace) {
    using namespace std::string_literals;
    constexpr std::uint64_t kEndless = 0xFFFFFFFFFFFFFFF0;
    const struct {
        std::string_view verb;
        std::string file;
        std::string_view complaint;
    } rows[] = {
        {"check --compact", "", "offset 0: the file ends inside of the signature"},
        {"check --compact", "{}", "offset 0: no signature 01 01 or 02 01 stands here"},
        {"check", "\1\1\5\0\0"s, "offset 2: the file ends inside of the length of the text"},
        {"check", "\1\1\4\0\0\0\0\0\0\0{}"s,
         "offset 2: the text has a length of 4, but the file ends before"},
        {"check", compact("{{0}\n,x!}", {{0, "ab"}}), "line 2, column 2: this is no item"},
        {"check", compact("{{#base64:}}", {}),
         "line 1, column 2: attachments of this file are sections"},
        {"check", compact("{{0}}", {{0, "ab", 1}}),
         "offset 19: section 0 has a length of 3, but the file ends before"},
        {"check", compact("{{0}}", {{0, "ab", kEndless}}),
         "offset 19: section 0 has a length of 18446744073709551602, but"},
        {"check", compact("{{0}}", {{0, "ab"}}) + "\1\0\0"s,
         "offset 29: the file ends inside of the number of a section"},
        {"check", compact("{{0}}", {{0, ""}, {0, ""}}),
         "offset 27: section 0 is not in its place: numbers ascend from 0 on"},
        {"check", compact("{{0}}", {{0, ""}, {1, "ab"}}), "offset 27: no list points to section 1"},
        {"to-text", compact("{{0}}", {{0, ""}, {1, "ab"}}), "no list points to section 1"},
        {"check", compact("{{0},\n{1},{2}}", {{0, ""}, {2, "ab"}}),
         "line 2, column 2: there is no section 1"},
        {"check --attachments", compact("{{0},{1}}", {{0, ""}}),
         "line 1, column 7: there is no section 1"},
        {"check --attachments", compact("{{0},{0}}", {{0, ""}}),
         "line 1, column 7: section 0 is pointed to a second time"},
        {"check --attachments", compact("{{1},{0}}", {{0, ""}, {1, ""}}),
         "line 1, column 3: section 0 is to be pointed to before section 1"},
        {"check", "\2\1"s + std::string(16, 'x') + sections_of("{}", {}),
         "offset 2: no filter of the class 78787878-7878-7878-7878-787878787878 is known"},
        {"check --attachments", "\x40\x41\x9A\5ab", "offset 2: the file ends inside of an item"},
        {"check --attachments", "\x40\x41\x9A\2ab", "offset 6: the file ends inside of a list"},
        {"check --attachments", "\x40\x41\x9C\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF",
         "offset 2: the file ends inside of an item"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.complaint);
        const OrbResult result = call_list(row.verb, row.file);
        EXPECT_EQ(result.exit, 1);
        EXPECT_THAT(result.complaint, HasSubstr(row.complaint));
    }
}

TEST(OrbStorages, AreReadThroughTheFilterOfAComponent) {
    std::string file = sections_of("{{0}}", {{0, "ab"}});
    for (char& byte : file) byte = static_cast<char>(~byte);
    const auto* const clsid = reinterpret_cast<const char*>(&CLSID_Invert);
    file.insert(0, "\2\1" + std::string(clsid, sizeof CLSID_Invert));
    const OrbResult result = call_list("--component invert get --raw 0/0", file);
    EXPECT_EQ(result.out, "ab");
    EXPECT_EQ(result.complaint, "");
    const OrbResult cut =
        call_list("--component invert check", std::string_view(file).substr(0, file.size() - 1));
    EXPECT_THAT(cut.complaint, HasSubstr("offset 17 behind the filter: section 0 has a length"));
}

TEST(OrbStorages, AreCompared) {
    const std::string bytes(20'000, 'x');
    const stdx::ustring longer = core::encode_base64(bytes + 'y');
    const ScratchFile a(compact("{{0},{1},2}", {{0, bytes}, {1, "ab"}}));
    const ScratchFile b("{{#base64:" + std::string(core::to_utf8(longer.view()).view()) +
                        "},{#base64:YWI=},\n{#base64:}}");
    const OrbResult result = call_orb({"list", "diff", a.path, b.path});
    EXPECT_EQ(result.exit, 1);
    EXPECT_EQ(result.out,
              "  0/0: {#section 0: text, size 20000} -> {#base64: text, size 20001} from "
              "byte 20000 on\n  0/2: 2 -> {#base64: empty, size 0}\n");
    EXPECT_EQ(call_orb({"list", "diff", a.path, a.path}).out, "");
}

// ---- Conversions: what the library writes in one form, it reads in the other.

class OrbStorageForms : public ProcessTest {};

constexpr unsigned kSizes[] = {0, 1, 2, 255, 256, 16'383, 16'384, 16'385, 70'000};

std::string attachment(unsigned size) {
    std::mt19937 random(size);
    std::string bytes;
    while (bytes.size() != size) bytes += static_cast<char>(random());
    return bytes;
}

TEST_F(OrbStorageForms, KeepEveryAttachmentWhenConverted) {
    std::string operations = "{i", expected = "7;";
    for (const unsigned size : kSizes) {
        operations += 'f';
        expected += attachment(size) + ';';
    }
    for (const StorageKind& kind : kKinds) {
        const std::string file = stored(kind, [](core::IOutPersistenceStorage& storage) {
            core::ListOutStream& list = *storage.listStream();
            list->beginList();
            list->putInt32(7);
            for (const unsigned size : kSizes) put_attachment(storage, attachment(size));
            list->endList();
        });
        ASSERT_EQ(run(kind, operations, file), expected) << kind.name;
        const OrbResult text = call_list("to-text --attachments", file);
        EXPECT_EQ(run(kStream, operations, text.out), expected) << kind.name;
        const OrbResult bytes = call_list("to-binary --attachments", file);
        EXPECT_EQ(run(kBinary, operations, bytes.out), expected) << kind.name;
        EXPECT_EQ(call_list("to-text --attachments", bytes.out).out, text.out) << kind.name;
    }
}

// ---- Memory: attachments of any size pass through little of it.

#ifdef MEASURE_MEMORY // sanitizers keep more than they are asked for
TEST_F(OrbStorageForms, NeedNoMemoryForLargeAttachments) {
    const auto file_of = [](const StorageKind& kind, unsigned pieces) {
        return stored(kind, [pieces](core::IOutPersistenceStorage& storage) {
            storage.listStream()->get()->beginList();
            {
                const std::string piece(0x10000, 'x');
                const auto file = storage.binFile();
                for (unsigned i = 0; i != pieces; ++i)
                    file->write(piece.data(), static_cast<unsigned>(piece.size()));
            }
            storage.listStream()->get()->endList();
        });
    };
    for (const StorageKind& kind : kKinds) {
        const ScratchFile small(file_of(kind, 1)), large(file_of(kind, 192));
        for (const char* const verb : {"cat", "check", "to-text", "to-binary"}) {
            SCOPED_TRACE(std::string(kind.name) + ' ' + verb);
            // What this process has in memory counts as well, so it keeps no output.
            const auto peak = [&](const ScratchFile& file, bool isPiped) {
                std::vector<std::string> words = {"list", verb, "--attachments"};
                if (!isPiped) words.push_back(file.path);
                const OrbResult result = call_orb(words, isPiped ? &file : nullptr);
                EXPECT_EQ(result.exit, 0) << result.complaint;
                return result.peakKiB;
            };
            for (const bool isPiped : {false, true})
                EXPECT_LT(peak(large, isPiped), peak(small, isPiped) + 4096) << isPiped;
        }
    }
}
#endif

} // namespace
