// What the exception classes of the library store behind the fields of the base. Classes that are
// not here add none.
#include <core/persistence/ExceptionFields.h>

#include <core/component/DataExceptions.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/ThreadException.h>
#include <core/files/FileException.h>
#include <core/locale/LocaleException.h>
#include <core/numbers/NumericException.h>
#include <core/storage/StorageException.h>
#include <core/streams/BufferException.h>
#include <core/streams/IOException.h>
#include <core/text/ConverterException.h>
#include <core/text/RegexException.h>
#include <core/text/StringTemplateException.h>
#include <core/text/StringTokenizerException.h>

ORBCORE_EXCEPTION_FIELDS(BufferException, error_);
ORBCORE_EXCEPTION_FIELDS(ConverterException, error_, encoding_);
ORBCORE_EXCEPTION_FIELDS(FileException, error_, url_, secondURL_, extra_);
ORBCORE_EXCEPTION_FIELDS(IOException, error_);
ORBCORE_EXCEPTION_FIELDS(LocaleException, localeName_);
ORBCORE_EXCEPTION_FIELDS(NumericException, error_);
ORBCORE_EXCEPTION_FIELDS(PivotSourceException, error_);
ORBCORE_EXCEPTION_FIELDS(RegexException, status_, pattern_);
ORBCORE_EXCEPTION_FIELDS(SCOM_Exception, reason_);
ORBCORE_EXCEPTION_FIELDS(StorageException, error_, url_);
ORBCORE_EXCEPTION_FIELDS(StringTemplateException, error_, position_);
ORBCORE_EXCEPTION_FIELDS(StringTokenizerException, error_, position_);
ORBCORE_EXCEPTION_FIELDS(ThreadException, error_);
ORBCORE_EXCEPTION_FIELDS(VersionException, module_, version_);
