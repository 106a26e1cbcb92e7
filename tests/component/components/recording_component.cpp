// A component that writes down how its entry points are called, and brings one of each kind of
// class.
#include "recording_component.h"

#include <core/component/ClassBundle.h>
#include <core/component/ClassDescriptor.h>

ORBCORE_MODULE("recording_component", ORBCORE_VERSION ".0");

namespace recording {
namespace {

std::string* record = nullptr; // of the test; null until it has said where

class Note
    : public core::ObjectRoot
    , public core::SCOM_Class<Note, &CLSID_Note>
    , public IRecord {
public:
    static constexpr auto aliases = core::aliases(u"Note", u"Заметка");
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Note, IRecord>();
    }
    void write_to(std::string* text) override { record = text; }
};

class Archive
    : public core::ObjectRoot
    , public core::SCOM_Singleton<Archive, &CLSID_Archive>
    , public IRecord {
public:
    ~Archive() {
        if (record) *record += "archive gone;";
    }
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Archive, IRecord>();
    }
    void write_to(std::string* text) override { record = text; }
};

} // namespace
} // namespace recording

ORBCORE_REGISTER(recording::Note);
ORBCORE_REGISTER(recording::Archive);

extern "C" ORBCORE_API void SCOM_Main(core::SCOM_Process* process,
                                      core::SCOM_ClassRegistrar* registrar, int phase) {
    if (recording::record) *recording::record += phase == 0 ? "main 0;" : "main 1;";
    if (phase == 0)
        core::this_module().registerAll(process, registrar);
    else
        core::this_module().revokeAll(process, registrar);
}

extern "C" ORBCORE_API void DllMain(void*, int reason, void*) {
    if (recording::record && reason == 0) *recording::record += "closed;";
    if (reason == 0) core::this_module().cleanup();
}
