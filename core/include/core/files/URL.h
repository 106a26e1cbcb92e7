// The name of a file, of whatever kind: a text, and a table of the positions of its parts.
//
//   const core::URL url(u"file:///reports/may.txt", false);
//   url.part(14, 3);                                   // "may.txt"
//   url.implementCombine(core::URL(u"../june.txt", false), false).normalize();
//
// The text stays as it was given. It is taken apart by the scheme that it names, which the file
// system service knows (core/files/IScheme.h). A text without a scheme is taken apart by the rules
// that all schemes begin with; one whose scheme nobody registered is not taken apart at all.
//
// Parsing never fails: what a scheme cannot read stays behind the last mark, and `broken` says so.
// docs/files.md tells the marks. A URL is a value, for one thread at a time while it changes.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <string_view>
#include <vector>

namespace core {

class ListInStream;
class ListOutStream;

class ORBCORE_API URL {
public:
    // The positions in a parsed text, in UTF-16 units. A part lies between two of them.
    enum Mark : int {
        kScheme = 0,    // behind leading white space
        kSchemeEnd = 1, // the colon; 0 without a scheme
        kContent = 2,   // behind that colon
        kUser = 3,
        kUserEnd = 4,
        kPassword = 5,
        kPasswordEnd = 6, // at the "@"
        kHost = 7,        // at the "[" of a host in brackets
        kHostText = 8,
        kHostTextEnd = 9,
        kHostEnd = 10, // behind "]"; at the colon of the port
        kPort = 11,
        kVolume = 12, // where the authority ends
        kPath = 13,
        kFileName = 14,  // behind the last separator
        kDot = 15,       // of the extension; kPathEnd without one
        kExtension = 16, // kPathEnd without one
        kPathEnd = 17,   // at the ";" or "?" of the params
        kParams = 18,
        kParamsEnd = 19,
        kFragment = 20,
        kParsedEnd = 21,
        kTextEnd = 22,
        kMarks = 23,
    };

    URL() = default;

    // Takes the scheme's name from the text. With `withFragment` a "#" begins the fragment, without
    // it "#" is as any character.
    URL(const stdx::ustring& text, bool withFragment);
    URL(const char16_t* text, bool withFragment);
    // The URL of a text within a scheme: ("file", "/tmp/a") is "file:///tmp/a". Where nobody
    // registered the scheme, the text alone is taken, by the rules of no scheme.
    URL(std::u16string_view scheme, std::u16string_view text, bool withFragment);
    // For parsers: the fields as they are. `marks` is empty or has `kMarks` positions.
    URL(const stdx::ustring& text, bool withFragment, std::vector<unsigned> marks, bool parsed);

    // Parses a text by a scheme; an empty name is no scheme.
    void construct(std::u16string_view scheme, const stdx::ustring& text, bool withFragment);

    // The URL of what a person typed. A text without a scheme is a path of the file system, with
    // `onlyAbsolutePaths` only where it begins with "/".
    static URL prepareURL(const stdx::ustring& text, bool onlyAbsolutePaths);

    const stdx::ustring& text() const noexcept { return text_; }
    const std::vector<unsigned>& marks() const noexcept {
        return marks_;
    }                                                // empty or kMarks of them
    bool parsed() const noexcept { return parsed_; } // a scheme's parser set the marks
    bool withFragment() const noexcept { return withFragment_; }

    // The text from one mark to another, `count` marks on. Empty without marks, for marks that do
    // not exist, and where the part begins at or behind the end of the text. part(0, 1) is the
    // scheme, (3, 1) the user, (5, 1) the password, (8, 1) the host, (11, 1) the port, (12, 1) the
    // volume, (12, 5) volume and path, (14, 3) the name of the file, (16, 1) its extension, (18, 1)
    // the params, (20, 1) the fragment, (3, 9) the authority.
    stdx::ustring part(int start, int count) const;
    // The same, lent from this URL.
    std::u16string_view partView(int start, int count) const noexcept;

    // Text is left that the parser could not read. False without marks.
    bool broken() const noexcept;
    // It names its scheme.
    bool absolute() const noexcept;
    // Without the fragment; itself where no parser looked for one.
    URL baseURL() const;

    // Whether both name the same file, as their scheme sees it; `baseOnly`: fragments aside.
    bool equal(const URL& other, bool baseOnly) const;
    // The form that its scheme gives all names of the same file; see `SchemeBase`.
    URL normalize() const;

    // Where `reference` leads from here. This URL counts as a file, whose last segment is replaced,
    // or `asDirectory`. The result is not normalised.
    URL implementCombine(const URL& reference, bool asDirectory) const;
    // The shortest reference from here, a file, to `target`; `target` where there is none.
    URL getRelativeURL(const URL& target) const;

    // For people: normalised, and for files the path as the process presents it.
    stdx::ustring presentation() const { return internalPresentation(false); }
    // The same with "XXXXX" for user and password.
    stdx::ustring securePresentation() const { return internalPresentation(true); }
    stdx::ustring internalPresentation(bool secure) const;
    // The text with "XXXXX" for user and password.
    stdx::ustring secureContent() const;

    // With the host in the form of the name system ("xn--…"), and back. A host that has no such
    // form stays.
    URL toIDNA() const;
    URL fromIDNA() const;

    // The text with what the scheme reserves, and "%", as "%" and the code in hexadecimal; as it is
    // where nobody registered the scheme.
    static stdx::ustring escape(const stdx::ustring& text, std::u16string_view scheme,
                                bool withFragment);
    // Undoes it for codes from 32 to 126; others stay.
    static stdx::ustring unescape(const stdx::ustring& text);

    // As a list of the text and of `withFragment`. What is read is taken apart anew.
    void serialize(ListOutStream& stream) const;
    void deserialize(ListInStream& stream);

    // The same text, taken apart in the same way.
    friend bool operator==(const URL& a, const URL& b) noexcept {
        return a.text_ == b.text_ && a.withFragment_ == b.withFragment_ && a.marks_ == b.marks_;
    }

private:
    using Conversion = bool (*)(const stdx::ustring& in, stdx::ustring& out);
    URL with_host(Conversion convert) const;

    stdx::ustring text_;
    std::vector<unsigned> marks_;
    bool parsed_ = false;
    bool withFragment_ = false;
};

} // namespace core
