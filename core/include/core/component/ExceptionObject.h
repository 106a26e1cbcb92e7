// How an exception class gets its twin. In the source of a class `E` that derives from
// `core::Exception`, can be made by default, and names `CLSID_EObject` as its object class:
//
//   ORBCORE_EXCEPTION_OBJECT(TableException);    // outside any namespace, for a class in `core`
//
// declares `TableExceptionObject` and registers it in the module of that source. A class that adds
// fields says beside it how they are stored, see core/persistence/ExceptionFields.h.
#pragma once

#include <core/component/ClassDescriptor.h>
#include <core/component/Exception.h>
#include <core/component/IPersistableObject.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/Object.h>
#include <core/component/StackTrace.h>

namespace core {

namespace detail {
template <class E> E class_that_stores(void (E::*)(IOutPersistenceStorage*) const);
}

// The operations of a twin that holds an `E`. The held exception is at first an `E` by default,
// without a stack.
template <class E> class IExceptionObjectImpl : public IExceptionObject {
public:
    // The class names the twin that reads the fields, so no object holds another one.
    void assign(const Exception& exception) override {
        ORB_ASSERT(exception.objectClass() == held_.objectClass());
        held_ = static_cast<const E&>(exception);
    }
    void setDescription(const stdx::ustring& description) override {
        held_.setDescription(description);
    }
    void setInner(IExceptionObject* inner) override { held_.setInner(inner); }
    [[noreturn]] void rethrow() override { throw E(held_); }
    Exception* exception() override { return &held_; }
    void setOnClientFromServer() override { held_.setOnClientFromServer(); }

protected:
    E& held() noexcept { return held_; }

private:
    static_assert(sizeof(E) == sizeof(decltype(detail::class_that_stores(&E::serialize))),
                  "an exception class that adds fields has its own serialize and deserialize");

    static E blank() {
        const StackCaptureOff off;
        return E();
    }

    E held_ = blank();
};

} // namespace core

#define ORBCORE_EXCEPTION_OBJECT(E)                                                                \
    namespace core {                                                                               \
    class E##Object                                                                                \
        : public ObjectRoot                                                                        \
        , public SCOM_Class<E##Object, &CLSID_##E##Object>                                         \
        , public IExceptionObjectImpl<E>                                                           \
        , public IPersistableObjectImpl<E##Object, &CLSID_##E##Object> {                           \
    public:                                                                                        \
        static const InterfaceEntry* _GetEntries() {                                               \
            return interface_map<E##Object, IExceptionObject, IPersistableObject>();               \
        }                                                                                          \
        void serialize(IOutPersistenceStorage* storage) override { held().serialize(storage); }    \
        void deserialize(IInPersistenceStorage* storage) override { held().deserialize(storage); } \
    };                                                                                             \
    }                                                                                              \
    ORBCORE_REGISTER(core::E##Object)
