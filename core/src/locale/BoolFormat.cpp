#include <core/locale/BoolFormat.h>

#include <core/component/CompatibilityMode.h>
#include <core/text/Characters.h>

#include "PerLocale.h"

#include <algorithm>
#include <iterator>

namespace core {
namespace {

struct LanguageWords {
    std::u16string_view language;
    const char16_t *no, *yes, *falseName, *trueName;
};

constexpr LanguageWords kDefault = {u"en", u"No", u"Yes", u"false", u"true"};

// By language.
constexpr LanguageWords kWords[] = {
    {u"az", u"yox", u"bəli", u"yalan", u"Doğru"},
    {u"bg", u"Не", u"Да", u"лъжа", u"истина"},
    {u"cs", u"Ne", u"Ano", u"nepravda", u"pravda"},
    {u"da", u"Nej", u"Ja", u"falsk", u"sand"},
    {u"de", u"Nein", u"Ja", u"falsch", u"wahr"},
    {u"el", u"Δεν", u"Ναι", u"ψευδές", u"αληθές"},
    {u"es", u"No", u"Si", u"falso", u"verdadero"},
    {u"fi", u"Ei", u"Joo", u"epätosi", u"tosi"},
    {u"fr", u"No", u"Oui", u"faux", u"vrai"},
    {u"hu", u"Nem", u"Sőt", u"hamis", u"igaz"},
    {u"hy", u"Ոչ", u"Այո", u"կեղծ", u"ճշմարիտ"},
    {u"it", u"No", u"Sì", u"falso", u"allineare"},
    {u"ka", u"არა", u"დიახ", u"მცდარი", u"ჭეშმარიტი"},
    {u"kk", u"Жоқ", u"Иә", u"жалған", u"ақіқат"},
    {u"lt", u"Ne", u"Taip", u"klaidinga", u"teisinga"},
    {u"lv", u"Nē", u"Jā", u"nepareizs", u"īsts"},
    {u"mn", u"ямар ч", u"Хэрэв тийм бол", u"худал", u"үнэн"},
    {u"nb", u"Nei", u"Ja", u"usann", u"sann"},
    {u"nl", u"Neen", u"Ja", u"onwaar", u"waar"},
    {u"nn", u"usann", u"sann", u"usann", u"sann"},
    {u"pl", u"Nie", u"Tak", u"fałsz", u"prawda"},
    {u"pt", u"Não", u"Sim", u"falso", u"verdadeiro"},
    {u"ro", u"Nu", u"Da", u"fals", u"adevărat"},
    {u"ru", u"Нет", u"Да", u"ложь", u"истина"},
    {u"sl", u"Ne", u"Da", u"neresnično", u"resnično"},
    {u"sv", u"Nej", u"Ja", u"falskt", u"sant"},
    {u"tk", u"Ýok", u"Hawa", u"ýalan", u"hakykat"},
    {u"tr", u"Hayır", u"Evet", u"yanlış", u"doğru"},
    {u"uk", u"Ні", u"Так", u"хибність", u"істина"},
    {u"vi", u"Không", u"Có", u"Sai", u"Đúng"},
    {u"zh", u"假", u"真", u"误", u"正"},
};
constexpr auto precedes = [](const LanguageWords& a, const LanguageWords& b) {
    return a.language < b.language;
};
static_assert(std::is_sorted(std::begin(kWords), std::end(kWords), precedes));

// By the first two letters, also of a language whose code has three.
const LanguageWords& words_of(const Locale& locale) noexcept {
    const LanguageWords sought{{locale.name(), 2}, {}, {}, {}, {}};
    const auto found = std::lower_bound(std::begin(kWords), std::end(kWords), sought, precedes);
    return found != std::end(kWords) && found->language == sought.language ? *found : kDefault;
}

bool uses_second_pair() {
    const int mode = compatibility_mode();
    return mode == 0 || mode == 1;
}

bool begins_with(std::u16string_view text, std::u16string_view word) noexcept {
    return text.size() >= word.size() &&
           std::equal(word.begin(), word.end(), text.begin(),
                      [](char16_t a, char16_t b) { return to_lower(a) == to_lower(b); });
}

} // namespace

const BoolFormat::Names& BoolFormat::names_of(const Locale& locale) {
    static constinit PerLocale<const Names> names;
    return names.of(locale, [&] {
        const LanguageWords& words = words_of(locale);
        return new Names{words.no, words.yes, words.falseName, words.trueName};
    });
}

BoolFormat::BoolFormat(const Locale& locale) : locale_(locale), names_(names_of(locale)) {}

const stdx::ustring& BoolFormat::format(bool value) const {
    if (uses_second_pair()) return value ? names_.trueName : names_.falseName;
    return value ? names_.yes : names_.no;
}

bool BoolFormat::parse(std::u16string_view text, bool& value) const {
    const auto skip_blanks = [&text] {
        text.remove_prefix(static_cast<std::size_t>(
            std::find_if_not(text.begin(), text.end(), [](char16_t c) { return is_space(c); }) -
            text.begin()));
    };
    skip_blanks();
    if (text.empty()) return false;
    const stdx::ustring& falseWord = format(false);
    const stdx::ustring& trueWord = format(true);
    const bool isTrue = !begins_with(text, falseWord);
    if (isTrue && !begins_with(text, trueWord)) return false;
    text.remove_prefix(isTrue ? trueWord.size() : falseWord.size());
    skip_blanks();
    if (!text.empty()) return false;
    value = isTrue;
    return true;
}

} // namespace core
