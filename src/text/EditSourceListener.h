#pragma once
// The interface through which an edit source tells its views what changed.
// A view attaches itself with TCustomEasyEditSource::Attach and is then called
// once at the end of every outermost update (notify == nullptr; the source's
// ChangeFlags say what changed) and once per position record sent while an
// update is open. Views are called in the order they were attached; the
// form's OnSourceChanged follows the last view.

#include <cstdint>

#include "text/EasyPoint.h"

namespace zorfa::text {

class TCustomEasyEditSource;

// Notification kinds.
enum TEasySourceNotifyKind : std::uint8_t {
    // The caret is about to pass the end of a line; a wrapped view may turn
    // the move (X, Y in and out) into a move to the next row.
    snLineEnd = 0,
    // Positions moved: Data points to a TEasyPositionMove.
    snPositions = 10,
    // A stream range was replaced at once (block delete or insert): Data
    // points to a TEasyRangeMove (EasyBookmarks.h), whose Adjust moves a
    // selection end as the marks move.
    snRange = 11,
    // Lines changed while changes are not locked: X first line, Y last line
    // (MaxInt: to the end).
    snLinesChanged = 15,
};

struct TEasySourceNotify {
    std::uint8_t Kind = 0;
    const void* Data = nullptr;
    int X = 0;
    int Y = 0;
};

// Payload of snPositions: the caret before the primitive and the moves, to be
// applied with the AdjustMarks rule.
struct TEasyPositionMove {
    int X = 0;
    int Y = 0;
    int DX = 0;
    int DY = 0;
};

class IEasySourceListener {
public:
    virtual ~IEasySourceListener() = default;
    virtual void SourceChanged(TCustomEasyEditSource& source, TEasySourceNotify* notify) = 0;
};

}  // namespace zorfa::text
