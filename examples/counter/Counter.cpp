#include "Counter.h"

#include <atomic>

ORBCORE_COMPONENT("counter", "1.0.0.0");

namespace example {
namespace {

constexpr auto kCounting = core::categories(&CATID_Counting);

// A new object for every creation: each counts for itself.
class Counter
    : public core::ObjectRoot
    , public core::SCOM_Class<Counter, &CLSID_Counter>
    , public ICounter {
public:
    static constexpr auto aliases = core::aliases(u"Counter", u"Счётчик");
    static constexpr auto categories = kCounting;
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Counter, ICounter>();
    }

    int next() override { return ++count_; }

private:
    std::atomic<int> count_ = 0;
};

// One object a process: all callers count together.
class Sequence
    : public core::ObjectRoot
    , public core::SCOM_Singleton<Sequence, &CLSID_Sequence>
    , public ICounter {
public:
    static constexpr auto aliases = core::aliases(u"Sequence", u"Последовательность");
    static constexpr auto categories = kCounting;
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Sequence, ICounter>();
    }

    int next() override { return ++count_; }

private:
    std::atomic<int> count_ = 0;
};

// A service: the process makes it, callers reach it by its interface.
class Greeter
    : public core::ObjectRoot
    , public core::SCOM_Service<Greeter, &CLSID_Greeter, &IID_IGreeter>
    , public IGreeter {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Greeter, IGreeter>();
    }

    stdx::ustring greet(const stdx::ustring& name) override { return u"Good day, " + name + u"!"; }
};

} // namespace
} // namespace example

ORBCORE_REGISTER(example::Counter);
ORBCORE_REGISTER(example::Sequence);
ORBCORE_REGISTER(example::Greeter);
ORBCORE_NAME_INTERFACE(example::ICounter);
ORBCORE_NAME_INTERFACE(example::IGreeter);
