#include <core/values/ValueIsFilled.h>

#include "TypeLookup.h"

#include <core/values/ContextException.h>
#include <core/values/IValueCollection.h>
#include <core/values/Value.h>

#include <optional>

namespace core {
namespace {

// What the value itself knows.
std::optional<bool> told_by(IValue* value) {
    IUnknown* const object = value;
    if (const InterfacePtr<ICheckDefaultValue> check(object); check)
        return !check->isDefaultValue();
    if (const InterfacePtr<IIndexedCollectionRO> collection(object); collection)
        return collection->size() != 0;
    if (const InterfacePtr<ICountedCollection> collection(object); collection)
        return collection->size() != 0;
    if (const InterfacePtr<IProvideEnumValue> provider(object); provider)
        if (const InterfacePtr<IEnumValue> elements = provider->getEnumValue()) {
            Value first;
            return elements->next(first);
        }
    if (InterfacePtr<IFilledObject>(object)) return true;
    return std::nullopt;
}

bool differs_from_new(IType* type, IValue* value) {
    const InterfacePtr<IValue> fresh = type ? type->createIValue() : nullptr;
    return !fresh || !fresh->isEqual(value);
}

} // namespace

bool value_is_filled(const GenericValue& value) {
    IValue* const held = value.lentIValue();
    if (const std::optional<bool> told = told_by(held)) return *told;
    IType* const type = held->getIType();
    if (!type || type->isValueMutable())
        throw ValueIsFilledException(ValueIsFilledException::Error::MutableType);
    return differs_from_new(type, held);
}

bool value_is_filled_ext(const GenericValue& value) {
    IValue* const held = value.lentIValue();
    if (const std::optional<bool> told = told_by(held)) return *told;
    IType* const type = held->getIType();
    if (!type || !type->isValueMutable()) return differs_from_new(type, held);
    return differs_from_new(find_type(*type->getTypeClsid()).get(), held);
}

} // namespace core
