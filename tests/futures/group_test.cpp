#include "listeners.h"

#include "support/ProcessTest.h"

#include <core/component/IllegalArgumentException.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using core::IFuture;
using core::InterfacePtr;
using core::IPromise;

using Members = std::vector<InterfacePtr<IFuture>>;

// Running promises and a group over them.
struct Group {
    enum Kind { Any, All };

    Group(Kind kind, int count) {
        Members members;
        for (int made = 0; made != count; ++made) {
            promises.push_back(core::create_promise());
            promises.back()->setRunning();
            members.emplace_back(promises.back()->getFuture(), true);
            results.push_back(test::some_object());
        }
        future = kind == Any ? core::create_any_complete_group_future(members)
                             : core::create_all_complete_group_future(members);
    }

    // The state as a letter: p pending, s succeeded, c cancelled, f failed.
    static char state(IFuture& future) {
        return future.isSucceeded()   ? 's'
               : future.isCancelled() ? 'c'
               : future.isDone()      ? 'f'
                                      : 'p';
    }
    std::string states() {
        std::string result;
        for (const auto& member : future->getFutures()) result += state(*member);
        return result + " " + state(*future);
    }
    // Finishes members: s0 succeeds the first, f1 fails the second, c2 cancels the third; cg
    // cancels the group.
    void play(const std::string& steps) {
        for (std::size_t at = 0; at < steps.size(); at += 3) {
            if (steps[at + 1] == 'g') {
                cancelled += future->cancel() ? 't' : 'f';
                continue;
            }
            const auto index = static_cast<std::size_t>(steps[at + 1] - '0');
            IPromise& promise = *promises.at(index);
            if (steps[at] == 's')
                promise.setResult(results[index].get());
            else if (steps[at] == 'f')
                promise.setException(nullptr);
            else
                promise.getFuture()->cancel();
        }
    }

    std::vector<InterfacePtr<IPromise>> promises;
    std::vector<InterfacePtr<IUnknown>> results;
    InterfacePtr<core::IGroupFuture> future;
    std::string cancelled; // the answers of the group's cancel
};

// The count of cancelled members has to be exactly the needed one at the end of a cancel, so a
// group of any kind with several running members stays pending.
TEST(GroupStates, FollowTheMemberThatDecides) {
    const struct {
        Group::Kind kind;
        int members;
        const char* steps;
        const char* states;
        const char* cancelled = "";
    } rows[] = {
        {Group::Any, 3, "s1", "psp s"},
        {Group::Any, 3, "f2 s0", "spf f"},
        {Group::Any, 2, "c0", "cc c"},
        {Group::Any, 3, "c0", "ccc p"},
        {Group::Any, 1, "cg", "c c", "t"},
        {Group::Any, 3, "cg", "ccc p", "f"},
        {Group::Any, 2, "s0 cg", "sp s", "f"},
        {Group::Any, 0, "cg", " p", "f"},
        {Group::All, 3, "s0 s2", "sps p"},
        {Group::All, 3, "f0 s2 s1", "fss s"}, // the last one decides
        {Group::All, 3, "s0 s2 f1", "sfs f"},
        {Group::All, 2, "s0 c1", "sc p"}, // only members cancelled by the group count
        {Group::All, 3, "cg cg", "ccc c", "tf"},
        {Group::All, 2, "s0 cg", "sc p", "f"},
        {Group::All, 0, "", " p"},
        {Group::All, 0, "cg", " c", "t"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.kind == Group::Any ? "any of " : "all of ") +
                     std::to_string(row.members) + ": " + row.steps);
        Group group(row.kind, row.members);
        group.play(row.steps);
        EXPECT_EQ(group.states(), row.states);
        EXPECT_EQ(group.cancelled, row.cancelled);
    }
}

class GroupOutcome : public test::ProcessTest {};

TEST_F(GroupOutcome, IsThatOfTheDecidingMember) {
    Group all(Group::All, 2);
    all.play("s1 s0");
    EXPECT_EQ(all.future->getResult(), all.results[0].get());

    Group any(Group::Any, 2);
    const auto failure = core::Exception(u"no paper").object();
    any.promises[1]->setException(failure.get());
    EXPECT_EQ(any.future->getException(), failure.get());
    EXPECT_EQ(test::thread_error([&] { any.future->getResult(); }),
              core::ThreadException::Error::Execution);
}

TEST_F(GroupOutcome, IsThereAtOnceWhenMembersHaveFinished) {
    const auto object = test::some_object();
    const InterfacePtr<IFuture> done = core::create_succeeded_future(object.get());
    EXPECT_EQ(core::create_all_complete_group_future({done, done})->getResult(), object.get());

    const auto cancelled =
        core::create_any_complete_group_future({core::create_cancelled_future()});
    EXPECT_FALSE(cancelled->isDone()) << "a member that nobody cancelled here does not count";
    EXPECT_THROW(core::create_any_complete_group_future({done, nullptr}),
                 core::IllegalArgumentException);
}

TEST(GroupLife, EndsWithItsLastReferenceAndItsListenersGoWithIt) {
    const auto promise = core::create_promise();
    promise->setRunning();
    const InterfacePtr<IFuture> member(promise->getFuture(), true);
    const auto references = [&] {
        member->AddRef();
        return member->Release();
    };
    const auto before = references();
    auto group = core::create_all_complete_group_future({member, member});
    EXPECT_EQ(references(), before + 2);
    group.reset();
    EXPECT_EQ(references(), before);
    EXPECT_TRUE(promise->setResult(nullptr));
}

// One thread drops groups and their listeners while the other finishes the members.
TEST(GroupLife, MayEndWhileAMemberFinishes) {
    for (int round = 0; round != 1000; ++round) {
        Group group(round % 2 ? Group::Any : Group::All, 2);
        const auto promises = group.promises;
        std::atomic<int> calls = 0;
        group.future->addListener(test::listener([&calls](IFuture& future) {
                                      const InterfacePtr<IFuture> held(&future, true);
                                      ++calls;
                                  }).get());
        std::thread finisher([&] {
            for (const auto& promise : promises) promise->setResult(nullptr);
        });
        group.future.reset();
        finisher.join();
        EXPECT_LE(calls, 1);
    }
}

} // namespace
