// What all schemes do with URLs once they are parsed; SchemeParser.cpp has the parser.
#include <core/files/SchemeBase.h>

#include <core/component/UnsupportedOperationException.h>
#include <core/files/FileException.h>
#include <core/text/Characters.h>
#include <core/text/Compare.h>
#include <core/text/Format.h>

#include <algorithm>

namespace core {
namespace {

constexpr std::u16string_view kReservedWithFragment = u"/\\;?*:@&=[]#";
constexpr std::u16string_view kReserved =
    kReservedWithFragment.substr(0, kReservedWithFragment.size() - 1);

// Takes the last segment and its slash off a path that begins at `start`; false when there is none.
bool cut_last_segment(stdx::ustring& text, unsigned start) {
    const std::u16string_view path = text.view().substr(start);
    if (path.empty() || path == u"/") return false;
    const std::size_t slash = path.rfind(u'/', path.size() - 2);
    text.resize(slash == path.npos ? start : start + static_cast<unsigned>(slash) + 1);
    return true;
}

// Appends a path without segments that are empty, "." or "..". A ".." with nothing to take off
// erases what stands in front of it, so that "/../a" is "/a".
void append_normal_path(stdx::ustring& to, std::u16string_view path) {
    const unsigned start = to.size();
    for (std::size_t position = 0; position < path.size();) {
        const std::size_t end = std::min(path.find_first_of(u"/\\", position), path.size());
        const std::size_t behind = std::min(end + 1, path.size());
        const std::u16string_view segment = path.substr(position, end - position);
        position = behind;
        if (segment == u"..") {
            if (cut_last_segment(to, start)) continue;
            to.resize(start);
            position = end;
        } else if (segment != u"." && (!segment.empty() || to.size() == start)) {
            to.append(segment);
            if (end != path.size()) to += u'/';
        }
    }
}

// A text of which normalising would change nothing, for all that a quick look tells.
bool looks_normal(const URL& url) noexcept {
    const std::u16string_view scheme = url.partView(URL::kScheme, 1);
    const std::u16string_view path = url.partView(URL::kVolume, URL::kPathEnd - URL::kVolume);
    if (!std::all_of(scheme.begin(), scheme.end(), [](char16_t c) { return to_lower(c) == c; }))
        return false;
    if (path.find(u'\\') != path.npos || path.ends_with(u'/')) return false;
    bool atStart = false;
    for (const char16_t c : path) {
        if (atStart && (c == u'/' || c == u'.')) return false;
        atStart = c == u'/';
    }
    return !path.starts_with(u'.');
}

void append_with_slashes(stdx::ustring& to, std::u16string_view text) {
    for (const char16_t c : text) to += c == u'\\' ? u'/' : c;
}

// A slash at the end names the same file.
void drop_final_slash(stdx::ustring& text, const URL& url, unsigned pathStart) {
    const unsigned pathSize = text.size() - pathStart;
    if (pathSize == 0 || text.view().back() != u'/') return;
    const bool noParams = url.partView(URL::kPathEnd, 2).empty();
    const bool noVolume = url.partView(URL::kVolume, 1).empty();
    if ((noParams && pathSize >= 2) || (pathStart >= 2 && noVolume)) text.resize(text.size() - 1);
}

// Sets the marks of the file's name in a path that lies between the marks kPath and kPathEnd.
void mark_name(std::vector<unsigned>& marks, std::u16string_view text) {
    const unsigned start = marks[URL::kPath], end = marks[URL::kPathEnd];
    const std::u16string_view path = text.substr(start, end - start);
    const std::size_t name = path.rfind(u'/') + 1; // 0 without a separator
    const std::size_t dot = path.rfind(u'.');
    const bool hasDot = dot != path.npos && dot >= name;
    marks[URL::kFileName] = start + static_cast<unsigned>(name);
    marks[URL::kDot] = hasDot ? start + static_cast<unsigned>(dot) : end;
    marks[URL::kExtension] = hasDot ? marks[URL::kDot] + 1 : end;
}

} // namespace

stdx::ustring SchemeBase::IScheme_createURLString(std::u16string_view text) const {
    stdx::ustring url = name_ + u"://";
    url += text;
    return url;
}

URL SchemeBase::IScheme_normalizeURL(const URL& url) const {
    if (!url.absolute() || looks_normal(url)) return url;
    const std::u16string_view from = url.text();
    std::vector<unsigned> marks = url.marks();

    stdx::ustring text;
    text.reserve(url.text().size());
    text += from.substr(0, marks[URL::kSchemeEnd]);
    for (unsigned i = marks[URL::kScheme]; i != text.size(); ++i) text[i] = to_lower(from[i]);
    if (url.broken()) {
        text += from.substr(text.size());
        return URL(text, url.withFragment(), std::move(marks), url.parsed());
    }
    text += url.partView(URL::kSchemeEnd, URL::kVolume - URL::kSchemeEnd);
    append_with_slashes(text, url.partView(URL::kVolume, 1));
    const unsigned pathStart = text.size();
    append_normal_path(text, url.partView(URL::kPath, URL::kPathEnd - URL::kPath));
    drop_final_slash(text, url, pathStart);

    const unsigned cut = marks[URL::kPathEnd] - text.size();
    text += from.substr(marks[URL::kPathEnd]);
    for (int i = URL::kPathEnd; i != URL::kMarks; ++i) marks[static_cast<unsigned>(i)] -= cut;
    mark_name(marks, text);
    return URL(text, url.withFragment(), std::move(marks), url.parsed());
}

bool SchemeBase::IScheme_equal(const URL& a, const URL& b, bool baseOnly) const {
    if (!a.absolute() || !b.absolute()) return compare(a.text().view(), b.text().view()) == 0;
    const auto normal = [&](const URL& url) {
        return IScheme_normalizeURL(baseOnly ? url.baseURL() : url);
    };
    return compare(normal(a).text().view(), normal(b).text().view()) == 0;
}

stdx::ustring SchemeBase::IScheme_escape(const stdx::ustring& text, bool withFragment) const {
    const UnitSet reserved(reservedSymbols(withFragment));
    const auto plain = [&](char16_t c) { return c != u'%' && !reserved.contains(c); };
    if (std::all_of(text.cbegin(), text.cend(), plain)) return text;
    stdx::ustring escaped;
    for (const char16_t c : text.view()) {
        if (plain(c))
            escaped += c;
        else
            escaped += format_string(u"%%%x", unsigned{c});
    }
    return escaped;
}

void SchemeBase::IScheme_reservedSymbols(std::vector<char16_t>& symbols, bool withFragment) const {
    const std::u16string_view reserved = reservedSymbols(withFragment);
    symbols.assign(reserved.begin(), reserved.end());
    std::sort(symbols.begin(), symbols.end());
}

InterfacePtr<IFile> SchemeBase::IScheme_openURL(const URL& url, int) const {
    throw UnsupportedOperationException(ORB_HERE, url.securePresentation());
}

void SchemeBase::IScheme_createDirectory(const URL& url) const {
    throw_unexpected_call(ORB_FILE_HERE, url, u"SchemeBase::IScheme_createDirectory");
}

void SchemeBase::IScheme_remove(const URL& url, const char16_t*) const {
    throw_unexpected_call(ORB_FILE_HERE, url, u"SchemeBase::IScheme_remove");
}

bool SchemeBase::equalWithDefaultPort(const URL& a, const URL& b, unsigned port,
                                      bool baseOnly) const {
    return IScheme_equal(addDefaultPort(a, port), addDefaultPort(b, port), baseOnly);
}

URL SchemeBase::addDefaultPort(const URL& url, unsigned port) {
    if (url.partView(URL::kHost, 3).empty() || !url.partView(URL::kPort, 1).empty()) return url;
    std::vector<unsigned> marks = url.marks();
    const stdx::ustring digits = format_string(u"%u", port);
    const std::u16string_view from = url.text();
    stdx::ustring text(from.substr(0, marks[URL::kHostEnd]));
    text += u':';
    text += digits;
    const unsigned added = text.size() - marks[URL::kVolume]; // a colon may have stood there
    text += from.substr(marks[URL::kVolume]);
    marks[URL::kPort] = marks[URL::kHostEnd] + 1;
    for (int i = URL::kVolume; i != URL::kMarks; ++i) marks[static_cast<unsigned>(i)] += added;
    return URL(text, url.withFragment(), std::move(marks), url.parsed());
}

void SchemeBase::pathSeparator(stdx::ustring& separators) const {
    separators = u"/\\";
}

std::u16string_view SchemeBase::reservedSymbols(bool withFragment) const {
    return begins_fragment(withFragment) ? kReservedWithFragment : kReserved;
}

} // namespace core
