#include "text/EasyRecordList.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "base/Errors.h"
#include "text/EasyMemory.h"

namespace zorfa::text {

TEasyRecordList::TEasyRecordList(int recordSize) : recordSize_(recordSize > 0 ? recordSize : 1) {}

TEasyRecordList::~TEasyRecordList() { std::free(data_); }

void* TEasyRecordList::Get(int index) {
    if (index < 0 || index >= count_) {
        Error(index);
        return nullptr;
    }
    return data_ + static_cast<std::size_t>(index) * recordSize_;
}

const void* TEasyRecordList::Get(int index) const {
    return const_cast<TEasyRecordList*>(this)->Get(index);
}

void* TEasyRecordList::Last() {
    return count_ ? data_ + static_cast<std::size_t>(count_ - 1) * recordSize_ : nullptr;
}

int TEasyRecordList::Add(const void* record) {
    const int index = count_;
    Insert(index, record);
    return index;
}

void TEasyRecordList::Insert(int index, const void* record) {
    if (index < 0 || index > count_) {
        Error(index);
        return;
    }
    if (count_ == capacity_) Grow();
    if (count_ == capacity_) SetCapacity(count_ + 1);  // a Grow override that did not grow
    std::uint8_t* at = data_ + static_cast<std::size_t>(index) * recordSize_;
    std::memmove(at + recordSize_, at, static_cast<std::size_t>(count_ - index) * recordSize_);
    if (record)
        std::memcpy(at, record, recordSize_);
    else
        std::memset(at, 0, recordSize_);
    ++count_;
}

void TEasyRecordList::Delete(int index) {
    if (index < 0 || index >= count_) {
        Error(index);
        return;
    }
    std::uint8_t* at = data_ + static_cast<std::size_t>(index) * recordSize_;
    --count_;
    std::memmove(at, at + recordSize_, static_cast<std::size_t>(count_ - index) * recordSize_);
}

void TEasyRecordList::Pop() {
    if (count_ > 0) --count_;
}

void TEasyRecordList::SetCount(int count) {
    if (count < 0) count = 0;
    if (count > capacity_) SetCapacity(count);
    if (count > count_)
        std::memset(data_ + static_cast<std::size_t>(count_) * recordSize_, 0,
                    static_cast<std::size_t>(count - count_) * recordSize_);
    count_ = count;
}

void TEasyRecordList::SetCapacity(int capacity) {
    if (capacity < count_) capacity = count_;
    if (capacity == capacity_) return;
    data_ = static_cast<std::uint8_t*>(ResizeBlock(data_, static_cast<std::size_t>(capacity) * recordSize_));
    capacity_ = capacity;
}

void TEasyRecordList::Grow() {
    int delta = capacity_ > 64 ? capacity_ / 4 : capacity_ > 8 ? 16 : 4;
    SetCapacity(capacity_ + delta);
}

void TEasyRecordList::Error(int index) const {
    throw zorfa::Exception("List index out of bounds (" + std::to_string(index) + ")");
}

void TEasyRecordList::Clear() {
    count_ = 0;
    SetCapacity(0);
}

}  // namespace zorfa::text
