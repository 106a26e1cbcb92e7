#include "Services.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/FileSystemFunctions.h>

namespace test {

using core::operator""_guid;

inline constexpr _GUID CLSID_TestProfile = "4cb1b3bd-cc54-42fa-a3e1-791aab238240"_guid;
inline constexpr _GUID CLSID_TestPaths = "e49ec211-ee31-451a-b7da-d3523da42120"_guid;

class TestProfile
    : public core::ObjectRoot
    , public core::SCOM_Service<TestProfile, &CLSID_TestProfile, &core::IID_ISecurityProfileService>
    , public core::ISecurityProfileService {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<TestProfile, core::ISecurityProfileService>();
    }
    bool enabled() override { return Services::profile.has_value(); }
    std::vector<core::SecurityAlias> aliases(core::SecurityAliasKind kind) override {
        if (kind == core::SecurityAliasKind::Seance) return Services::seances;
        return Services::profile.value_or(std::vector<core::SecurityAlias>());
    }
    void registerTemporaryFile(const core::URL& url) override {
        Services::temporaryFiles.push_back(url);
    }
};

class TestPaths
    : public core::ObjectRoot
    , public core::SCOM_Service<TestPaths, &CLSID_TestPaths, &core::IID_IPathService>
    , public core::IPathService {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<TestPaths, core::IPathService>();
    }
    stdx::ustring pathPresentation(const core::URL& url) override { return core::file_path(url); }
    bool lockFilesPossible(const core::URL&) override { return Services::lockFilesPossible; }
};

} // namespace test

ORBCORE_REGISTER(test::TestProfile);
ORBCORE_REGISTER(test::TestPaths);
