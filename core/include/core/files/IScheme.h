// A scheme: what the names that begin with "name:" mean, and how their files are reached. The file
// system service passes every operation on to the scheme that a URL names.
//
//   class MailScheme
//       : public core::ObjectRoot
//       , public core::SCOM_InternalClass<MailScheme>
//       , public core::SchemeBase                        // the rules of names
//       , public core::ISchemeImpl<MailScheme> { … };    // core/files/SchemeBase.h
//
//   files->registerScheme(core::make_object<MailScheme>());
//
// Operations are called from any thread, with URLs that the scheme itself has normalised. Errors
// are thrown as `core::FileException`.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/files/IFile.h>
#include <core/files/IFileStat.h>
#include <core/files/URL.h>

#include <string_view>
#include <vector>

namespace core {

inline constexpr _GUID IID_IScheme = "eb99c95d-b9b4-4266-8bd0-b8c2045f14ec"_guid;
inline constexpr _GUID IID_ISchemeEx = "7db5d143-33d8-4e67-ab6a-6030f9fe3e40"_guid;
inline constexpr _GUID IID_IMoveDirectoryScheme = "b696505c-d36f-4b36-9ef3-df4fdcea86a8"_guid;

class IScheme : public IUnknown {
public:
    ORB_INTERFACE(IScheme, IID_IScheme)

    virtual std::u16string_view IScheme_schemeName() = 0; // lives as long as the scheme
    virtual URL IScheme_parseURL(const stdx::ustring& text, bool withFragment) = 0;
    // The text of the URL for a text within the scheme: "name://text".
    virtual stdx::ustring IScheme_createURLString(std::u16string_view text) = 0;
    virtual URL IScheme_normalizeURL(const URL& url) = 0;
    virtual bool IScheme_equal(const URL& a, const URL& b, bool baseOnly) = 0;
    virtual stdx::ustring IScheme_escape(const stdx::ustring& text, bool withFragment) = 0;
    // Replaces `symbols` by the reserved units, in ascending order.
    virtual void IScheme_reservedSymbols(std::vector<char16_t>& symbols, bool withFragment) = 0;

    // `mode`: the flags of core/files/IOManager.h.
    virtual InterfacePtr<IFile> IScheme_openURL(const URL& url, int mode) = 0;
    // Without a mask the entry that the URL names, with one the entries of that directory whose
    // names fit it. Null when there is none.
    virtual InterfacePtr<IFileStat> IScheme_findFile(const URL& url, const char16_t* mask) = 0;
    virtual void IScheme_createDirectory(const URL& url) = 0;
    // Without a mask the entry itself, with one the entries of that directory whose names fit it.
    virtual void IScheme_remove(const URL& url, const char16_t* mask) = 0;
};

// A scheme that copies and moves within itself better than byte by byte.
class ISchemeEx : public IScheme {
public:
    ORB_INTERFACE(ISchemeEx, IID_ISchemeEx)

    virtual void copy(const URL& from, const URL& to) = 0;
    virtual void move(const URL& from, const URL& to) = 0;
};

// A scheme that moves whole directories.
class IMoveDirectoryScheme : public IUnknown {
public:
    ORB_INTERFACE(IMoveDirectoryScheme, IID_IMoveDirectoryScheme)

    // `to` is removed first if it exists and is another entry than `from`.
    virtual void moveDirectory(const URL& from, const URL& to) = 0;
};

} // namespace core
