#include "text/EasyUndo.h"

#include "base/Errors.h"

namespace zorfa::text {

void TEasyUndoPayload::Reset() {
    Text.clear();
    Styles.clear();
    X = Y = Value = DX = DY = FromX = FromY = ToX = ToY = 0;
    Lines.clear();
}

TEasyUndoList::TEasyUndoList() : TEasyRecordList(sizeof(TEasyUndoRecord)) {}

TEasyUndoList::~TEasyUndoList() = default;

namespace {
constexpr std::uint32_t kPacked = 0x80000000u;
constexpr int kPackLimit = 1 << 14;  // 15 signed bits each
}  // namespace

bool TEasyUndoList::PackMove(int dx, int dy, std::uint32_t& data) {
    if (dx <= -kPackLimit || dx >= kPackLimit || dy <= -kPackLimit || dy >= kPackLimit) return false;
    data = kPacked | (static_cast<std::uint32_t>(dx) & 0x7FFF) | ((static_cast<std::uint32_t>(dy) & 0x7FFF) << 15);
    return true;
}

void TEasyUndoList::UnpackMove(std::uint32_t data, int& dx, int& dy) {
    auto field = [](std::uint32_t bits) {
        const int v = static_cast<int>(bits & 0x7FFF);
        return v >= kPackLimit ? v - 2 * kPackLimit : v;
    };
    dx = field(data);
    dy = field(data >> 15);
}

bool TEasyUndoList::HasPayload(const TEasyUndoRecord& record) const {
    switch (record.Kind) {
        case ukCaretMove:
            return (record.Data & kPacked) == 0;
        case ukDelete:
        case ukStyles:
        case ukParagraph:
        case ukBlockDelete:
        case ukBlockInsert:
            return true;
        case ukInsert:
        case ukJoin:
        case ukBreak:
            return UndoOnlyChanges;
        default:
            return false;
    }
}

std::uint32_t TEasyUndoList::NewPayload() {
    if (!free_.empty()) {
        const std::uint32_t index = free_.back();
        free_.pop_back();
        return index;
    }
    payloads_.emplace_back();
    return static_cast<std::uint32_t>(payloads_.size() - 1);
}

void TEasyUndoList::ReleasePayload(std::uint32_t index) {
    if (index >= payloads_.size()) return;
    payloads_[index].Reset();
    if (index + 1 == payloads_.size())
        payloads_.pop_back();
    else
        free_.push_back(index);
}

void TEasyUndoList::Delete(int index) {
    if (index < 0 || index >= Count()) {
        Error(index);
        return;
    }
    const TEasyUndoRecord record = Record(index);
    if (HasPayload(record)) ReleasePayload(record.Data);
    TEasyRecordList::Delete(index);
}

void TEasyUndoList::RemoveLast() {
    if (Count() > 0) Delete(Count() - 1);
}

void TEasyUndoList::Clear() {
    payloads_.clear();
    free_.clear();
    TEasyRecordList::Clear();
}

void TEasyUndoList::Error(int index) const {
    throw Exception("List Index out of bounds Index: " + std::to_string(index));
}

}  // namespace zorfa::text
