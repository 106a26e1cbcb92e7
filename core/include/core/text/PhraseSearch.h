// Finds all the words of a user's search phrase in texts.
//
//   const auto mode = core::StringMatchMode::WordStart;
//   auto search = core::begin_string_search(u"annual report", mode, true);
//   std::vector<std::pair<unsigned, unsigned>> ranges;
//   search->search(title, &ranges);
//   if (search->getSearchStatus().first == core::StringSearchStatus::All) …
//
// The terms of a search are distinct, sorted and not empty. A search is for one thread at a time.
#pragma once

#include <core/component/IUnknown.h>
#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <elm/string>

#include <utility>
#include <vector>

namespace core {

inline constexpr _GUID IID_IStringSearchState = "d5119a3f-d618-43a3-8102-853c6610e122"_guid;

enum class StringMatchMode : int {
    Anywhere = 0,
    // The unit before an occurrence is no letter, digit or mark that belongs to one.
    WordStart = 1,
};

// Of the last `search`; `None` before the first, and where there are no terms.
enum class StringSearchStatus : int {
    None = 0,
    Some = 1,
    All = 2,
};

class IStringSearchState : public IUnknown {
public:
    ORB_INTERFACE(IStringSearchState, IID_IStringSearchState)

    // Looks for every term. To `ranges`, which may be null, it appends start and end of each
    // occurrence, term by term; occurrences of one term do not overlap. Throws
    // `std::out_of_range` where a term beyond the 32nd occurs: that cannot be recorded.
    virtual void search(const stdx::ustring& text,
                        std::vector<std::pair<unsigned, unsigned>>* ranges) = 0;
    // Which terms were found, and how many terms there are.
    virtual std::pair<StringSearchStatus, unsigned> getSearchStatus() = 0;
};

// The terms are the words of the phrase, between blanks and tabs. `ignoreCase` compares lower case.
ORBCORE_API InterfacePtr<IStringSearchState>
begin_string_search(const stdx::ustring& phrase, StringMatchMode mode, bool ignoreCase);
// The terms as they stand, blanks included.
ORBCORE_API InterfacePtr<IStringSearchState>
begin_string_search(const std::vector<stdx::ustring>& terms, StringMatchMode mode, bool ignoreCase);

} // namespace core
