// The twins of the exception classes of this floor.
#include <core/component/ApplicationException.h>
#include <core/component/CancelOperationException.h>
#include <core/component/CommandLineException.h>
#include <core/component/ExceptionObject.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/IllegalStateException.h>
#include <core/component/InteractiveSecurityException.h>
#include <core/component/RemotingException.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/ThreadException.h>
#include <core/component/UnsupportedOperationException.h>

ORBCORE_EXCEPTION_OBJECT(Exception);
ORBCORE_EXCEPTION_OBJECT(ApplicationException);
ORBCORE_EXCEPTION_OBJECT(CancelOperationException);
ORBCORE_EXCEPTION_OBJECT(CommandLineException);
ORBCORE_EXCEPTION_OBJECT(IllegalArgumentException);
ORBCORE_EXCEPTION_OBJECT(IllegalStateException);
ORBCORE_EXCEPTION_OBJECT(InteractiveSecurityException);
ORBCORE_EXCEPTION_OBJECT(LibraryLoadException);
ORBCORE_EXCEPTION_OBJECT(RemotingException);
ORBCORE_EXCEPTION_OBJECT(SCOM_Exception);
ORBCORE_EXCEPTION_OBJECT(StackOverflowException);
ORBCORE_EXCEPTION_OBJECT(ThreadException);
ORBCORE_EXCEPTION_OBJECT(UnsupportedOperationException);
ORBCORE_EXCEPTION_OBJECT(VersionException);
