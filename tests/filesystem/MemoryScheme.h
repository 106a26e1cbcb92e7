// A scheme whose files are pieces of memory, without copying and moving of its own.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/FileException.h>
#include <core/files/MemoryFile.h>
#include <core/files/SchemeBase.h>

#include <map>

namespace test {

struct MemoryEntry {
    core::InterfacePtr<core::IMemoryFile> file;
    std::uint32_t attributes = 0;
    core::Date created, modified;
};

class MemoryStat
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<MemoryStat>
    , public core::IFileStat {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<MemoryStat, core::IFileStat>();
    }
    MemoryStat(const core::URL& url, MemoryEntry& entry) : url_(url), entry_(entry) {}

    core::URL url() override { return url_; }
    core::Date creationDate() override { return entry_.created; }
    core::Date modificationDate() override { return entry_.modified; }
    std::uint64_t size() override {
        return static_cast<std::uint64_t>(entry_.file->seek(0, core::kSeekFromEnd));
    }
    std::uint32_t attributes() override { return entry_.attributes; }
    void setCreationDate(const core::Date& date) override { entry_.created = date; }
    void setModificationDate(const core::Date& date) override { entry_.modified = date; }
    void setAttributes(std::uint32_t attributes) override { entry_.attributes = attributes; }
    bool next() override { return false; }

private:
    core::URL url_;
    MemoryEntry& entry_;
};

class MemoryScheme
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<MemoryScheme>
    , public core::SchemeBase
    , public core::ISchemeImpl<MemoryScheme> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<MemoryScheme, core::IScheme>();
    }
    explicit MemoryScheme(std::u16string_view name = u"mem") : SchemeBase(name) {}

    core::InterfacePtr<core::IFile> IScheme_openURL(const core::URL& url, int mode) override {
        MemoryEntry& entry = entries[url.part(13, 4)];
        if (!entry.file && !(mode & core::kFileWrite)) {
            entries.erase(url.part(13, 4));
            throw core::FileException(ORB_FILE_HERE, core::FileException::Error::FileNotFound, url);
        }
        if (!entry.file || mode & core::kFileTruncate) entry.file = core::create_memory_file(0);
        entry.file->seek(0, core::kSeekFromStart);
        return entry.file;
    }
    core::InterfacePtr<core::IFileStat> IScheme_findFile(const core::URL& url,
                                                         const char16_t*) override {
        const auto found = entries.find(url.part(13, 4));
        if (found == entries.end()) return {};
        return core::make_object<MemoryStat>(url, found->second);
    }
    void IScheme_remove(const core::URL& url, const char16_t*) override {
        entries.erase(url.part(13, 4));
    }

    std::map<stdx::ustring, MemoryEntry> entries;
};

} // namespace test
