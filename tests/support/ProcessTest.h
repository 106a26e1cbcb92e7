// The fixture of tests that need a logical process: each test runs inside a new one, in which the
// classes of the library and of the test program are registered.
#pragma once

#include <core/runtime/Process.h>

#include <gtest/gtest.h>

namespace test {

// A process that is entered and left by hand.
class ManualProcess {
public:
    explicit ManualProcess(core::SCOM_Module* module = &core::this_module()) {
        host_.construct(module);
        host_.init(nullptr);
    }
    ~ManualProcess() {
        if (host_.processData()) host_.term();
    }

    core::Process& host() noexcept { return host_; }
    core::SCOM_Process& operator*() const noexcept { return *host_.process(); }
    core::SCOM_Process* operator->() const noexcept { return host_.process(); }

private:
    core::Process host_;
};

class ProcessTest : public testing::Test {
protected:
    core::SCOM_Process& process() noexcept { return *process_; }
    core::Process& host() noexcept { return process_.host(); }

private:
    ManualProcess process_;
};

} // namespace test
