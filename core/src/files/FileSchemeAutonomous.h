// The scheme "sfile": the files that a restricted program may use, under the aliases of its security
// profile. The real paths stay hidden, in errors too.
#pragma once

#include <core/files/FileSystemServices.h>

#include "files/FileScheme.h"

namespace core {

class FileSchemeAutonomous
    : public ObjectRoot
    , public SCOM_InternalClass<FileSchemeAutonomous>
    , public SchemeBase
    , public ISchemeExImpl<FileSchemeAutonomous>
    , public IMoveDirectoryScheme
    , public ISecurityDirectories {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<FileSchemeAutonomous, ISchemeEx, Via<IScheme, ISchemeEx>,
                             IMoveDirectoryScheme, ISecurityDirectories>();
    }

    explicit FileSchemeAutonomous(InterfacePtr<SCOM_Object<FileScheme>> files)
        : SchemeBase(u"sfile"), files_(std::move(files)) {}

    bool IScheme_equal(const URL& a, const URL& b, bool baseOnly) override;
    InterfacePtr<IFile> IScheme_openURL(const URL& url, int mode) override;
    InterfacePtr<IFileStat> IScheme_findFile(const URL& url, const char16_t* mask) override;
    void IScheme_createDirectory(const URL& url) override;
    void IScheme_remove(const URL& url, const char16_t* mask) override;
    void copy(const URL& from, const URL& to) override;
    void move(const URL& from, const URL& to) override;
    void moveDirectory(const URL& from, const URL& to) override;

    void removeDirectories(SecurityAliasKind kind) override;

    // The real URL behind one of this scheme; itself while programs are not restricted. Throws as
    // `url_from_alias` does.
    static URL mapped(const URL& url, bool forRead, bool forWrite);

private:
    std::u16string_view reservedSymbols(bool withFragment) const override;

    InterfacePtr<SCOM_Object<FileScheme>> files_;
};

} // namespace core
