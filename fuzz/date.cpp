// A text as a date in all forms and as the id of a time zone: what is taken lies in the text, the
// forms agree where they overlap, and what was read comes back from its own text.
#include <core/component/Utf8.h>
#include <core/numbers/TimeZone.h>
#include <core/numbers/TimeZoneException.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using core::Date;
using core::DateSpan;

void expect(bool holds) {
    if (!holds) std::abort();
}

void check_plain(const std::string& bytes, const stdx::ustring& text) {
    Date date, narrow;
    const char16_t* end = nullptr;
    const char* narrowEnd = nullptr;
    const bool good = date.fromString(text.c_str(), &end);
    expect(end >= text.c_str() && end <= text.c_str() + text.size());
    expect(good || date.empty());
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(bytes.begin(), bytes.end(), isAscii)) {
        expect(narrow.fromString(bytes.c_str(), &narrowEnd) == good && narrow == date);
        expect(narrowEnd - bytes.c_str() == end - text.c_str());
    }
    Date again;
    expect(again.fromString(date.toString().c_str()) && again == date);
}

void check_iso(const stdx::ustring& text) {
    Date xml, universal, local;
    char16_t *xmlEnd = nullptr, *end = nullptr, *localEnd = nullptr;
    const bool isXml = xml.fromXMLString(text.c_str(), &xmlEnd);
    const bool good = universal.fromISOString(text.c_str(), &end, true);
    expect(local.fromISOString(text.c_str(), &localEnd, false) == good && localEnd == end);
    expect(end >= text.c_str() && end <= text.c_str() + text.size());
    expect(good || universal.empty());
    expect(local == universal || local == core::TimeZone::system().toLocalTime(universal));
    if (isXml) {
        const stdx::ustring taken(xmlEnd - Date::kXMLTextSize, xmlEnd);
        expect(xml.toXMLString() == taken);
        expect(*xmlEnd != 0 || (good && universal == xml));
    }
    Date again;
    expect(again.fromISOString(universal.toXMLString().c_str(), nullptr, false));
    expect(again == universal);
}

void check_zone(const stdx::ustring& id) {
    try {
        const core::TimeZone zone(id);
        expect(core::TimeZone(zone.id()) == zone && zone.id().size() < 64);
        const Date date(2021, 7, 4, 5, 6, 7);
        const DateSpan error = zone.toUniversalTime(zone.toLocalTime(date)) - date;
        expect(error.magnitude() <= core::kTicksPerHour * 2);
    } catch (const core::TimeZoneException& exception) {
        expect(exception.description().size() > id.view().substr(0, id.view().find(u'\0')).size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const stdx::ustring text = core::from_utf8(bytes);
    check_plain(bytes, text);
    check_iso(text);
    check_zone(text);
    return 0;
}
