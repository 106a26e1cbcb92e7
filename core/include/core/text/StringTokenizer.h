// Takes a line apart at delimiters, with quotation.
//
//   auto tokenizer = core::create_object<core::IStringTokenizer>(core::CLSID_StringTokenizer);
//   tokenizer->tokenize(u"a, \"b, c\"", u",", u"\"'");
//   tokenizer->getTokens();      // "a" and "b, c"
//
// White space around a token is dropped, that inside stays. A quotation reaches from its quote to
// the next equal one; the quote itself is doubled inside it, and other quotes are plain there. One
// object serves one thread at a time.
#pragma once

#include <core/component/IUnknown.h>
#include <elm/string>

#include <vector>

namespace core {

inline constexpr _GUID CLSID_StringTokenizer = "5688a0b9-dc37-49d6-a2d7-ec5116c419b2"_guid;
inline constexpr _GUID IID_IStringTokenizer = "43780154-4d39-4357-8153-4b6863b1db96"_guid;

class IStringTokenizer : public IUnknown {
public:
    ORB_INTERFACE(IStringTokenizer, IID_IStringTokenizer)

    // Each unit of `delimiters` ends a token, each unit of `quotes` opens a quotation at the start
    // of one; white space does neither. There is one token more than delimiters, also where it is
    // empty. Throws `core::StringTokenizerException`; there are no tokens then.
    virtual void tokenize(const stdx::ustring& line, const stdx::ustring& delimiters,
                          const stdx::ustring& quotes) = 0;
    // Those of the last `tokenize`; lent until the next one.
    virtual const std::vector<stdx::ustring>& getTokens() = 0;
};

} // namespace core
