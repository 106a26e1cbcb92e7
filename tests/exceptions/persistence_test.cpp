// The stored form of every exception class, byte for byte; chains that another process wrote; lists
// that are old, new, damaged, or made by an enemy.
#include "StoredExceptions.h"
#include "support/ProcessTest.h"

#include <core/component/ApplicationException.h>
#include <core/component/CancelOperationException.h>
#include <core/component/CommandLineException.h>
#include <core/component/DataExceptions.h>
#include <core/component/ExceptionObject.h>
#include <core/component/IllegalStateException.h>
#include <core/component/InteractiveSecurityException.h>
#include <core/component/RemotingException.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/SCOM_Process.h>
#include <core/component/StackTrace.h>
#include <core/component/ThreadException.h>
#include <core/component/Utf8.h>
#include <core/files/FileException.h>
#include <core/files/FileSystemFunctions.h>
#include <core/locale/LocaleException.h>
#include <core/numbers/NumericException.h>
#include <core/numbers/TimeZoneException.h>
#include <core/persistence/StreamPersistenceStorage.h>
#include <core/storage/StorageException.h>
#include <core/streams/BufferException.h>
#include <core/streams/IOException.h>
#include <core/text/ConverterException.h>
#include <core/text/RegexException.h>
#include <core/text/StringTemplateException.h>
#include <core/text/StringTokenizer.h>
#include <core/text/StringTokenizerException.h>
#include <core/values/ContextException.h>
#include <core/values/TypeException.h>

#include <cstdlib>
#include <cxxabi.h>
#include <filesystem>
#include <functional>
#include <random>
#include <typeinfo>
#include <unistd.h>

namespace {

using namespace core;
using namespace test;
using namespace stdx::literals;

using StoredException = ProcessTest;
using Object = InterfacePtr<IExceptionObject>;

constexpr std::string_view kNull = "00000000-0000-0000-0000-000000000000";
constexpr std::string_view kPlain = "9bed88ff-dcab-4217-b1a4-cf9c350df979";
constexpr std::string_view kNoCategories = "000000000000000000000000";

// The class that `rethrow` throws.
const std::type_info* thrown_by(IExceptionObject* object) {
    const std::type_info* type = nullptr;
    try {
        object->rethrow();
    } catch (const Exception&) {
        type = abi::__cxa_current_exception_type();
    }
    return type;
}

std::string narrow(std::u16string_view text) {
    return std::string(to_utf8(text).view());
}

// "refused" for the list's own exception, "categories" for that of the bit string.
const char* outcome_of(const std::function<void()>& reading) {
    try {
        reading();
        return "read";
    } catch (const ListStreamException&) {
        return "refused";
    } catch (const std::invalid_argument&) {
        return "categories";
    }
}

// ---- Every class.

struct Form {
    Object object;
    const std::type_info* type;
    std::string_view clsid, fields;
};

template <class E> Form form(E exception, std::string_view clsid, std::string_view fields = "") {
    exception.setDescription(u"d");
    return {exception.object(), &typeid(E), clsid, fields};
}

std::vector<Form> all_forms() {
    const StackCaptureOff withoutTraces;
    const URL url(u"file:///a", false), other(u"http://host/b#c", true);
    return {
        form(Exception(), "9bed88ff-dcab-4217-b1a4-cf9c350df979"),
        form(ApplicationException(), "e5ee5aad-c759-4e81-a696-b6426dcc7d96"),
        form(BufferException(BufferException::Error::Underflow),
             "74a22722-194a-4008-90e1-47732b90e3ff", ",5"),
        form(CancelOperationException(), "8d438a43-e3e1-4a70-a21b-eb18f84c0d4d"),
        form(CommandLineException(), "9817f83e-d822-4402-aa45-705eeba2dcd9"),
        form(ComparatorException(), "8d646c12-77fc-444f-9a9b-44b8173a4543"),
        form(ContextException(), "52066065-1337-4ec7-b335-1072ae4bec53"),
        form(ConverterException(ConverterException::Error::BadName, u"k\"oi"),
             "5090da76-1e43-45e6-a9a3-fe8cb62a4c48", ",1,\"k\"\"oi\""),
        form(CtorException(), "3cb54f88-55bb-4d2a-a77c-afc338277f9c"),
        form(DataSourceException(), "22e53a93-e610-4a13-bea0-317b603e377b"),
        form(EDBException(), "81c55d45-b7fe-4ff0-948d-d06779929127"),
        form(FileException(ORB_FILE_HERE, FileException::Error::Sharing,
                           FileException::Transfer::Move, url, other, u"why"),
             "dbd0ef55-18b4-410b-aade-8446580dc7bc",
             ",5,\n{\"file:///a\",0},\n{\"http://host/b#c\",1},\"why\""),
        form(IllegalArgumentException(), "e04b5b27-0bc0-4d1d-b99f-2748aad263db"),
        form(IllegalStateException(), "0ffc382e-e1dc-448c-83d2-62be9a4f8071"),
        form(InteractiveSecurityException(), "a791c104-a6d4-4d0c-8ec2-7f23b9853100"),
        form(IOException(IOException::Error::NoTarget), "44f9624f-d3e3-4712-ac7a-62018615e5dd",
             ",3"),
        form(LibraryLoadException(), "54afb586-16de-47d3-a102-4d9d71efadb5"),
        form(ListStreamException(), "0d3c7f52-6b1e-4c83-9a7d-f2154be8a9c6"),
        form(LocaleException(u"xx_YY"_us), "62deb773-8a06-4d54-8f8d-7124888ff142", ",\"xx_YY\""),
        form(NumericException(NumericException::Error::Overflow),
             "7a82ca5b-4258-4c6f-be11-a5d0e5ac0b2d", ",3"),
        form(PivotSourceException(PivotSourceException::Error::DataSource),
             "8ae4e0fa-639e-4090-9f3f-320edc43a600", ",1"),
        form(ProfileSrcException(), "b213f0b5-6856-480e-8fcc-2017eac30783"),
        form(RegexException(0x10306, u"(a"), "18c11fa4-b8c9-43aa-bbc8-e75af3cb66f6",
             ",66310,\"(a\""),
        form(RemotingException(), "afeda586-aa2c-4974-a89f-30df67b6390e"),
        form(SCOM_Exception(SCOM_Exception::Reason::ComponentLoad, u""),
             "54cb3e9a-8138-4154-8f9b-dd29f7daa0a9", ",1"),
        form(StackOverflowException(), "a2a7a72a-1202-4c0b-bf50-6865716bea6e"),
        form(StorageException(StorageException::Error::Overflow, url),
             "e6732525-065a-4e24-96e4-6b2aebae192a", ",5,\n{\"file:///a\",0}\n"),
        form(StringTemplateException(StringTemplateException::Error::WrongParam, 7),
             "cd8fda72-550c-4d48-9cca-77729edb1931", ",1,7"),
        form(StringTokenizerException(StringTokenizerException::Error::UnexpectedQuotation,
                                      4294967295u),
             "f530c739-a40b-4528-9468-af294ea491a6", ",3,4294967295"),
        form(ThreadException(ThreadException::Error::Timeout),
             "8db25187-6fab-4a56-99ad-498e3316f31b", ",5"),
        form(TimeZoneException(), "3097aa98-a03b-47cd-baff-59828c1d568f"),
        form(TypeDomainPatternProviderException(), "8b918ebb-6954-4857-895b-4b8cd16bc7ce"),
        form(TypeException(u"Table"_us), "8dd9d5af-8e48-48e2-b3ad-bd0d8d94c0cf"),
        form(UnsupportedOperationException(), "8374d82f-a2ac-4799-918e-25f9f1b8f3cc"),
        form(ValueIsFilledException(ValueIsFilledException::Error::MutableType),
             "df5fb0ae-e187-4ae5-b851-7f63645d7b97", ",1"),
        form(VersionException(u"", stdx::string("a.so"), u"8.1"),
             "152ad784-c5e0-4dc7-9cce-cba66977499a", ",YS5zbw==,\"8.1\""),
    };
}

// An exception object as it is stored.
std::string item(std::string_view clsid, std::string_view cause, std::string_view fields) {
    const std::string id(clsid);
    return "{" + id + ",\n{" + id + ",\"d\",\n" + std::string(cause) + std::string(fields) + "}\n}";
}
const std::string kNoCause = "{" + std::string(kNull) + "}";
const std::string kBaseFields =
    ",\"\",\"" + std::string(kNoCategories) + "\"," + std::string(kNull);

std::u16string wide(std::string_view text) {
    return std::u16string(text.begin(), text.end());
}

TEST_F(StoredException, OfEveryClassHasItsFormAndComesBack) {
    for (const Form& row : all_forms()) {
        SCOPED_TRACE(row.type->name());
        ASSERT_TRUE(row.object);
        const std::string golden = item(row.clsid, kNoCause, kBaseFields + std::string(row.fields));
        EXPECT_EQ(narrow(to_text(row.object.get())), golden);
        for (const Object& back :
             {from_text(wide(golden)), from_bytes(to_bytes(row.object.get()))}) {
            ASSERT_TRUE(back);
            EXPECT_EQ(*thrown_by(back.get()), *row.type);
            EXPECT_EQ(narrow(to_text(back.get())), golden);
        }
    }
}

TEST_F(StoredException, KeepsEveryFieldOfTheBase) {
    const Exception original(u"line\n\"two\" \u0416", nullptr,
                             "01234567-89ab-cdef-0123-456789abcdef"_guid,
                             Exception::Categories(0x800005), u"host:0x10 ");
    const Object object = original.object();
    EXPECT_EQ(
        to_text(object.get()),
        u"{9bed88ff-dcab-4217-b1a4-cf9c350df979,\n{9bed88ff-dcab-4217-b1a4-cf9c350df979,"
        u"\"line\n\"\"two\"\" \u0416\",\n{00000000-0000-0000-0000-000000000000},"
        u"\"host:0x10 \",\"100000000000000000000101\",01234567-89ab-cdef-0123-456789abcdef}\n}");
    const Object stored = from_bytes(to_bytes(object.get()));
    const Exception& back = *stored->exception();
    EXPECT_EQ(back.description(), original.description());
    EXPECT_EQ(back.creationStackTrace(), u"host:0x10 "_us);
    EXPECT_EQ(back.categories(), original.categories());
    EXPECT_EQ(back.uiHelperUUID(), original.uiHelperUUID());
}

TEST_F(StoredException, StoresTheTraceAsText) {
    const Exception original(u"x");
    const Object back = from_text(to_text(original.object().get()));
    ASSERT_NE(original.creationStackTrace(), u""_us);
    EXPECT_EQ(back->exception()->creationStackTrace(), original.creationStackTrace());
}

// ---- Another process.

constexpr char kFileVariable[] = "STORED_EXCEPTION_FILE";

// Run by the test below in a process of its own.
TEST_F(StoredException, DISABLED_IsWrittenByAnotherProcess) {
    const char* const path = std::getenv(kFileVariable);
    ASSERT_TRUE(path);
    Object failure;
    try {
        try {
            throw StringTokenizerException(StringTokenizerException::Error::MissedCloseQuote, 17);
        } catch (const Exception& exception) {
            throw NetDataExchangeException(exception.object().get());
        }
    } catch (const Exception& exception) {
        ApplicationException top(u"the report was not made", exception.object().get());
        top.categories() = 0b1010; // LocalFileAccessError, PrinterError
        failure = top.object();
    }
    const auto storage = create_object<IOutPersistenceStorage>(CLSID_StreamOutPersistenceStorage);
    const InterfacePtr<IStreamPersistenceStorage> stream(storage);
    stream->open(file_url(from_utf8(path)));
    write_exception_object(storage.get(), failure.get());
    stream->close();
}

TEST_F(StoredException, OfAnotherProcessIsThrownWithItsTrueClassAndCauses) {
    const std::string file =
        (std::filesystem::temp_directory_path() / ("exception." + std::to_string(getpid())))
            .string();
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string command =
        std::string(kFileVariable) + "='" + file + "' '" + program +
        "' --gtest_also_run_disabled_tests --gtest_brief=1"
        " --gtest_filter=StoredException.DISABLED_IsWrittenByAnotherProcess >/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const auto storage = create_object<IInPersistenceStorage>(CLSID_StreamInPersistenceStorage);
    const InterfacePtr<IStreamPersistenceStorage> stream(storage);
    stream->open(file_url(from_utf8(file)));
    const Object failure = read_exception_object(storage.get());
    stream->close();
    std::filesystem::remove(file);
    ASSERT_TRUE(failure);
    failure->setOnClientFromServer();
    try {
        failure->rethrow();
    } catch (const ApplicationException& top) {
        EXPECT_EQ(top.description(), u"the report was not made"_us);
        EXPECT_TRUE(top.categories().none());
        ASSERT_TRUE(top.inner());
        EXPECT_EQ(*thrown_by(top.inner()), typeid(RemotingException)); // the twin it shares
        const Object deepest =
            get_exception_object(top.inner(), CLSID_StringTokenizerExceptionObject);
        ASSERT_TRUE(deepest);
        deepest->setOnClientFromServer();
        EXPECT_NE(deepest->exception()->serverStackTrace().view().find(u"test_exceptions:0x"),
                  std::u16string_view::npos);
        EXPECT_NE(deepest->exception()->creationStackTrace(), u""_us);
        try {
            deepest->rethrow();
        } catch (const StringTokenizerException& cause) {
            EXPECT_EQ(cause.error(), StringTokenizerException::Error::MissedCloseQuote);
            EXPECT_EQ(cause.position(), 17u);
        }
    }
}

// ---- Lists that are not quite what this program writes.

constexpr std::string_view kUnknown = "6f9619ff-8b86-d011-b42d-00c04fc964ff";
constexpr std::string_view kThread = "8db25187-6fab-4a56-99ad-498e3316f31b";

TEST_F(StoredException, ReadsWhatOthersWrote) {
    const std::string more = kBaseFields + ",5";
    const struct {
        const char* what;
        std::string text;
        std::string same; // as it is written again
    } rows[] = {
        {"an older form without stack, categories, helper", item(kThread, kNoCause, ""),
         item(kThread, kNoCause, kBaseFields + ",0")},
        {"an older form without the class's own field", item(kThread, kNoCause, kBaseFields),
         item(kThread, kNoCause, kBaseFields + ",0")},
        {"a newer form", item(kThread, kNoCause, more + ",\"new\",{1,{2}}"),
         item(kThread, kNoCause, more)},
        {"a code that a newer program knows", item(kThread, kNoCause, kBaseFields + ",77"),
         item(kThread, kNoCause, kBaseFields + ",77")},
        {"a cause of an unknown class",
         item(kThread, "{" + std::string(kUnknown) + ",{1,{\"}\"},2},3}", more),
         item(kThread, kNoCause, more)},
        {"a cause of a class that is no exception",
         item(kThread, "{" + narrow(to_string(CLSID_StringTokenizer)) + ",1}", more),
         item(kThread, kNoCause, more)},
        {"too many categories",
         item(kPlain, kNoCause, ",\"\",\"100000000000000000000001x\"," + std::string(kNull)),
         item(kPlain, kNoCause, ",\"\",\"100000000000000000000001\"," + std::string(kNull))},
        {"few categories", item(kPlain, kNoCause, ",\"\",\"101\"," + std::string(kNull)),
         item(kPlain, kNoCause, ",\"\",\"000000000000000000000101\"," + std::string(kNull))},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Object object = from_text(wide(row.text));
        ASSERT_TRUE(object);
        EXPECT_EQ(narrow(to_text(object.get())), row.same);
    }
    EXPECT_FALSE(from_text(wide(kNoCause)));
    EXPECT_FALSE(from_text(wide(item(kUnknown, kNoCause, more))));
}

TEST_F(StoredException, KeepsWhatAnOlderListDoesNotTell) {
    Exception exception(u"x", nullptr, kUUIDNull, Exception::Categories(5), u"stack");
    const auto reader =
        make_reader(wide("{" + std::string(kPlain) + ",\"d\"," + kNoCause + "}"), 0);
    exception.deserialize(make_object<ListInStorage>(reader.get()).get());
    EXPECT_EQ(exception.description(), u"d"_us);
    EXPECT_EQ(exception.categories(), Exception::Categories(5));
    EXPECT_EQ(exception.creationStackTrace(), u"stack"_us);
}

TEST_F(StoredException, HasTheTraceOfTheListAlone) {
    Exception exception(u"x"); // with a trace of its own
    const auto reader =
        make_reader(wide("{" + std::string(kPlain) + ",\"d\"," + kNoCause + kBaseFields + "}"), 0);
    exception.deserialize(make_object<ListInStorage>(reader.get()).get());
    EXPECT_EQ(exception.creationStackTrace(), u""_us);
}

TEST_F(StoredException, RefusesOtherLists) {
    const std::string foreign = item(kThread, kNoCause, kBaseFields + ",5");
    const struct {
        const char* what;
        std::string text;
        const char* outcome;
    } rows[] = {
        {"nothing", "", "refused"},
        {"no list", "1", "refused"},
        {"no class", "{}", "refused"},
        {"a class without its fields", "{" + std::string(kPlain) + "}", "refused"},
        // Thrown again it would go to a twin that reads fields which it has not got.
        {"the fields of another class",
         "{" + std::string(kPlain) + foreign.substr(foreign.find(',')), "refused"},
        {"a field of another type", item(kThread, kNoCause, kBaseFields + ",\"5\""), "refused"},
        {"a cause that is cut", item(kThread, "{" + std::string(kPlain) + ",{}}", ""), "refused"},
        {"a stack and no more", item(kThread, kNoCause, ",\"\""), "refused"},
        {"categories of another kind", item(kPlain, kNoCause, ",\"\",\"2\"," + std::string(kNull)),
         "categories"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_STREQ(outcome_of([&] { from_text(wide(row.text)); }), row.outcome);
    }
}

TEST_F(StoredException, ThatIsDamagedIsRefusedOrReadAndNothingElse) {
    const Object cause = VersionException(u"v", stdx::string("m.so"), u"1").object();
    const Object object = FileException(ORB_FILE_HERE, FileException::Error::Access,
                                        URL(u"file:///a", true), u"", cause.get())
                              .object();
    const std::u16string text = to_text(object.get());
    const std::string bytes = to_bytes(object.get());
    for (std::size_t n = 0; n < text.size(); ++n)
        EXPECT_STREQ(outcome_of([&] { from_text(text.substr(0, n)); }), "refused") << n;
    for (std::size_t n = 0; n + 1 < bytes.size(); ++n)
        EXPECT_STREQ(outcome_of([&] { from_bytes(bytes.substr(0, n)); }), "refused") << n;

    std::mt19937 random(1);
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        std::string changed = bytes;
        changed[n] = static_cast<char>(random());
        outcome_of([&] { from_bytes(changed); }); // anything else ends the test
    }
}

// ---- Chains.

Object chain_of(unsigned length) {
    Object chain;
    for (unsigned n = 0; n < length; ++n) chain = IllegalStateException(chain.get()).object();
    return chain;
}

unsigned length_of(IExceptionObject* object) {
    unsigned length = 0;
    for (; object; object = object->exception()->inner()) ++length;
    return length;
}

TEST_F(StoredException, HasNoMoreCausesThanCanBeRead) {
    for (const unsigned length : {1u, kMaxStoredExceptions, kMaxStoredExceptions + 100}) {
        const Object chain = chain_of(length);
        const unsigned stored = std::min(length, kMaxStoredExceptions);
        EXPECT_EQ(length_of(from_text(to_text(chain.get())).get()), stored);
        EXPECT_EQ(length_of(from_bytes(to_bytes(chain.get())).get()), stored);
    }
}

TEST_F(StoredException, WithMoreCausesThanAreStoredIsRefused) {
    std::string chain = kNoCause;
    for (unsigned n = 0; n < kMaxStoredExceptions; ++n) chain = item(kPlain, chain, "");
    EXPECT_EQ(length_of(from_text(wide(chain)).get()), kMaxStoredExceptions);
    chain = item(kPlain, chain, "");
    EXPECT_STREQ(outcome_of([&] { from_text(wide(chain)); }), "refused");

    const std::string plain(kPlain);
    std::string endless;
    for (unsigned n = 0; n < 100'000; ++n) endless += "{" + plain + ",{" + plain + ",\"d\",";
    EXPECT_STREQ(outcome_of([&] { from_text(wide(endless)); }), "refused");
}

// A cause of the program's own that cannot persist.
class Transient
    : public ObjectRoot
    , public SCOM_InternalClass<Transient>
    , public IExceptionObjectImpl<Exception> {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Transient, IExceptionObject>();
    }
};

TEST_F(StoredException, LosesACauseThatCannotPersist) {
    const StackCaptureOff withoutTraces;
    const auto cause = make_object<Transient>();
    const Object object = Exception(u"d", cause.get()).object();
    std::string without = item(kPlain, "", kBaseFields);
    without.replace(without.find("\n,"), 2, ",");
    without.replace(without.find(",,"), 2, ",");
    EXPECT_EQ(narrow(to_text(object.get())), without);
}

} // namespace
