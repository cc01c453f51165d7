#pragma once
// TEasyRecordList: a growable flat array of fixed-size records.
// The undo lists (8-byte records) sit on it. Records are plain bytes: they are
// moved with memmove and never constructed or destroyed, so only trivially
// copyable types may be stored. What a record points to is the business of
// the derived list (override Clear / Delete to free payloads).
//
// Bad indexes in reads and deletes call Error(index), which throws a
// zorfa::Exception "List index out of bounds (N)" as the TList contract
// does; derived lists may override it.

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zorfa::text {

class TEasyRecordList {
public:
    explicit TEasyRecordList(int recordSize);
    virtual ~TEasyRecordList();
    TEasyRecordList(const TEasyRecordList&) = delete;
    TEasyRecordList& operator=(const TEasyRecordList&) = delete;

    int Count() const { return count_; }
    int Capacity() const { return capacity_; }
    int RecordSize() const { return recordSize_; }
    // The data pointer: Count() records of RecordSize() bytes, back to back.
    std::uint8_t* Data() { return data_; }
    const std::uint8_t* Data() const { return data_; }

    // Address of record `index`; Error(index) when out of range.
    void* Get(int index);
    const void* Get(int index) const;
    // Address of the last record, or nullptr when empty.
    void* Last();

    // Appends a copy of `record` (RecordSize() bytes; zero bytes when null)
    // and returns its index.
    int Add(const void* record);
    // Inserts a copy at `index` (0..Count()); Error(index) otherwise.
    void Insert(int index, const void* record);
    // Removes record `index`; Error(index) when out of range.
    virtual void Delete(int index);
    // Drops the last record, if any.
    void Pop();
    // Sets Count(); new records are zero bytes. Capacity grows as needed.
    void SetCount(int count);
    // Sets Capacity(); never below Count().
    void SetCapacity(int capacity);

    // Virtual operations, in their traditional slot order.
    // Grow: enlarges Capacity() when full. Default: by a quarter above 64
    // slots, by 16 above 8, by 4 otherwise (the rule of the whole engine).
    virtual void Grow();
    // Error: the list's index error. Throws zorfa::Exception. An override
    // that returns makes Get yield nullptr and Insert/Delete do nothing.
    virtual void Error(int index) const;
    // Clear: Count and Capacity to 0, storage freed.
    virtual void Clear();

    // Typed access for trivially copyable records of exactly RecordSize().
    template <class T>
    T& At(int index) {
        static_assert(std::is_trivially_copyable_v<T>);
        return *static_cast<T*>(Get(index));
    }
    template <class T>
    const T& At(int index) const {
        static_assert(std::is_trivially_copyable_v<T>);
        return *static_cast<const T*>(Get(index));
    }

private:
    std::uint8_t* data_ = nullptr;
    int count_ = 0;
    int capacity_ = 0;
    int recordSize_;
};

}  // namespace zorfa::text
