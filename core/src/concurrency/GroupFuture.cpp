// Futures over others. A group listens to its members, but they do not keep it alive: a group that
// nobody holds any more ends, even while its members go on.

#include "FutureBase.h"

#include <core/component/IllegalArgumentException.h>
#include <core/component/IllegalStateException.h>
#include <core/component/Object.h>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <utility>

namespace core {
namespace {

class GroupFuture;

// What the members know of their group. A member may call it on one thread while the group ends on
// another, so it is an object of its own, which the members hold, and finds its group under a lock
// that the group's destructor takes as well.
class GroupFutureListenerImpl
    : public ObjectRoot
    , public IFutureListener {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<GroupFutureListenerImpl, IFutureListener>();
    }

    explicit GroupFutureListenerImpl(GroupFuture* group) : group_(group) {}

    void onComplete(IFuture* member) override;
    void forget_group() {
        const std::lock_guard guard(mutex_);
        group_ = nullptr;
    }

private:
    InterfacePtr<GroupFuture> living_group();

    std::mutex mutex_;
    GroupFuture* group_; // guarded by mutex_
};

class GroupFuture
    : public FutureBase<GroupFuture>
    , public IFutureImpl<GroupFuture, IGroupFuture> {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<GroupFuture, IGroupFuture, IFuture>();
    }

    GroupFuture(const std::vector<InterfacePtr<IFuture>>& members, std::size_t needed)
        : members_(members),
          needed_(needed),
          listener_(make_object<GroupFutureListenerImpl>(this)) {}
    ~GroupFuture() {
        listener_->forget_group();
        for (const auto& member : members_) member->removeListener(listener_.get());
    }

    // With a reference held: a member that has finished already answers at once.
    void listen() {
        for (const auto& member : members_) member->addListener(listener_.get());
    }

    bool cancel() override;
    const std::vector<InterfacePtr<IFuture>>& getFutures() override { return members_; }

    void member_completed(IFuture& member);

    // A reference, unless the last one is gone and the object on its way out.
    bool add_reference_if_living() {
        if (increment_references() != 1) return true;
        decrement_references();
        return false;
    }

private:
    const std::vector<InterfacePtr<IFuture>> members_;
    const std::size_t needed_;
    std::atomic<std::size_t> completed_ = 0;
    std::atomic<std::size_t> cancelled_ = 0;
    const InterfacePtr<GroupFutureListenerImpl> listener_;
};

// The destructor of a group waits in `forget_group` while this runs, so the memory is there. A
// count that was 0 stays with the destructor: nobody else looks at it any more.
InterfacePtr<GroupFuture> GroupFutureListenerImpl::living_group() {
    const std::lock_guard guard(mutex_);
    if (!group_ || !group_->add_reference_if_living()) return nullptr;
    return {group_, false};
}

void GroupFutureListenerImpl::onComplete(IFuture* member) {
    if (const auto group = living_group()) group->member_completed(*member);
}

// Members that are cancelled here call back into `member_completed` before their `cancel` returns,
// and so perhaps into this function again. The count is of the group, not of the call: whoever
// brings it to the needed number finishes the group.
bool GroupFuture::cancel() {
    if (isDone()) return false;
    std::size_t cancelled = cancelled_;
    for (const auto& member : members_)
        if (member->cancel()) cancelled = ++cancelled_;
    return cancelled == needed_ &&
           finish(State::Pending, State::Running, {.state = State::Cancelled});
}

void GroupFuture::member_completed(IFuture& member) {
    if (++completed_ != needed_) return;
    if (member.isCancelled())
        cancel();
    else if (!member.isDone())
        throw IllegalStateException(ORB_HERE);
    else if (member.isSucceeded())
        finish(State::Pending, State::Pending,
               {.state = State::Succeeded, .result = {member.getResult(), true}});
    else
        finish(State::Pending, State::Pending,
               {.state = State::Failed, .exception = {member.getException(), true}});
}

InterfacePtr<IGroupFuture> create_group(const std::vector<InterfacePtr<IFuture>>& members,
                                        std::size_t needed) {
    for (const auto& member : members) ORB_ASSERT(member);
    const auto group = make_object<GroupFuture>(members, needed);
    group->listen();
    return group;
}

} // namespace

InterfacePtr<IGroupFuture>
create_any_complete_group_future(const std::vector<InterfacePtr<IFuture>>& members) {
    return create_group(members, 1);
}

InterfacePtr<IGroupFuture>
create_all_complete_group_future(const std::vector<InterfacePtr<IFuture>>& members) {
    return create_group(members, members.size());
}

} // namespace core
