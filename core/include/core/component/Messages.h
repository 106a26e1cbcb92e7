// The texts that people read: keys `IDS_*`, looked up in the bundle of a module in the language of
// the calling thread, `Thread::getResourceLocale`; on a thread of nobody's, in that of the system.
//
//   stdx::ustring text = core::load_core_wstring("IDS_ERR_ILLEGAL_STATE");
//
// A missing bundle breaks nothing: the key's own name stands for the text. A key that an existing
// bundle does not hold gives an empty string. Safe on any thread; a lookup is two searches in
// tables under a lock.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

namespace core {

class SCOM_ResourceBundle;

// With `expand`, "%ALT%", "%CTRL%" and "%SHIFT%" in the text become "Alt", "Ctrl" and "Shift". A
// null key gives an empty string, a null bundle is a missing one.
ORBCORE_API stdx::ustring load_wstring(SCOM_ResourceBundle* bundle, const char* key,
                                       bool expand = false);
// From the bundle of this library, which `CoreInit` opens.
ORBCORE_API stdx::ustring load_core_wstring(const char* key, bool expand = false);
// From the bundle that the current process knows by this name; "core" is this library's own.
ORBCORE_API stdx::ustring load_module_wstring(const char* module, const char* key,
                                              bool expand = false);
// The part number `part`, from 0, of a text whose parts are separated by line feeds; empty when
// there is no such part.
ORBCORE_API stdx::ustring load_module_part_wstring(const char* module, const char* key, int part,
                                                   bool expand = false);

} // namespace core
