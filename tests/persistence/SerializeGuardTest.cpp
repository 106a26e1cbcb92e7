// Values that cannot be stored are told to the guards of the thread that saves.
#include "support/ProcessTest.h"

#include <core/component/EventService.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>
#include <core/persistence/SerializeGuard.h>

#include <string>
#include <thread>

namespace {

using namespace core;

class Handler
    : public ObjectRoot
    , public SCOM_InternalClass<Handler>
    , public ISerializeErrorHandler {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Handler, ISerializeErrorHandler>();
    }
    Handler(std::string& told, char name) : told_(told), name_(name) {}

    void onSerializeError(IUnknown* value) override {
        told_ += name_;
        seen = value;
        guard.reset();
        if (fails) throw 1;
    }

    IUnknown* seen = nullptr;
    InterfacePtr<IUnknown> guard; // ended by the first call
    bool fails = false;

private:
    std::string& told_;
    char name_;
};

class SerializeGuardTest : public test::ProcessTest {
protected:
    static void fail(IUnknown* value = nullptr) {
        get_service<IEventService>()->fireEvent(SerializeFailureEvent, nullptr, value);
    }
    std::string told_;
};

TEST_F(SerializeGuardTest, AllGuardsOfTheThreadAreToldOfTheValue) {
    const auto a = make_object<Handler>(told_, 'a'), b = make_object<Handler>(told_, 'b');
    fail();
    {
        const auto outer = create_serialize_guard(a.get());
        {
            const auto inner = create_serialize_guard(b.get());
            fail(b.get());
            EXPECT_EQ(a->seen, b.get());
            EXPECT_EQ(b->seen, b.get());
            EXPECT_EQ(told_, "ba");
        }
        fail();
        EXPECT_EQ(told_, "baa");
        auto* const events = get_service<IEventService>();
        std::thread([=] { events->fireEvent(SerializeFailureEvent, nullptr, nullptr); }).join();
        EXPECT_EQ(told_, "baa");
    }
    fail();
    EXPECT_EQ(told_, "baa");
}

TEST_F(SerializeGuardTest, AHandlerMayEndGuardsAndTheSave) {
    const auto a = make_object<Handler>(told_, 'a'), b = make_object<Handler>(told_, 'b');
    b->guard = create_serialize_guard(a.get());
    const auto guard = create_serialize_guard(b.get());
    fail(); // b is told first and ends the guard of a
    EXPECT_EQ(told_, "b");
    b->fails = true;
    EXPECT_THROW(fail(), int);
}

} // namespace
