// An entry of the scheme "sfile": a real one that is shown by its alias.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/IFileStat.h>

namespace core {

class FileStatAutonomous
    : public ObjectRoot
    , public SCOM_InternalClass<FileStatAutonomous>
    , public IFileStat {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<FileStatAutonomous, IFileStat>();
    }

    // `shown` is the URL of the entry, or with `search` that of its directory; `real` the URL that
    // stands behind it.
    FileStatAutonomous(InterfacePtr<IFileStat> stat, const URL& shown, const URL& real, bool search)
        : stat_(std::move(stat)), shown_(shown), real_(real), search_(search) {}

    URL url() override;
    Date creationDate() override;
    Date modificationDate() override;
    std::uint64_t size() override { return stat_->size(); }
    std::uint32_t attributes() override { return stat_->attributes(); }
    void setCreationDate(const Date& date) override;
    void setModificationDate(const Date& date) override;
    void setAttributes(std::uint32_t attributes) override;
    bool next() override;

private:
    InterfacePtr<IFileStat> stat_;
    URL shown_;
    URL real_;
    bool search_;
};

} // namespace core
