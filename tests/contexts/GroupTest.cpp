#include "SampleContexts.h"
#include "support/ProcessTest.h"

#include <core/values/GroupContext.h>

namespace {

using namespace core;
using namespace test;
using namespace stdx::literals;

class Group
    : public ObjectRoot
    , public SCOM_InternalClass<Group>
    , public GroupContext {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Group, IContext_>(); }
};

stdx::ustring value_at(IContext_* context, int property) {
    Value value;
    return context->getPropVal(property, value) ? to_string(value) : u"(none)"_us;
}

stdx::ustring result_of(IContext_* context, int method, const char16_t* argument) {
    Value value = argument, result;
    std::vector<GenericValue*> arguments{&value};
    return context->call(method, &result, arguments) ? to_string(result) : u"(none)"_us;
}

// What every context of no members answers for a number.
void expect_nothing_at(IContext_* context, int number) {
    SCOPED_TRACE(number);
    Value value;
    std::vector<GenericValue*> arguments{&value};
    EXPECT_EQ(context->getPropName(number, 0), nullptr);
    EXPECT_FALSE(context->isPropReadable(number));
    EXPECT_FALSE(context->isPropWritable(number));
    EXPECT_FALSE(context->getPropVal(number, value));
    EXPECT_FALSE(context->setPropVal(number, value));
    EXPECT_EQ(context->getMethodName(number, 0), nullptr);
    EXPECT_EQ(context->getNParams(number), 0);
    EXPECT_FALSE(context->isParamIn(number, 0));
    EXPECT_FALSE(context->isParamOut(number, 0));
    EXPECT_FALSE(context->getParamDefValue(number, 0, &value));
    EXPECT_FALSE(context->hasRetVal(number));
    EXPECT_FALSE(context->call(number, &value, arguments));
    EXPECT_TRUE(is_undefined_value(value));
}

class Groups : public ProcessTest {
protected:
    InterfacePtr<SCOM_Object<Sample>> ab = make_object<Sample>(Names{{u"A"}, {u"Name"}}, u"ab");
    InterfacePtr<SCOM_Object<Sample>> cd = make_object<Sample>(Names{{u"Name"}, {u"D"}}, u"cd");
    InterfacePtr<SCOM_Object<Sample>> none = make_object<Sample>(Names{});
};

TEST_F(Groups, NumberTheMembersOfAllContexts) {
    const auto group = make_object<Group>();
    for (const auto& context : {ab, none, cd}) group->addContext(context.get());
    EXPECT_EQ(group->getNProps(), 4);
    EXPECT_EQ(group->getNMethods(), 4);
    EXPECT_EQ(group->findProp(u"name"), 1);
    EXPECT_EQ(group->findMethod(u"d"), 3);
    EXPECT_EQ(group->getPropName(2, 0), u"Name"_us);
    EXPECT_EQ(value_at(group.get(), 2), u"cd0"_us);
    EXPECT_EQ(result_of(group.get(), 3, u"!"), u"cd!"_us);
    EXPECT_TRUE(group->hasRetVal(3));
    EXPECT_EQ(group->getNParams(3), 1);
    EXPECT_EQ(group->getIContextDef(), nullptr);
    for (const int number : {-1, 4, 2147483647, -2147483647 - 1})
        expect_nothing_at(group.get(), number);
}

TEST_F(Groups, LetContextsComeAndGo) {
    const auto group = make_object<Group>();
    expect_nothing_at(group.get(), 0);
    EXPECT_EQ(group->findProp(u"Name"), -1);
    for (IContext_* const context :
         {static_cast<IContext_*>(ab.get()), static_cast<IContext_*>(cd.get()),
          static_cast<IContext_*>(ab.get()), static_cast<IContext_*>(nullptr)})
        group->addContext(context);
    EXPECT_EQ(group->getNProps(), 6);
    group->removeContext(ab.get()); // the first of two
    EXPECT_EQ(group->findProp(u"Name"), 0);
    EXPECT_EQ(value_at(group.get(), 0), u"cd0"_us);
    group->removeContext(none.get());
    group->changeContext(cd.get(), none.get());
    EXPECT_EQ(group->findProp(u"Name"), 1);
    group->changeContext(cd.get(), cd.get());
    EXPECT_EQ(group->getNProps(), 2);
    group->reset();
    EXPECT_EQ(group->getNProps(), 0);
}

// The group has the only reference, and the context takes itself out while it is read.
TEST_F(Groups, KeepAContextWhileItWorks) {
    static Group* owner = nullptr;
    const auto group = make_object<Group>();
    owner = group.get();
    bool died = false;
    auto context = make_object<Sample>(Names{{u"A"}}, u"still here ");
    context->died = &died;
    context->onRead = [] { owner->reset(); };
    group->addContext(context.get());
    context.reset();
    EXPECT_EQ(value_at(group.get(), 0), u"still here 0"_us);
    EXPECT_TRUE(died);
}

TEST_F(Groups, OfStableContextsTakeNoOthers) {
    const auto group = create_object<IStableGroupContext>(CLSID_StableGroupContext);
    const InterfacePtr<IContext_> context(group);
    const auto changing = make_object<Sample>(Names{{u"X"}});
    changing->isStable = false;
    group->addContext(changing.get());
    EXPECT_EQ(context->getNProps(), 0);
    group->addContext(ab.get());
    group->removeContext(cd.get()); // is not there
    EXPECT_EQ(context->getNProps(), 2);
    EXPECT_EQ(context->getIContextDef(), static_cast<IContextDefBase*>(context.get()));

    const auto three = make_object<Sample>(Names{{u"X"}, {u"Y"}, {u"Z"}});
    const auto unstable = make_object<Sample>(Names{{u"X"}, {u"Y"}});
    unstable->isStable = false;
    for (IContext_* const other :
         {static_cast<IContext_*>(three.get()), static_cast<IContext_*>(unstable.get())}) {
        group->changeContext(ab.get(), other);
        EXPECT_EQ(context->findProp(u"A"), 0);
    }
    group->changeContext(ab.get(), cd.get());
    EXPECT_EQ(value_at(context.get(), context->findProp(u"D")), u"cd1"_us);
    group->removeContext(cd.get());
    EXPECT_EQ(context->getNMethods(), 0);
    expect_nothing_at(context.get(), 0);
}

TEST_F(Groups, BehindAPrimaryContext) {
    const auto redirector = create_object<IIntContextRedirector>(CLSID_IntContextRedirector);
    const InterfacePtr<IContext_> context(redirector);
    InterfacePtr<IStableGroupContext>(redirector)->addContext(cd.get());
    EXPECT_EQ(context->findProp(u"Name"), 0);
    EXPECT_EQ(context->getIContextDef(), nullptr);
    redirector->setContext(ab.get());
    EXPECT_EQ(context->getIContextDef(), ab->getIContextDef());
    EXPECT_EQ(context->getNProps(), 4);
    EXPECT_EQ(context->findProp(u"Name"), 1);
    EXPECT_EQ(context->findMethod(u"D"), 3);
    EXPECT_EQ(value_at(context.get(), 1), u"ab1"_us);
    EXPECT_EQ(value_at(context.get(), 3), u"cd1"_us);
    EXPECT_EQ(result_of(context.get(), 2, u"!"), u"cd!"_us);
    for (const int number : {-1, 4, 2147483647, -2147483647 - 1})
        expect_nothing_at(context.get(), number);
    redirector->setContext(nullptr);
    EXPECT_EQ(context->getNProps(), 2);
    EXPECT_EQ(context->findProp(u"A"), -1);
}

TEST_F(Groups, OfADescriptionAlone) {
    const auto holder = create_object<IContextDefToContext>(CLSID_ContextDefToContext);
    const InterfacePtr<IContext_> context(holder);
    EXPECT_EQ(context->getNProps(), 0);
    holder->setContextDef(ab.get());
    EXPECT_EQ(context->getIContextDef(), static_cast<IContextDefBase*>(ab.get()));
    EXPECT_EQ(context->findProp(u"name"), 1);
    EXPECT_EQ(context->getPropName(1, 0), u"Name"_us);
    EXPECT_TRUE(context->hasRetVal(0));
    EXPECT_EQ(value_at(context.get(), 0), u"(none)"_us);
    EXPECT_EQ(result_of(context.get(), 0, u"!"), u"(none)"_us);
}

} // namespace
