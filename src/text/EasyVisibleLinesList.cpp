#include "text/EasyVisibleLinesList.h"

#include <algorithm>

namespace zorfa::text {

int TEasyVisibleLinesList::CompareKey(Item item, Item key) {
    if (!ByVisible) return TEasySortedList::CompareKey(item, key);
    // The on-screen position of the entry at LastMid: the hidden lines
    // before it do not count.
    const Item position = item - LastMid;
    if (position == key) {
        // A run of adjacent hidden lines shares one on-screen position: go on
        // towards the last entry of the run.
        const int next = LastMid + 1;
        if (next < Count() && items_[static_cast<size_t>(next)] - next == position) return -1;
        return 0;
    }
    return position > key ? 1 : -1;
}

int TEasyVisibleLinesList::BisectVisible(Item key) {
    int low = 0, high = Count() - 1;
    while (high - low >= 2) {
        const int mid = (low + high) >> 1;
        LastMid = mid;
        if (CompareKey(items_[static_cast<size_t>(mid)], key) >= 0)
            high = mid;
        else
            low = mid;
    }
    return low;
}

int TEasyVisibleLinesList::FindHidden(int key, bool byVisible, bool strict) {
    if (Count() == 0) return -1;
    ByVisible = byVisible;
    int p = BisectVisible(key);
    if (p != Count() - 1) ++p;
    while (p >= 0 && p < Count()) {
        Item v = items_[static_cast<size_t>(p)];
        if (byVisible) v -= p;
        if (strict ? key > v : key >= v) break;
        --p;
    }
    ByVisible = false;
    return p;
}

int TEasyVisibleLinesList::IndexOfLine(int line) const {
    auto it = std::lower_bound(items_.begin(), items_.end(), static_cast<Item>(line));
    return it != items_.end() && *it == line ? static_cast<int>(it - items_.begin()) : -1;
}

void TEasyVisibleLinesList::AddLine(int line) {
    auto it = std::lower_bound(items_.begin(), items_.end(), static_cast<Item>(line));
    if (it == items_.end() || *it != line) items_.insert(it, line);
}

void TEasyVisibleLinesList::RemoveLine(int line) {
    auto it = std::lower_bound(items_.begin(), items_.end(), static_cast<Item>(line));
    if (it != items_.end() && *it == line) items_.erase(it);
    if (LastFound >= Count()) LastFound = -1;
}

void TEasyVisibleLinesList::ShiftAbove(int line, int delta) {
    auto it = std::upper_bound(items_.begin(), items_.end(), static_cast<Item>(line));
    for (; it != items_.end(); ++it) *it += delta;
}

}  // namespace zorfa::text
