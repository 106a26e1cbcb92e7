// A type that scripts can use, from its declaration to its persistence: "Invoice", "Накладная".
//
//   core::Value invoice(core::create_object<core::IType>(example::CLSID_InvoiceType)->createIValue());
//   core::set_property(invoice, u"Number", u"A-17");
//   core::call(invoice, u"Добавить", u"Paper", 12.5, 3);
//   core::Value total = core::get_property(invoice, u"Total");
//
// docs/scriptable-types.md tells how it is made.
#pragma once

#include <core/core.h>

namespace example {

using namespace core::literals;

inline constexpr _GUID CLSID_InvoiceType = "dc027696-1a85-4fa7-b31c-e9b4c5364b2d"_guid;
inline constexpr _GUID CLSID_Invoice = "53aacc6e-a677-4eb2-8f74-87ee26ef6367"_guid;

} // namespace example
