// Events: what many objects must hear about at once. An event is known by a GUID; the service of
// the process tells its recipients one after another, on the thread that fires.
//
//   class Cache final : public …, public core::IEventRecipientImpl<Cache> {
//       Cache() { subscribe(core::kProcessTermEvent); }
//       void onEvent(const _GUID& event, void* param, void* source) override { clear(); }
//   };
//
//   core::get_service<core::IEventService>()->fireEvent(kMyEvent, nullptr, this);
//
// A recipient leaves by itself when it is destroyed; that must happen in the process in which it
// subscribed.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>

#include <set>

namespace core {

inline constexpr _GUID CLSID_EventService = "eb8da2ce-3ad1-4124-b626-cf0a7a54b6e7"_guid;
inline constexpr _GUID IID_IEventService = "60908dff-b965-417d-bc71-95250b39aa71"_guid;
inline constexpr _GUID IID_IEventRecipient = "04d47e7f-c796-434b-bc45-116d96a0ea34"_guid;

// A logical process begins to end; `source` is the process.
inline constexpr _GUID kProcessTermEvent = "3a8560e8-7ad7-470f-b0eb-fd8ea2654287"_guid;
// The end of a logical process.
inline constexpr _GUID kProcessDeathEvent = "a9fd940b-a484-42ad-acaa-4db0e63ee7a9"_guid;
// All services are to let go of each other.
inline constexpr _GUID kSrvsDisconnectAllEvent = "bbd242c1-920c-4a17-8066-689b80fd48ee"_guid;
// The standard pictures changed, the default style changed; without arguments.
inline constexpr _GUID kPicturesChangedEvent = "a6dfc6b9-0a35-44e5-8477-ec8cf5332a32"_guid;
inline constexpr _GUID kDefaultStyleChangedEvent = "78ebc282-8d96-45ea-bf62-2d8e37d697d7"_guid;

class IEventRecipient : public IUnknown {
public:
    ORB_INTERFACE(IEventRecipient, IID_IEventRecipient)

    // Is called on the thread that fires, and may subscribe and unsubscribe whomever it likes; that
    // takes effect at the next firing. What it throws ends the firing.
    virtual void onEvent(const _GUID& event, void* param, void* source) = 0;
};

// Safe on any thread. No lock is held while a recipient is called.
class IEventService : public IUnknown {
public:
    ORB_INTERFACE(IEventService, IID_IEventService)

    // Tells all recipients of `event` before it returns, the last subscribed first. Each has a
    // reference for that time.
    virtual void fireEvent(const _GUID& event, void* param, void* source) = 0;
    // A second subscription changes nothing. No reference is taken.
    virtual void subscribeRecipient(const _GUID& event, IEventRecipient* recipient) = 0;
    // Unknown pairs are ignored.
    virtual void unsubscribeRecipient(const _GUID& event, IEventRecipient* recipient) = 0;
};

// Remembers what a recipient subscribed to and unsubscribes it at its end. Without a process, or in
// one without the service, nothing is done and nothing is remembered. For one thread at a time.
class ORBCORE_API EventRecipientImplBase {
public:
    explicit EventRecipientImplBase(IEventRecipient* recipient) noexcept : recipient_(recipient) {}
    EventRecipientImplBase(const EventRecipientImplBase&) = delete;
    EventRecipientImplBase& operator=(const EventRecipientImplBase&) = delete;

    void subscribe(const _GUID& event);
    void unsubscribe(const _GUID& event);

protected:
    ~EventRecipientImplBase();

private:
    IEventRecipient* recipient_;
    std::set<_GUID> events_;
};

// The base of a class `X` that listens; `X` implements `onEvent`.
template <class X>
class IEventRecipientImpl
    : public IEventRecipient
    , public EventRecipientImplBase {
protected:
    IEventRecipientImpl() noexcept : EventRecipientImplBase(static_cast<IEventRecipient*>(this)) {}
    ~IEventRecipientImpl() = default;
};

} // namespace core
