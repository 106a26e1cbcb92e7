// The one definition of the handle of a logical process.
#pragma once

#include "ProcessImpl.h"

namespace core {

class ProcessDataImpl final : public SCOM_ProcessData {
public:
    ProcessDataImpl() : impl_(static_cast<SCOM_ProcessData&>(*this)) {}

    SCOM_Process* process() noexcept override { return &impl_; }
    SCOM_ProcessImpl& impl() noexcept { return impl_; }

private:
    StaticObject<SCOM_ProcessImpl> impl_;
};

} // namespace core
