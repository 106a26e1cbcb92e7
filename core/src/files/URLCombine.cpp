// References: where one leads, and the one that leads somewhere.
#include <core/files/URL.h>

#include <core/text/Characters.h>
#include <core/text/Compare.h>
#include <core/text/Split.h>

#include "files/URLSchemes.h"

#include <algorithm>

namespace core {
namespace {

constexpr std::u16string_view kSeparators = u"/\\";

bool is_blank(const URL& url) noexcept {
    const std::u16string_view text = url.text();
    return std::all_of(text.begin(), text.end(), [](char16_t c) { return is_space(c); });
}

// A reference is read by the scheme of the URL that it stands in.
URL reparse(const URL& reference, const URL& base) {
    if (const InterfacePtr<IScheme> scheme = scheme_of(base.partView(URL::kScheme, 1)))
        return scheme->IScheme_parseURL(reference.text(), reference.withFragment());
    return default_scheme().IScheme_parseURL(reference.text(), reference.withFragment());
}

// Appends path and params of a reference that has neither scheme, authority nor volume.
void append_path(stdx::ustring& text, const URL& base, const URL& reference, bool asDirectory) {
    const std::u16string_view path = reference.partView(URL::kPath, 4);
    if (path.empty()) {
        text += base.partView(URL::kPath, 4);
        const std::u16string_view params = reference.partView(URL::kPathEnd, 2);
        text += params.empty() ? base.partView(URL::kPathEnd, 2) : params;
        return;
    }
    if (kSeparators.find(path.front()) == kSeparators.npos) {
        text += base.partView(URL::kPath, asDirectory ? 4 : 1);
        if (text.empty() || kSeparators.find(text.view().back()) == kSeparators.npos) text += u'/';
    }
    text += reference.partView(URL::kPath, 6);
}

} // namespace

URL URL::implementCombine(const URL& reference, bool asDirectory) const {
    if (broken()) return reference;
    const URL inner = reparse(reference, *this);
    if (inner.broken() || text_.empty()) return reference;
    if (reference.text().empty()) return *this;
    if (inner.absolute() || !parsed_ || !inner.parsed()) return reference;

    stdx::ustring text;
    text.reserve(text_.size() + reference.text().size() + 4);
    text += partView(kScheme, 1);
    if (!text.empty()) text += u':';
    if (!inner.partView(kUser, 9).empty()) {
        text += inner.partView(kContent, 17);
    } else if (!inner.partView(kVolume, 1).empty()) {
        text += u"//";
        text += inner.partView(kContent, 17);
    } else {
        text += partView(kContent, 11);
        append_path(text, *this, inner, asDirectory);
    }
    if (const std::u16string_view fragment = inner.partView(kFragment, 1);
        inner.withFragment() && !fragment.empty()) {
        text += u'#';
        text += fragment;
    }
    return URL(text, inner.withFragment());
}

URL URL::getRelativeURL(const URL& target) const {
    if (broken() || target.broken() || is_blank(*this)) return target;
    if (is_blank(target)) return *this;
    if (!target.absolute() || !parsed_ || !target.parsed() ||
        compare_nocase(partView(kScheme, 12), target.partView(kScheme, 12)) != 0)
        return target;

    const std::vector<stdx::ustring> from = string_split(partView(kVolume, 5), kSeparators);
    const std::vector<stdx::ustring> to = string_split(target.partView(kVolume, 5), kSeparators);
    const auto [fromRest, toRest] =
        std::mismatch(from.begin(), from.end(), to.begin(), to.end(),
                      [](const stdx::ustring& a, const stdx::ustring& b) {
                          return compare_nocase(a.view(), b.view()) == 0;
                      });
    stdx::ustring text;
    for (auto left = from.end() - fromRest; left > 1; --left) text += u"../";
    for (auto segment = toRest; segment != to.end(); ++segment) {
        if (segment != toRest) text += u'/';
        text += *segment;
    }
    text += target.partView(kPathEnd, 5);
    return URL(text, false);
}

} // namespace core
