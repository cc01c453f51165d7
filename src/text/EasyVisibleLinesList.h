#pragma once
// TEasyVisibleLinesList: the sorted list of the line numbers hidden by
// folding. The store (TEasyStrings) keeps it equal to the set of
// lines whose record has Hidden set, while UseVisibleLines is on, and uses
// FindHidden to convert real and on-screen line numbers in O(log n).
//
// Entry i's on-screen position is entry - i (the hidden lines before it do
// not count). With ByVisible set, CompareKey compares that position, read
// through LastMid, the midpoint the bisection is trying.

#include "text/EasySortedList.h"

namespace zorfa::text {

class TEasyVisibleLinesList : public TEasySortedList {
public:
    int LastMid = -1;
    bool ByVisible = false;

    int CompareKey(Item item, Item key) override;

    // The second bisection form: both bounds inclusive, each midpoint stored
    // in LastMid, stops when the bounds are less than 2 apart; returns the
    // low bound (0 for an empty list).
    int BisectVisible(Item key);

    // List position of the last entry at or before `key` (strict: before),
    // comparing on-screen positions when `byVisible`; -1 when none.
    int FindHidden(int key, bool byVisible, bool strict);

    // Index of `line` in the list or -1 (plain bisection).
    int IndexOfLine(int line) const;
    bool Contains(int line) const { return IndexOfLine(line) >= 0; }
    // Adds `line` unless present.
    void AddLine(int line);
    // Removes `line` if present.
    void RemoveLine(int line);
    // Adds `delta` to every entry strictly greater than `line`.
    void ShiftAbove(int line, int delta);
};

}  // namespace zorfa::text
