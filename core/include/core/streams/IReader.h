// Where text comes from: a stream of UTF-16 units that is read once, from the front.
//
//   while (!reader->eof())
//       if (reader->get() == u'\\') escape(reader->get());
//
// Readers are objects of one thread at a time. A reader that is not open reports eof(); all that
// gives data throws IOException NoSource then. What a source below throws passes through.
#pragma once

#include <core/component/IUnknown.h>

namespace core {

class IStringBuffer;

inline constexpr _GUID IID_IReader = "61df1f46-0891-4481-b360-1caa71134953"_guid;
inline constexpr _GUID IID_ITextWindow = "8317d687-bd78-4944-b531-6a65b4e7a175"_guid;

// As a count of units: all that there are.
inline constexpr unsigned kAllUnits = 0xFFFFFFFF;

// What get() and peek() give at the end. It may stand in a text, too: eof() decides.
inline constexpr char16_t kEndOfText = 0xFFFF;

class IReader : public IUnknown {
public:
    ORB_INTERFACE(IReader, IID_IReader)

    // The next unit, or kEndOfText; get() passes it.
    virtual char16_t get() = 0;
    virtual char16_t peek() = 0;

    // Copies at most `n` units, fewer only at the end; returns their number.
    virtual unsigned read(char16_t* to, unsigned n) = 0;
    // The same, but only to the unit `stop`, which is neither copied nor passed.
    virtual unsigned readUntil(char16_t stop, char16_t* to, unsigned n) = 0;

    // The same, appending to a buffer.
    virtual unsigned readTo(IStringBuffer* to, unsigned n = kAllUnits) = 0;
    virtual unsigned readToUntil(char16_t stop, IStringBuffer* to, unsigned n = kAllUnits) = 0;

    // Passes at most `n` units; returns their number.
    virtual unsigned skip(unsigned n) = 0;

    virtual bool eof() = 0;
};

// A second interface of the readers that hold text in memory: parsers scan it there instead of
// calling for each unit.
class ITextWindow : public IUnknown {
public:
    ORB_INTERFACE(ITextWindow, IID_ITextWindow)

    // The units that come next, as many as lie in memory; none only at the end. `size` gets their
    // number. Valid until the reader or the buffer under it is used.
    virtual const char16_t* window(unsigned& size) = 0;
    // Passes `n` units of the window.
    virtual void advance(unsigned n) = 0;
};

} // namespace core
