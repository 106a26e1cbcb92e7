#include "ListScanners.h"

namespace orb {

void put_item(core::IListOutStream& out, const ListItem& item) {
    struct {
        core::IListOutStream& to;
        void operator()(const Unsigned& value) const { to.putUInt64(value.value); }
        void operator()(const Negative& value) const { to.putInt64(value.value); }
        void operator()(float value) const { to.putFloat(value); }
        void operator()(double value) const { to.putDouble(value); }
        void operator()(const _GUID& value) const { to.putGuid(value); }
        void operator()(const core::Numeric& value) const { to.putNumeric(value); }
        void operator()(const stdx::ustring& value) const { to.putString(value); }
        void operator()(const Blob& value) const { to.putBytes(value.bytes); }
    } const put{out};
    std::visit(put, item);
}

namespace {

// A list of bytes begins with bit 6 of a tag, and without bit 5, which "{", spaces and marks of UTF-8
// and UTF-16 have, or lie below. So do the signatures of sections, whose second byte is 1 as well: no
// text has this.
ListForm form_of(ListSource& source) {
    unsigned char head[2] = {};
    for (unsigned size = 0; size != sizeof head;) {
        const unsigned n =
            source.read(size, head + size, static_cast<unsigned>(sizeof head) - size);
        if (n == 0) break;
        size += n;
    }
    if (head[0] >= 0x40 && head[0] < 0x60) return ListForm::Binary;
    return (head[0] == 1 || head[0] == 2) && head[1] == 1 ? ListForm::Compact : ListForm::Text;
}

} // namespace

std::unique_ptr<ListScanner> open_list(const std::string& name, const ListReading& reading) {
    const ListSourcePtr source = open_source(name);
    const ListForm form = reading.form == ListForm::Found ? form_of(*source) : reading.form;
    if (form == ListForm::Text || (form == ListForm::Binary && !reading.attachments))
        source->read_once();
    auto file = core::make_object<ListCursor>(source);
    if (form == ListForm::Binary) return binary_scanner(std::move(file), reading.attachments);
    if (form == ListForm::Compact) return compact_scanner(std::move(file), reading.attachments);
    return text_scanner(file);
}

} // namespace orb
