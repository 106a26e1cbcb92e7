#include "FileSystemTest.h"
#include "MemoryScheme.h"

#include <core/component/EventService.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/UnsupportedOperationException.h>
#include <core/concurrency/Thread.h>
#include <core/files/FileTypes.h>

#include <atomic>
#include <thread>

using core::URL;
using test::Error;
using test::error_of;
using test::MemoryScheme;

namespace {

class Schemes : public test::FileSystemTest {
protected:
    static core::InterfacePtr<MemoryScheme> none() { return {}; }
    static bool knows(std::u16string_view name) {
        return static_cast<bool>(files().getScheme(name));
    }
};

// Nothing but the rules of names.
class BareScheme
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<BareScheme>
    , public core::SchemeBase
    , public core::ISchemeImpl<BareScheme> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<BareScheme, core::IScheme>();
    }
    BareScheme() : SchemeBase(u"bare") {}
};

} // namespace

TEST_F(Schemes, AreEnteredReplacedAndRevoked) {
    const auto first = core::make_object<MemoryScheme>(),
               second = core::make_object<MemoryScheme>();
    EXPECT_TRUE(knows(u"file") && knows(u"SFILE") && !knows(u"mem") && !knows(u""));
    EXPECT_TRUE(files().registerScheme(first));
    EXPECT_EQ(files().getScheme(u"MEM").get(), static_cast<core::IScheme*>(first.get()));
    EXPECT_TRUE(files().registerScheme(second));
    EXPECT_EQ(files().getScheme(u"mem").get(), static_cast<core::IScheme*>(second.get()));
    EXPECT_EQ(first->AddRef(), 2u);
    first->Release();
    EXPECT_TRUE(files().revokeScheme(u"Mem"));
    EXPECT_FALSE(files().revokeScheme(u"mem"));
    EXPECT_FALSE(knows(u"mem"));
}

TEST_F(Schemes, AreSeenByTheirThreadAloneWhenMounted) {
    const auto shared = core::make_object<MemoryScheme>(), own = core::make_object<MemoryScheme>();
    files().registerScheme(shared);
    EXPECT_TRUE(files().mountScheme(own.get()));
    EXPECT_FALSE(files().mountScheme(shared.get()));
    EXPECT_EQ(files().getScheme(u"MEM").get(), static_cast<core::IScheme*>(own.get()));

    auto thread = core::create_thread([&] {
        EXPECT_EQ(files().getScheme(u"mem").get(), static_cast<core::IScheme*>(shared.get()));
        files().mountScheme(own.get());
    });
    thread->start();
    thread->join();
    EXPECT_TRUE(files().unmountScheme(u"mEm"));
    EXPECT_FALSE(files().unmountScheme(u"mem"));
    EXPECT_EQ(files().getScheme(u"mem").get(), static_cast<core::IScheme*>(shared.get()));
    thread.reset(); // the mount of the other thread ends with it
    const auto references = [&] { return own->AddRef(), own->Release(); };
    for (int i = 0; references() != 1 && i != 200; ++i) core::Thread::sleep(5);
    EXPECT_EQ(references(), 1u);
}

TEST_F(Schemes, ThatNobodyKnowsFindNothing) {
    for (const char16_t* const text : {u"nobody://x", u"a/b", u""}) {
        const URL url(text, false);
        EXPECT_EQ(error_of([&] { files().open(url, core::kFileOpenForRead); }), Error::BadPath);
        EXPECT_EQ(error_of([&] { files().createDirectory(url); }), Error::BadPath);
        EXPECT_EQ(error_of([&] { files().remove(url, nullptr); }), Error::BadPath);
        EXPECT_EQ(error_of([&] { files().copy(url, url); }), Error::BadPath);
        EXPECT_FALSE(files().find(url, u"*") || files().exists(url) || core::get_file_stat(url));
    }
}

TEST_F(Schemes, RefuseWhatTheyDoNotOffer) {
    files().registerScheme(core::make_object<BareScheme>());
    const URL url(u"bare://x", false);
    EXPECT_THROW(files().open(url, core::kFileOpenForRead), core::UnsupportedOperationException);
    EXPECT_EQ(error_of([&] { files().createDirectory(url); }), Error::Failure);
    EXPECT_EQ(error_of([&] { files().remove(url, nullptr); }), Error::Failure);
    EXPECT_FALSE(files().exists(url));
}

TEST_F(Schemes, AreLetGoAtTheEndOfTheProcess) {
    const auto scheme = core::make_object<MemoryScheme>();
    files().registerScheme(scheme);
    core::get_service<core::IEventService>()->fireEvent(core::kProcessDeathEvent, nullptr, nullptr);
    EXPECT_FALSE(files().registerScheme(scheme));
    EXPECT_FALSE(knows(u"mem") || knows(u"file"));
    EXPECT_EQ((scheme->AddRef(), scheme->Release()), 1u);
}

TEST_F(Schemes, ANullOneStopsTheProcess) {
    EXPECT_DEATH(files().registerScheme({}), "handler != nullptr");
    EXPECT_DEATH(files().mountScheme(nullptr), "scheme != nullptr");
}

TEST_F(Schemes, MayChangeWhileOthersUseThem) {
    std::atomic<bool> done = false;
    std::vector<core::InterfacePtr<core::Thread>> readers;
    for (int i = 0; i != 3; ++i) {
        readers.push_back(core::create_thread([&] {
            const URL url(u"file:///tmp/a/../b", false);
            while (!done) {
                if (const auto scheme = files().getScheme(u"mem")) scheme->IScheme_schemeName();
                EXPECT_EQ(url.normalize().text(), u"file:///tmp/b");
            }
        }));
        readers.back()->start();
    }
    for (int i = 0; i != 500; ++i) {
        files().registerScheme(core::make_object<MemoryScheme>());
        if (i % 2) files().revokeScheme(u"mem");
    }
    done = true;
    for (const auto& reader : readers) reader->join();
}

TEST(FileTypes, HaveExtensions) {
    EXPECT_EQ(core::file_extension(core::FileTypes::Text), u"txt");
    EXPECT_EQ(core::file_extension(core::FileTypes::SVG), u"svg");
    EXPECT_EQ(core::file_extension(core::FileTypes::None), u"");
    for (const int wrong : {19, -2, 1000})
        EXPECT_THROW(core::file_extension(static_cast<core::FileTypes::type>(wrong)),
                     core::IllegalArgumentException);
}
