// Component libraries: found by name, counted, started and ended in order, refused with what went
// wrong.

#include <core/component/SCOM_Exception.h>
#include <core/component/Utf8.h>

#include "components/recording_component.h"
#include "support/ProcessTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

using core::InterfacePtr;
using recording::IRecord;
using testing::AllOf;
using testing::HasSubstr;

namespace {

std::string utf8(const stdx::ustring& text) {
    return core::to_utf8(text).c_str();
}

using ComponentLoading = test::ProcessTest;

TEST_F(ComponentLoading, CountsPerNameAndStartsOnce) {
    std::string record;
    void* const first = process().loadComponentEx("recording_component");
    core::create_object<IRecord>(recording::CLSID_Note)->write_to(&record);
    EXPECT_EQ(process().loadComponentEx("Recording_Component"), first) << "names fold";
    EXPECT_EQ(record, "");
    process().unloadComponent(first);
    EXPECT_TRUE(process().hasClass(recording::CLSID_Note));
    process().unloadComponent(first);
    EXPECT_FALSE(process().hasClass(recording::CLSID_Note));
    EXPECT_EQ(record, "main 1;closed;");
    process().unloadComponent(first); // unknown by now
    process().unloadComponent(nullptr);
}

TEST_F(ComponentLoading, BringsItsClassesUnderTheirNames) {
    void* const handle = process().loadComponentEx("recording_component");
    EXPECT_TRUE(core::create_object_by_alias<IRecord>(u"note"));
    EXPECT_TRUE(core::create_object_by_alias<IRecord>(u"ЗАМЕТКА"));
    EXPECT_EQ(process().getClassComponent(recording::CLSID_Note), "recording_component");
    process().unloadComponent(handle);
}

TEST_F(ComponentLoading, EndsASingletonWithItsComponent) {
    std::string record;
    void* const handle = process().loadComponentEx("recording_component");
    core::create_object<IRecord>(recording::CLSID_Archive)->write_to(&record);
    process().unloadComponent(handle);
    EXPECT_EQ(record, "main 1;archive gone;closed;");
}

TEST(ComponentsOfAProcess, EndWithIt) {
    std::string record;
    {
        const test::ManualProcess process;
        process->loadComponentEx("recording_component");
        process->loadComponentEx("recording_component");
        core::create_object<IRecord>(recording::CLSID_Archive)->write_to(&record);
    }
    EXPECT_EQ(record, "main 1;archive gone;closed;");
}

TEST(ComponentsOfAProcess, StartOnceInEachLogicalProcess) {
    std::string record;
    std::optional<test::ManualProcess> first(std::in_place);
    (*first)->loadComponentEx("recording_component");
    core::create_object<IRecord>(recording::CLSID_Note)->write_to(&record);
    {
        const test::ManualProcess second;
        EXPECT_FALSE(core::create_object<IRecord>(recording::CLSID_Note));
        second->loadComponentEx("recording_component");
        EXPECT_TRUE(core::create_object<IRecord>(recording::CLSID_Note));
    }
    EXPECT_EQ(record, "main 0;main 1;");
    first.reset();
    EXPECT_EQ(record, "main 0;main 1;main 1;closed;");
}

TEST_F(ComponentLoading, NeedsNoEntryPoints) {
    void* const handle = process().loadComponentEx("bare_component");
    EXPECT_NE(handle, nullptr);
    process().unloadComponent(handle);
}

// The exception of a load that must fail.
core::SCOM_Exception failure_of(core::SCOM_Process& process, const char* name) {
    try {
        process.loadComponentEx(name);
    } catch (const core::SCOM_Exception& exception) {
        EXPECT_EQ(exception.reason(), core::SCOM_Exception::Reason::ComponentLoad);
        return exception;
    }
    ADD_FAILURE() << name << " was loaded";
    return core::SCOM_Exception();
}

TEST_F(ComponentLoading, NamesTheFileThatIsNotThere) {
    for (const char* const name : {"no_such_component", "", "../x/y", "имя", "\xff\xfe"}) {
        EXPECT_THAT(utf8(failure_of(process(), name).description()), HasSubstr(".so: cannot open"))
            << name;
        EXPECT_EQ(process().loadComponent(name), nullptr);
    }
}

TEST_F(ComponentLoading, RefusesAnotherVersion) {
    EXPECT_THAT(utf8(failure_of(process(), "newer_component").description()),
                AllOf(HasSubstr("newer_component"), HasSubstr("99.0.0.0"), HasSubstr("orbcore")));
}

TEST_F(ComponentLoading, WrapsWhatTheEntryPointThrows) {
    setenv("ORB_TEST_FAILURE", "plain", 1);
    const core::SCOM_Exception plain = failure_of(process(), "throwing_component");
    EXPECT_THAT(utf8(plain.description()),
                AllOf(HasSubstr("throwing_component"), HasSubstr("no disk")));
    ASSERT_NE(plain.inner(), nullptr);
    EXPECT_EQ(plain.inner()->exception()->description(), u"no disk");

    setenv("ORB_TEST_FAILURE", "cause", 1);
    const core::SCOM_Exception chain = failure_of(process(), "throwing_component");
    EXPECT_THAT(utf8(chain.description()),
                AllOf(HasSubstr("throwing_component"), testing::Not(HasSubstr("no data"))));
    EXPECT_EQ(chain.inner()->exception()->inner()->exception()->description(), u"no disk");

    setenv("ORB_TEST_FAILURE", "foreign", 1);
    EXPECT_THROW(process().loadComponentEx("throwing_component"), std::runtime_error);
    unsetenv("ORB_TEST_FAILURE");
    EXPECT_NE(process().loadComponent("throwing_component"), nullptr);
}

std::size_t mappings() {
    std::ifstream maps("/proc/self/maps");
    return static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(maps), {}, '\n'));
}

std::size_t mappings_of(const std::string& file) {
    std::ifstream maps("/proc/self/maps");
    std::size_t count = 0;
    for (std::string line; std::getline(maps, line);) count += line.find(file) != line.npos;
    return count;
}

TEST_F(ComponentLoading, LeavesNothingMappedHoweverOftenItHappens) {
    const auto use_once = [&] {
        void* const handle = process().loadComponentEx("recording_component");
        core::create_object<IRecord>(recording::CLSID_Archive)->write_to(nullptr);
        process().unloadComponent(handle);
    };
    use_once(); // the loader and the heap take their own part at the first time
    const std::size_t before = mappings();
    for (int i = 0; i != 1000; ++i) use_once();
    EXPECT_EQ(mappings_of("recording_component"), 0u);
    // The heap may grow by a few, that of the address sanitizer by more; a leak is one each time.
    EXPECT_LE(mappings(), before + 100);
}

} // namespace
