#pragma once
// TEasySortedList: the engine's sorted list of pointer-sized items,
// base of the visible-lines list, the bookmark lists, the wrap list, the key
// table and the rich font manager. Items are std::intptr_t: plain integers
// for the visible-lines list, pointers (reinterpret_cast) for lists of
// records. The list does not own what its items point to.
//
// Ordering is by the two virtual comparisons, CompareKey(item, key) for
// searching by key and CompareItems(item1, item2) for placing an item; both
// default to the integer difference, so a plain list is a sorted list of
// integers. While Sorted is true, Add places the item by bisection and obeys
// Duplicates; Insert and Put always place where told (as TList does).
//
// Errors: bad indexes are ignored (reads yield 0); the only exception is the
// duplicates-error mode, in which Add of an equal item throws
// zorfa::Exception("Duplicates not allowed").

#include <cstdint>
#include <vector>

namespace zorfa::text {

enum TEasyDuplicates : int { dupIgnore = 0, dupAccept = 1, dupError = 2 };

class TEasySortedList {
public:
    using Item = std::intptr_t;

    TEasySortedList() = default;
    virtual ~TEasySortedList() = default;
    TEasySortedList(const TEasySortedList&) = default;
    TEasySortedList& operator=(const TEasySortedList&) = default;

    // TList part.
    int Count() const { return static_cast<int>(items_.size()); }
    int Capacity() const { return static_cast<int>(items_.capacity()); }
    void SetCapacity(int capacity);
    Item Get(int index) const;  // 0 when out of range
    Item operator[](int index) const { return Get(index); }
    void Put(int index, Item item);  // ignored when out of range
    Item First() const { return Get(0); }
    Item Last() const { return Get(Count() - 1); }
    // Sorted: placed by CompareItems, obeying Duplicates; returns the index of
    // the new item, or of the equal item already there when ignored.
    // Unsorted: appended.
    int Add(Item item);
    void Insert(int index, Item item);  // 0..Count(); ignored otherwise
    void Delete(int index);             // ignored when out of range
    // Removes the first item equal (==) to `item`; returns its old index or -1.
    int Remove(Item item);
    // Sorted: by CompareItems bisection (an equal item); unsorted: linear ==.
    int IndexOf(Item item);
    void Exchange(int a, int b);
    virtual void Clear();
    // Sorts by CompareItems (stable).
    void Sort();
    Item* Data() { return items_.data(); }
    const Item* Data() const { return items_.data(); }

    // Search by key with the plain bisection: returns true when
    // an item compares equal, and sets `index` to the low bound (the place
    // where the key would go, or the first equal item when duplicates are
    // accepted). Uses LastFound as the first guess when duplicates are not
    // accepted.
    bool Find(Item key, int& index);
    // The same bisection with CompareItems, for placing an item.
    bool FindItem(Item item, int& index);

    bool Sorted = true;
    int Duplicates = dupIgnore;
    int LastFound = -1;

    // Virtual operations, in their traditional slot order.
    virtual int CompareKey(Item item, Item key);
    virtual int CompareItems(Item item1, Item item2);

protected:
    std::vector<Item> items_;

private:
    template <class Compare>
    bool Bisect(Item key, int& index, Compare compare);
};

}  // namespace zorfa::text
