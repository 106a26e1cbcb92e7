// An entry of the system's directories, and the search that found it.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/IFileStat.h>

#include "files/SystemDirectory.h"

namespace core {

class FileStat
    : public ObjectRoot
    , public SCOM_InternalClass<FileStat>
    , public IFileStat
    , public IFileStatEx
    , public IFileStat2
    , public IFileStat3 {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<FileStat, IFileStat, IFileStatEx, IFileStat2, IFileStat3>();
    }

    // What the URL names; null when there is nothing. With a mask the first entry of that directory
    // that fits, null when there is none or no directory.
    static InterfacePtr<IFileStat> find(const URL& url);
    static InterfacePtr<IFileStat> find(const URL& directory, const stdx::ustring& mask);

    URL url() override;
    Date creationDate() override { return date_of(info_.st_ctim); }
    Date modificationDate() override { return date_of(info_.st_mtim); }
    std::uint64_t size() override { return static_cast<std::uint64_t>(info_.st_size); }
    std::uint32_t attributes() override { return attributes_of(info_); }
    void setCreationDate(const Date&) override {} // the system sets it itself
    void setModificationDate(const Date& date) override;
    void setAttributes(std::uint32_t attributes) override;
    bool next() override;

    Date accessDate() override { return date_of(info_.st_atim); }
    std::uint32_t permissions() override { return info_.st_mode & 07777; }
    std::uint64_t device() override { return info_.st_dev; }
    std::uint64_t inode() override { return info_.st_ino; }
    bool symbolicLink() override;
    stdx::ustring linkTarget() override;

    // In bytes, with the entry's name as the directory holds it.
    const stdx::string& path() const noexcept { return path_; }

private:
    bool look(const char* name, struct stat& info) const;

    URL url_;            // of the entry, or of the directory that is searched
    stdx::ustring mask_; // empty without a search
    UniqueDir dir_;      // open while more entries may follow
    stdx::string directoryPath_;
    stdx::string path_;
    stdx::ustring name_; // in the search
    struct stat info_ = {};
};

} // namespace core
