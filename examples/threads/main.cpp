// A host whose threads do the work, which hears of its own end, and which fails with a cause.

#include <core/core.h>

#include <atomic>
#include <iostream>
#include <vector>

ORBCORE_MODULE("threads_example", ORBCORE_VERSION ".0");

namespace {

using namespace core::literals;

inline constexpr _GUID kReportDoneEvent = "60f6dccb-3c8c-483c-892b-2ed94d76e9da"_guid;

// Hears of events for as long as it lives.
class Listener
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<Listener>
    , public core::IEventRecipientImpl<Listener> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Listener, core::IEventRecipient>();
    }
    Listener() {
        subscribe(kReportDoneEvent);
        subscribe(core::kProcessTermEvent);
    }
    void onEvent(const _GUID& event, void*, void*) override {
        std::cout << (event == kReportDoneEvent ? "event: a report is done\n"
                                                : "event: the process ends\n");
    }
};

class Host : public core::Process {
    void run() override {
        const auto listener = core::make_object<Listener>();

        std::atomic<int> pages = 0;
        std::vector<core::InterfacePtr<core::Thread>> workers;
        for (int i = 0; i != 4; ++i)
            workers.push_back(core::create_thread([&pages] { pages += 25; }));
        for (const auto& worker : workers) worker->start();
        for (const auto& worker : workers) worker->join();
        std::cout << "four threads wrote " << pages << " pages\n";

        const auto sum = core::async([&pages] { return pages * 2; }).get();
        std::cout << "a task on the pool counted " << sum << " sides\n";

        core::get_service<core::IEventService>()->fireEvent(kReportDoneEvent, nullptr, this);

        for (const char16_t* const language : {u"en", u"ru"}) {
            core::current_thread()->setResourceLocale(core::Locale(language));
            try {
                load_report();
            } catch (const core::Exception& exception) {
                core::print_exception_chain(std::cout, exception);
            }
        }
    }

    // What went wrong below becomes the cause of what it means here.
    static void load_report() {
        try {
            core::current_process()->loadComponentEx("reports");
        } catch (const core::Exception& exception) {
            throw core::ApplicationException(exception.object().get());
        }
    }
};

} // namespace

int main() {
    core::CoreInitManager init;
    Host host;
    host.construct(&core::this_module());
    host.start();
}
