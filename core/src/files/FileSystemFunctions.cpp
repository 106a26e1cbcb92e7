#include <core/files/FileSystemFunctions.h>

#include <core/component/SCOM_Process.h>
#include <core/files/FileException.h>
#include <core/text/Compare.h>

#include "files/FileSchemeAutonomous.h"

namespace core {
namespace {

InterfacePtr<IFileStat> find(const URL& url, const char16_t* mask) {
    IFileSystem* const files = get_service<IFileSystem>();
    return files ? files->find(url, mask) : InterfacePtr<IFileStat>();
}

InterfacePtr<IFileStat> find_existing(const URL& url) {
    InterfacePtr<IFileStat> stat = find(url, nullptr);
    if (!stat) throw FileException(ORB_FILE_HERE, FileException::Error::FileNotFound, url);
    return stat;
}

template <class Use> void for_each_file(const URL& url, const char16_t* mask, const Use& use) {
    const InterfacePtr<IFileStat> stat = find(url, mask);
    if (!stat) return;
    do {
        if (!(stat->attributes() & kFileDirectory)) use(*stat);
    } while (stat->next());
}

} // namespace

InterfacePtr<IFileStat> get_file_stat(const URL& url) {
    try {
        return find(url, nullptr);
    } catch (const FileException&) {
        return {};
    }
}

bool file_exists(const URL& url, const char16_t* mask) {
    try {
        return static_cast<bool>(find(url, mask));
    } catch (const FileException&) {
        return false;
    }
}

void find_files_by_mask(const URL& url, const char16_t* mask, std::vector<URL>& files) {
    for_each_file(url, mask, [&](IFileStat& stat) { files.push_back(stat.url()); });
}

std::uint64_t get_file_size(const URL& url) {
    return find_existing(url)->size();
}

Date get_file_date(const URL& url) {
    return find_existing(url)->modificationDate();
}

std::uint64_t get_total_files_size(const URL& url, const char16_t* mask) {
    std::uint64_t total = 0;
    for_each_file(url, mask, [&](IFileStat& stat) { total += stat.size(); });
    return total;
}

URL url_from_alias(const URL& url, bool forRead, bool forWrite) {
    const bool aliased = compare_nocase(url.partView(URL::kScheme, 1), u"sfile") == 0;
    return aliased ? FileSchemeAutonomous::mapped(url, forRead, forWrite) : url;
}

// The root normalises to no path at all.
stdx::ustring file_path(const URL& url) {
    stdx::ustring path = url.part(URL::kVolume, URL::kPathEnd - URL::kVolume);
    for (unsigned i = 0; i != path.size(); ++i)
        if (path.view()[i] == u'\\') path[i] = u'/';
    path = URL::unescape(path);
    return path.empty() ? stdx::ustring(u"/") : path;
}

URL file_url(const stdx::ustring& path) {
    stdx::ustring text = u"file://";
    const std::u16string_view from = path;
    for (std::size_t start = 0;;) {
        const std::size_t end = std::min(from.find(u'/', start), from.size());
        text += URL::escape(
            path.substr(static_cast<unsigned>(start), static_cast<unsigned>(end - start)), u"file",
            true);
        if (end == from.size()) break;
        text += u'/';
        start = end + 1;
    }
    return URL(text, false);
}

} // namespace core
