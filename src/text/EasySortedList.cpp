#include "text/EasySortedList.h"

#include <algorithm>

#include "base/Errors.h"

namespace zorfa::text {

namespace {
int Sign(TEasySortedList::Item a, TEasySortedList::Item b) { return (a > b) - (a < b); }
}  // namespace

void TEasySortedList::SetCapacity(int capacity) {
    if (capacity < Count()) return;
    if (capacity > Capacity())
        items_.reserve(static_cast<size_t>(capacity));
    else
        items_.shrink_to_fit();
}

TEasySortedList::Item TEasySortedList::Get(int index) const {
    return index >= 0 && index < Count() ? items_[static_cast<size_t>(index)] : 0;
}

void TEasySortedList::Put(int index, Item item) {
    if (index >= 0 && index < Count()) items_[static_cast<size_t>(index)] = item;
}

int TEasySortedList::Add(Item item) {
    if (!Sorted) {
        items_.push_back(item);
        return Count() - 1;
    }
    int index = 0;
    if (FindItem(item, index)) {
        if (Duplicates == dupIgnore) return index;
        if (Duplicates == dupError) throw zorfa::Exception("Duplicates not allowed");
    }
    Insert(index, item);
    return index;
}

void TEasySortedList::Insert(int index, Item item) {
    if (index < 0 || index > Count()) return;
    items_.insert(items_.begin() + index, item);
}

void TEasySortedList::Delete(int index) {
    if (index < 0 || index >= Count()) return;
    items_.erase(items_.begin() + index);
    if (LastFound >= Count()) LastFound = -1;
}

int TEasySortedList::Remove(Item item) {
    auto it = std::find(items_.begin(), items_.end(), item);
    if (it == items_.end()) return -1;
    const int index = static_cast<int>(it - items_.begin());
    Delete(index);
    return index;
}

int TEasySortedList::IndexOf(Item item) {
    if (!Sorted) {
        auto it = std::find(items_.begin(), items_.end(), item);
        return it == items_.end() ? -1 : static_cast<int>(it - items_.begin());
    }
    int index = 0;
    return FindItem(item, index) ? index : -1;
}

void TEasySortedList::Exchange(int a, int b) {
    if (a < 0 || b < 0 || a >= Count() || b >= Count()) return;
    std::swap(items_[static_cast<size_t>(a)], items_[static_cast<size_t>(b)]);
}

void TEasySortedList::Clear() {
    items_.clear();
    items_.shrink_to_fit();
    LastFound = -1;
}

void TEasySortedList::Sort() {
    std::stable_sort(items_.begin(), items_.end(),
                     [this](Item a, Item b) { return CompareItems(a, b) < 0; });
    LastFound = -1;
}

template <class Compare>
bool TEasySortedList::Bisect(Item key, int& index, Compare compare) {
    // The remembered hit first: repeated look-ups of one key cost nothing.
    if (Duplicates != dupAccept && LastFound >= 0 && LastFound < Count() &&
        compare(items_[static_cast<size_t>(LastFound)], key) == 0) {
        index = LastFound;
        return true;
    }
    bool found = false;
    int low = 0, high = Count() - 1;
    while (low <= high) {
        const int mid = (low + high) >> 1;
        const int c = compare(items_[static_cast<size_t>(mid)], key);
        if (c < 0) {
            low = mid + 1;
        } else {
            high = mid - 1;
            if (c == 0) {
                found = true;
                if (Duplicates != dupAccept) {
                    low = mid;  // stops the narrowing
                    LastFound = mid;
                }
            }
        }
    }
    index = low;
    return found;
}

bool TEasySortedList::Find(Item key, int& index) {
    return Bisect(key, index, [this](Item item, Item k) { return CompareKey(item, k); });
}

bool TEasySortedList::FindItem(Item item, int& index) {
    return Bisect(item, index, [this](Item a, Item b) { return CompareItems(a, b); });
}

int TEasySortedList::CompareKey(Item item, Item key) { return Sign(item, key); }

int TEasySortedList::CompareItems(Item item1, Item item2) { return Sign(item1, item2); }

}  // namespace zorfa::text
