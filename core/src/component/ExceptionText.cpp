// The texts around exceptions: descriptions with the place of a fault, and the chain of causes for
// logs.
#include <core/component/Exception.h>

#include <core/component/Utf8.h>

#include <algorithm>
#include <charconv>
#include <ostream>
#include <string_view>

namespace core {
namespace {

stdx::ustring decimal(unsigned number) {
    char digits[10];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    return {std::begin(digits), end};
}

void print_categories(std::ostream& out, const Exception::Categories& categories) {
    const char* separator = " [";
    for (const ExceptionCategoryRow& row : kExceptionCategoryRows) {
        const auto bit = static_cast<std::size_t>(row.value);
        if (bit >= categories.size() || !categories.test(bit)) continue;
        out << separator << to_utf8(row.names[0]);
        separator = ", ";
    }
    if (categories.any()) out << ']';
}

void print_trace(std::ostream& out, const char* title, const stdx::ustring& trace) {
    if (!trace.empty()) out << title << to_utf8(trace) << '\n';
}

} // namespace

stdx::ustring format_exception_descr(const stdx::ustring& a, const stdx::ustring& b) {
    return a.empty() || b.empty() ? a : a + u'\n' + b;
}

stdx::ustring format_exception_descr(const char* component, unsigned int line, const char16_t* file,
                                     const stdx::ustring& a, const stdx::ustring& b) {
    return format_exception_descr(a, b) + u"\n[" + from_utf8(component ? component : "") + u" - " +
           skip_absolute_path(file) + u" (" + decimal(line) + u")]";
}

const char16_t* skip_absolute_path(const char16_t* file) noexcept {
    if (!file) return u"";
    const std::u16string_view path = file;
    if (!path.starts_with(u'/')) return file;
    std::size_t folder = path.npos; // the last "/src/" or "/include/"
    for (const std::u16string_view name : {u"/src/", u"/include/"})
        if (const std::size_t found = path.rfind(name);
            found != path.npos && (folder == path.npos || found > folder))
            folder = found;
    if (folder == path.npos) return file + path.rfind(u'/') + 1;
    const std::size_t above = folder == 0 ? 0 : path.rfind(u'/', folder - 1);
    return file + above + 1;
}

std::ostream& operator<<(std::ostream& out, const Exception& exception) {
    return out << to_utf8(exception.description());
}

void print_exception_chain(std::ostream& out, const Exception& exception) {
    const char* title = "";
    for (const Exception* link = &exception; link;
         link = link->inner() ? link->inner()->exception() : nullptr) {
        out << title << *link;
        print_categories(out, link->categories());
        out << '\n';
        print_trace(out, "  at ", link->creationStackTrace());
        print_trace(out, "  on the server at ", link->serverStackTrace());
        title = "caused by: ";
    }
}

} // namespace core
