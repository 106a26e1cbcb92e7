// A file that is a part of a stream and must be passed to its end before the stream goes on.
#pragma once

#include <core/component/IUnknown.h>

namespace core {

inline constexpr _GUID IID_IForwardOnlyFile = "7914b6c0-ec65-4aab-a773-45771a2f04a5"_guid;

class IForwardOnlyFile : public IUnknown {
public:
    ORB_INTERFACE(IForwardOnlyFile, IID_IForwardOnlyFile)

    // Passes what is left; the file is at its end then. The release does the same, but nobody can
    // catch what fails there.
    virtual void finish() = 0;
};

} // namespace core
