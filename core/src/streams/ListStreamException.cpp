#include <core/streams/ListStreamException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {

ListStreamException::ListStreamException(IExceptionObject* inner)
    : Exception(CLSID_ListStreamExceptionObject, load_core_wstring("IDS_LISTSTREAMERROR"), inner) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(ListStreamException);
