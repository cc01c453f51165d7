// The caret, the five primitives and the editing commands built on them.

#include <algorithm>

#include "text/EasyEditSource.h"

namespace zorfa::text {

namespace {

// Trailing codes up to 32 go, but never code 1 (an embedded object).
int TrimmedLength(std::string_view line) {
    int n = static_cast<int>(line.size());
    while (n > 0) {
        const unsigned char c = static_cast<unsigned char>(line[static_cast<size_t>(n - 1)]);
        if (c > 32 || c == 1) break;
        --n;
    }
    return n;
}

}  // namespace

// ---- Helpers ---------------------------------------------------------------------------

void TCustomEasyEditSource::StoreLine(int y, std::string_view text) {
    strings_->SetRawLine(y, text);
    InvalidateLine(y);
}

void TCustomEasyEditSource::MarkAfterReparse(int y, bool endStateChanged) {
    // Only a changed end state makes what follows need a repaint.
    if (endStateChanged)
        MarkChanged(caret_.X, -1, true, MaxInt, y);
    else
        MarkChanged(caret_.X, -1, true, y, y);
}

int TCustomEasyEditSource::CaretRaw(int& inside, int& width) const {
    inside = width = 0;
    if (!Has(srUseTab)) return caret_.X;
    return ExpandedToRaw(caret_.Y, caret_.X, inside, width);
}

void TCustomEasyEditSource::EnsureCaretLine() {
    while (LineCount() <= caret_.Y) {
        strings_->Add("");
        MarkChanged(0, 0, true, LineCount() - 1, LineCount() - 1);
    }
}

void TCustomEasyEditSource::RecordMove(int dx, int dy) {
    std::uint32_t packed;
    if (TEasyUndoList::PackMove(dx, dy, packed)) {
        AddUndoRecord(ukCaretMove, packed);
        return;
    }
    TEasyUndoList& list = UndoRecordList();
    const std::uint32_t index = list.NewPayload();
    TEasyUndoPayload& payload = list.Payload(index);
    payload.DX = dx;
    payload.DY = dy;
    AddUndoRecord(ukCaretMove, index);
}

void TCustomEasyEditSource::AdjustPositions(int dx, int dy) {
    TEasyPositionMove move{caret_.X, caret_.Y, dx, dy};
    TEasySourceNotify notify{snPositions, &move, caret_.X, caret_.Y};
    NotifyAll(&notify);
    if (bookmarks_.AdjustMarks(caret_.X, caret_.Y, dx, dy)) changeFlags_ |= cfBookmarks;
    // A line mark stays with its line: only line moves apply.
    if (dy != 0 && lineMarks_.AdjustMarks(caret_.X, caret_.Y, 0, dy)) changeFlags_ |= cfLineMarks;
}

int TCustomEasyEditSource::FirstNonBlank(std::string_view line) const {
    for (size_t i = 0; i < line.size(); ++i)
        if (static_cast<unsigned char>(line[i]) > 32) return static_cast<int>(i);
    return -1;
}

// ---- Caret -----------------------------------------------------------------------------------

void TCustomEasyEditSource::MoveCaretBy(int dx, int dy) {
    if (updateCount_ == 0) oldCaret_ = caret_;
    if (caret_.X + dx < 0) dx = -caret_.X;
    if (caret_.Y + dy < 0) dy = -caret_.Y;
    const int last = std::max(0, LineCount() - 1);
    if ((!Has(srBeyondEof) || KeepLastLine) && caret_.Y + dy > last) dy = last - caret_.Y;
    const int ty = caret_.Y + dy;
    const int length = static_cast<int>(strings_->Get(ty).size());
    if (caret_.X + dx > length) {
        if (!Has(srBeyondEol)) {
            dx = std::max(length - caret_.X, -caret_.X);
        } else {
            TEasySourceNotify notify{snLineEnd, nullptr, dx, dy};
            NotifyAll(&notify);
            dx = notify.X;
            dy = notify.Y;
        }
    }
    if (Has(srAlwaysOnTabs) && Has(srUseTab)) {
        int inside, width;
        ExpandedToRaw(caret_.Y + dy, caret_.X + dx, inside, width);
        if (inside > 0) {
            if (inside > (width + 1) / 2)
                dx += width - inside + 1;
            else
                dx -= inside;
        }
    }
    if (dx == 0 && dy == 0) return;
    BeginUpdate(crCaretMove);
    if (dy != 0) TrimTrailing(false);
    caret_.X += dx;
    caret_.Y += dy;
    if (Has(srAllowUndo) && (!Has(srUndoOnlyChanges) || changeReason_ == crInsert)) RecordMove(dx, dy);
    // An absolute move opens the fold it lands in; a relative one never does.
    if (jumping_ && !strings_->IsLineVisible(caret_.Y)) strings_->ExpandParents(caret_.Y);
    EndUpdate();
}

void TCustomEasyEditSource::MoveCaretTo(int x, int y) {
    jumping_ = true;
    struct Reset {
        bool& flag;
        ~Reset() { flag = false; }
    } reset{jumping_};
    MoveCaretBy(x - caret_.X, y - caret_.Y);
}

void TCustomEasyEditSource::CaretLeft() {
    if (Has(srUseTab) && (!Has(srCursorThroughTabs) || Has(srAlwaysOnTabs)) && caret_.X > 0) {
        int inside, width;
        ExpandedToRaw(caret_.Y, caret_.X - 1, inside, width);
        if (inside > 0) {
            MoveCaretBy(-(1 + inside), 0);
            return;
        }
    }
    if (!(caret_.X == 0 && Has(srMoveUpAtLineBegin))) {
        MoveCaretBy(-1, 0);
    } else if (caret_.Y > 0) {
        MoveCaretTo(static_cast<int>(strings_->Get(caret_.Y - 1).size()), caret_.Y - 1);
    }
}

void TCustomEasyEditSource::CaretRight(bool force) {
    if (Has(srUseTab) && (force || !Has(srCursorThroughTabs) || Has(srAlwaysOnTabs))) {
        int inside, width;
        ExpandedToRaw(caret_.Y, caret_.X + 1, inside, width);
        if (inside > 0) {
            MoveCaretBy(width + 2 - inside, 0);
            return;
        }
    }
    if (Has(srMoveDownAtLineEnd)) {
        if (static_cast<int>(strings_->Get(caret_.Y).size()) > caret_.X)
            MoveCaretBy(1, 0);
        else if (caret_.Y < LineCount() - 1 || (Has(srBeyondEof) && !KeepLastLine))
            MoveCaretTo(0, caret_.Y + 1);
    } else {
        MoveCaretBy(1, 0);
    }
}

// ---- Primitives -------------------------------------------------------------------------------------

void TCustomEasyEditSource::InsertText(std::string_view text) {
    if (ReadOnly() || text.empty()) return;
    ++editCount_;
    BeginUpdate(crInsert);
    EnsureCaretLine();
    const int y = caret_.Y;
    std::string line(strings_->GetRawLine(y));
    int inside, width;
    const int x = CaretRaw(inside, width);
    // Typing inside a tab keeps the text behind it in its columns.
    std::string inserted = inside > 0 ? std::string(static_cast<size_t>(inside), ' ') : std::string();
    inserted.append(text);
    if (x > static_cast<int>(line.size())) line.resize(static_cast<size_t>(x), ' ');
    line.insert(static_cast<size_t>(x), inserted);
    SaveStyles(x, y);
    StoreLine(y, line);
    RestoreStyles(x, y);
    MarkAfterReparse(y, ReparseLine(y));
    const int length = static_cast<int>(inserted.size());
    if (Has(srAllowUndo)) {
        if (inside > 0) {
            LockUndo();
            RecordMove(-inside, 0);
            AddChangeRecord(ukInsert, length);
            RecordMove(inside, 0);
            UnlockUndo();
        } else {
            AddChangeRecord(ukInsert, length);
        }
    }
    AdjustPositions(length, 0);
    if (Has(srLiveSpell)) ParseLines(y, y, true);
    EndUpdate();
    --editCount_;
}

void TCustomEasyEditSource::DeleteChars(int count) {
    if (ReadOnly()) return;
    int inside, width;
    CaretRaw(inside, width);
    if (inside > 0 && !undoing_) {
        // Turn the tab into blanks first, as one undo step with the deletion.
        BeginUpdate(crDelete);
        LockUndo();
        MoveCaretBy(-inside, 0);
        InsertText(std::string(static_cast<size_t>(inside), ' '));
        MoveCaretBy(inside, 0);
        DoDeleteChars(count);
        UnlockUndo();
        EndUpdate();
        return;
    }
    DoDeleteChars(count);
}

void TCustomEasyEditSource::DoDeleteChars(int count) {
    if (count <= 0) return;
    ++editCount_;
    BeginUpdate(crDelete);
    const int y = caret_.Y;
    std::string line(strings_->GetRawLine(y));
    int inside, width;
    const int x = CaretRaw(inside, width);
    if (Has(srUseTab) && !undoing_) {
        int endInside, endWidth;
        const int rawEnd = ExpandedToRaw(y, caret_.X + count, endInside, endWidth);
        count = rawEnd - x + (endInside > 0 ? 1 : 0);
    }
    const int n = std::min(count, static_cast<int>(line.size()) - x);
    if (x < static_cast<int>(line.size()) && n > 0) {
        if (Has(srAllowUndo)) {
            TEasyUndoList& list = UndoRecordList();
            const std::uint32_t index = list.NewPayload();
            TEasyUndoPayload& payload = list.Payload(index);
            payload.Text = line.substr(static_cast<size_t>(x), static_cast<size_t>(n));
            const TEasyStyleCodes& codes = strings_->Record(y)->Styles;
            for (int i = x; i < x + n && i < codes.Size(); ++i) payload.Styles.push_back(codes.At(i));
            payload.X = caret_.X;
            payload.Y = caret_.Y;
            AddUndoRecord(ukDelete, index);
        }
        line.erase(static_cast<size_t>(x), static_cast<size_t>(n));
        SaveStyles(x, y);
        StoreLine(y, line);
        RestoreStyles(x, y);
        MarkAfterReparse(y, ReparseLine(y));
        AdjustPositions(-n, 0);
        if (Has(srLiveSpell)) ParseLines(y, y, true);
    }
    EndUpdate();
    --editCount_;
}

void TCustomEasyEditSource::BreakLine() {
    if (ReadOnly()) return;
    ++editCount_;
    if (LineCount() == 0) strings_->Add("");
    if (caret_.Y > LineCount() - 1) {
        --editCount_;
        return;
    }
    BeginUpdate(crBreakLine);
    const int y = caret_.Y;
    strings_->Insert(y + 1, "");
    const TEasyStringRec* head = strings_->Record(y);
    if (head->Flags & (lfFoldChild | lfExpanded | lfCollapsed)) {
        const std::uint8_t level = head->FoldLevel;
        strings_->SetFoldChild(y + 1, false);
        strings_->Record(y + 1)->FoldLevel = level;
    }
    int inside, width;
    int x = CaretRaw(inside, width);
    if (inside > 0) ++x;
    const std::string_view line = strings_->GetRawLine(y);
    int oldLength = static_cast<int>(line.size());
    if (x < oldLength) {
        const std::string tail(line.substr(static_cast<size_t>(x)));
        const std::string keep(line.substr(0, static_cast<size_t>(x)));
        StoreLine(y + 1, tail);
        StoreLine(y, keep);
        oldLength = x;
    }
    if (Has(srAllowUndo)) AddChangeRecord(ukBreak, 0);
    MarkChanged(caret_.X, -1, true, MaxInt, y);
    AdjustPositions(-(Has(srUseTab) ? RawToExpanded(y, oldLength) : oldLength), 1);
    if (!undoing_) TrimTrailing(true);
    EndUpdate();
    --editCount_;
}

void TCustomEasyEditSource::JoinLines() {
    if (ReadOnly()) return;
    const int y = caret_.Y;
    int inside, width;
    int x = CaretRaw(inside, width);
    // Inside a tab the column lies behind it, as for BreakLine.
    if (inside > 0) ++x;
    ++editCount_;
    BeginUpdate(crJoinLines);
    std::string line(strings_->GetRawLine(y));
    // A replayed join first drops the blanks a break left behind the column.
    if (undoing_ && x < static_cast<int>(line.size()) && x >= TrimmedLength(line)) {
        line.resize(static_cast<size_t>(x));
        StoreLine(y, line);
    }
    const int length = static_cast<int>(line.size());
    // The caret must stand at or past the end: a join from inside the line
    // could not be taken back by the break that undoes it.
    if (y < LineCount() - 1 && length <= x && LineCount() > 1) {
        const int fill = std::max(0, x - length);
        line.append(static_cast<size_t>(fill), ' ');
        line.append(strings_->GetRawLine(y + 1));
        const std::uint16_t paragraph = strings_->Record(y + 1)->Paragraph;
        StoreLine(y, line);
        strings_->Delete(y + 1);
        if (Has(srAllowUndo)) AddChangeRecord(ukJoin, paragraph);
        MarkChanged(caret_.X, -1, true, MaxInt, y);
        ReparseLine(y);
        AdjustPositions(Has(srUseTab) ? RawToExpanded(y, length + fill) : length + fill, -1);
    }
    EndUpdate();
    --editCount_;
}

void TCustomEasyEditSource::InsertLine(int index, std::string_view text) {
    if (ReadOnly() || index < 0 || index > LineCount()) return;
    BeginUpdate(crInsert);
    if (index > 0)
        MoveCaretTo(static_cast<int>(strings_->Get(index - 1).size()), index - 1);
    else
        MoveCaretTo(0, 0);
    BreakLine();
    MoveCaretTo(0, index);
    InsertText(text);
    EndUpdate();
}

// ---- Editing commands -----------------------------------------------------------------------------------------

void TCustomEasyEditSource::TrimTrailing(bool undoable) {
    if (Has(srLeaveTrailSpaces) || ReadOnly()) return;
    const int y = caret_.Y;
    const std::string_view raw = strings_->GetRawLine(y);
    const int trimmed = TrimmedLength(raw);
    if (trimmed == static_cast<int>(raw.size())) return;
    BeginUpdate(crDelete);
    if (undoable) {
        const TPoint back = caret_;
        const int from = RawToExpanded(y, trimmed);
        const int to = RawToExpanded(y, static_cast<int>(raw.size()));
        MoveCaretTo(from, y);
        DeleteChars(to - from);
        MoveCaretTo(back.X, back.Y);
    } else {
        // Stored directly and not recorded: leaving a line needs no undo step.
        ++editCount_;
        const std::string kept(raw.substr(0, static_cast<size_t>(trimmed)));
        StoreLine(y, kept);
        MarkAfterReparse(y, ReparseLine(y));
        --editCount_;
    }
    EndUpdate();
}

int TCustomEasyEditSource::GetIndentColumn(bool next) {
    const int x = caret_.X;
    const int fallback = next ? NextStop(x) : 0;
    if ((!next && (x == 0 || !Has(srAutoIndent))) || (next && !Has(srSmartTab))) return fallback;
    for (int y = std::min(caret_.Y, LineCount() - 1); y >= 0; --y) {
        const std::string line = strings_->Get(y);
        const int first = FirstNonBlank(line);
        if (first < 0) continue;
        if (!next) {
            if (first <= x) return first;
            continue;
        }
        const int length = static_cast<int>(line.size());
        if (length <= x) continue;
        if (first > x) return first;
        // The start of the next word after the caret's column.
        int p = x;
        while (p < length && !Delimiters.test(static_cast<unsigned char>(line[static_cast<size_t>(p)]))) ++p;
        while (p < length && Delimiters.test(static_cast<unsigned char>(line[static_cast<size_t>(p)]))) ++p;
        if (p < length) return p;
    }
    return fallback;
}

void TCustomEasyEditSource::AutoIndent(bool insert, int column) {
    if (insert && column > 0) {
        std::string fill;
        if (Has(srUseTab) && Has(srOptimalFill)) {
            int reached = 0;
            while (NextStop(reached) <= column) {
                reached = NextStop(reached);
                fill.push_back('\t');
            }
            fill.append(static_cast<size_t>(column - reached), ' ');
        } else {
            fill.assign(static_cast<size_t>(column), ' ');
        }
        InsertText(fill);
    }
    SetCaretX(column);
}

void TCustomEasyEditSource::NewLine(bool insertMode) {
    if (ReadOnly()) return;
    BeginUpdate(crBreakLine);
    if (insertMode) BreakLine();
    const int column = GetIndentColumn(false);
    MoveCaretTo(0, caret_.Y + 1);
    if (Has(srAutoIndent)) AutoIndent(insertMode, column);
    EndUpdate();
}

void TCustomEasyEditSource::InsertTab() {
    if (ReadOnly()) return;
    BeginUpdate(crInsert);
    if (Has(srUseTab)) {
        InsertText("\t");
        CaretRight(true);
    } else {
        const int blanks = GetIndentColumn(true) - caret_.X;
        if (blanks > 0) {
            InsertText(std::string(static_cast<size_t>(blanks), ' '));
            MoveCaretBy(blanks, 0);
        }
    }
    EndUpdate();
}

int TCustomEasyEditSource::PreviousIndent() const {
    int y = caret_.Y - 1;
    if (y < 0) return 0;
    for (; y > 0; --y) {
        const std::string line = strings_->Get(y);
        const int first = FirstNonBlank(line);
        if (first >= 0 && first <= caret_.X) break;
    }
    const std::string line = strings_->Get(y);
    int p = std::min(caret_.X, static_cast<int>(line.size()));
    while (p > 0 && static_cast<unsigned char>(line[static_cast<size_t>(p - 1)]) <= 32) --p;
    while (p > 0 && static_cast<unsigned char>(line[static_cast<size_t>(p - 1)]) > 32) --p;
    return std::max(0, p);
}

void TCustomEasyEditSource::Backspace() {
    if (ReadOnly()) return;
    if (Has(srBackUnindents) && caret_.X > 0) {
        const std::string line = strings_->Get(caret_.Y);
        const int first = FirstNonBlank(line);
        const bool onIndent = first >= 0 ? caret_.X == first : caret_.X == static_cast<int>(line.size());
        if (onIndent) {
            const int target = PreviousIndent();
            if (target < caret_.X) {
                BeginUpdate(crDelete);
                const int x = caret_.X, y = caret_.Y;
                // A level inside a tab: delete from the tab's start (a caret on
                // tabs could not stand at the level), then blanks refill the
                // tab's columns up to the level.
                int inside = 0, width = 0;
                if (Has(srUseTab)) ExpandedToRaw(y, target, inside, width);
                const int from = target - inside;
                MoveCaretTo(from, y);
                DeleteChars(x - from);
                if (inside > 0) InsertText(std::string(static_cast<size_t>(inside), ' '));
                MoveCaretTo(target, y);
                EndUpdate();
                return;
            }
        }
    }
    if (caret_.X == 0 && !Has(srMoveUpAtLineBegin)) return;
    BeginUpdate(crDelete);
    const TPoint before = caret_;
    CaretLeft();
    // Nothing lies left of the start of the document; at column 0 the caret
    // went up to the end of the line above, where there is nothing to delete.
    if (caret_.Y == before.Y && caret_.X < before.X) DeleteChars(1);
    EndUpdate();
}

// ---- Words and brackets -----------------------------------------------------------------------------------------

void TCustomEasyEditSource::WordBounds(TPoint point, int mode, int& start, int& end) const {
    const std::string line = strings_->Get(point.Y);
    const int length = static_cast<int>(line.size());
    auto at = [&](int i) { return static_cast<unsigned char>(line[static_cast<size_t>(i)]); };
    auto delimiter = [&](int i) { return at(i) != 1 && Delimiters.test(at(i)); };
    start = end = 0;
    if (length == 0) return;
    int p = std::clamp(point.X, 0, length - 1);
    while (p > 0 && delimiter(p)) --p;
    // Left over word characters; an embedded object (code 1) stops the walk.
    if (at(p) != 1)
        while (p > 0 && !delimiter(p - 1) && at(p - 1) != 1) --p;
    start = p;
    int e = start;
    if (e < length && at(e) == 1)
        ++e;
    else
        while (e < length && !delimiter(e) && at(e) != 1) ++e;
    if (mode == 1 && e < length && at(e) == ' ') ++e;
    if (mode == 2)
        while (e < length && delimiter(e)) ++e;
    end = e;
}

std::string TCustomEasyEditSource::WordAt(TPoint point, bool strict) const {
    const std::string line = strings_->Get(point.Y);
    if (strict && (point.X < 0 || point.X >= static_cast<int>(line.size()) ||
                   Delimiters.test(static_cast<unsigned char>(line[static_cast<size_t>(point.X)]))))
        return {};
    int start, end;
    WordBounds(point, 0, start, end);
    return line.substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
}

namespace {

char Partner(char c) {
    switch (c) {
        case '(': return ')';
        case '<': return '>';
        case '[': return ']';
        case '{': return '}';
        case ')': return '(';
        case '>': return '<';
        case ']': return '[';
        case '}': return '{';
        default: return 0;
    }
}

}  // namespace

bool TCustomEasyEditSource::MatchBracketForward(char open, TPoint& point) const {
    const char close = Partner(open);
    if (!close || point.Y < 0) return false;
    int depth = 0;
    for (int y = point.Y; y < LineCount(); ++y) {
        const std::string line = strings_->Get(y);
        for (size_t x = y == point.Y ? static_cast<size_t>(std::max(0, point.X)) : 0; x < line.size(); ++x) {
            if (line[x] == open)
                ++depth;
            else if (line[x] == close)
                --depth;
            else
                continue;
            if (depth == 0) {
                point = {static_cast<int>(x), y};
                return true;
            }
        }
    }
    return false;
}

bool TCustomEasyEditSource::MatchBracketBackward(char close, TPoint& point) const {
    const char open = Partner(close);
    if (!open || point.Y >= LineCount()) return false;
    int depth = 0;
    for (int y = point.Y; y >= 0; --y) {
        const std::string line = strings_->Get(y);
        int x = y == point.Y ? std::min(point.X, static_cast<int>(line.size()) - 1) : static_cast<int>(line.size()) - 1;
        for (; x >= 0; --x) {
            const char c = line[static_cast<size_t>(x)];
            if (c == close)
                ++depth;
            else if (c == open)
                --depth;
            else
                continue;
            if (depth == 0) {
                point = {x, y};
                return true;
            }
        }
    }
    return false;
}

}  // namespace zorfa::text
