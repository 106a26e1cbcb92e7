// A complete host: it loads the component "counter" and calls the objects that the component
// brings, made by GUID, by an English and by a Russian name.

#include <core/core.h>

#include "Counter.h"

#include <iostream>

class Host : public core::Process {
    void run() override {
        core::current_process()->loadComponentEx("counter");

        const auto byGuid = core::create_object<example::ICounter>(example::CLSID_Counter);
        const auto byName = core::create_object_by_alias<example::ICounter>(u"counter");
        const auto byRussianName = core::create_object_by_alias<example::ICounter>(u"СЧЁТЧИК");
        byGuid->next();
        std::cout << "by GUID " << byGuid->next() << ", by name " << byName->next()
                  << ", by Russian name " << byRussianName->next() << '\n';

        for (int i = 0; i != 2; ++i)
            core::create_object<example::ICounter>(example::CLSID_Sequence)->next();
        const auto sequence = core::create_object<example::ICounter>(example::CLSID_Sequence);
        std::cout << "all share one sequence: " << sequence->next() << '\n';

        const auto greeting = core::get_service<example::IGreeter>()->greet(u"world");
        std::cout << core::to_utf8(greeting) << '\n';
    }
};

int main() {
    core::CoreInitManager init;
    Host host;
    host.construct(nullptr);
    host.start();
}
