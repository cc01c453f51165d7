// Block operations: a stream range removed or inserted at once. The line
// store moves one line per call; a range of many lines is moved here by
// swapping record contents (linear in the lines moved) and adding or removing
// lines only at the end of the store, where that costs nothing.

#include <algorithm>

#include "text/EasyEditSource.h"

namespace zorfa::text {

namespace {

// Below this many lines, the store's own insert and delete (one block move of
// the pointer array each) beat moving record contents.
constexpr int kPerLineLimit = 16;

void SwapContent(TEasyStringRec& a, TEasyStringRec& b) {
    a.Text.Swap(b.Text);
    a.Styles.Swap(b.Styles);
    std::swap(a.LineObject, b.LineObject);
    std::swap(a.EndState, b.EndState);
    std::swap(a.BeginState, b.BeginState);
    std::swap(a.Paragraph, b.Paragraph);
    std::swap(a.StartStyle, b.StartStyle);
    std::swap(a.Flags, b.Flags);
    std::swap(a.Hidden, b.Hidden);
    std::swap(a.FoldLevel, b.FoldLevel);
}

// Moves a line's text, styles and parse results between a record and a saved
// block line; `flagMask` keeps the flags that may travel in that direction.
template <class To, class From>
void MoveLine(To& to, From& from, std::uint8_t flagMask) {
    to.Text.Swap(from.Text);
    to.Styles.Swap(from.Styles);
    to.BeginState = from.BeginState;
    to.EndState = from.EndState;
    to.Paragraph = from.Paragraph;
    to.StartStyle = from.StartStyle;
    to.Flags = from.Flags & flagMask;
}

// Saved lines keep only their parse state: fold and visibility flags belong
// to the line numbers they leave.
void Take(TEasyBlockLine& to, TEasyStringRec& from) { MoveLine(to, from, lfParsed); }
void Give(TEasyStringRec& to, TEasyBlockLine& from) { MoveLine(to, from, 0xFF); }

std::vector<TEasyBlockLine> SplitRows(std::string_view text) {
    std::vector<TEasyBlockLine> rows(1);
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\r' && c != '\n') continue;
        rows.back().Text.Assign(text.substr(start, i - start));
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        start = i + 1;
        rows.emplace_back();
    }
    rows.back().Text.Assign(text.substr(start));
    return rows;
}

// Hidden lines travel with their records; the store's hidden-line list is
// rebuilt from them around a move of many records.
struct HiddenListPause {
    TEasyStrings& strings;
    bool wasOn;
    explicit HiddenListPause(TEasyStrings& s) : strings(s), wasOn(s.UseVisibleLines() && s.HiddenCount() > 0) {
        if (wasOn) strings.SetUseVisibleLines(false);
    }
    ~HiddenListPause() {
        if (wasOn) strings.SetUseVisibleLines(true);
    }
};

}  // namespace

void TCustomEasyEditSource::RemoveLines(int first, int count, std::vector<TEasyBlockLine>* keep) {
    if (count <= 0) return;
    if (keep) {
        const size_t base = keep->size();
        keep->resize(base + static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) Take((*keep)[base + static_cast<size_t>(i)], *strings_->Record(first + i));
    }
    // One change notification for the whole range.
    strings_->BeginUpdate();
    const int tail = LineCount() - (first + count);
    if (count <= kPerLineLimit || tail == 0) {
        for (int i = first + count - 1; i >= first; --i) strings_->Delete(i);
    } else {
        HiddenListPause pause(*strings_);
        for (int i = first; i + count < LineCount(); ++i)
            SwapContent(*strings_->Record(i), *strings_->Record(i + count));
        for (int i = 0; i < count; ++i) strings_->Delete(LineCount() - 1);
    }
    strings_->EndUpdate();
}

void TCustomEasyEditSource::InsertLines(int index, std::vector<TEasyBlockLine>& lines, size_t from) {
    const int count = static_cast<int>(lines.size() - from);
    if (count <= 0) return;
    strings_->BeginUpdate();
    const int oldCount = LineCount();
    if (count <= kPerLineLimit || index == oldCount) {
        for (int i = 0; i < count; ++i) {
            strings_->Insert(index + i, "");
            Give(*strings_->Record(index + i), lines[from + static_cast<size_t>(i)]);
        }
    } else {
        for (int i = 0; i < count; ++i) {
            strings_->Insert(LineCount(), "");
            Give(*strings_->Record(oldCount + i), lines[from + static_cast<size_t>(i)]);
        }
        // Rotate the new lines from the end into place: three reversals.
        HiddenListPause pause(*strings_);
        auto reverse = [this](int lo, int hi) {
            for (--hi; lo < hi; ++lo, --hi) SwapContent(*strings_->Record(lo), *strings_->Record(hi));
        };
        reverse(index, oldCount);
        reverse(oldCount, oldCount + count);
        reverse(index, oldCount + count);
    }
    strings_->EndUpdate();
}

void TCustomEasyEditSource::AdjustRange(const TEasyRangeMove& move) {
    TEasySourceNotify notify{snRange, &move, move.From.X, move.From.Y};
    NotifyAll(&notify);
    if (bookmarks_.AdjustRange(move, false)) changeFlags_ |= cfBookmarks;
    if (!(move.OldEnd.Y == move.NewEnd.Y) && lineMarks_.AdjustRange(move, true)) changeFlags_ |= cfLineMarks;
}

void TCustomEasyEditSource::RemoveBlock(TPoint a, TPoint b) {
    if (a.Y < 0 || b.Y <= a.Y || b.Y >= LineCount()) return;
    ++editCount_;
    BeginUpdate(crDeleteSelection);
    const TPoint fromE{RawToExpanded(a.Y, a.X), a.Y};
    const TPoint toE{RawToExpanded(b.Y, b.X), b.Y};
    std::vector<TEasyBlockLine> rows(1);
    TEasyStringRec* firstRec = strings_->Record(a.Y);
    const int firstLength = firstRec->Text.Size();
    const int ax = std::min(a.X, firstLength);
    const int fill = a.X - ax;
    rows[0].Text.Assign(firstRec->Text.View().substr(static_cast<size_t>(ax)));
    if (firstRec->Styles.Size() > ax)
        rows[0].Styles.Assign(firstRec->Styles.Span().subspan(static_cast<size_t>(ax)));
    const std::string_view lastText = strings_->GetRawLine(b.Y);
    const int bx = std::min(b.X, static_cast<int>(lastText.size()));
    std::string joined(firstRec->Text.View().substr(0, static_cast<size_t>(ax)));
    joined.append(static_cast<size_t>(fill), ' ');
    joined.append(lastText.substr(static_cast<size_t>(bx)));
    StoreLine(a.Y, joined);
    RemoveLines(a.Y + 1, b.Y - a.Y, &rows);
    // The last row is only the part of its line before the range's end.
    TEasyBlockLine& lastRow = rows.back();
    const std::string head(lastRow.Text.View().substr(0, static_cast<size_t>(bx)));
    lastRow.Text.Assign(head);
    if (lastRow.Styles.Size() > bx) lastRow.Styles.Resize(bx);
    lastRow.Flags = 0;
    if (Has(srAllowUndo)) {
        TEasyUndoList& list = UndoRecordList();
        const std::uint32_t index = list.NewPayload();
        TEasyUndoPayload& payload = list.Payload(index);
        payload.X = caret_.X;
        payload.Y = caret_.Y;
        payload.FromX = ax;
        payload.FromY = a.Y;
        payload.Value = fill;
        payload.Lines = std::move(rows);
        AddUndoRecord(ukBlockDelete, index);
    }
    MarkChanged(fromE.X, -1, true, MaxInt, a.Y);
    ReparseLine(a.Y);
    AdjustRange({fromE, toE, fromE});
    EndUpdate();
    --editCount_;
}

void TCustomEasyEditSource::ReinsertBlock(TPoint at, std::vector<TEasyBlockLine>& rows, int fill) {
    if (rows.size() < 2 || at.Y < 0 || at.Y >= LineCount()) return;
    ++editCount_;
    BeginUpdate(crInsert);
    std::string line(strings_->GetRawLine(at.Y));
    if (at.X > static_cast<int>(line.size())) line.resize(static_cast<size_t>(at.X), ' ');
    // Blanks the removal filled in come out again.
    const size_t blanks = std::min(static_cast<size_t>(std::max(fill, 0)), line.size() - static_cast<size_t>(at.X));
    line.erase(static_cast<size_t>(at.X), blanks);
    const std::string tail = line.substr(static_cast<size_t>(at.X));
    line.resize(static_cast<size_t>(at.X));
    line.append(rows[0].Text.View());
    const int k = static_cast<int>(rows.size()) - 1;
    TEasyBlockLine& lastRow = rows.back();
    const int endX = lastRow.Text.Size();
    std::string last(lastRow.Text.View());
    last.append(tail);
    lastRow.Text.Assign(last);
    lastRow.Styles.Clear();
    lastRow.Flags = 0;
    StoreLine(at.Y, line);
    const TPoint fromE{RawToExpanded(at.Y, at.X), at.Y};
    InsertLines(at.Y + 1, rows, 1);
    if (Has(srAllowUndo)) {
        TEasyUndoList& list = UndoRecordList();
        const std::uint32_t index = list.NewPayload();
        TEasyUndoPayload& payload = list.Payload(index);
        payload.X = caret_.X;
        payload.Y = caret_.Y;
        payload.FromX = at.X;
        payload.FromY = at.Y;
        payload.Value = static_cast<int>(blanks);
        payload.ToX = endX;
        payload.ToY = at.Y + k;
        AddUndoRecord(ukBlockInsert, index);
    }
    MarkChanged(fromE.X, -1, true, MaxInt, at.Y);
    ReparseLine(at.Y);
    const TPoint newEnd{RawToExpanded(at.Y + k, endX), at.Y + k};
    AdjustRange({fromE, fromE, newEnd});
    EndUpdate();
    --editCount_;
}

void TCustomEasyEditSource::DeleteBlock(TPoint from, TPoint to) {
    if (ReadOnly()) return;
    if (to < from) std::swap(from, to);
    if (from.Y < 0 || from.Y >= LineCount()) return;
    if (to.Y >= LineCount()) to = {static_cast<int>(strings_->Get(LineCount() - 1).size()), LineCount() - 1};
    if (from == to) return;
    BeginUpdate(crDeleteSelection);
    MoveCaretTo(from.X, from.Y);
    if (from.Y == to.Y) {
        DeleteChars(to.X - from.X);
    } else if (!Has(srUseTab)) {
        // From the caret: a start beyond the line's end may have been held
        // at the end.
        RemoveBlock({caret_.X, from.Y}, to);
    } else {
        int inside, width;
        int fromRaw = ExpandedToRaw(from.Y, caret_.X, inside, width);
        if (inside > 0) {
            // Starting inside a tab: its columns left of the start become
            // blanks first, as a deletion of characters does.
            LockUndo();
            MoveCaretBy(-inside, 0);
            InsertText(std::string(static_cast<size_t>(inside), ' '));
            MoveCaretBy(inside, 0);
            UnlockUndo();
            fromRaw += inside;
        }
        // Ending inside a tab takes the whole tab.
        int toRaw = ExpandedToRaw(to.Y, to.X, inside, width);
        if (inside > 0) ++toRaw;
        RemoveBlock({fromRaw, from.Y}, {toRaw, to.Y});
    }
    EndUpdate();
}

void TCustomEasyEditSource::InsertBlock(std::string_view text) {
    if (ReadOnly()) return;
    std::vector<TEasyBlockLine> rows = SplitRows(text);
    if (rows.size() == 1) {
        InsertText(text);
        return;
    }
    ++editCount_;
    BeginUpdate(crInsert);
    EnsureCaretLine();
    int inside, width;
    const int x = CaretRaw(inside, width);
    // Pasting inside a tab keeps the text behind it in its columns.
    if (inside > 0) {
        std::string first(static_cast<size_t>(inside), ' ');
        first.append(rows[0].Text.View());
        rows[0].Text.Assign(first);
    }
    ReinsertBlock({x, caret_.Y}, rows, 0);
    EndUpdate();
    --editCount_;
}

}  // namespace zorfa::text
