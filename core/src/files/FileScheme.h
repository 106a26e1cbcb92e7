// The scheme "file": the files of the system, by their paths.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/SchemeBase.h>

namespace core {

class FileScheme
    : public ObjectRoot
    , public SCOM_InternalClass<FileScheme>
    , public SchemeBase
    , public ISchemeExImpl<FileScheme>
    , public IMoveDirectoryScheme {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<FileScheme, ISchemeEx, Via<IScheme, ISchemeEx>,
                             IMoveDirectoryScheme>();
    }

    FileScheme() : SchemeBase(u"file") {}

    InterfacePtr<IFile> IScheme_openURL(const URL& url, int mode) override;
    // Opens the file that `url` names, which shows the URL `shown` as its own.
    static InterfacePtr<IFile> open_as(const URL& shown, const URL& url, int mode);
    InterfacePtr<IFileStat> IScheme_findFile(const URL& url, const char16_t* mask) override;
    void IScheme_createDirectory(const URL& url) override;
    void IScheme_remove(const URL& url, const char16_t* mask) override;
    void copy(const URL& from, const URL& to) override;
    void move(const URL& from, const URL& to) override;
    void moveDirectory(const URL& from, const URL& to) override;
};

} // namespace core
