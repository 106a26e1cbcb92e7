// The classes of a logical process and the component libraries that brought them.
#pragma once

#include <core/component/Refcountable.h>
#include <core/concurrency/Mutex.h>

#include "component/ClassRegistrar.h"

#include <map>
#include <string>
#include <vector>

namespace core {

class SCOM_Process;

class ComponentContainer final : public Refcountable<ComponentContainer, AtomicCounter> {
public:
    // `process` and `registrar` are what a component's entry point is given; both outlive the
    // container's last call to one.
    ComponentContainer(SCOM_Process& process, SCOM_ClassRegistrar& registrar);
    virtual ~ComponentContainer();

    // The table of all classes of the process; null once the components have ended.
    SCOM_Object<SCOM_ClassRegistrarImpl>* classes() const noexcept { return classes_.get(); }

    // Throws `core::SCOM_Exception`.
    void* load(const std::string& name);
    void unload(void* handle);

    // The end of the process: phase 1 for each component still loaded, in load order, then all
    // singletons end.
    void end_components();
    // Closes every library as often as it was opened here.
    void close_libraries();

private:
    void start_component(void* handle, const std::string& name);

    SCOM_Process& process_;
    SCOM_ClassRegistrar& registrar_;
    InterfacePtr<SCOM_Object<SCOM_ClassRegistrarImpl>> classes_;
    Mutex lock_; // serialises loads and unloads; guards what follows
    std::map<void*, unsigned> counts_;
    std::vector<void*> loadOrder_;
};

} // namespace core
