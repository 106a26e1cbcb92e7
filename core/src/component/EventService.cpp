#include <core/component/EventService.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>
#include <core/concurrency/IRWMutex.h>
#include <core/concurrency/LockGuards.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <list>
#include <vector>

namespace core {

class EventService
    : public ObjectRoot
    , public SCOM_Service<EventService, &CLSID_EventService, &IID_IEventService>
    , public IEventService {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<EventService, IEventService>();
    }

    void fireEvent(const _GUID& event, void* param, void* source) override;
    void subscribeRecipient(const _GUID& event, IEventRecipient* recipient) override;
    void unsubscribeRecipient(const _GUID& event, IEventRecipient* recipient) override;

private:
    // Those who listen to one event, in the order of subscription, and the place of each; not
    // owned.
    struct Recipients {
        std::list<IEventRecipient*> order;
        boost::unordered_flat_map<IEventRecipient*, std::list<IEventRecipient*>::iterator> index;
    };

    std::vector<InterfacePtr<IEventRecipient>> recipients_of(const _GUID& event);

    SimpleRWMutex mutex_;
    boost::unordered_flat_map<_GUID, Recipients, std::hash<_GUID>>
        events_; // none of them empty; guarded by `mutex_`
};

std::vector<InterfacePtr<IEventRecipient>> EventService::recipients_of(const _GUID& event) {
    const ReaderLock lock(mutex_);
    std::vector<InterfacePtr<IEventRecipient>> recipients;
    const auto found = events_.find(event);
    if (found == events_.end()) return recipients;
    recipients.reserve(found->second.order.size());
    for (IEventRecipient* const recipient : found->second.order)
        recipients.emplace_back(recipient, true);
    return recipients;
}

void EventService::fireEvent(const _GUID& event, void* param, void* source) {
    const auto recipients = recipients_of(event);
    for (auto recipient = recipients.rbegin(); recipient != recipients.rend(); ++recipient)
        (*recipient)->onEvent(event, param, source);
}

void EventService::subscribeRecipient(const _GUID& event, IEventRecipient* recipient) {
    std::list<IEventRecipient*> node{recipient}; // all that can fail comes before the first change
    const WriterLock lock(mutex_);
    const auto [record, fresh] = events_.try_emplace(event);
    Recipients& recipients = record->second;
    try {
        if (!recipients.index.try_emplace(recipient, node.begin()).second) return;
    } catch (...) {
        if (fresh) events_.erase(record);
        throw;
    }
    recipients.order.splice(recipients.order.end(), node);
}

void EventService::unsubscribeRecipient(const _GUID& event, IEventRecipient* recipient) {
    const WriterLock lock(mutex_);
    const auto record = events_.find(event);
    if (record == events_.end()) return;
    Recipients& recipients = record->second;
    const auto place = recipients.index.find(recipient);
    if (place == recipients.index.end()) return;
    recipients.order.erase(place->second);
    recipients.index.erase(place);
    if (recipients.order.empty()) events_.erase(record);
}

void EventRecipientImplBase::subscribe(const _GUID& event) {
    IEventService* const service = get_service<IEventService>();
    if (!service) return;
    service->subscribeRecipient(event, recipient_);
    events_.insert(event);
}

void EventRecipientImplBase::unsubscribe(const _GUID& event) {
    IEventService* const service = get_service<IEventService>();
    if (!service || !events_.contains(event)) return;
    service->unsubscribeRecipient(event, recipient_);
    events_.erase(event);
}

EventRecipientImplBase::~EventRecipientImplBase() {
    if (IEventService* const service = get_service<IEventService>())
        for (const _GUID& event : events_) service->unsubscribeRecipient(event, recipient_);
}

} // namespace core

ORBCORE_REGISTER(core::EventService);
