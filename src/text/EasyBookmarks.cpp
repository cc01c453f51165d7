#include "text/EasyBookmarks.h"

#include <algorithm>

namespace zorfa::text {

namespace {

bool Less(const TEasyBookMark& a, const TEasyBookMark& b) {
    if (a.Y != b.Y) return a.Y < b.Y;
    if (a.X != b.X) return a.X < b.X;
    return a.Index < b.Index;
}

}  // namespace

TPoint TEasyRangeMove::Adjust(TPoint p, bool keepColumn) const {
    if (p < From) return p;
    // Inside the removed text: to its start.
    if (p < OldEnd) return keepColumn ? TPoint{p.X, From.Y} : From;
    // At or after the end of the removed text: keeps its distance to it.
    if (p.Y == OldEnd.Y) return keepColumn ? TPoint{p.X, NewEnd.Y} : TPoint{NewEnd.X + (p.X - OldEnd.X), NewEnd.Y};
    return {p.X, p.Y + (NewEnd.Y - OldEnd.Y)};
}

void TEasyBookMarkList::Sort() { std::stable_sort(items_.begin(), items_.end(), Less); }

void TEasyBookMarkList::AddMark(TPoint point, int index) {
    const TEasyBookMark mark{point.X, point.Y, index};
    items_.insert(std::upper_bound(items_.begin(), items_.end(), mark, Less), mark);
}

int TEasyBookMarkList::FindLine(int y) const {
    return static_cast<int>(
        std::lower_bound(items_.begin(), items_.end(), y, [](const TEasyBookMark& m, int key) { return m.Y < key; }) -
        items_.begin());
}

int TEasyBookMarkList::GetIndexAtLine(int y) const {
    const int i = FindLine(y);
    return i < Count() && items_[static_cast<size_t>(i)].Y == y ? items_[static_cast<size_t>(i)].Index : -1;
}

bool TEasyBookMarkList::FindIndex(int index, int& position) const {
    for (int i = 0; i < Count(); ++i)
        if (items_[static_cast<size_t>(i)].Index == index) {
            position = i;
            return true;
        }
    position = -1;
    return false;
}

bool TEasyBookMarkList::DeleteIndex(int index, TPoint& point) {
    int i;
    if (!FindIndex(index, i)) return false;
    point = {items_[static_cast<size_t>(i)].X, items_[static_cast<size_t>(i)].Y};
    items_.erase(items_.begin() + i);
    return true;
}

bool TEasyBookMarkList::AdjustMarks(int x, int y, int dx, int dy) {
    if (items_.empty() || (dx == 0 && dy == 0)) return false;
    // First entry to look at: the search position of line y, walked back over
    // entries at or after that line.
    int i = std::min(FindLine(y), Count() - 1);
    while (i > 0 && items_[static_cast<size_t>(i - 1)].Y >= y) --i;
    bool moved = false;
    for (; i < Count(); ++i) {
        TEasyBookMark& m = items_[static_cast<size_t>(i)];
        if (dy != 0) {
            // A join (upward) keeps line y where it is, whatever the column.
            if (m.Y < y || (m.Y == y && (m.X < x || dy < 0))) continue;
            const int oldY = m.Y;
            m.Y += dy;
            // Downward: text after the break goes to the next line's start.
            // Upward: the entry stood on the line joined to line y.
            if ((oldY == y && dy >= 0) || (dy < 0 && y == oldY + dy)) m.X += dx;
            moved = true;
        } else {
            if (m.Y > y) break;
            if (m.Y < y) continue;
            if ((m.X >= x && dx >= 0) || (m.X > x && dx < 0)) {
                m.X += dx;
                moved = true;
            }
        }
    }
    if (moved) Sort();
    return moved;
}

bool TEasyBookMarkList::AdjustRange(const TEasyRangeMove& move, bool keepColumn) {
    if (items_.empty()) return false;
    int i = std::min(FindLine(move.From.Y), Count() - 1);
    while (i > 0 && items_[static_cast<size_t>(i - 1)].Y >= move.From.Y) --i;
    bool moved = false;
    for (; i < Count(); ++i) {
        TEasyBookMark& m = items_[static_cast<size_t>(i)];
        const TPoint p = move.Adjust({m.X, m.Y}, keepColumn);
        if (p.X != m.X || p.Y != m.Y) {
            m.X = p.X;
            m.Y = p.Y;
            moved = true;
        }
    }
    if (moved) Sort();
    return moved;
}

}  // namespace zorfa::text
