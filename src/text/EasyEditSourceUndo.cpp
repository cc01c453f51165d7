// Undo and redo by replay, and the bookmark commands.

#include <algorithm>

#include "text/EasyEditSource.h"

namespace zorfa::text {

// ---- Records ------------------------------------------------------------------------------

void TCustomEasyEditSource::AddUndoRecord(std::uint8_t kind, std::uint32_t data) {
    UndoRecordList().AddRecord(TEasyUndoRecord{kind, changeReason_, undoLock_ > 0, firstRecord_, data});
    firstRecord_ = false;
}

void TCustomEasyEditSource::AddChangeRecord(std::uint8_t kind, int value) {
    if (!Has(srUndoOnlyChanges)) {
        AddUndoRecord(kind, static_cast<std::uint32_t>(value));
        return;
    }
    TEasyUndoList& list = UndoRecordList();
    const std::uint32_t index = list.NewPayload();
    TEasyUndoPayload& payload = list.Payload(index);
    payload.X = caret_.X;
    payload.Y = caret_.Y;
    payload.Value = value;
    AddUndoRecord(kind, index);
}

void TCustomEasyEditSource::UnlockUndo() {
    if (undoLock_ > 0) --undoLock_;
    // The marker closes the chain; replaying it does nothing.
    if (undoLock_ == 0 && Has(srAllowUndo)) AddUndoRecord(ukChainEnd, 0);
}

void TCustomEasyEditSource::ClearUndo() {
    undoList_->Clear();
    redoList_->Clear();
}

bool TCustomEasyEditSource::CanUndo() const { return Has(srAllowUndo) && undoList_->Count() > 0; }

bool TCustomEasyEditSource::CanRedo() const { return Has(srAllowUndo) && redoList_->Count() > 0; }

// ---- Replay ------------------------------------------------------------------------------------

void TCustomEasyEditSource::Undo() {
    if (!Has(srAllowUndo) || UndoRecordList().Count() == 0 || ReadOnly()) return;
    redoing_ = !redoing_;
    // From here on writing goes to the opposite list, and reading comes from
    // the list that was being written.
    TEasyUndoList& read = RedoRecordList();
    const std::uint8_t reason = read.LastRecord().Reason;
    BeginUpdate(reason);
    LockChanges();
    undoing_ = true;
    while (read.Count() > 0) {
        firstRecord_ = true;
        changeFlags_ |= cfUndo;
        const TEasyUndoRecord record = read.LastRecord();
        if (record.Reason != reason && !record.Chained) break;
        ApplyUndoRecord(record);
        read.RemoveLast();
        if (!record.First || record.Chained || Has(srGroupUndo)) continue;
        break;
    }
    undoing_ = false;
    UnlockChanges();
    EndUpdate();
    redoing_ = !redoing_;
}

void TCustomEasyEditSource::Redo() {
    redoing_ = !redoing_;
    Undo();
    redoing_ = !redoing_;
}

void TCustomEasyEditSource::ApplyUndoRecord(const TEasyUndoRecord& record) {
    TEasyUndoList& read = RedoRecordList();
    TEasyUndoPayload* payload = read.HasPayload(record) ? &read.Payload(record.Data) : nullptr;
    const bool withCaret = Has(srUndoOnlyChanges) && payload &&
                           ((record.Kind >= ukInsert && record.Kind <= ukBreak) || record.Kind == ukBlockDelete ||
                            record.Kind == ukBlockInsert);
    if (withCaret) MoveCaretTo(payload->X, payload->Y);
    switch (record.Kind) {
        case ukCaretMove: {
            int dx = 0, dy = 0;
            if (payload) {
                dx = payload->DX;
                dy = payload->DY;
            } else {
                TEasyUndoList::UnpackMove(record.Data, dx, dy);
            }
            MoveCaretBy(-dx, -dy);
            break;
        }
        case ukInsert:
            DeleteChars(payload ? payload->Value : static_cast<int>(record.Data));
            break;
        case ukDelete: {
            const int y = caret_.Y;
            int inside, width;
            const int x = CaretRaw(inside, width);
            InsertText(payload->Text);
            // Without a parser the codes are the text's own (rich text): put
            // them back; with one, the parser has just written them.
            if (!parser_ && !payload->Styles.empty()) {
                TEasyStringRec* r = strings_->Record(y);
                if (r->Styles.Size() < x + static_cast<int>(payload->Styles.size()))
                    r->Styles.Resize(static_cast<int>(r->Text.Size()));
                for (size_t i = 0; i < payload->Styles.size(); ++i)
                    if (x + static_cast<int>(i) < r->Styles.Size()) r->Styles[x + static_cast<int>(i)] = payload->Styles[i];
            }
            break;
        }
        case ukJoin: {
            const int paragraph = payload ? payload->Value : static_cast<int>(record.Data);
            BreakLine();
            if (TEasyStringRec* r = strings_->Record(caret_.Y + 1)) r->Paragraph = static_cast<std::uint16_t>(paragraph);
            break;
        }
        case ukBreak:
            JoinLines();
            break;
        case ukStyles:
            if (TEasyStringRec* r = strings_->Record(payload->Y)) {
                // The run goes back at its column; the codes it covers go to
                // the other list, so that redo restores them.
                const int x = std::max(0, payload->X);
                const int n = std::min(static_cast<int>(payload->Styles.size()), r->Text.Size() - x);
                if (n <= 0) break;
                if (r->Styles.Size() < x + n) r->Styles.Resize(r->Text.Size());
                TEasyUndoList& write = UndoRecordList();
                const std::uint32_t index = write.NewPayload();
                TEasyUndoPayload& back = write.Payload(index);
                back.X = x;
                back.Y = payload->Y;
                for (int i = 0; i < n; ++i) {
                    back.Styles.push_back(r->Styles.At(x + i));
                    r->Styles[x + i] = payload->Styles[static_cast<size_t>(i)];
                }
                AddUndoRecord(ukStyles, index);
                MarkChanged(x, x + n, true, payload->Y, payload->Y);
            }
            break;
        case ukParagraph:
            if (TEasyStringRec* r = strings_->Record(payload->Y)) {
                TEasyUndoList& write = UndoRecordList();
                const std::uint32_t index = write.NewPayload();
                write.Payload(index).Y = payload->Y;
                write.Payload(index).Value = r->Paragraph;
                AddUndoRecord(ukParagraph, index);
                r->Paragraph = static_cast<std::uint16_t>(payload->Value);
                MarkChanged(-1, -1, true, payload->Y, payload->Y);
            }
            break;
        case ukBlockDelete:
            ReinsertBlock({payload->FromX, payload->FromY}, payload->Lines, payload->Value);
            break;
        case ukBlockInsert:
            RemoveBlock({payload->FromX + payload->Value, payload->FromY}, {payload->ToX, payload->ToY});
            break;
        default:  // ukChainEnd and unknown kinds: nothing
            break;
    }
}

// ---- Bookmarks --------------------------------------------------------------------------------------

bool TCustomEasyEditSource::GetBookmark(int index, TPoint& point) const {
    int position;
    if (!bookmarks_.FindIndex(index, position)) return false;
    point = {bookmarks_[position].X, bookmarks_[position].Y};
    return true;
}

void TCustomEasyEditSource::SetBookmark(int index, TPoint point) {
    BeginUpdate(crCompound);
    TPoint old;
    if (bookmarks_.DeleteIndex(index, old)) MarkChanged(-1, -1, false, old.Y, old.Y);
    bookmarks_.AddMark(point, index);
    MarkChanged(-1, -1, false, point.Y, point.Y);
    changeFlags_ |= cfBookmarks;
    EndUpdate();
}

void TCustomEasyEditSource::DeleteBookmark(int index) {
    if (index < 0) return;
    BeginUpdate(crCompound);
    TPoint old;
    if (bookmarks_.DeleteIndex(index, old)) {
        MarkChanged(-1, -1, false, old.Y, old.Y);
        changeFlags_ |= cfBookmarks;
    }
    EndUpdate();
}

void TCustomEasyEditSource::ToggleBookmark(int index, TPoint point) {
    TPoint at;
    if (GetBookmark(index, at) && at.Y == point.Y)
        DeleteBookmark(index);
    else
        SetBookmark(index, point);
}

void TCustomEasyEditSource::GotoBookmark(int index) {
    TPoint at;
    if (index < 0 || !GetBookmark(index, at)) return;
    caretFromBookmark_ = true;
    struct Reset {
        bool& flag;
        ~Reset() { flag = false; }
    } reset{caretFromBookmark_};
    MoveCaretTo(at.X, at.Y);
}

}  // namespace zorfa::text
