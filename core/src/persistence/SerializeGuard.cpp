#include <core/persistence/SerializeGuard.h>

#include <core/component/EventService.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>

#include <thread>

namespace core {
namespace {

// What the event service knows. It may be told of a failure of another thread while the guard ends;
// it is an object of its own so that it outlives that.
class SerializeGuard
    : public ObjectRoot
    , public SCOM_InternalClass<SerializeGuard>
    , public IEventRecipient {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<SerializeGuard, IEventRecipient>();
    }

    explicit SerializeGuard(ISerializeErrorHandler* handler) noexcept : handler_(handler, true) {}

    void onEvent(const _GUID&, void*, void* source) override {
        if (std::this_thread::get_id() != thread_) return;
        // The handler may end this guard.
        if (const auto handler = handler_)
            handler->onSerializeError(static_cast<IUnknown*>(source));
    }
    void end() noexcept { handler_.reset(); }

private:
    const std::thread::id thread_ = std::this_thread::get_id();
    InterfacePtr<ISerializeErrorHandler> handler_; // null once the guard has ended
};

// What the caller holds.
class SerializeGuardOuter
    : public ObjectRoot
    , public SCOM_InternalClass<SerializeGuardOuter>
    , public IUnknown {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<SerializeGuardOuter, IUnknown>();
    }

    explicit SerializeGuardOuter(ISerializeErrorHandler* handler)
        : guard_(make_object<SerializeGuard>(handler)) {
        if (auto* const events = get_service<IEventService>())
            events->subscribeRecipient(SerializeFailureEvent, guard_.get());
    }
    ~SerializeGuardOuter() {
        if (auto* const events = get_service<IEventService>())
            events->unsubscribeRecipient(SerializeFailureEvent, guard_.get());
        guard_->end();
    }

private:
    InterfacePtr<SCOM_Object<SerializeGuard>> guard_;
};

} // namespace

InterfacePtr<IUnknown> create_serialize_guard(ISerializeErrorHandler* handler) {
    return make_object<SerializeGuardOuter>(handler);
}

} // namespace core
