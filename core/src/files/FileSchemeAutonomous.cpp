#include "FileSchemeAutonomous.h"

#include <core/component/Logger.h>
#include <core/component/SCOM_Process.h>
#include <core/files/FileMode.h>

#include "files/FileStatAutonomous.h"
#include "files/HiddenErrors.h"
#include "files/SystemDirectory.h"

#include <algorithm>
#include <optional>

namespace core {
namespace {

using Transfer = FileException::Transfer;

constinit const SCOM_StaticLogger logger("orbcore", "FileSchemeAutonomous");

constexpr std::u16string_view kPlaceholders[] = {u"", u"%s", u"%p", u"%c"}; // by SecurityAliasKind

ISecurityProfileService* profile() {
    auto* const service = get_service<ISecurityProfileService>();
    return service && service->enabled() ? service : nullptr;
}

stdx::ustring with_slashes(stdx::ustring path) {
    if (path.view().find(u'\\') != std::u16string_view::npos)
        std::replace(path.begin(), path.end(), u'\\', u'/');
    return path;
}

// Whether the path is that of the alias, or lies below it.
bool is_under(std::u16string_view path, std::u16string_view alias) noexcept {
    while (alias.ends_with(u'/')) alias.remove_suffix(1);
    return path.starts_with(alias) && (path.size() == alias.size() || path[alias.size()] == u'/');
}

// Escapes may hide what normalising would have taken out.
bool climbs(std::u16string_view path) noexcept {
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(u'/', start), path.size());
        const std::u16string_view segment = path.substr(start, end - start);
        if (segment == u".." || segment == u".") return true;
        start = end + 1;
    }
    return false;
}

stdx::ustring presented_path(const URL& url) {
    if (!url.parsed() || url.broken()) throw_secprofile_url_parse_error(ORB_FILE_HERE, url);
    stdx::ustring path = with_slashes(url.presentation());
    if (climbs(path)) throw_secprofile_url_parse_error(ORB_FILE_HERE, url);
    return path;
}

struct Mapping {
    URL url;
    bool read;
    bool write;
};

// By the alias that covers most of the path. Throws where none does.
Mapping map_by_aliases(ISecurityProfileService& service, const URL& url) {
    const stdx::ustring path = presented_path(url);
    std::optional<SecurityAlias> best;
    for (SecurityAlias& entry : service.aliases(SecurityAliasKind::Profile)) {
        entry.alias = with_slashes(std::move(entry.alias));
        if (is_under(path, entry.alias) && (!best || entry.alias.size() > best->alias.size()))
            best = std::move(entry);
    }
    if (!best) throw_secprofile_access_denied(ORB_FILE_HERE, url);
    std::u16string_view rest = path.view().substr(best->alias.size());
    if (rest.starts_with(u'/') && best->path.view().ends_with(u'/')) rest.remove_prefix(1);
    return {file_url(best->path + rest), best->read, best->write};
}

enum class Right { None, Read, Write, ReadWrite };

// What each operation does is checked under its name; refusals are written to the log with it.
URL checked(const char16_t* operation, const URL& url, Right right) {
    ISecurityProfileService* const service = profile();
    if (!service) return file_url(path_of(url));
    try {
        Mapping mapping = map_by_aliases(*service, url);
        const bool reads = right == Right::Read || right == Right::ReadWrite;
        const bool writes = right == Right::Write || right == Right::ReadWrite;
        if (reads && !mapping.read) throw_secprofile_file_read_denied(ORB_FILE_HERE, url);
        if (writes && !mapping.write) throw_secprofile_file_write_denied(ORB_FILE_HERE, url);
        return std::move(mapping.url);
    } catch (const FileException&) {
        logger.logDebug(0, u"the security profile refused a file", u"operation", operation,
                        nullptr);
        throw;
    }
}

Right right_of_mode(int mode) noexcept {
    if ((mode & kFileAccess) == kFileAccess) return Right::ReadWrite;
    return mode & kFileWrite || mode & kFileTruncate ? Right::Write : Right::Read;
}

template <class Body>
void transfer(Transfer kind, const URL& from, const URL& to, const URL& realFrom, const URL& realTo,
              const Body& body) {
    try {
        body(realFrom, realTo);
    } catch (const FileException& exception) {
        throw FileException(ORB_FILE_HERE, exception.error(), kind, from, to,
                            without_path(without_path(exception.extra(), realFrom), realTo));
    }
}

} // namespace

URL FileSchemeAutonomous::mapped(const URL& url, bool forRead, bool forWrite) {
    ISecurityProfileService* const service = profile();
    if (!service) return url;
    Mapping mapping = map_by_aliases(*service, url);
    if ((forRead && !mapping.read) || (forWrite && !mapping.write))
        throw FileException(ORB_FILE_HERE, FileException::Error::Access, url);
    return std::move(mapping.url);
}

std::u16string_view FileSchemeAutonomous::reservedSymbols(bool withFragment) const {
    static constexpr std::u16string_view kReserved = u"\\/*<>|#";
    return kReserved.substr(0, kReserved.size() - (begins_fragment(withFragment) ? 0 : 1));
}

bool FileSchemeAutonomous::IScheme_equal(const URL& a, const URL& b, bool baseOnly) {
    if (SchemeBase::IScheme_equal(a, b, baseOnly)) return true;
    if (!profile() || !a.absolute() || !b.absolute()) return false;
    return files_->SchemeBase::IScheme_equal(checked(u"equal", a, Right::None),
                                             checked(u"equal", b, Right::None), baseOnly);
}

InterfacePtr<IFile> FileSchemeAutonomous::IScheme_openURL(const URL& url, int mode) {
    const URL real = checked(u"open", url, right_of_mode(mode));
    if (ISecurityProfileService* const service = profile();
        service && is_under(presented_path(url), kStandartAliasDirTmp))
        service->registerTemporaryFile(real);
    return with_url(url, real, [&] { return FileScheme::open_as(url, real, mode); });
}

InterfacePtr<IFileStat> FileSchemeAutonomous::IScheme_findFile(const URL& url,
                                                               const char16_t* mask) {
    const URL real = checked(u"find", url, Right::Read);
    InterfacePtr<IFileStat> found =
        with_url(url, real, [&] { return files_->IScheme_findFile(real, mask); });
    if (!found) return {};
    return make_object<FileStatAutonomous>(std::move(found), url, real, mask && *mask);
}

void FileSchemeAutonomous::IScheme_createDirectory(const URL& url) {
    const URL real = checked(u"createDir", url, Right::Write);
    with_url(url, real, [&] { files_->IScheme_createDirectory(real); });
}

void FileSchemeAutonomous::IScheme_remove(const URL& url, const char16_t* mask) {
    const URL real = checked(u"remove", url, Right::Write);
    with_url(url, real, [&] { files_->IScheme_remove(real, mask); });
}

void FileSchemeAutonomous::copy(const URL& from, const URL& to) {
    transfer(Transfer::Copy, from, to, checked(u"copy", from, Right::Read),
             checked(u"copy", to, Right::Write),
             [&](const URL& source, const URL& target) { files_->copy(source, target); });
}

void FileSchemeAutonomous::move(const URL& from, const URL& to) {
    transfer(Transfer::Move, from, to, checked(u"move", from, Right::ReadWrite),
             checked(u"move", to, Right::Write),
             [&](const URL& source, const URL& target) { files_->move(source, target); });
}

void FileSchemeAutonomous::moveDirectory(const URL& from, const URL& to) {
    transfer(Transfer::Move, from, to, checked(u"move", from, Right::ReadWrite),
             checked(u"move", to, Right::Write),
             [&](const URL& source, const URL& target) { files_->moveDirectory(source, target); });
}

void FileSchemeAutonomous::removeDirectories(SecurityAliasKind kind) {
    ISecurityProfileService* const service = profile();
    const std::u16string_view placeholder = kPlaceholders[static_cast<int>(kind)];
    if (!service || placeholder.empty()) return;
    for (const SecurityAlias& entry : service->aliases(kind)) {
        if (entry.alias.view().find(placeholder) == std::u16string_view::npos) continue;
        try {
            files_->IScheme_remove(file_url(entry.path), nullptr);
        } catch (const FileException&) {
            logger.logDebug(0, u"a directory could not be removed", u"alias", entry.alias.c_str(),
                            nullptr);
        }
    }
}

URL FileStatAutonomous::url() {
    if (!search_) return shown_;
    const URL real = stat_->url();
    const stdx::ustring name = URL::unescape(real.part(URL::kFileName, 3));
    return shown_.implementCombine(URL(URL::escape(name, u"sfile", true), false), true);
}

Date FileStatAutonomous::creationDate() {
    return stat_->creationDate();
}

Date FileStatAutonomous::modificationDate() {
    return stat_->modificationDate();
}

void FileStatAutonomous::setCreationDate(const Date& date) {
    with_url(url(), real_, [&] { stat_->setCreationDate(date); });
}

void FileStatAutonomous::setModificationDate(const Date& date) {
    with_url(url(), real_, [&] { stat_->setModificationDate(date); });
}

void FileStatAutonomous::setAttributes(std::uint32_t attributes) {
    with_url(url(), real_, [&] { stat_->setAttributes(attributes); });
}

bool FileStatAutonomous::next() {
    return with_url(shown_, real_, [&] { return stat_->next(); });
}

} // namespace core
