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

bool TEasyUndoList::HasPayload(std::uint8_t kind) const {
    switch (kind) {
        case ukCaretMove:
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
    if (HasPayload(record.Kind)) ReleasePayload(record.Data);
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
