// The boxes of the settings that a thread puts in front of those of its process. A box is replaced
// and never changed, so whoever took a reference keeps what he saw. `Thread` holds boxes by their
// base: the types of most settings stand on higher floors.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/component/Refcountable.h>

namespace core {

class ThreadSetting : public Refcountable<ThreadSetting, AtomicCounter> {
public:
    virtual ~ThreadSetting() = default;
};

template <class T> class ThreadSettingOf final : public ThreadSetting {
public:
    explicit ThreadSettingOf(const T& v) : value(v) {}
    const T value;
};

template <class T> void set_setting(InterfacePtr<ThreadSetting>& box, const T& value) {
    box = {new ThreadSettingOf<T>(value), true};
}

// The value that was set in this box, which holds a `T` or nothing: then null.
template <class T> const T* setting_in(const InterfacePtr<ThreadSetting>& box) noexcept {
    return box ? &static_cast<const ThreadSettingOf<T>&>(*box).value : nullptr;
}

} // namespace core
