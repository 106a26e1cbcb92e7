// What the file system asks of services that belong to the platform. Without them paths are shown
// as they are, lock files are possible, and no program is restricted.
#pragma once

#include <core/component/IUnknown.h>
#include <core/files/URL.h>

#include <vector>

namespace core {

inline constexpr _GUID IID_IPathService = "57844b8a-9cdb-4105-912f-54dacf134053"_guid;
inline constexpr _GUID IID_ISecurityProfileService = "3e9aafbf-87fb-4ea3-9bd7-b0b762c2f6d8"_guid;
inline constexpr _GUID IID_ISecurityDirectories = "1a536be6-0312-4610-89a5-bc31c54b39c8"_guid;

class IPathService : public IUnknown {
public:
    ORB_INTERFACE(IPathService, IID_IPathService)

    // The name of a file, of the scheme "file" or "sfile", as people are shown it.
    virtual stdx::ustring pathPresentation(const URL& url) = 0;
    // Whether files beside this one can be locked region by region.
    virtual bool lockFilesPossible(const URL& url) = 0;
};

// The directories that the scheme "sfile" knows by these names.
inline constexpr char16_t kStandartAliasDirTmp[] = u"/temp";
inline constexpr char16_t kStandartAliasDirBin[] = u"/bin";
inline constexpr char16_t kStandartAliasLocalAppData[] = u"/usrappdata";
inline constexpr char16_t kStandartAliasCommonAppData[] = u"/allappdata";

// A directory that a restricted program may use.
struct SecurityAlias {
    stdx::ustring alias; // what the program calls it: "/temp"
    stdx::ustring path;  // where it lies
    bool read = true;
    bool write = true;
};

// Lists of aliases. In the last three an alias that holds the placeholder stands for a directory
// that is to go when its time is over.
enum class SecurityAliasKind : int {
    Profile = 0,  // of the calling thread's profile
    Seance = 1,   // "%s"
    SafeMode = 2, // "%p"
    Call = 3,     // "%c"
};

class ISecurityProfileService : public IUnknown {
public:
    ORB_INTERFACE(ISecurityProfileService, IID_ISecurityProfileService)

    // False: programs are not restricted.
    virtual bool enabled() = 0;
    virtual std::vector<SecurityAlias> aliases(SecurityAliasKind kind) = 0;
    // A file that was opened under `kStandartAliasDirTmp`; the service has it removed in time.
    virtual void registerTemporaryFile(const URL& url) = 0;
};

// What the scheme "sfile" offers beside the operations of schemes.
class ISecurityDirectories : public IUnknown {
public:
    ORB_INTERFACE(ISecurityDirectories, IID_ISecurityDirectories)

    // Removes the directories of a list whose aliases hold the placeholder of its kind. What cannot
    // be removed stays.
    virtual void removeDirectories(SecurityAliasKind kind) = 0;
};

} // namespace core
