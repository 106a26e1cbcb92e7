// Types by their class, and how they are called.
#pragma once

#include <core/component/SCOM_Process.h>
#include <core/values/IType.h>

namespace core {

// Null for a class that the current process does not know as a type; no other class is created.
inline InterfacePtr<IType> find_type(const _GUID& clsid) {
    SCOM_Process* const process = current_process();
    if (!process || !process->isClassInCategory(CATID_Type, clsid)) return nullptr;
    return create_object<IType>(clsid);
}

// The language of bilingual names.
inline int term_language() {
    SCOM_Process* const process = current_process();
    return process ? process->getTermLanguage() : 0;
}

// The name of a type, which may be null; "" in a language that names do not have.
inline const char16_t* type_name(IType* type, int language) {
    const char16_t* name = type ? type->getTypeString(language) : nullptr;
    if (!name) name = term_string(kUnknownObjectTypeString, language);
    return name ? name : u"";
}

// How the type is shown to people: as it presents itself, else by its name.
inline stdx::ustring type_presentation(IType* type) {
    stdx::ustring text;
    if (type) type->getString(text);
    if (text.empty()) text = type_name(type, term_language());
    return text;
}

} // namespace core
