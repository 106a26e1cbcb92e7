// The order in which values of any types stand in sorted collections.
//
//   std::stable_sort(values.begin(), values.end(), core::ValueLess());
//
// By type: Undefined, Null, booleans, numbers, strings, dates, objects, types. Within a type false
// comes before true, numbers and dates ascend, and what is left goes by its text: the collation of
// the process decides, case and spaces at the end do not count. So values may stand in one place that
// are not equal: "Riga" and "RIGA ".
//
// To compare throws what `getString` of an object does, and `TypeException` for values that stand for
// types which the process does not know.
#pragma once

#include <core/locale/Collator.h>
#include <core/values/GenericValue.h>

namespace core {

// That of the current process, or of the system without one.
ORBCORE_API Collator process_collator();

// Negative, 0 or positive.
ORBCORE_API int compare_values(IValue* a, IValue* b, const Collator& collator);
inline int compare_values(const GenericValue& a, const GenericValue& b, const Collator& collator) {
    return compare_values(a.lentIValue(), b.lentIValue(), collator);
}
inline int compare_values(const GenericValue& a, const GenericValue& b) {
    return compare_values(a, b, process_collator());
}

// For sorts and sorted containers, by the collation that was the process's when it was made. Any
// thread may use it.
class ValueLess {
public:
    ValueLess() : collator_(process_collator()) {}
    explicit ValueLess(const Collator& collator) : collator_(collator) {}

    bool operator()(const GenericValue& a, const GenericValue& b) const {
        return compare_values(a, b, collator_) < 0;
    }

private:
    Collator collator_;
};

} // namespace core
