#include <core/text/Split.h>

#include <algorithm>

namespace core {

namespace {

using elm::detail::Membership;

template <class T> using String = elm::BasicString<T, 0u, 0u, std::allocator>;
template <class T> using View = std::basic_string_view<T>;

// Calls `take` with each piece between delimiters.
template <class T, class Take> void each_piece(View<T> text, View<T> delimiters, Take take) {
    const T* at = text.data();
    const T* const end = at + text.size();
    for (;;) {
        const T* const delimiter =
            elm::detail::find_of(at, static_cast<std::size_t>(end - at), delimiters.data(),
                                 delimiters.size(), Membership::In);
        take(View<T>(at, delimiter ? delimiter : end));
        if (!delimiter) return;
        at = delimiter + 1;
    }
}

template <class T> std::vector<String<T>> split(View<T> text, View<T> delimiters) {
    std::vector<String<T>> pieces;
    each_piece(text, delimiters, [&](View<T> piece) { pieces.emplace_back(piece); });
    return pieces;
}

template <class T> std::vector<String<T>> tokenize(View<T> text, View<T> delimiters) {
    std::vector<String<T>> pieces;
    each_piece(text, delimiters, [&](View<T> piece) {
        if (!piece.empty()) pieces.emplace_back(piece);
    });
    return pieces;
}

// Replaces at most `times` occurrences.
template <class T>
String<T> replaced(const String<T>& text, View<T> from, View<T> to, std::size_t times) {
    if (from.empty()) return text;
    String<T> result;
    unsigned kept = 0; // behind the last replaced occurrence
    for (; times != 0; --times) {
        const unsigned found = text.find(from, kept);
        if (found == text.npos) break;
        result.append(text.view().substr(kept, found - kept)).append(to);
        kept = found + static_cast<unsigned>(from.size());
    }
    return kept == 0 ? text : result.append(text.view().substr(kept));
}

template <class T> bool is_separator(T c) {
    return c == T('/') || c == T('\\');
}

template <class T> bool begins_with_drive(View<T> path) {
    if (path.size() < 2 || path[1] != T(':')) return false;
    const T letter = static_cast<T>(path[0] | 0x20);
    return letter >= T('a') && letter <= T('z');
}

template <class T> struct PathPieces { View<T> drive, dir, name, ext; };

template <class T> PathPieces<T> path_pieces(View<T> path) {
    PathPieces<T> pieces;
    pieces.drive = path.substr(0, begins_with_drive(path) ? 2 : 0);
    path.remove_prefix(pieces.drive.size());
    const auto separator = std::find_if(path.rbegin(), path.rend(), is_separator<T>);
    pieces.dir = path.substr(0, static_cast<std::size_t>(path.rend() - separator));
    path.remove_prefix(pieces.dir.size());
    const std::size_t dot = std::min(path.rfind(T('.')), path.size());
    pieces.name = path.substr(0, dot);
    pieces.ext = path.substr(dot);
    return pieces;
}

template <class T>
void split_path(View<T> path, String<T>& drive, String<T>& dir, String<T>& name, String<T>& ext) {
    // The path may be a view of one of the results: all are taken before any is given.
    const PathPieces<T> pieces = path_pieces(path);
    String<T> results[] = {String<T>(pieces.drive), String<T>(pieces.dir), String<T>(pieces.name),
                           String<T>(pieces.ext)};
    drive.swap(results[0]);
    dir.swap(results[1]);
    name.swap(results[2]);
    ext.swap(results[3]);
}

template <class T> String<T> make_path(View<T> drive, View<T> dir, View<T> name, View<T> ext) {
    String<T> path(drive);
    if (!drive.empty() && drive.back() != T(':')) path.push_back(T(':'));
    path.append(dir);
    if (!dir.empty() && !is_separator(dir.back())) path.push_back(T('/'));
    path.append(name);
    if (!ext.empty() && ext.front() != T('.')) path.push_back(T('.'));
    return std::move(path.append(ext));
}

} // namespace

std::vector<stdx::ustring> string_tokenize(const char16_t* begin, const char16_t* end,
                                           const char16_t* delimBegin, const char16_t* delimEnd) {
    return tokenize<char16_t>({begin, end}, {delimBegin, delimEnd});
}
std::vector<stdx::string> string_tokenize(const char* begin, const char* end,
                                          const char* delimBegin, const char* delimEnd) {
    return tokenize<char>({begin, end}, {delimBegin, delimEnd});
}
std::vector<stdx::ustring> string_split(const char16_t* begin, const char16_t* end,
                                        const char16_t* delimBegin, const char16_t* delimEnd) {
    return split<char16_t>({begin, end}, {delimBegin, delimEnd});
}
std::vector<stdx::string> string_split(const char* begin, const char* end, const char* delimBegin,
                                       const char* delimEnd) {
    return split<char>({begin, end}, {delimBegin, delimEnd});
}

stdx::ustring replace(const stdx::ustring& text, std::u16string_view from, std::u16string_view to) {
    return replaced(text, from, to, 1);
}
stdx::string replace(const stdx::string& text, std::string_view from, std::string_view to) {
    return replaced(text, from, to, 1);
}
stdx::ustring replace_all(const stdx::ustring& text, std::u16string_view from,
                          std::u16string_view to) {
    return replaced(text, from, to, text.size());
}
stdx::string replace_all(const stdx::string& text, std::string_view from, std::string_view to) {
    return replaced(text, from, to, text.size());
}

void string_splitpath(std::u16string_view path, stdx::ustring& drive, stdx::ustring& dir,
                      stdx::ustring& name, stdx::ustring& ext) {
    split_path(path, drive, dir, name, ext);
}
void string_splitpath(std::string_view path, stdx::string& drive, stdx::string& dir,
                      stdx::string& name, stdx::string& ext) {
    split_path(path, drive, dir, name, ext);
}

stdx::ustring string_makepath(std::u16string_view drive, std::u16string_view dir,
                              std::u16string_view name, std::u16string_view ext) {
    return make_path(drive, dir, name, ext);
}
stdx::string string_makepath(std::string_view drive, std::string_view dir, std::string_view name,
                             std::string_view ext) {
    return make_path(drive, dir, name, ext);
}

} // namespace core
