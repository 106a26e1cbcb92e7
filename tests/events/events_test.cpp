#include <core/component/EventService.h>

#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>

#include "support/ProcessTest.h"

#include <atomic>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

using namespace core;

constexpr _GUID kEvent = "b9d5f5be-31a4-4c7e-8d1b-9c5a2fd0e111"_guid;
constexpr _GUID kOther = "b9d5f5be-31a4-4c7e-8d1b-9c5a2fd0e222"_guid; // of the same hash

// Notes its name when it hears something, and then does what it was told.
class Listener
    : public ObjectRoot
    , public SCOM_InternalClass<Listener>
    , public IEventRecipientImpl<Listener> {
public:
    Listener(std::string& heard, char name) : heard_(heard), name_(name) {}
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Listener, IEventRecipient>();
    }

    void onEvent(const _GUID& event, void* param, void* source) override {
        heard_ += name_;
        lastEvent = event;
        lastParam = param;
        lastSource = source;
        if (reaction) reaction();
    }

    std::function<void()> reaction;
    _GUID lastEvent = {};
    void *lastParam = nullptr, *lastSource = nullptr;

private:
    std::string& heard_;
    const char name_;
};

class Events : public test::ProcessTest {
protected:
    InterfacePtr<SCOM_Object<Listener>> listener(char name) {
        return make_object<Listener>(heard_, name);
    }
    // Who heard, in order.
    std::string fire(const _GUID& event = kEvent) {
        heard_.clear();
        service().fireEvent(event, nullptr, nullptr);
        return heard_;
    }
    IEventService& service() { return *get_service<IEventService>(); }

    std::string heard_;
};

TEST_F(Events, ReachTheLastSubscribedFirst) {
    const auto a = listener('a'), b = listener('b'), c = listener('c');
    a->subscribe(kEvent);
    b->subscribe(kEvent);
    b->subscribe(kOther);
    c->subscribe(kEvent);
    EXPECT_EQ(fire(), "cba");
    EXPECT_EQ(fire(kOther), "b");
    EXPECT_EQ(fire(kProcessTermEvent), "");

    b->unsubscribe(kEvent);
    b->subscribe(kEvent);
    EXPECT_EQ(fire(), "bca");
    int param = 0, source = 0;
    service().fireEvent(kEvent, &param, &source);
    EXPECT_EQ(a->lastEvent, kEvent);
    EXPECT_EQ(a->lastParam, &param);
    EXPECT_EQ(a->lastSource, &source);
}

TEST_F(Events, CountNoSubscriptions) {
    const auto a = listener('a');
    a->subscribe(kEvent);
    a->subscribe(kEvent);
    service().subscribeRecipient(kEvent, a.get());
    EXPECT_EQ(fire(), "a");
    a->unsubscribe(kEvent);
    EXPECT_EQ(fire(), "");
    a->unsubscribe(kEvent);
    service().unsubscribeRecipient(kEvent, a.get());
    a->subscribe(kEvent);
    EXPECT_EQ(fire(), "a");
}

TEST_F(Events, AreNotHeardByWhoIsGone) {
    const auto a = listener('a');
    a->subscribe(kEvent);
    {
        const auto b = listener('b');
        b->subscribe(kEvent);
        b->subscribe(kOther);
        EXPECT_EQ(fire(), "ba");
    }
    EXPECT_EQ(fire(), "a");
    EXPECT_EQ(fire(kOther), "");
}

TEST_F(Events, ChangesDuringAFiringCountFromTheNext) {
    const auto a = listener('a'), b = listener('b'), c = listener('c');
    a->subscribe(kEvent);
    b->subscribe(kEvent);
    b->reaction = [&] {
        a->unsubscribe(kEvent); // still hears of this one
        b->unsubscribe(kEvent);
        c->subscribe(kEvent);
    };
    EXPECT_EQ(fire(), "ba");
    EXPECT_EQ(fire(), "c");
}

TEST_F(Events, HoldTheirRecipientsWhileTheyFire) {
    auto a = listener('a');
    const auto b = listener('b');
    a->subscribe(kEvent);
    b->subscribe(kEvent);
    b->reaction = [&] { a.reset(); };
    EXPECT_EQ(fire(), "ba");
    EXPECT_EQ(fire(), "b");
}

TEST_F(Events, EndAtAnException) {
    const auto a = listener('a'), b = listener('b');
    a->subscribe(kEvent);
    b->subscribe(kEvent);
    b->reaction = [] { throw std::runtime_error("enough"); };
    EXPECT_THROW(fire(), std::runtime_error);
    EXPECT_EQ(heard_, "b");
    b->reaction = nullptr;
    EXPECT_EQ(fire(), "ba");
}

TEST_F(Events, MayBeFiredFromAnEvent) {
    const auto a = listener('a');
    a->subscribe(kEvent);
    a->reaction = [&] {
        a->reaction = nullptr;
        service().fireEvent(kEvent, nullptr, nullptr);
    };
    EXPECT_EQ(fire(), "aa");
}

TEST(EventsWithoutService, SubscribeNothing) {
    std::string heard;
    const auto a = make_object<Listener>(heard, 'a');
    a->subscribe(kEvent); // no process
    {
        test::ManualProcess process;
        process->unbindService(CLSID_EventService);
        a->subscribe(kEvent); // no service
        a->unsubscribe(kEvent);
    }
    test::ManualProcess process;
    a->unsubscribe(kEvent);
    get_service<IEventService>()->fireEvent(kEvent, nullptr, nullptr);
    EXPECT_EQ(heard, "");
}

TEST(ProcessEvents, TermComesBeforeDeathWithTheProcess) {
    std::string heard;
    InterfacePtr<SCOM_Object<Listener>> term = make_object<Listener>(heard, 't');
    InterfacePtr<SCOM_Object<Listener>> death = make_object<Listener>(heard, 'd');
    void* source = nullptr;
    {
        test::ManualProcess process;
        source = &*process;
        term->subscribe(kProcessTermEvent);
        death->subscribe(kProcessDeathEvent);
        death->reaction = [&] { // the last moment to leave
            term.reset();
            death->unsubscribe(kProcessDeathEvent);
        };
        term->reaction = [&] { EXPECT_EQ(term->lastSource, source); };
    }
    EXPECT_EQ(heard, "td");
}

// Recipients come and go on one thread while another fires: each hears only while it exists, and
// the lasting one hears all.
TEST_F(Events, MayBeFiredWhileOthersSubscribe) {
    class Counter
        : public ObjectRoot
        , public SCOM_InternalClass<Counter>
        , public IEventRecipient {
    public:
        static const InterfaceEntry* _GetEntries() {
            return interface_map<Counter, IEventRecipient>();
        }
        void onEvent(const _GUID&, void*, void*) override { ++count; }
        std::atomic<int> count = 0;
    };
    constexpr int kFirings = 20000;
    const auto lasting = make_object<Counter>(), passing = make_object<Counter>();
    IEventService& events = service();
    events.subscribeRecipient(kEvent, lasting.get());
    std::atomic<bool> done = false;
    std::thread other([&] {
        while (!done) {
            events.subscribeRecipient(kEvent, passing.get());
            events.subscribeRecipient(kOther, passing.get());
            events.unsubscribeRecipient(kOther, passing.get());
            events.unsubscribeRecipient(kEvent, passing.get());
        }
    });
    for (int i = 0; i != kFirings; ++i) events.fireEvent(kEvent, nullptr, nullptr);
    done = true;
    other.join();
    EXPECT_EQ(lasting->count, kFirings);
    EXPECT_LE(passing->count, kFirings);
    events.unsubscribeRecipient(kEvent, lasting.get());
}

} // namespace
