#include <core/component/ClassDescriptor.h>
#include <core/component/DeferredException.h>
#include <core/component/DestructorException.h>
#include <core/component/IllegalStateException.h>
#include <core/component/Object.h>
#include <core/component/TechLog.h>

#include "support/ProcessTest.h"

#include <stdexcept>
#include <string>
#include <thread>

namespace {

using namespace core;
using namespace stdx::literals;

template <class Failure> void defer(const Failure& failure) {
    try {
        throw failure;
    } catch (...) {
        defer_exception();
    }
}

TEST(DeferredException, TheFirstOneIsRaisedOnce) {
    EXPECT_FALSE(have_deferred_exception());
    EXPECT_NO_THROW(raise_deferred_exception());
    defer(IllegalStateException());
    defer(std::runtime_error("second"));
    EXPECT_TRUE(have_deferred_exception());
    EXPECT_THROW(raise_deferred_exception(), IllegalStateException);
    EXPECT_FALSE(have_deferred_exception());
    defer(std::runtime_error("third"));
    EXPECT_THROW(raise_deferred_exception(), std::runtime_error);
}

TEST(DeferredException, OutsideACatchBlockThereIsNone) {
    defer_exception();
    EXPECT_FALSE(have_deferred_exception());
}

class Handler
    : public ObjectRoot
    , public SCOM_InternalClass<Handler>
    , public IExceptionHandler {
public:
    explicit Handler(std::string& heard) : heard_(heard) {}
    ~Handler() { heard_ += "end"; }
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Handler, IExceptionHandler>();
    }
    // Takes the writer side of the lock that guards the handler: it must be free by now.
    void handleException(const Exception& exception) override {
        set_destructor_exception_handler(nullptr);
        heard_ += exception.description() == u"x"_us ? "x " : "? ";
    }

private:
    std::string& heard_;
};

TEST(DestructorException, GoesToTheHandler) {
    std::string heard;
    set_destructor_exception_handler(make_object<Handler>(heard).get());
    EXPECT_TRUE(get_destructor_exception_handler());
    destructor_exception(Exception(u"x"));
    EXPECT_EQ(heard, "x end"); // held during the call, and let go after it
    EXPECT_FALSE(get_destructor_exception_handler());
}

TEST(DestructorException, WithoutAHandlerIsThrownAsPlain) {
    try {
        destructor_exception(IllegalStateException());
        FAIL() << "nothing was thrown";
    } catch (const IllegalStateException&) {
        FAIL() << "the class of the exception was kept";
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.objectClass(), CLSID_ExceptionObject);
        EXPECT_EQ(exception.description(), IllegalStateException().description());
    }
}

std::vector<stdx::ustring> logged;

template <const _GUID* clsid>
class Log
    : public ObjectRoot
    , public SCOM_Class<Log<clsid>, clsid>
    , public ITechLog {
public:
    static constexpr auto categories = core::categories(&CATID_TechLog);
    static const InterfaceEntry* _GetEntries() { return interface_map<Log, ITechLog>(); }
    void writeException(const Exception& exception, const stdx::ustring& where) override {
        logged.push_back(where + u": " + exception.description());
    }
};

constexpr _GUID CLSID_FirstLog = "3e6fb9d1-6c43-4b6a-8f0e-53a1d6a3a1b0"_guid;
constexpr _GUID CLSID_SecondLog = "c2a7e1f4-0b8f-4f4d-b8a7-1a7b9d2c4e55"_guid;
using FirstLog = Log<&CLSID_FirstLog>;
using SecondLog = Log<&CLSID_SecondLog>;
ORBCORE_REGISTER(FirstLog);
ORBCORE_REGISTER(SecondLog);

TEST(TechLog, EveryClassOfTheCategoryHears) {
    logged.clear();
    write_exception_to_techlog(Exception(u"x"), u"nowhere"); // no process: nobody hears
    EXPECT_TRUE(logged.empty());

    test::ManualProcess process;
    write_exception_to_techlog(Exception(u"x"), u"while testing");
    EXPECT_EQ(logged, std::vector(2, u"while testing: x"_us));
    revoke_SCOM_class(CLSID_FirstLog);
    revoke_SCOM_class(CLSID_SecondLog);
    write_exception_to_techlog(Exception(u"x"), u"again");
    EXPECT_EQ(logged.size(), 2u);
}

} // namespace
