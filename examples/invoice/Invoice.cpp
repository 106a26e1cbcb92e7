#include "Invoice.h"

#include <core/streams/ListRecord.h>
#include <core/values/ContextException.h>
#include <core/values/ScriptType.h>

#include <optional>
#include <vector>

namespace example {
namespace {

using core::Date;
using core::GenericValue;
using core::Numeric;

struct Line {
    stdx::ustring goods;
    Numeric price;
    Numeric count;

    static constexpr auto fields =
        core::list_fields(core::list_field(&Line::goods), core::list_field(&Line::price),
                          core::list_field(&Line::count));
};

// The lines, stored as a list of their number and a record for each.
struct Lines {
    void serialize(core::ListOutStream& list) const {
        list->beginList();
        list->putUInt64(all.size());
        for (const Line& line : all) core::write_record(list, line);
        list->endList();
    }
    void deserialize(core::ListInStream& list) {
        all.clear();
        list->beginList();
        std::uint64_t count = 0; // tells no more than the items do
        list->getUInt64(count);
        while (list->nextInList()) core::read_record(list, all.emplace_back());
        list->endList();
    }

    std::vector<Line> all;
};

// What an invoice stores.
struct InvoiceData {
    stdx::ustring number;
    Date date;
    stdx::ustring customer;
    bool isPaid = false;
    Lines lines;
    Numeric taxRate = 0; // since version 2, in per cent

    static constexpr auto fields = core::list_fields(
        core::list_field(&InvoiceData::number), core::list_field(&InvoiceData::date),
        core::list_field(&InvoiceData::customer), core::list_field(&InvoiceData::isPaid),
        core::list_field(&InvoiceData::lines), core::list_field<2>(&InvoiceData::taxRate));
};

class Invoice
    : public core::ObjectRoot
    , public core::SCOM_Class<Invoice, &CLSID_Invoice>
    , public core::ScriptValue<Invoice, &CLSID_InvoiceType>
    , public core::IPersistableObjectImpl<Invoice, &CLSID_Invoice> {
public:
    static constexpr core::Term name = {u"Invoice", u"Накладная"};
    static const core::ScriptTable members;
    static const core::InterfaceEntry* _GetEntries() {
        return core::script_interface_map<Invoice, core::IPersistableObject>();
    }

    // ---- Constructor: with a number and a customer, or without

    void open(const stdx::ustring& number, const stdx::ustring& customer) {
        data_.number = number;
        data_.customer = customer;
    }

    // ---- Properties

    const stdx::ustring& number() const { return data_.number; }
    void setNumber(const stdx::ustring& number) { data_.number = number; }
    Date date() const { return data_.date; }
    void setDate(const Date& date) { data_.date = date; }
    const stdx::ustring& customer() const { return data_.customer; }
    void setCustomer(const stdx::ustring& customer) { data_.customer = customer; }
    const Numeric& taxRate() const { return data_.taxRate; }
    void setTaxRate(const Numeric& perCent) {
        if (perCent < 0 || perCent > 100) core::property_value_mismatch(nullptr);
        data_.taxRate = perCent;
    }
    bool isPaid() const { return data_.isPaid; }
    Numeric total() const {
        Numeric sum = 0;
        for (const Line& line : data_.lines.all) sum += line.price * line.count;
        return (sum + sum * data_.taxRate / 100).round(2);
    }

    // ---- Methods

    // Gives what the new line comes to.
    Numeric add(const stdx::ustring& goods, const Numeric& price, const Numeric& count) {
        if (count <= 0) core::parameter_value_mismatch(2);
        data_.lines.all.push_back({goods, price, count});
        return price * count;
    }
    // Whether there is such a line; its price goes to `price`.
    bool find(const stdx::ustring& goods, GenericValue& price) const {
        for (const Line& line : data_.lines.all) {
            if (core::compare_nocase(line.goods, goods) != 0) continue;
            price.assign(line.price);
            return true;
        }
        return false;
    }
    // On the day given, or else on the day of the invoice.
    void pay(const std::optional<Date>& day) {
        data_.isPaid = true;
        if (day) data_.date = *day;
    }

    // ---- Persistence

    void serialize(core::IOutPersistenceStorage* storage) override {
        core::write_versioned_record(*storage->listStream(), data_);
    }
    void deserialize(core::IInPersistenceStorage* storage) override {
        core::read_versioned_record(*storage->listStream(), data_);
    }

private:
    InvoiceData data_;
};

// What scripts see of it.

using core::makes;
using core::reads;
using core::runs;
using core::writes;

constexpr core::ScriptProperty kProperties[] = {
    {{u"Number", u"Номер"}, reads<&Invoice::number>, writes<&Invoice::setNumber>},
    {{u"Date", u"Дата"}, reads<&Invoice::date>, writes<&Invoice::setDate>},
    {{u"Customer", u"Покупатель"}, reads<&Invoice::customer>, writes<&Invoice::setCustomer>},
    {{u"TaxRate", u"СтавкаНалога"}, reads<&Invoice::taxRate>, writes<&Invoice::setTaxRate>},
    {{u"Paid", u"Оплачена"}, reads<&Invoice::isPaid>},
    {{u"Total", u"Итого"}, reads<&Invoice::total>},
};

constexpr core::ScriptMethod kMethods[] = {
    {{u"Add", u"Добавить"},
     runs<&Invoice::add>,
     {{{u"Goods", u"Товар"}}, {{u"Price", u"Цена"}}, {{u"Count", u"Количество"}, 1}}},
    {{u"Find", u"Найти"},
     runs<&Invoice::find>,
     {{{u"Goods", u"Товар"}}, {{u"Price", u"Цена"}, std::nullopt}}},
    {{u"Pay", u"Оплатить"}, runs<&Invoice::pay>, {{{u"Day", u"День"}}}},
};

constexpr core::ScriptConstructor kConstructors[] = {
    {makes<&Invoice::open>, {{{u"Number", u"Номер"}, u""}, {{u"Customer", u"Покупатель"}, u""}}},
};

constexpr core::ScriptTable Invoice::members =
    core::script_table<Invoice>(kProperties, kMethods, kConstructors);

} // namespace
} // namespace example

ORBCORE_REGISTER(example::Invoice);
ORBCORE_REGISTER(core::ScriptType<example::Invoice>);
