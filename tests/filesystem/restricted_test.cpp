// The scheme "sfile" under a security profile.
#include "FileSystemTest.h"

#include <core/files/FileMode.h>

using core::SecurityAlias;
using core::URL;
using test::Error;
using test::error_of;
using test::Services;
using Names = std::vector<std::string>;

namespace {

class Restricted : public test::FileSystemTest {
protected:
    Restricted() {
        for (const char* const name : {"t", "r", "w", "t/sub"})
            std::filesystem::create_directory(path(name));
        put("secret", "x");
        const auto alias = [&](const char16_t* name, const char* where, bool read, bool write) {
            return SecurityAlias{name, core::from_utf8(path(where)), read, write};
        };
        Services::profile = {alias(core::kStandartAliasDirTmp, "t", true, true),
                             alias(u"/read", "r", true, false), alias(u"/write", "w", false, true),
                             alias(u"\\temp\\sub", "r", true, false)};
    }
    static URL restricted(const char16_t* path) {
        return URL(u"sfile", std::u16string_view(path), false);
    }
    std::optional<Error> opening(const char16_t* path, int mode) {
        return error_of([&] { files().open(restricted(path), mode); });
    }
    // What a refusal tells of: no real path.
    template <class Body> std::string refusal(const Body& body) {
        try {
            body();
        } catch (const core::FileException& exception) {
            EXPECT_EQ(exception.url().part(0, 1), u"sfile");
            const std::string text(core::to_utf8(exception.description()).view());
            EXPECT_EQ(text.find(directory_), text.npos) << text;
            return text;
        }
        return {};
    }
};

constexpr int kRead = core::kFileOpenForRead;
constexpr int kWrite = core::kFileOpenForWrite;

} // namespace

TEST_F(Restricted, FilesAreReachedByAlias) {
    const auto file = files().open(restricted(u"/temp/a"), kWrite);
    EXPECT_EQ(file->url(), restricted(u"/temp/a"));
    file->write("x", 1);
    EXPECT_EQ(text("t/a"), "x");
    ASSERT_EQ(Services::temporaryFiles.size(), 1u);
    EXPECT_EQ(Services::temporaryFiles[0], url("t/a"));

    const auto stat = files().find(restricted(u"/temp/a"), nullptr);
    EXPECT_EQ(stat->url(), restricted(u"/temp/a"));
    EXPECT_EQ(stat->size(), 1u);
    put("t/b=c", "y");
    const auto found = files().find(restricted(u"/temp"), u"b*");
    EXPECT_EQ(found->url().text(), u"sfile:///temp/b=c");
    EXPECT_TRUE(files().exists(found->url()));
    found->setModificationDate(core::Date(2001, 1, 1));
    EXPECT_EQ(core::get_file_date(url("t/b=c")), core::Date(2001, 1, 1));

    files().createDirectory(restricted(u"/temp/d"));
    files().copy(found->url(), restricted(u"/temp/d/c"));
    files().move(restricted(u"/temp/d/c"), restricted(u"/write/c"));
    EXPECT_TRUE(text("w/c") == "y" && !exists("t/d/c"));
    files().remove(restricted(u"/temp/d"), nullptr);
    EXPECT_FALSE(exists("t/d"));
    EXPECT_TRUE(found->url().equal(restricted(u"/temp/./b=c"), false));
    EXPECT_FALSE(found->url().equal(restricted(u"/temp/a"), false));
}

TEST_F(Restricted, NoOtherFilesAre) {
    const auto any = [](const std::string& text) { return !text.empty(); };
    for (const char16_t* const path :
         {u"/secret", u"/tempo/a", u"/temp/../secret", u"", u"/", u"/temp/%2e%2e/secret",
          u"/temp/..%5c..%5csecret", u"/temp/x%2f..%2f..%2fsecret", u"/temp\\..\\secret"}) {
        EXPECT_TRUE(any(refusal([&] { files().open(restricted(path), kRead); })))
            << core::to_utf8(path);
        EXPECT_TRUE(any(refusal([&] { files().find(restricted(path), u"*"); })));
        EXPECT_TRUE(any(refusal([&] { files().remove(restricted(path), u"secret"); })));
    }
    EXPECT_TRUE(exists("secret"));
    EXPECT_TRUE(any(refusal([&] { files().find(restricted(u"/temp/a|b"), nullptr); })));
}

TEST_F(Restricted, RightsAreKept) {
    put("r/a", "x");
    put("w/a", "x");
    EXPECT_EQ(opening(u"/read/a", kRead), std::nullopt);
    EXPECT_EQ(opening(u"/temp/sub/a", kRead), std::nullopt); // the longer alias
    EXPECT_EQ(opening(u"/write/a", kWrite), std::nullopt);
    for (const auto& [path, mode] : {std::pair{u"/read/a", kWrite},
                                     {u"/read/a", 0x18},
                                     {u"/write/a", kRead},
                                     {u"/temp/sub/a", kWrite}})
        EXPECT_EQ(opening(path, mode), Error::Failure) << core::to_utf8(path);
    const auto denied = [&](auto&& body) { EXPECT_EQ(error_of(body), Error::Failure); };
    denied([&] { files().createDirectory(restricted(u"/read/d")); });
    denied([&] { files().remove(restricted(u"/read/a"), nullptr); });
    denied([&] { files().copy(restricted(u"/write/a"), restricted(u"/temp/a")); });
    denied([&] { files().copy(restricted(u"/temp/a"), restricted(u"/read/a")); });
    denied([&] { files().move(restricted(u"/read/a"), restricted(u"/temp/a")); });
}

TEST_F(Restricted, ErrorsHideRealPaths) {
    std::filesystem::create_symlink("loop", path("t/loop"));
    put("t/file", "x");
    const auto told = [](const std::string& text) { EXPECT_NE(text, ""); };
    told(refusal([&] { files().open(restricted(u"/temp/no"), kRead); }));
    told(refusal([&] { files().open(restricted(u"/temp"), kRead); }));
    told(refusal([&] { files().find(restricted(u"/temp/loop"), nullptr); }));
    told(refusal([&] { files().find(restricted(u"/temp/file"), u"*"); }));
    told(refusal([&] { files().createDirectory(restricted(u"/temp/file")); }));
    told(refusal([&] { files().remove(restricted(u"/temp/no"), nullptr); }));
    told(refusal([&] { files().copy(restricted(u"/temp/no"), restricted(u"/temp/x")); }));
    told(refusal([&] { files().move(restricted(u"/temp/no"), restricted(u"/temp/x")); }));
    EXPECT_EQ(opening(u"/temp/no", kRead), Error::FileNotFound);
}

TEST_F(Restricted, AliasesLeadToRealNames) {
    const URL url = restricted(u"/read/a");
    EXPECT_EQ(core::url_from_alias(url, true, false), this->url("r/a"));
    EXPECT_EQ(error_of([&] { core::url_from_alias(url, false, true); }), Error::Access);
    EXPECT_EQ(error_of([&] { core::url_from_alias(restricted(u"/x"), false, false); }),
              Error::Failure);
    EXPECT_EQ(core::url_from_alias(directory(), true, true), directory());
    Services::profile.reset(); // not restricted: names are paths
    EXPECT_EQ(core::url_from_alias(url, true, true), url);
    const URL secret(u"sfile", core::from_utf8(path("secret")), false);
    EXPECT_EQ(read_all(files().open(secret, kRead).get()), "x");
    EXPECT_EQ(files().find(secret, nullptr)->url(), secret);
}

TEST_F(Restricted, DirectoriesOfASeanceGoWithIt) {
    const auto alias = [&](const char16_t* name, const char* where) {
        return SecurityAlias{name, core::from_utf8(path(where)), true, true};
    };
    Services::seances = {alias(u"/seance/%s", "t"), alias(u"/other", "r"), alias(u"/%s", "no")};
    const core::InterfacePtr<core::ISecurityDirectories> scheme(files().getScheme(u"sfile"));
    scheme->removeDirectories(core::SecurityAliasKind::SafeMode);
    EXPECT_TRUE(exists("t"));
    scheme->removeDirectories(core::SecurityAliasKind::Seance);
    EXPECT_TRUE(!exists("t") && exists("r"));
}
