// The words for true and false in the language of a locale.
//
//   core::BoolFormat format(core::Locale(u"ru"));
//   format.format(true);                              // "Да"
//   bool value;
//   if (format.parse(u" нет ", value)) ...
//
// In a process of compatibility mode 0 or 1 a second pair is used ("истина"); see
// core/component/CompatibilityMode.h. A value: one thread at a time.
#pragma once

#include <core/locale/Locale.h>

namespace core {

class ORBCORE_API BoolFormat {
public:
    // A language that has no words of its own takes the English ones. The words are counted
    // references to those that all formats of the locale share.
    explicit BoolFormat(const Locale& locale);

    const Locale& locale() const noexcept { return locale_; }

    // By the pair that the compatibility mode of the process asks for.
    const stdx::ustring& format(bool value) const;
    // Whether the text is one of the two words of that pair, in any case of letters, with blanks
    // before and behind it. `value` is set only then. False is tried first.
    bool parse(std::u16string_view text, bool& value) const;

    // The words of the first pair.
    const stdx::ustring& getFalseName() const noexcept { return names_.no; }
    const stdx::ustring& getTrueName() const noexcept { return names_.yes; }
    // Set the word of both pairs.
    void setFalseName(const stdx::ustring& name) { names_.no = names_.falseName = name; }
    void setTrueName(const stdx::ustring& name) { names_.yes = names_.trueName = name; }

private:
    struct Names {
        stdx::ustring no, yes;             // the first pair
        stdx::ustring falseName, trueName; // the second
    };

    static const Names& names_of(const Locale& locale);

    Locale locale_;
    Names names_;
};

} // namespace core
