#include <core/component/ApplicationException.h>
#include <core/component/CancelOperationException.h>
#include <core/component/CommandLineException.h>
#include <core/component/DataExceptions.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/IllegalStateException.h>
#include <core/component/InteractiveSecurityException.h>
#include <core/component/LinuxProcException.h>
#include <core/component/RemotingException.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/ThreadException.h>
#include <core/component/UnsupportedOperationException.h>
#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/values/ContextException.h>
#include <core/values/TypeException.h>

#include "support/ProcessTest.h"

#include <gmock/gmock.h>

#include <optional>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace {

using namespace core;
using namespace stdx::literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string text_of(const stdx::ustring& text) {
    return std::string(to_utf8(text));
}

std::string description_of(const Exception& exception) {
    return text_of(exception.description());
}

TEST(ExceptionDescription, JoinsTwoTexts) {
    const struct {
        stdx::ustring a, b, joined;
    } rows[] = {
        {u"a", u"b", u"a\nb"},
        {u"a", u"", u"a"},
        {u"", u"b", u""},
        {u"", u"", u""},
    };
    for (const auto& row : rows) EXPECT_EQ(format_exception_descr(row.a, row.b), row.joined);
    EXPECT_EQ(text_of(format_exception_descr("part", 4000000000u, u"core/src/x.cpp", u"a", u"b")),
              "a\nb\n[part - core/src/x.cpp (4000000000)]");
    EXPECT_EQ(text_of(format_exception_descr(nullptr, 0, nullptr, u"", u"b")), "\n[ -  (0)]");
}

TEST(ExceptionDescription, ShowsSourcesBelowTheirTree) {
    const struct {
        const char16_t *file, *shown;
    } rows[] = {
        {u"core/src/text/X.cpp", u"core/src/text/X.cpp"},
        {u"/home/me/orb/core/src/text/X.cpp", u"core/src/text/X.cpp"},
        {u"/usr/src/orb/core/include/core/X.h", u"core/include/core/X.h"},
        {u"/usr/include/orb/core/src/X.cpp", u"core/src/X.cpp"},
        {u"/src/X.cpp", u"src/X.cpp"},
        {u"/tmp/X.cpp", u"X.cpp"},
        {u"/", u""},
        {u"", u""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(stdx::ustring(skip_absolute_path(row.file)), row.shown) << text_of(row.file);
}

TEST(ExceptionDescription, OfAFailedAssertionNamesExpressionAndPlace) {
    try {
        ORB_ASSERT(2 + 2 == 5);
        FAIL() << "the assertion passed";
    } catch (const IllegalArgumentException& exception) {
        const std::string text = description_of(exception);
        EXPECT_THAT(text, StartsWith("Illegal argument\n2 + 2 == 5\n[tests - "));
        EXPECT_THAT(text, HasSubstr("tests/exceptions/exception_test.cpp ("));
        EXPECT_THAT(text, EndsWith(")]"));
    }
    EXPECT_NO_THROW(ORB_ASSERT(2 + 2 == 4));
}

// One row a class and constructor: how it is described, and which class its twin throws again.
class ExceptionFamily : public test::ProcessTest {};

template <class E> bool comes_back(const E& exception) {
    const auto object = exception.object();
    try {
        if (object) object->rethrow();
    } catch (const E& thrown) {
        return thrown.description() == exception.description() &&
               thrown.objectClass() == exception.objectClass();
    } catch (...) {}
    return false;
}

TEST_F(ExceptionFamily, DescribesItselfAndComesBackWithItsClass) {
    const auto check = [](const auto& exception, const char* description) {
        SCOPED_TRACE(description);
        EXPECT_EQ(description_of(exception), description);
        EXPECT_TRUE(comes_back(exception));
    };
    using Thread_ = ThreadException;
    check(Exception(), "");
    check(Exception(u"plain"), "plain");
    check(ApplicationException(), "The application failed.");
    check(ApplicationException(u"no such file"), "no such file");
    check(CancelOperationException(), "");
    check(CommandLineException(u"--x"), "The option \"--x\" is unknown or was used wrongly.");
    check(CommandLineException(), "The option \"\" is unknown or was used wrongly.");
    check(ComparatorException(u"a date and a number"), "a date and a number");
    check(DataSourceException(u"no rows"), "no rows");
    check(EDBException(u"no connection"), "no connection");
    check(PivotSourceException(), "");
    check(PivotSourceException(PivotSourceException::Error::DataSource),
          "The data source of the pivot report failed.");
    check(ProfileSrcException(u"no profile"), "no profile");
    check(IllegalArgumentException(), "Illegal argument");
    check(IllegalArgumentException("c", 7, u"f", u"d"), "Illegal argument\nd\n[c - f (7)]");
    check(IllegalStateException("c", 7, u"f"),
          "The object is not in a state for this operation\n[c - f (7)]");
    check(InteractiveSecurityException(u"refused"), "refused");
    check(LibraryLoadException(u"libz"), "The library \"libz\" was not found.");
    check(LibraryLoadException(u"libz", u"bad ELF"),
          "The library \"libz\" could not be loaded: bad ELF");
    check(RemotingException(u"lost"), "lost");
    check(SCOM_Exception(SCOM_Exception::Reason::ComponentLoad, u"gone"), "gone");
    check(StackOverflowException(), "");
    check(Thread_(), "");
    check(TypeException(u"Table"_us), "The type is unknown: 'Table'");
    check(TypeException(CLSID_ExceptionObject),
          "The type is unknown: '9bed88ff-dcab-4217-b1a4-cf9c350df979'");
    check(Thread_(Thread_::Error::Interrupted), "The thread was interrupted");
    check(Thread_(Thread_::Error::Cancelled), "The job was cancelled");
    check(Thread_(Thread_::Error::Execution, u"why"), "The job failed\nwhy");
    check(Thread_(Thread_::Error::RejectedExecution), "The job was not accepted");
    check(Thread_(Thread_::Error::Timeout), "The time allowed has run out");
    check(UnsupportedOperationException(), "The operation is not supported");
    check(ContextException(u"used wrongly"), "used wrongly");
    check(CtorException(u"not made"), "not made");
    check(TypeDomainPatternProviderException(u"no types"), "no types");
    check(ValueIsFilledException(), "");
    check(ValueIsFilledException(ValueIsFilledException::Error::MutableType, u"Sample"),
          "Whether a value of this type is filled in cannot be told (Sample)");
    check(VersionException(u"too old", "part", u"1.0"), "too old");
}

TEST_F(ExceptionFamily, AddedFieldsSurviveTheTwin) {
    const auto thrown_again = []<class E>(const E& exception) -> E {
        try {
            exception.object()->rethrow();
        } catch (const E& thrown) {
            return thrown;
        }
        throw std::logic_error("it came back as another class");
    };
    EXPECT_EQ(thrown_again(SCOM_Exception(SCOM_Exception::Reason::ComponentLoad, u"")).reason(),
              SCOM_Exception::Reason::ComponentLoad);
    EXPECT_EQ(thrown_again(ThreadException(ThreadException::Error::Timeout)).error(),
              ThreadException::Error::Timeout);
    EXPECT_EQ(thrown_again(PivotSourceException(PivotSourceException::Error::DataSource)).error(),
              PivotSourceException::Error::DataSource);
    EXPECT_EQ(
        thrown_again(ValueIsFilledException(ValueIsFilledException::Error::MutableType)).error(),
        ValueIsFilledException::Error::MutableType);
    const auto version = thrown_again(VersionException(u"", "a module with a name", u"version"));
    EXPECT_EQ(version.module(), "a module with a name"_s);
    EXPECT_EQ(version.version(), u"version"_us);
}

TEST_F(ExceptionFamily, WithoutATwinOfItsOwnIsKeptByTheBase) {
    EXPECT_THROW(NetDataExchangeException(u"x").object()->rethrow(), RemotingException);
    EXPECT_THROW(LinuxProcStatusException(u"x").object()->rethrow(), Exception);
}

TEST(Exception, IsCaughtByItsBaseAndNeverCutByACopy) {
    EXPECT_THROW(throw IllegalStateException(), Exception);
    static_assert(!std::is_constructible_v<Exception, const IllegalStateException&>);
    static_assert(!std::is_constructible_v<Exception, IllegalStateException>);
    static_assert(std::is_copy_constructible_v<IllegalStateException>);
    static_assert(std::is_copy_constructible_v<LinuxProcStatusException>);
    static_assert(std::is_nothrow_move_constructible_v<VersionException>);

    const Exception plain = ThreadException(ThreadException::Error::Timeout).as_plain();
    EXPECT_EQ(plain.objectClass(), CLSID_ExceptionObject);
    EXPECT_EQ(description_of(plain), "The time allowed has run out");
}

TEST(Exception, FromAServerChangesSides) {
    const auto bit = [](ValuesExceptionCategory category) { return std::size_t(category); };
    Exception::Categories all;
    all.set();
    const Exception made(u"x", nullptr, kUUIDNull, all, u"server trace");
    ASSERT_EQ(made.creationStackTrace(), u"server trace"_us);

    Exception script = made;
    script.setOnClientFromServer();
    EXPECT_EQ(script.serverStackTrace(), u"server trace"_us);
    EXPECT_THAT(text_of(script.creationStackTrace()), HasSubstr(":0x"));
    EXPECT_TRUE(script.categories().all());

    Exception other = made;
    other.categories().reset(bit(ValuesExceptionCategory::ExceptionRaisedFromScript));
    other.setOnClientFromServer();
    EXPECT_FALSE(other.categories().test(bit(ValuesExceptionCategory::LocalFileAccessError)));
    EXPECT_FALSE(other.categories().test(bit(ValuesExceptionCategory::PrinterError)));
    EXPECT_EQ(other.categories().count(), all.size() - 3);

    Exception local(u"made here");
    local.setOnClientFromServer();
    EXPECT_EQ(local.serverStackTrace(), u""_us);
}

TEST(Exception, PrintsTheChainOfItsCauses) {
    test::ManualProcess process;
    Exception::Categories categories;
    categories.set(2).set(19);
    const Exception cause(u"Связь потеряна", nullptr, kUUIDNull, categories, u"a:0x1 ");
    const Exception outer(u"no report", cause.object().get());
    std::ostringstream out;
    out << outer << '|';
    print_exception_chain(out, outer);
    EXPECT_EQ(out.str(), "no report|no report\n"
                         "caused by: Связь потеряна [NetworkError, InvalidPassword]\n"
                         "  at a:0x1 \n");
}

// The rows are data of their own beside the enumeration: each value once, in its order.
TEST(ExceptionCategories, AreListedInTheirOrder) {
    std::vector<unsigned> values;
    for (const ExceptionCategoryRow& row : kExceptionCategoryRows)
        values.push_back(static_cast<unsigned>(row.value));
    std::vector<unsigned> expected(27);
    for (unsigned i = 0; i != 27; ++i) expected[i] = i;
    expected.erase(expected.begin() + 24);
    EXPECT_EQ(values, expected);
}

TEST_F(ExceptionFamily, IsCountedOnTheThreadThatMadeIt) {
    const std::atomic<std::uint32_t>* const word = current_ecxeptions_count();
    ASSERT_NE(word, nullptr);
    const std::uint32_t alone = *word;
    {
        const Exception made(u"x");
        const Exception copy = made;
        EXPECT_EQ(*word, alone + 2);
        Exception moved = Exception(u"y");
        moved = made;
        EXPECT_EQ(*word, alone + 3);
        const auto object = made.object();
        EXPECT_EQ(*word, alone + 4);
        std::thread([copy] { EXPECT_EQ(current_ecxeptions_count(), nullptr); }).join();
    }
    EXPECT_EQ(*word, alone);
}

TEST_F(ExceptionFamily, OutlivesTheThreadThatMadeIt) {
    std::optional<Exception> kept;
    const auto thread = create_thread([&] { kept.emplace(u"from the thread"); });
    thread->start();
    thread->join();
    ASSERT_TRUE(kept.has_value());
    EXPECT_EQ(description_of(*kept), "from the thread");
    const Exception copy = *kept; // counts on the word of a thread that is over
    kept.reset();
    EXPECT_EQ(description_of(copy), "from the thread");
}

} // namespace
