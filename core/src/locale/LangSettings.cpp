#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>
#include <core/concurrency/Thread.h>
#include <core/locale/ILangSettings.h>
#include <core/locale/Locale.h>

namespace core {

class SimpleLangSettings
    : public ObjectRoot
    , public SCOM_Singleton<SimpleLangSettings, &CLSID_SimpleLangSettings>
    , public ILangSettings {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<SimpleLangSettings, ILangSettings>();
    }

    stdx::ustring getMainLanguage() override { return resource_locale().name(); }
    stdx::ustring getSecondLanguage() override { return getLanguageIndex() == 1 ? u"ru" : u"en"; }
    int getLanguageIndex() override {
        SCOM_Process* const process = current_process();
        return process ? process->getTermLanguage() : 0;
    }
    std::vector<stdx::ustring> getFurtherLanguages() override { return {}; }
};

} // namespace core

ORBCORE_REGISTER(core::SimpleLangSettings);
