// The stored form of patterns, docs/formats/types.md.
#include <core/values/TypeDomain.h>

#include "BaseTypeTable.h"
#include "TypeDomainBody.h"

#include <core/streams/ListText.h>

#include <utility>

namespace core {
namespace {

constexpr char16_t kBinaryLetter = u'R';
constexpr char16_t kOtherLetter = u'#';

// ---- Qualifiers, behind the letter of their type. Those that say nothing are not written.

void put(ListOutStream& list, const NumericQualifiers& qualifiers) {
    if (qualifiers == NumericQualifiers()) return;
    list->putUInt32(qualifiers.digits);
    list->putUInt32(qualifiers.fraction);
    list->putBool(qualifiers.nonNegative);
}
void get(ListInStream& list, NumericQualifiers& qualifiers) {
    std::uint32_t digits = 0, fraction = 0;
    bool nonNegative = false;
    list->getUInt32(digits);
    list->getUInt32(fraction);
    list->getBool(nonNegative);
    qualifiers = {digits, fraction, nonNegative};
}

void put(ListOutStream& list, const LengthQualifiers& qualifiers) {
    if (qualifiers.length == 0) return;
    list->putUInt32(qualifiers.length);
    list->putBool(qualifiers.variable);
}
void get(ListInStream& list, LengthQualifiers& qualifiers) {
    std::uint32_t length = 0;
    bool variable = false;
    list->getUInt32(length);
    list->getBool(variable);
    qualifiers = LengthQualifiers(length, variable || length == 0);
}

struct DatePartLetter {
    int part;
    char16_t letter;
};
constexpr DatePartLetter kDateParts[] = {{DateQualifiers::kDate, u'D'},
                                         {DateQualifiers::kTime, u'T'}};

void put(ListOutStream& list, const DateQualifiers& qualifiers) {
    if (qualifiers == DateQualifiers()) return;
    stdx::ustring letters;
    for (const auto& [part, letter] : kDateParts)
        if ((qualifiers.parts & part) != 0) letters += letter;
    list->putString(letters);
}
void get(ListInStream& list, DateQualifiers& qualifiers) {
    stdx::ustring letters;
    list->getString(letters);
    int parts = 0;
    for (const auto& [part, letter] : kDateParts)
        if (letters.find(letter) != letters.npos) parts |= part;
    qualifiers = DateQualifiers(parts);
}

// Calls `use` with the qualifiers that belong to `type`, if any do.
template <class Types, class Use> void with_qualifiers(Types& types, const _GUID& type, Use use) {
    if (type == CLSID_NumericType) use(types.numeric);
    if (type == CLSID_StringType) use(types.string);
    if (type == CLSID_DateType) use(types.date);
    if (type == CLSID_BinaryDataType) use(types.binary);
}

// ---- Types

void put_type(ListOutStream& list, const _GUID& type, const QualifiedTypes& qualifiers) {
    const BaseTypeRow* const row = find_base_type_row(type);
    const char16_t letter = row                            ? row->letter
                            : type == CLSID_BinaryDataType ? kBinaryLetter
                                                           : kOtherLetter;
    list->beginList();
    list->putChars(&letter, 1);
    if (letter == kOtherLetter) list->putGuid(type);
    with_qualifiers(qualifiers, type, [&list](const auto& own) { put(list, own); });
    list->endList();
}

// The null GUID for a letter that is not known.
const _GUID& type_of(char16_t letter) {
    if (letter == kBinaryLetter) return CLSID_BinaryDataType;
    const BaseTypeRow* const row = find_base_type_row(letter);
    return row ? *row->clsid : kUUIDNull;
}

// One element of the list with its qualifiers; what later versions add to it is passed over.
_GUID get_type(ListInStream& list, QualifiedTypes& qualifiers) {
    stdx::ustring kind;
    _GUID type = {};
    list->beginList();
    list->getString(kind);
    if (const char16_t letter = kind.empty() ? u'\0' : kind[0]; letter == kOtherLetter) {
        list->getGuid(type);
    } else {
        type = type_of(letter);
        with_qualifiers(qualifiers, type, [&list](auto& own) {
            if (list->nextInList()) get(list, own);
        });
    }
    list->skipList();
    list->endList();
    return type;
}

// The string in front, which says that this is a pattern and which nobody checks. In text a list
// without it is an empty pattern.
class PatternMark final : public IListStreamObject {
public:
    void toStream(IWriter* writer) override { to_stream(writer, kMark); }
    bool fromStream(IReader* reader) override {
        stdx::ustring ignored;
        return is_end_of_list(reader) || from_stream(reader, ignored);
    }
    void toBinary(IListOutStream* stream) override { stream->putCString(kMark); }
    void fromBinary(IListInStream* stream) override {
        stdx::ustring ignored;
        stream->getString(ignored);
    }

private:
    static constexpr const char16_t* kMark = u"Pattern";
};

} // namespace

void TypeDomainPattern::serialize(ListOutStream& list) const {
    PatternMark mark;
    list->beginList();
    list->putObject(mark);
    for (const _GUID& type : reference().types) put_type(list, type, reference());
    list->endList();
}

void TypeDomainPattern::deserialize(ListInStream& list) {
    PatternMark mark;
    TypeDomainPattern read;
    TypeDomainPatternBody& body = read.unique();
    std::vector<_GUID> types;
    list->beginList();
    list->getObject(mark);
    while (list->nextInList()) types.push_back(get_type(list, body));
    list->endList();
    read.addTypes(types);
    *this = std::move(read);
}

} // namespace core
