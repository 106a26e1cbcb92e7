// A file under another name: what is shown of `inner` is its contents, the URL is one's own.
//
//   auto file = core::create_object<core::IRedirector>(core::CLSID_Redirector);
//   file->attach(inner.get(), url);
//   core::InterfacePtr<core::IFile>(file)->url();     // the given one
#pragma once

#include <core/files/IFile.h>
#include <core/files/URL.h>

namespace core {

inline constexpr _GUID CLSID_Redirector = "044db515-5884-4cd2-aca3-b33954e22512"_guid;
inline constexpr _GUID IID_IRedirector = "319674a0-8974-4786-bdf3-21d06e6c0a58"_guid;

// The object is an `IFileSharedEx` too. An operation that the inner file does not have, and any
// before `attach`, throws `core::FileException` for an unexpected call.
class IRedirector : public IUnknown {
public:
    ORB_INTERFACE(IRedirector, IID_IRedirector)

    // Takes a reference. Of a redirector its inner file is taken, so chains do not grow.
    virtual void attach(IFile* inner, const URL& url) = 0;
    virtual IFile* inner() = 0; // lent; null before `attach`
};

} // namespace core
