// The exceptions of sources of data, and their twins.
#include <core/component/DataExceptions.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {

ComparatorException::ComparatorException(IExceptionObject* inner)
    : ComparatorException(stdx::ustring(), inner) {}

ComparatorException::ComparatorException(const stdx::ustring& description, IExceptionObject* inner)
    : Exception(CLSID_ComparatorExceptionObject, description, inner) {}

DataSourceException::DataSourceException(IExceptionObject* inner)
    : DataSourceException(stdx::ustring(), inner) {}

DataSourceException::DataSourceException(const stdx::ustring& description, IExceptionObject* inner)
    : Exception(CLSID_DataSourceExceptionObject, description, inner) {}

EDBException::EDBException(IExceptionObject* inner) : EDBException(stdx::ustring(), inner) {}

EDBException::EDBException(const stdx::ustring& description, IExceptionObject* inner)
    : Exception(CLSID_EDBExceptionObject, description, inner) {}

ProfileSrcException::ProfileSrcException(IExceptionObject* inner)
    : ProfileSrcException(stdx::ustring(), inner) {}

ProfileSrcException::ProfileSrcException(const stdx::ustring& description, IExceptionObject* inner)
    : Exception(CLSID_ProfileSrcExceptionObject, description, inner) {}

PivotSourceException::PivotSourceException(IExceptionObject* inner)
    : Exception(CLSID_PivotSourceExceptionObject, stdx::ustring(), inner) {}

PivotSourceException::PivotSourceException(Error error, IExceptionObject* inner)
    : Exception(CLSID_PivotSourceExceptionObject,
                error == Error::DataSource
                    ? load_core_wstring("IDS_PIVOTSOURCE_ERROR_DATASOURCEERROR")
                    : stdx::ustring(),
                inner),
      error_(error) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(ComparatorException);
ORBCORE_EXCEPTION_OBJECT(DataSourceException);
ORBCORE_EXCEPTION_OBJECT(EDBException);
ORBCORE_EXCEPTION_OBJECT(ProfileSrcException);
ORBCORE_EXCEPTION_OBJECT(PivotSourceException);
