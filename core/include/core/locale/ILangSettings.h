// Which languages a text that exists in several is looked for in.
//
//   auto settings = core::create_object<core::ILangSettings>(core::CLSID_SimpleLangSettings);
#pragma once

#include <core/component/IUnknown.h>
#include <elm/string>

#include <vector>

namespace core {

inline constexpr _GUID IID_ILangSettings = "c0f020fd-5377-4cf2-ab6e-fcfd21df32fd"_guid;
// The singleton `SimpleLangSettings`. It has no settings of its own: the main language is the
// resource locale of the calling thread, the second is that of bilingual names, there are no
// further ones.
inline constexpr _GUID CLSID_SimpleLangSettings = "12279e30-aff7-4315-bd2d-268535ef8ba5"_guid;

// Languages are codes such as "ru" and "en_US"; empty: none.
class ILangSettings : public IUnknown {
public:
    ORB_INTERFACE(ILangSettings, IID_ILangSettings)

    virtual stdx::ustring getMainLanguage() = 0;
    virtual stdx::ustring getSecondLanguage() = 0;
    // Of bilingual names: 0 English, 1 Russian.
    virtual int getLanguageIndex() = 0;
    virtual std::vector<stdx::ustring> getFurtherLanguages() = 0;
};

} // namespace core
