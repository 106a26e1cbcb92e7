#include "FileSystem.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Messages.h>
#include <core/component/SCOM_Process.h>
#include <core/concurrency/LockGuards.h>
#include <core/files/FileException.h>
#include <core/files/FileFunctions.h>
#include <core/files/FileSystemServices.h>

#include "files/FileScheme.h"
#include "files/FileSchemeAutonomous.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <limits>
#include <mutex>

namespace core {
namespace {

struct HashNoCase {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view name) const noexcept { return hash_nocase(name); }
};
struct EqualNoCase {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const noexcept {
        return compare_nocase(a, b) == 0;
    }
};

// As `assert`: a fault of the program.
void require(const void* pointer, const char* condition) noexcept {
    if (!pointer) stop_process(condition);
}

stdx::ustring name_of(IScheme& scheme) {
    return stdx::ustring(scheme.IScheme_schemeName());
}

} // namespace

// The schemes that one thread sees; only that thread touches them.
class FileSystem::MountsTLSData final : public Thread::TLSData {
public:
    boost::unordered_flat_map<stdx::ustring, InterfacePtr<IScheme>, HashNoCase, EqualNoCase>
        schemes;
};

FileSystem::FileSystem() : mountsIndex_(Thread::allocTLS()) {
    const auto file = make_object<FileScheme>();
    registerScheme(file);
    registerScheme(make_object<FileSchemeAutonomous>(file));
}

FileSystem::~FileSystem() {
    Thread::freeTLS(mountsIndex_);
}

// The event service may be made after this one.
void FileSystem::listen_for_end() {
    if (listening_.load(std::memory_order_acquire) || !get_service<IEventService>()) return;
    const WriterLock lock(mutex_);
    if (listening_) return;
    subscribe(kProcessDeathEvent);
    listening_ = true;
}

void FileSystem::onEvent(const _GUID& event, void*, void*) {
    if (event == kProcessDeathEvent) let_go();
}

// The schemes end outside the lock: they may ask for each other.
void FileSystem::let_go() {
    Schemes ended;
    const WriterLock lock(mutex_);
    closed_ = true;
    ended.swap(schemes_);
}

bool FileSystem::registerScheme(InterfacePtr<IScheme> handler) {
    require(handler.get(), "handler != nullptr");
    listen_for_end();
    stdx::ustring name = name_of(*handler);
    const WriterLock lock(mutex_);
    if (closed_) return false;
    schemes_[std::move(name)].swap(handler); // a former one ends with `handler`
    return true;
}

bool FileSystem::revokeScheme(std::u16string_view name) {
    InterfacePtr<IScheme> revoked;
    const WriterLock lock(mutex_);
    const auto found = schemes_.find(name);
    if (found == schemes_.end()) return false;
    revoked.swap(found->second);
    schemes_.erase(found);
    return true;
}

FileSystem::MountsTLSData* FileSystem::mounts() const {
    Thread* const thread = current_thread();
    return thread ? static_cast<MountsTLSData*>(thread->getTLSValue(mountsIndex_)) : nullptr;
}

bool FileSystem::mountScheme(IScheme* scheme) {
    require(scheme, "scheme != nullptr");
    Thread* const thread = current_thread();
    if (!thread) return false;
    MountsTLSData* own = mounts();
    if (!own) thread->setTLSValue(mountsIndex_, own = new MountsTLSData);
    return own->schemes.try_emplace(name_of(*scheme), scheme, true).second;
}

bool FileSystem::unmountScheme(std::u16string_view name) {
    MountsTLSData* const own = mounts();
    if (!own) return false;
    const auto found = own->schemes.find(name);
    if (found == own->schemes.end()) return false;
    const InterfacePtr<IScheme> unmounted = found->second;
    own->schemes.erase(found);
    return true;
}

InterfacePtr<IScheme> FileSystem::getScheme(std::u16string_view name) {
    if (const MountsTLSData* const own = mounts())
        if (const auto found = own->schemes.find(name); found != own->schemes.end())
            return found->second;
    listen_for_end();
    const ReaderLock lock(mutex_);
    const auto found = schemes_.find(name);
    return found == schemes_.end() ? InterfacePtr<IScheme>() : found->second;
}

FileSystem::Target FileSystem::target_of(const URL& url) {
    const std::u16string_view name = url.partView(URL::kScheme, 1);
    Target target;
    if (!name.empty()) target.scheme = getScheme(name);
    if (target.scheme) target.url = target.scheme->IScheme_normalizeURL(url);
    return target;
}

FileSystem::Target FileSystem::known_target_of(const URL& url) {
    Target target = target_of(url);
    if (!target.scheme) throw_bad_scheme(ORB_FILE_HERE, url);
    return target;
}

InterfacePtr<IFile> FileSystem::open(const URL& url, int mode) {
    const Target target = known_target_of(url);
    return target.scheme->IScheme_openURL(target.url, mode);
}

bool FileSystem::exists(const URL& url) {
    return static_cast<bool>(find(url, nullptr));
}

InterfacePtr<IFileStat> FileSystem::find(const URL& url, const char16_t* mask) {
    const Target target = target_of(url);
    return target.scheme ? target.scheme->IScheme_findFile(target.url, mask)
                         : InterfacePtr<IFileStat>();
}

void FileSystem::createDirectory(const URL& url) {
    const Target target = known_target_of(url);
    target.scheme->IScheme_createDirectory(target.url);
}

void FileSystem::remove(const URL& url, const char16_t* mask) {
    const Target target = known_target_of(url);
    target.scheme->IScheme_remove(target.url, mask);
}

// Within one scheme that can do it itself.
bool FileSystem::transfer(const URL& from, const URL& to,
                          void (ISchemeEx::*operation)(const URL&, const URL&)) {
    const Target source = target_of(from), target = target_of(to);
    if (!source.scheme || source.scheme != target.scheme) return false;
    const InterfacePtr<ISchemeEx> scheme(source.scheme.get());
    if (!scheme) return false;
    (scheme.get()->*operation)(source.url, target.url);
    return true;
}

void FileSystem::copy_contents(const URL& from, const URL& to, int sourceMode) {
    known_target_of(from);
    if (from.equal(to, true)) // opening the target would empty the source
        throw FileException(ORB_FILE_HERE, FileException::Error::Sharing, from);
    {
        const InterfacePtr<IFile> source = open(from, sourceMode);
        const InterfacePtr<IFile> target = open(to, kFileOpenForWrite);
        copy_file(target.get(), source.get(), std::numeric_limits<unsigned long long>::max());
        target->flush();
    }
    const InterfacePtr<IFileStat> source = find(from, nullptr), target = find(to, nullptr);
    if (!source || !target) return;
    target->setAttributes(source->attributes());
    target->setCreationDate(source->creationDate());
    target->setModificationDate(source->modificationDate());
}

void FileSystem::copy(const URL& from, const URL& to) {
    if (!transfer(from, to, &ISchemeEx::copy)) copy_contents(from, to, kFileOpenForRead);
}

void FileSystem::move(const URL& from, const URL& to) {
    if (transfer(from, to, &ISchemeEx::move)) return;
    copy_contents(from, to, kFileRead);
    remove(from, nullptr);
}

InterfacePtr<IFile> FileSystem::openWithLockFile(const URL& url, int exMode) {
    if (!lockFilesPossible(url))
        throw FileException(ORB_FILE_HERE, FileException::Error::Access, url,
                            load_core_wstring("IDS_FERROR_LOCKNOTSUP"));
    known_target_of(url);
    return lockFiles_.open(url, exMode);
}

bool FileSystem::removeWithLockFile(const URL& url) {
    known_target_of(url);
    return lockFiles_.remove(url);
}

void FileSystem::closeWithLockFile(IFile* file) {
    lockFiles_.close(file);
}

bool FileSystem::lockFilesPossible(const URL& url) {
    if (compare_nocase(url.partView(URL::kScheme, 1), u"file") != 0) return true;
    IPathService* const service = get_service<IPathService>();
    return !service || service->lockFilesPossible(url);
}

stdx::ustring FileSystem::lockFileName(const stdx::ustring& path) {
    return path + kLockFileExtension;
}

} // namespace core

ORBCORE_REGISTER(core::FileSystem);
