// A program as a user of the installed library writes it: a module with one class.

#include <core/core.h>

#include <iostream>

ORBCORE_MODULE("consumer", "1.0.0.0");

namespace {

using namespace core::literals;

inline constexpr _GUID IID_INumber = "f9c92d0c-8b4e-4d6c-a7a0-03a6d1a2b7b1"_guid;
inline constexpr _GUID CLSID_One = "4ad1a3c4-6c2b-4f3f-8a57-2b3ba8a2f4d9"_guid;

class INumber : public IUnknown {
public:
    ORB_INTERFACE(INumber, IID_INumber)
    virtual int number() = 0;
};

class One
    : public core::ObjectRoot
    , public core::SCOM_Class<One, &CLSID_One>
    , public INumber {
public:
    static constexpr auto aliases = core::aliases(u"One", u"Единица");
    static const core::InterfaceEntry* _GetEntries() { return core::interface_map<One, INumber>(); }
    int number() override { return 1; }
};

class Host : public core::Process {
    void run() override {
        const auto one = core::create_object_by_alias<INumber>(u"единица");
        std::cout << "made by a Russian name: " << one->number() << std::endl;
    }
};

} // namespace

ORBCORE_REGISTER(One);

int main() {
    core::CoreInitManager init;
    Host host;
    host.construct(&core::this_module());
    host.start();
}
