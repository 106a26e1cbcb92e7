// Contexts made of others.
//
// | class                | joins                                   | its members             |
// |----------------------|-----------------------------------------|-------------------------|
// | GroupContext         | any contexts, a base for classes        | may change their lists  |
// | StableGroupContext   | contexts with a description             | have fixed lists        |
// | IntContextRedirector | the same behind a primary context       | have fixed lists        |
// | ContextDefToContext  | nothing: a description without values   |                         |
//
// The members of the first context come first in the numbers, then those of the second, and so on; of
// two members with one name the earlier is found. A group belongs to the thread of its owner, which
// may add and remove contexts between its calls, and while one of them gets, sets or calls.
#pragma once

#include <core/values/ContextDef.h>

#include <vector>

namespace core {

inline constexpr _GUID CLSID_StableGroupContext = "560d4e56-3e84-4300-aae0-09e66bd4f9c5"_guid;
inline constexpr _GUID IID_IStableGroupContext = "8df7ae0a-b864-4a50-9158-f0c728843dc2"_guid;
inline constexpr _GUID CLSID_IntContextRedirector = "58112d26-cbc7-4b76-9859-1a12cf5bd66c"_guid;
inline constexpr _GUID IID_IIntContextRedirector = "0c5f8ff8-86a4-42ed-b148-b3b6e01a77f6"_guid;
inline constexpr _GUID CLSID_ContextDefToContext = "5fb9b6e7-f06c-4d8f-acfe-99fb6383be6b"_guid;
inline constexpr _GUID IID_IContextDefToContext = "594fc637-9786-4bca-8433-7434eec7686c"_guid;

class IStableGroupContext : public IUnknown {
public:
    ORB_INTERFACE(IStableGroupContext, IID_IStableGroupContext)

    // See `StableGroupContextBase`.
    virtual void addContext(IContext_* context) = 0;
    virtual void removeContext(IContext_* context) = 0;
    virtual void changeContext(IContext_* former, IContext_* context) = 0;
};

class IIntContextRedirector : public IUnknown {
public:
    ORB_INTERFACE(IIntContextRedirector, IID_IIntContextRedirector)

    // The context in front of the group, or null. No reference is taken: the caller keeps it alive
    // until it sets another one. Its counts are read here, once.
    virtual void setContext(IContext_* primary) = 0;
};

class IContextDefToContext : public IUnknown {
public:
    ORB_INTERFACE(IContextDefToContext, IID_IContextDefToContext)

    virtual void setContextDef(IContextDefBase* definition) = 0; // or null
};

// Numbers that fit no member answer null, false or 0.
class ORBCORE_API GroupContext : public ContextCore {
public:
    int getNProps() override;
    const char16_t* getPropName(int property, int language) override;
    bool isPropReadable(int property) override;
    bool isPropWritable(int property) override;
    int findProp(const stdx::ustring& name) override;
    int getNMethods() override;
    const char16_t* getMethodName(int method, int language) override;
    int getNParams(int method) override;
    bool isParamIn(int method, int parameter) override;
    bool isParamOut(int method, int parameter) override;
    bool getParamDefValue(int method, int parameter, GenericValue* out) override;
    bool hasRetVal(int method) override;
    int findMethod(const stdx::ustring& name) override;
    bool getPropVal(int property, GenericValue& out) override;
    bool setPropVal(int property, const GenericValue& value) override;
    bool call(int method, GenericValue* result, std::vector<GenericValue*>& arguments) override;

    // Null is ignored, and so is what is not there.
    virtual void addContext(IContext_* context);
    virtual void removeContext(IContext_* context);
    virtual void changeContext(IContext_* former, IContext_* context);
    virtual void reset();

protected:
    // The context that a number of the group falls to, lent, with the number made its own; null
    // for a number that is out of range.
    virtual IContext_* findContextByPropPos(int& position);
    virtual IContext_* findContextByMethodPos(int& position);

private:
    std::vector<InterfacePtr<IContext_>> contexts_;
};

// A group whose counts are known. Contexts without a description are not taken, and one takes the
// place of another only with as many properties and methods.
class ORBCORE_API StableGroupContextBase : public GroupContext {
public:
    int getNProps() override { return properties_; }
    int getNMethods() override { return methods_; }
    IContextDefBase* getIContextDef() override { return this; }

    void addContext(IContext_* context) override;
    void removeContext(IContext_* context) override;
    void changeContext(IContext_* former, IContext_* context) override;
    void reset() override;

private:
    void count();

    int properties_ = 0; // the sums of the members
    int methods_ = 0;
};

} // namespace core
