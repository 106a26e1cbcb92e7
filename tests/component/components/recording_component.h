#pragma once

#include <core/component/IUnknown.h>
#include <core/platform/version.h>

#include <string>

namespace recording {

using namespace core::literals;

inline constexpr _GUID IID_IRecord = "51f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a01"_guid;
inline constexpr _GUID CLSID_Note = "51f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a02"_guid;
inline constexpr _GUID CLSID_Archive = "51f2d9a0-6c7b-4f53-9b8e-0d4b7f2c1a03"_guid;

class IRecord : public IUnknown {
public:
    ORB_INTERFACE(IRecord, IID_IRecord)
    // From now on the component appends to `text` what happens to it; null ends that.
    virtual void write_to(std::string* text) = 0;
};

} // namespace recording
