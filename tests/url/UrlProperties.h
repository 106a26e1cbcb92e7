// What holds for every text, however it came about. The scheme "file" is registered.
#pragma once

#include <core/files/URL.h>

#include <algorithm>

namespace test {

// The name of the first property that does not hold; null when all do.
inline const char* broken_url_property(const stdx::ustring& text, const stdx::ustring& other,
                                       bool withFragment) {
    using core::URL;
    const URL url(text, withFragment);
    if (url.text() != text || url.withFragment() != withFragment) return "text and flag are kept";
    if (url.marks().size() != URL::kMarks || url.marks()[URL::kTextEnd] != text.size())
        return "the last mark is the end of the text";
    if (url.parsed() && !std::is_sorted(url.marks().begin() + 2, url.marks().end()))
        return "marks ascend";

    const URL normal = url.normalize();
    if (normal.normalize() != normal) return "a normal form is its own normal form";
    if (url.parsed() && URL(normal.text(), withFragment) != normal)
        return "a normal form has the marks of its text";
    if (url.broken() != normal.broken()) return "a normal form reads as well as the URL";
    if (!url.equal(normal, false) || !url.equal(url, true)) return "a URL equals its normal form";

    const URL reference(other, withFragment);
    const URL combined = url.implementCombine(reference, false);
    if (reference.absolute() && combined != reference) return "absolute references stand alone";
    if (url.getRelativeURL(url).text().size() > text.size())
        return "from itself to itself is short";

    if (URL::unescape(URL::escape(text, u"file", withFragment)) != text)
        return "escapes come off again";
    return nullptr;
}

} // namespace test
