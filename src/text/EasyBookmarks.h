#pragma once
// TEasyBookMarkList: a sorted list of positions that follow the text. An edit
// source keeps two: numbered bookmarks and line marks (line styles). Entries
// are ordered by line, then column, then index; searching by key looks at the
// line only. Duplicates are accepted.
//
// AdjustMarks moves the entries after an edit primitive. It starts from a
// bisection on the edited line and visits only the entries from there on, so
// an edit costs nothing per line of the document; a list is small (marks,
// not lines).

#include <cstddef>
#include <vector>

#include "text/EasyPoint.h"

namespace zorfa::text {

struct TEasyBookMark {
    int X = 0;
    int Y = 0;
    int Index = 0;
};

// A stream range replaced by another: the text from From to OldEnd gave way
// to text ending at NewEnd (NewEnd is From for a plain deletion, OldEnd is
// From for a plain insertion). A position before From stays; one inside the
// removed text goes to From; one at or after OldEnd keeps its distance to the
// end. These are the moves the line-level primitives make one step at a time.
struct TEasyRangeMove {
    TPoint From;
    TPoint OldEnd;
    TPoint NewEnd;
    // The move of a position; `keepColumn` moves only its line (line marks).
    TPoint Adjust(TPoint p, bool keepColumn = false) const;
};

class TEasyBookMarkList {
public:
    int Count() const { return static_cast<int>(items_.size()); }
    const TEasyBookMark& operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }
    const std::vector<TEasyBookMark>& Items() const { return items_; }
    void Clear() { items_.clear(); }

    void AddMark(TPoint point, int index);
    // The Index of the first entry on line y, or -1.
    int GetIndexAtLine(int y) const;
    // Whether a mark numbered `index` exists, and its list position.
    bool FindIndex(int index, int& position) const;
    // Removes the mark numbered `index`; its position goes to `point`.
    bool DeleteIndex(int index, TPoint& point);
    // The first list position whose line is at or after y.
    int FindLine(int y) const;

    // Moves entries after a primitive at caret x, y by dx, dy. Returns
    // whether anything moved.
    bool AdjustMarks(int x, int y, int dx, int dy);
    // Moves entries after a range replacement. Returns whether anything moved.
    bool AdjustRange(const TEasyRangeMove& move, bool keepColumn);

private:
    void Sort();
    std::vector<TEasyBookMark> items_;
};

}  // namespace zorfa::text
