// The logical process: start and end, services, thread bundles, versions, settings.

#include <core/component/ClassDescriptor.h>
#include <core/component/EventService.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/Utf8.h>
#include <core/resources/ResourceBundle.h>

#include "support/ProcessTest.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

using namespace core::literals;
using core::InterfacePtr;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr _GUID IID_IStamp = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a01"_guid;
constexpr _GUID CLSID_EarlyService = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a02"_guid;
constexpr _GUID CLSID_LateService = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a03"_guid;
constexpr _GUID IID_IOtherStamp = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a04"_guid;
constexpr _GUID CLSID_Part = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a05"_guid;
constexpr _GUID CLSID_Single = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a06"_guid;
constexpr _GUID CLSID_Elsewhere = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a07"_guid;
constexpr _GUID CATID_Stamps = "41f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a08"_guid;

// What happened, in order.
std::vector<std::string> history;

class IStamp : public IUnknown {
public:
    ORB_INTERFACE(IStamp, IID_IStamp)
    virtual int stamp() = 0;
};
class IOtherStamp : public IStamp {
public:
    ORB_INTERFACE(IOtherStamp, IID_IOtherStamp)
};

template <class X, const _GUID* clsid>
class StampClass
    : public core::ObjectRoot
    , public core::SCOM_Class<X, clsid>
    , public IStamp {
public:
    static const core::InterfaceEntry* _GetEntries() { return core::interface_map<X, IStamp>(); }
    int stamp() override { return 1; }
};

class Part : public StampClass<Part, &CLSID_Part> {
public:
    static constexpr auto aliases = core::aliases(u"Stamp", u"Печать");
    static constexpr auto categories = core::categories(&CATID_Stamps);
};
class Elsewhere : public StampClass<Elsewhere, &CLSID_Elsewhere> {};

class Single
    : public core::ObjectRoot
    , public core::SCOM_Singleton<Single, &CLSID_Single>
    , public IStamp {
public:
    ~Single() { history.emplace_back("singleton"); }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Single, IStamp>();
    }
    int stamp() override { return 3; }
};

class EarlyService
    : public core::ObjectRoot
    , public core::SCOM_Service<EarlyService, &CLSID_EarlyService, &IID_IStamp>
    , public IStamp {
public:
    // All classes of the module are there before its first service.
    EarlyService() : part_(core::create_object<IStamp>(CLSID_Part)) {}
    ~EarlyService() { history.emplace_back("early service"); }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<EarlyService, IStamp>();
    }
    int stamp() override { return part_ ? 10 + part_->stamp() : -1; }

private:
    InterfacePtr<IStamp> part_;
};
class LateService
    : public core::ObjectRoot
    , public core::SCOM_Service<LateService, &CLSID_LateService, &IID_IOtherStamp>
    , public IOtherStamp {
public:
    ~LateService() { history.emplace_back("late service"); }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<LateService, IOtherStamp>();
    }
    int stamp() override { return 20; }
};

class ShutdownListener
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<ShutdownListener>
    , public core::IEventRecipientImpl<ShutdownListener> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<ShutdownListener, core::IEventRecipient>();
    }
    void onEvent(const _GUID& event, void* param, void* source) override {
        EXPECT_EQ(param, nullptr);
        EXPECT_EQ(source, core::current_process());
        history.emplace_back(event == core::kProcessTermEvent ? "term event" : "death event");
    }
};

// Registers classes that only some tests want.
template <class X> void register_in(core::SCOM_ClassRegistrar& registrar) {
    registrar.registerClass(X::class_id(), core::make_class_factory(core::creator_of<X>()).get(),
                            X::kRegisterType, "tests");
}

using Process = test::ProcessTest;

TEST_F(Process, MakesObjectsByGuidAndByNamesInBothLanguages) {
    EXPECT_EQ(core::create_object<IStamp>(CLSID_Part)->stamp(), 1);
    EXPECT_TRUE(core::create_object_by_alias<IStamp>(u"STAMP"));
    EXPECT_TRUE(core::create_object_by_alias<IStamp>(u"печать"));
    EXPECT_FALSE(core::create_object<IOtherStamp>(CLSID_Part));
    EXPECT_FALSE(core::create_object<IStamp>(CLSID_Elsewhere));
    EXPECT_TRUE(process().isClassInCategory(CATID_Stamps, CLSID_Part));
    EXPECT_EQ(process().getClassComponent(CLSID_Part), "tests");
    EXPECT_EQ(process().reservedQuery(), 0);
}

TEST_F(Process, BindsTheServicesOfItsModules) {
    EXPECT_EQ(core::get_service<IStamp>()->stamp(), 11);
    EXPECT_EQ(core::get_service<IOtherStamp>()->stamp(), 20);
    EXPECT_EQ(process().getService(CATID_Stamps), nullptr);
    EXPECT_FALSE(core::create_object<IStamp>(CLSID_EarlyService)) << "nobody else makes services";
    // Interfaces of a service lead to the process and back.
    const InterfacePtr<core::SCOM_Process> outer(core::get_service<IStamp>());
    EXPECT_EQ(outer.get(), &process());
}

TEST_F(Process, BindsAndUnbindsOnce) {
    EXPECT_FALSE(process().bindService(CLSID_EarlyService, IID_IStamp)) << "bound already";
    EXPECT_FALSE(process().bindService(CLSID_EarlyService, CATID_Stamps)) << "the class is bound";
    EXPECT_FALSE(process().bindService(CLSID_Part, CATID_Stamps)) << "no service class";

    EXPECT_TRUE(process().unbindService(CLSID_EarlyService));
    EXPECT_EQ(core::get_service<IStamp>(), nullptr);
    EXPECT_TRUE(process().unbindService(CLSID_EarlyService)) << "not bound any more";
    EXPECT_FALSE(process().bindService(CLSID_EarlyService, CATID_Stamps)) << "no such interface";
    EXPECT_TRUE(process().bindService(CLSID_EarlyService, IID_IStamp));
    EXPECT_EQ(core::get_service<IStamp>()->stamp(), 11);
}

TEST_F(Process, RevokesAServiceClassUnlessItIsBound) {
    const InterfacePtr<core::SCOM_ClassRegistrar> registrar(static_cast<IUnknown*>(&process()));
    ASSERT_TRUE(registrar);
    EXPECT_FALSE(registrar->revokeClass(CLSID_EarlyService));
    process().unbindService(CLSID_EarlyService);
    EXPECT_TRUE(registrar->revokeClass(CLSID_EarlyService));
    EXPECT_FALSE(process().bindService(CLSID_EarlyService, IID_IStamp));
    core::revoke_SCOM_class(CLSID_Part);
    EXPECT_FALSE(process().hasClass(CLSID_Part));
}

TEST_F(Process, SuppressesABindingOnce) {
    const InterfacePtr<core::SCOM_ClassRegistrar> registrar(static_cast<IUnknown*>(&process()));
    process().unbindService(CLSID_EarlyService);
    registrar->revokeClass(CLSID_EarlyService);
    EXPECT_FALSE(process().unbindService(CLSID_EarlyService)) << "not registered: suppressed";
    register_in<EarlyService>(*registrar);
    EXPECT_FALSE(process().bindService(CLSID_EarlyService, IID_IStamp));
    EXPECT_EQ(core::get_service<IStamp>(), nullptr);
    EXPECT_TRUE(process().bindService(CLSID_EarlyService, IID_IStamp));
}

TEST_F(Process, LooksIntoTheBundleOfTheThread) {
    const auto bundle =
        core::create_SCOM_class_bundle(nullptr, core::ClassBundleSearchStrategy::OwnFirst);
    register_in<Elsewhere>(*bundle);
    bundle->addClassAlias(CLSID_Elsewhere, u"Elsewhere");
    bundle->addClassCategory(CLSID_Elsewhere, CATID_Stamps);
    EXPECT_FALSE(process().setThreadClassBundle(bundle.get()));
    EXPECT_EQ(process().getThreadClassBundle(), bundle.get());
    EXPECT_TRUE(process().hasClass(CLSID_Elsewhere));
    EXPECT_TRUE(core::create_object<IStamp>(CLSID_Elsewhere));
    EXPECT_TRUE(core::create_object_by_alias<IStamp>(u"elsewhere"));
    EXPECT_EQ(process().getClassComponent(CLSID_Elsewhere), "tests");
    EXPECT_THAT(process().getClassesOfCategory(CATID_Stamps),
                ElementsAre(CLSID_Part, CLSID_Elsewhere));

    bool seenElsewhere = true;
    const InterfacePtr<core::CallingThread> entry(new core::CallingThread(host()), true);
    std::thread([&] {
        entry->call([&] {
            seenElsewhere = process().hasClass(CLSID_Elsewhere);
            EXPECT_TRUE(process().hasClass(CLSID_Part));
        });
    }).join();
    EXPECT_FALSE(seenElsewhere);

    EXPECT_EQ(process().takeThreadClassBundle(), bundle);
    EXPECT_EQ(process().getThreadClassBundle(), nullptr);
    EXPECT_FALSE(core::create_object<IStamp>(CLSID_Elsewhere));
    process().setThreadClassBundle(bundle.get());
    EXPECT_EQ(process().setThreadClassBundle(nullptr), bundle);
    EXPECT_EQ(process().getThreadClassBundle(), nullptr);
}

TEST_F(Process, RewritesTheFactoryForCreationByGuidAlone) {
    core::rewrite_SCOM_class_factory(CLSID_Part,
                                     core::make_class_factory(core::creator_of<Elsewhere>()).get());
    const auto byGuid = core::create_object<IUnknown>(CLSID_Part);
    const auto byAlias = core::create_object_by_alias<IUnknown>(u"Stamp");
    EXPECT_NE(dynamic_cast<Elsewhere*>(InterfacePtr<IStamp>(byGuid).get()), nullptr);
    EXPECT_NE(dynamic_cast<Part*>(InterfacePtr<IStamp>(byAlias).get()), nullptr);
    EXPECT_EQ(process().getClassComponent(CLSID_Part), "tests");
    // A class that is gone is gone by every road.
    core::revoke_SCOM_class(CLSID_Part);
    EXPECT_FALSE(core::create_object_by_alias<IUnknown>(u"Stamp"));

    const auto single = core::create_object<IStamp>(CLSID_Single);
    core::rewrite_SCOM_class_factory(CLSID_Single,
                                     core::make_class_factory(core::creator_of<Elsewhere>()).get());
    EXPECT_EQ(core::create_object<IStamp>(CLSID_Single), single) << "its object exists";
    core::rewrite_SCOM_class_factory(CATID_Stamps, nullptr); // unknown: nothing happens
}

TEST_F(Process, HasSettings) {
    EXPECT_EQ(process().getRoundMode(), 1);
    EXPECT_EQ(process().getBeginningOfCentury(), 1950);
    EXPECT_EQ(process().getTermLanguage(), 0);
    EXPECT_FALSE(process().isCOMEnabledInThreads());
    EXPECT_GE(process().getFirstDayOfWeek(), 1);
    EXPECT_LE(process().getFirstDayOfWeek(), 7);
    process().setTermLanguage(1);
    process().enableCOMInThreads(true);
    EXPECT_EQ(process().getTermLanguage(), 1);
    EXPECT_TRUE(process().isCOMEnabledInThreads());
}

TEST_F(Process, KnowsResourceBundlesInAnyCase) {
    core::SCOM_ResourceBundle one("Texts"), two("texts");
    process().addResourceBundle(nullptr);
    process().addResourceBundle(&one);
    EXPECT_EQ(process().findResourceBundle("TEXTS"), &one);
    process().addResourceBundle(&two);
    EXPECT_EQ(process().findResourceBundle("Texts"), &two);
    process().removeResourceBundle(&one);
    EXPECT_EQ(process().findResourceBundle("Texts"), &two);
    process().removeResourceBundle(&two);
    EXPECT_EQ(process().findResourceBundle("Texts"), nullptr);
}

// ---- Versions

TEST_F(Process, IsOfTheVersionOfItsFirstModule) {
    const std::string version = std::string(process().getVersion().c_str());
    EXPECT_EQ(process().getVersionOwner(), "orbcore");
    const InterfacePtr<core::SCOM_ClassRegistrar> registrar(static_cast<IUnknown*>(&process()));
    core::SCOM_Module same("same", version.c_str());
    EXPECT_NO_THROW(same.registerAll(&process(), registrar.get()));
    same.cleanup();
    const struct {
        const char* version;
        const char16_t* named;
    } rows[] = {{"9.9.9.9", u"other"}, {"1.0 beta", u"%s"}, {nullptr, u"%s"}};
    for (const auto& row : rows) {
        core::SCOM_Module other("other", row.version);
        try {
            other.registerAll(&process(), registrar.get());
            ADD_FAILURE() << "registered another version";
        } catch (const core::VersionException& exception) {
            EXPECT_NE(exception.description().find(row.named), stdx::ustring::npos)
                << core::to_utf8(exception.description());
        }
        EXPECT_EQ(process().getVersion(), version.c_str());
    }
}

// ---- Start and end

TEST(ProcessLife, EndsInOrder) {
    history.clear();
    const auto listener = core::make_object<ShutdownListener>(); // its process goes before it
    {
        std::optional<test::ManualProcess> process(std::in_place);
        core::create_object<IStamp>(CLSID_Single);
        listener->subscribe(core::kProcessTermEvent);
        listener->subscribe(core::kProcessDeathEvent);
        process.reset();
    }
    ASSERT_EQ(history.size(), 5u);
    EXPECT_EQ(history[0], "term event");
    EXPECT_EQ(history[1], "death event");
    EXPECT_THAT(std::vector(history.begin() + 2, history.begin() + 4),
                testing::UnorderedElementsAre("early service", "late service"));
    EXPECT_EQ(history[4], "singleton");
    EXPECT_EQ(core::current_process(), nullptr);
    EXPECT_EQ(core::current_thread(), nullptr);
}

TEST(ProcessLife, UnbindsTheLastBoundServiceFirst) {
    history.clear();
    {
        test::ManualProcess process(nullptr);
        const InterfacePtr<core::SCOM_ClassRegistrar> registrar(static_cast<IUnknown*>(&*process));
        register_in<EarlyService>(*registrar);
        register_in<LateService>(*registrar);
        process->bindService(CLSID_EarlyService, IID_IStamp);
        process->bindService(CLSID_LateService, IID_IOtherStamp);
    }
    EXPECT_THAT(history, ElementsAre("late service", "early service"));
}

TEST(ProcessLife, RefusesASecondProcessInOneObject) {
    test::ManualProcess first, second;
    const auto data = first.host().processData();
    EXPECT_THROW(first.host().init(nullptr), core::ProcessInitException);
    EXPECT_THROW(first.host().init(second.host().processData().get()), core::ProcessInitException);
    EXPECT_EQ(first.host().processData(), data);
    // Entering its own once more is counted: one `term` leaves once.
    first.host().init(data.get());
    EXPECT_EQ(core::current_process(), data->process());
    first.host().term();
    EXPECT_EQ(core::current_process(), second.host().process());
    EXPECT_EQ(first.host().processData(), data);
}

TEST(ProcessLife, LeavesNothingBehindWhenAModuleDoesNotFit) {
    core::SCOM_Module misfit("misfit", "9.9.9.9");
    core::Process host;
    host.construct(&misfit);
    EXPECT_THROW(host.start(), core::VersionException);
    EXPECT_EQ(core::current_process(), nullptr);
    EXPECT_FALSE(host.processData());
    EXPECT_FALSE(host.isAlive());
}

TEST(ProcessLife, RunsTheHostInsideItsProcess) {
    struct Host : core::Process {
        void run() override {
            seen = core::current_process();
            thread = core::current_thread();
            if (fails) throw std::runtime_error("the host failed");
        }
        core::SCOM_Process* seen = nullptr;
        core::Thread* thread = nullptr;
        bool fails = false;
    };
    Host host;
    host.construct(nullptr);
    host.start();
    EXPECT_NE(host.seen, nullptr);
    EXPECT_EQ(host.thread, &host);
    EXPECT_EQ(host.state(), core::Thread::State::Finished);
    host.seen = nullptr;
    host.start();
    EXPECT_EQ(host.seen, nullptr) << "a thread starts once";

    Host failing;
    failing.fails = true;
    failing.construct(nullptr);
    EXPECT_THROW(failing.start(), std::runtime_error);
    EXPECT_FALSE(failing.processData()) << "ended in order all the same";
    EXPECT_EQ(core::current_process(), nullptr);
}

TEST(ProcessLife, AnswersWithoutAProcess) {
    EXPECT_EQ(core::current_process_data(), nullptr);
    EXPECT_FALSE(core::create_object<IStamp>(CLSID_Part));
    EXPECT_EQ(core::get_service<IStamp>(), nullptr);
    EXPECT_THAT(core::registered_classes(), IsEmpty());
    core::revoke_SCOM_class(CLSID_Part);
    core::rewrite_SCOM_class_factory(CLSID_Part, nullptr);
}

} // namespace

ORBCORE_REGISTER(Part);
ORBCORE_REGISTER(Single);
ORBCORE_REGISTER(EarlyService);
ORBCORE_REGISTER(LateService);
