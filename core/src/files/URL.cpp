#include <core/files/URL.h>

#include <core/component/IllegalArgumentException.h>
#include <core/component/SCOM_Process.h>
#include <core/files/FileSystemFunctions.h>
#include <core/files/FileSystemServices.h>
#include <core/files/URLEncoder.h>
#include <core/text/Characters.h>
#include <core/text/Compare.h>

#include "files/PercentCode.h"
#include "files/URLSchemes.h"

#include <algorithm>

namespace core {
namespace {

constexpr std::u16string_view kFileScheme = u"file";

bool is_blank(std::u16string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), [](char16_t c) { return is_space(c); });
}

// The whole text with "XXXXX" for user and password. A scheme that nobody registered may have them
// too: there they are looked for by the common rules.
stdx::ustring hide_secrets(const URL& given) {
    const bool known = given.parsed() || given.marks().empty();
    const SchemeBaseUrlParser common(known ? u"" : SchemeBase::extractSchemeName(given.text()));
    const URL url = known ? given : common.IScheme_parseURL(given.text(), given.withFragment());
    static constexpr std::u16string_view kHidden = u"XXXXX";
    if (url.partView(URL::kUser, 3).empty()) return url.text();
    const auto shown = [&](int part) {
        const std::u16string_view text = url.partView(part, 1);
        return text.empty() ? text : kHidden;
    };
    const std::u16string_view text = url.text();
    const std::vector<unsigned>& marks = url.marks();
    stdx::ustring hidden(text.substr(0, marks[URL::kUser]));
    hidden += shown(URL::kUser);
    hidden += url.partView(URL::kUserEnd, 1);
    hidden += shown(URL::kPassword);
    hidden += text.substr(marks[URL::kPasswordEnd]);
    return hidden;
}

stdx::ustring path_presentation(const URL& url) {
    IPathService* const service = get_service<IPathService>();
    return service ? service->pathPresentation(url) : file_path(url);
}

} // namespace

InterfacePtr<IScheme> scheme_of(std::u16string_view name) {
    IFileSystem* const files = name.empty() ? nullptr : get_service<IFileSystem>();
    return files ? files->getScheme(name) : InterfacePtr<IScheme>();
}

const SchemeBase& default_scheme() {
    static const SchemeBase& scheme = *new SchemeBaseUrlParser(u"");
    return scheme;
}

URL::URL(const stdx::ustring& text, bool withFragment) {
    construct(SchemeBase::extractSchemeName(text), text, withFragment);
}

URL::URL(const char16_t* text, bool withFragment)
    : URL(text ? stdx::ustring(text) : stdx::ustring(), withFragment) {}

URL::URL(std::u16string_view scheme, std::u16string_view text, bool withFragment) {
    const InterfacePtr<IScheme> handler = scheme_of(scheme);
    if (handler)
        construct(scheme, handler->IScheme_createURLString(text), withFragment);
    else
        construct({}, stdx::ustring(text), withFragment);
}

URL::URL(const stdx::ustring& text, bool withFragment, std::vector<unsigned> marks, bool parsed)
    : text_(text), marks_(std::move(marks)), parsed_(parsed), withFragment_(withFragment) {
    ORB_ASSERT(marks_.empty() || marks_.size() == kMarks);
}

void URL::construct(std::u16string_view scheme, const stdx::ustring& text, bool withFragment) {
    if (scheme.empty()) {
        *this = default_scheme().IScheme_parseURL(text, withFragment);
    } else if (const InterfacePtr<IScheme> handler = scheme_of(scheme)) {
        *this = handler->IScheme_parseURL(text, withFragment);
    } else {
        std::vector<unsigned> marks(kMarks);
        marks[kTextEnd] = text.size();
        *this = URL(text, withFragment, std::move(marks), false);
    }
}

URL URL::prepareURL(const stdx::ustring& text, bool onlyAbsolutePaths) {
    if (text.empty()) return {};
    if (!SchemeBase::extractSchemeName(text).empty()) return URL(text, false);
    const auto* const start =
        std::find_if_not(text.cbegin(), text.cend(), [](char16_t c) { return is_space(c); });
    const std::u16string_view typed(start, text.cend());
    if (!onlyAbsolutePaths || typed.starts_with(u'/')) return URL(kFileScheme, typed, false);
    return URL(stdx::ustring(typed), false);
}

stdx::ustring URL::part(int start, int count) const {
    return stdx::ustring(partView(start, count));
}

std::u16string_view URL::partView(int start, int count) const noexcept {
    if (marks_.empty() || start < 0 || count < 0 || start >= kMarks || count >= kMarks - start)
        return {};
    const unsigned from = marks_[static_cast<unsigned>(start)];
    const unsigned to = std::min(marks_[static_cast<unsigned>(start + count)], text_.size());
    return from < to ? text_.view().substr(from, to - from) : std::u16string_view();
}

bool URL::broken() const noexcept {
    return !is_blank(partView(kParsedEnd, 1));
}

bool URL::absolute() const noexcept {
    return !is_blank(partView(kScheme, 1));
}

URL URL::baseURL() const {
    if (marks_.empty() || !parsed_ || marks_[kParamsEnd] >= text_.size()) return *this;
    const unsigned end = marks_[kParamsEnd];
    std::vector<unsigned> marks = marks_;
    for (unsigned& mark : marks) mark = std::min(mark, end);
    return URL(text_.substr(0, end), withFragment_, std::move(marks), parsed_);
}

bool URL::equal(const URL& other, bool baseOnly) const {
    if (broken() || other.broken()) return default_scheme().IScheme_equal(*this, other, false);
    const InterfacePtr<IScheme> scheme = scheme_of(partView(kScheme, 1));
    if (scheme != scheme_of(other.partView(kScheme, 1))) return false;
    return scheme ? scheme->IScheme_equal(*this, other, baseOnly)
                  : default_scheme().IScheme_equal(*this, other, baseOnly);
}

URL URL::normalize() const {
    if (const InterfacePtr<IScheme> scheme = scheme_of(partView(kScheme, 1)))
        return scheme->IScheme_normalizeURL(*this);
    return default_scheme().IScheme_normalizeURL(*this);
}

stdx::ustring URL::internalPresentation(bool secure) const {
    URL url = normalize();
    if (secure) {
        stdx::ustring hidden = hide_secrets(url);
        if (hidden != url.text()) url = URL(hidden, url.withFragment());
    }
    const std::u16string_view scheme = url.partView(kScheme, 1);
    const bool file = compare_nocase(scheme, kFileScheme) == 0 ||
                      compare_nocase(scheme, std::u16string_view(u"sfile")) == 0;
    return file && !url.broken() ? path_presentation(url) : url.text();
}

stdx::ustring URL::secureContent() const {
    return hide_secrets(*this);
}

// The host goes from mark kHost to mark kHostEnd.
URL URL::with_host(Conversion convert) const {
    stdx::ustring host;
    const stdx::ustring former = part(kHost, kHostEnd - kHost);
    if (former.empty() || !convert(former, host) || host == former) return *this;
    stdx::ustring text = text_.substr(0, marks_[kHost]) + host;
    if (const std::u16string_view port = partView(kPort, 1); !port.empty()) {
        text += u':';
        text += port;
    }
    text += text_.view().substr(std::min(marks_[kPath], text_.size()));
    URL url;
    url.construct(partView(kScheme, 1), text, false);
    return url;
}

URL URL::toIDNA() const {
    return with_host(idna_to_ASCII);
}

URL URL::fromIDNA() const {
    return with_host(idna_to_Unicode);
}

stdx::ustring URL::escape(const stdx::ustring& text, std::u16string_view scheme,
                          bool withFragment) {
    const InterfacePtr<IScheme> handler = scheme_of(scheme);
    return handler ? handler->IScheme_escape(text, withFragment) : text;
}

stdx::ustring URL::unescape(const stdx::ustring& text) {
    if (text.view().find(u'%') == std::u16string_view::npos) return text;
    const std::u16string_view from = text;
    stdx::ustring plain;
    plain.reserve(text.size());
    std::size_t position = 0;
    for (std::size_t sign; (sign = from.find(u'%', position)) != from.npos;) {
        plain += from.substr(position, sign - position);
        const int code = percent_code(from, sign);
        const bool decoded = code >= 32 && code <= 126;
        plain += decoded ? static_cast<char16_t>(code) : u'%';
        position = sign + (decoded ? 3 : 1);
    }
    plain += from.substr(position);
    return plain;
}

} // namespace core
