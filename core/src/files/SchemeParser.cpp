// The parser of URLs: one pass over the text, each step of which sets its marks.
#include <core/files/SchemeBase.h>

#include <core/text/Characters.h>
#include <core/text/Compare.h>

#include <algorithm>

namespace core {
namespace {

bool belongs_to_scheme_name(char16_t c) noexcept {
    return is_alpha(c) || is_digit(c) || c == u'+' || c == u'-' || c == u'.';
}

void skip_space(URLParse& parse) noexcept {
    while (!parse.atEnd() && is_space(parse.text[parse.position])) ++parse.position;
}

// "c:", or behind a scheme the first two segments of "//server/share". A reserved unit before ":"
// begins no volume: "?:" are params.
void skip_volume(URLParse& parse, bool hasScheme) noexcept {
    const unsigned start = parse.position;
    if (start + 1 < parse.text.size() && parse.text[start + 1] == u':' &&
        !parse.reserved.contains(parse.text[start])) {
        parse.position += 2;
    } else if (hasScheme && parse.atSeparator() && parse.atSeparator(1)) {
        parse.position = parse.segmentEnd(start + 2);
        if (parse.atSeparator()) parse.position = parse.segmentEnd(parse.position + 1);
    }
}

// The marks of an authority while it is walked through.
struct Authority {
    unsigned user, userEnd, password, passwordEnd, host, hostText, hostTextEnd, hostEnd, port;
    bool hasUser = false;
    bool hasPort = false;
    bool inBrackets = false;
    bool hadBrackets = false;

    explicit Authority(unsigned start)
        : user(start),
          userEnd(start),
          password(start),
          passwordEnd(start),
          host(start),
          hostText(start),
          hostTextEnd(start),
          hostEnd(start),
          port(start) {}

    void end_user(unsigned at, unsigned passwordStart, unsigned end) noexcept {
        userEnd = at;
        password = passwordStart;
        passwordEnd = end;
        host = hostText = end + 1;
        hasUser = true;
        inBrackets = hadBrackets = false;
    }
    void begin_port(unsigned colon) noexcept {
        hostEnd = colon;
        port = colon + 1;
        hasPort = true;
    }
    void finish(unsigned end) noexcept {
        if (!hasPort) hostEnd = port = end;
        if (!hadBrackets || inBrackets) hostTextEnd = hostEnd;
    }
};

} // namespace

std::u16string_view SchemeBase::extractSchemeName(std::u16string_view text) noexcept {
    std::size_t start = 0;
    while (start != text.size() && is_space(text[start])) ++start;
    std::size_t end = start;
    while (end != text.size() && belongs_to_scheme_name(text[end])) ++end;
    if (end == text.size() || text[end] != u':' || end - start < 2) return {};
    return text.substr(start, end - start);
}

URL SchemeBase::IScheme_parseURL(const stdx::ustring& text, bool withFragment) const {
    stdx::ustring separators;
    pathSeparator(separators);
    URLParse parse{.text = text,
                   .reserved = UnitSet(reservedSymbols(withFragment)),
                   .separators = UnitSet(separators),
                   .fragment = begins_fragment(withFragment)};
    parse.marks[URL::kTextEnd] = text.size();

    const auto parse_content = [&] {
        const bool hasScheme = parse.marks[URL::kSchemeEnd] != parse.marks[URL::kScheme];
        parse.mark();
        if (hasScheme) {
            if (!parse.text.substr(parse.position).starts_with(u"//")) return;
            parse.position += 2;
            parseAuthority(parse);
        }
        parse.markUpTo(URL::kVolume);
        parse.mark();
        if (parse.marks[URL::kUser] == parse.position) skip_volume(parse, hasScheme);
        parsePath(parse);
        parseParams(parse);
        if (parse.fragment) parseFragment(parse);
    };
    if (parseScheme(parse)) parse_content();
    parse.markUpTo(URL::kTextEnd);
    return URL(text, withFragment, std::move(parse.marks), true);
}

// A text without a scheme is a reference within any scheme.
bool SchemeBase::parseScheme(URLParse& parse) const {
    const std::u16string_view name = extractSchemeName(parse.text);
    if (!name.empty()) {
        if (compare_nocase(name, name_) != 0) return false;
        const auto start = static_cast<unsigned>(name.data() - parse.text.data());
        parse.mark(start);
        parse.position = start + static_cast<unsigned>(name.size());
        parse.mark();
        ++parse.position;
    }
    parse.markUpTo(URL::kContent);
    return true;
}

void SchemeBase::parseAuthority(URLParse& parse) const {
    const std::u16string_view text = parse.text;
    Authority marks(parse.position);
    unsigned end = parse.segmentEnd(parse.position);
    for (; end != text.size(); end = parse.segmentEnd(end + 1)) {
        const char16_t c = text[end];
        if (parse.separators.contains(c) || c == u'#' || c == u';' || c == u'?') break;
        if (c == u'@' && !marks.hasUser && !marks.hasPort) {
            marks.end_user(end, end, end);
        } else if (c == u':' && !marks.inBrackets && !marks.hasPort) {
            const unsigned next = parse.segmentEnd(end + 1);
            if (!marks.hasUser && next != text.size() && text[next] == u'@') {
                marks.end_user(end, end + 1, next);
                end = next;
            } else {
                marks.begin_port(end);
            }
        } else if (c == u'[' && end == marks.host) {
            marks.inBrackets = marks.hadBrackets = true;
            marks.hostText = end + 1;
        } else if (c == u']' && marks.inBrackets) {
            marks.inBrackets = false;
            marks.hostTextEnd = end;
        }
    }
    marks.finish(end);
    for (const unsigned mark :
         {marks.user, marks.userEnd, marks.password, marks.passwordEnd, marks.host, marks.hostText,
          marks.hostTextEnd, marks.hostEnd, marks.port})
        parse.mark(mark);
    parse.position = end;
}

void SchemeBase::parsePath(URLParse& parse) const {
    parse.mark();
    unsigned name = parse.position;
    parse.position = parse.segmentEnd(name);
    while (parse.atSeparator()) {
        name = parse.position + 1;
        parse.position = parse.segmentEnd(name);
    }
    parse.mark(name);
    const std::size_t dot = parse.text.substr(name, parse.position - name).rfind(u'.');
    if (dot != parse.text.npos) {
        parse.mark(name + static_cast<unsigned>(dot));
        parse.mark(name + static_cast<unsigned>(dot) + 1);
    }
    parse.markUpTo(URL::kPathEnd);
}

void SchemeBase::parseParams(URLParse& parse) const {
    skip_space(parse);
    parse.mark();
    if (parse.at(u';') || parse.at(u'?')) {
        ++parse.position;
        skip_space(parse);
        parse.mark();
        const std::size_t end =
            parse.fragment ? parse.text.find(u'#', parse.position) : parse.text.npos;
        parse.position = static_cast<unsigned>(std::min(end, parse.text.size()));
    }
    parse.markUpTo(URL::kFragment);
}

void SchemeBase::parseFragment(URLParse& parse) const {
    skip_space(parse);
    if (!parse.at(u'#')) return parse.mark();
    ++parse.position;
    skip_space(parse);
    parse.mark();
    parse.position = static_cast<unsigned>(parse.text.size());
}

} // namespace core
