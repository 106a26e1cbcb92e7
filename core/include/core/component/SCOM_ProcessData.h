// The shared handle of a logical process: whoever holds a reference keeps the process's tables and
// services in memory.
#pragma once

#include <core/component/Refcountable.h>
#include <core/component/SCOM_Process.h>

namespace core {

class ORBCORE_API SCOM_ProcessData : public Refcountable<SCOM_ProcessData, AtomicCounter> {
public:
    virtual ~SCOM_ProcessData();

    virtual SCOM_Process* process() noexcept = 0; // lent
};

// The data of the calling thread's process, lent; null on a thread that belongs to none.
ORBCORE_API SCOM_ProcessData* current_process_data() noexcept;

} // namespace core
