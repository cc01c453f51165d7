#pragma once
// TCustomEasyEditSource: the document behind one or more editor views. It
// owns the line store, the caret, the undo and redo lists, the bookmarks and
// line marks, the tab stops and the link to the parser; a view keeps only its
// scroll position and selection. Every change of the text goes through the
// five primitives (InsertText, InsertLine, DeleteChars, JoinLines, BreakLine)
// or the two block operations (DeleteBlock, InsertBlock) so that undo, marks,
// re-parsing and notifications cannot be forgotten by a caller.
//
// Batching: BeginUpdate/EndUpdate nest; the views hear of an update once, at
// the outermost EndUpdate. Parsing is lazy: ParsedTo is the first line not
// known to be parsed; an edit only lowers it and clears the flags of the lines
// whose text it changed, and ParseTo re-scans from there, skipping every line
// whose cached entering state is unchanged. No edit touches the lines after
// it, so an edit costs the same at the top of a million-line file as at its
// end. Block operations move whole line ranges at once (linear in the text).
//
// Errors: primitives on a read-only source do nothing; SetTabStops raises
// zorfa::Exception("Invalid Tab Stop"); SaveToFile raises zorfa::Exception
// "Cannot create file" or "Cannot write file" naming the file. Bad indexes
// are ignored.

#include <bitset>
#include <cstddef>
#include <initializer_list>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "syntax/CustomEasyParser.h"
#include "text/EasyBookmarks.h"
#include "text/EasyPoint.h"
#include "text/EasyStrings.h"
#include "text/EasyUndo.h"
#include "text/EditSourceListener.h"
#include "text/TabStops.h"

namespace zorfa::text {

// Source options; the order is stored (a set of 19 elements).
enum TEasySourceOption : int {
    srAutoIndent,
    srBackUnindents,
    srUseTab,
    srCursorThroughTabs,
    srAlwaysOnTabs,
    srOptimalFill,
    srSmartTab,
    srAllowUndo,
    srGroupUndo,
    srBeyondEof,
    srBeyondEol,
    srMoveUpAtLineBegin,
    srLeaveTrailSpaces,
    srLiveSpell,
    srMoveDownAtLineEnd,
    srAllowHiddenLines,
    srHighlightUrls,
    srUndoOnlyChanges,
    srAutoCorrect,
};
constexpr int kSourceOptionCount = 19;

// A set of TEasySourceOption; bit n is option n, as stored.
class TEasySourceOptions {
public:
    constexpr TEasySourceOptions() = default;
    constexpr TEasySourceOptions(std::initializer_list<TEasySourceOption> options) {
        for (TEasySourceOption o : options) bits_ |= Bit(o);
    }
    static constexpr TEasySourceOptions FromBits(std::uint32_t bits) {
        TEasySourceOptions s;
        s.bits_ = bits & ((1u << kSourceOptionCount) - 1);
        return s;
    }
    constexpr std::uint32_t Bits() const { return bits_; }
    constexpr bool Contains(TEasySourceOption o) const { return (bits_ & Bit(o)) != 0; }
    constexpr TEasySourceOptions operator+(TEasySourceOption o) const { return FromBits(bits_ | Bit(o)); }
    constexpr TEasySourceOptions operator-(TEasySourceOption o) const { return FromBits(bits_ & ~Bit(o)); }
    friend constexpr bool operator==(TEasySourceOptions, TEasySourceOptions) = default;

private:
    static constexpr std::uint32_t Bit(TEasySourceOption o) { return 1u << static_cast<int>(o); }
    std::uint32_t bits_ = 0;
};

// The initial options.
constexpr TEasySourceOptions kDefaultSourceOptions{srAutoIndent, srBackUnindents, srAllowUndo,
                                                   srGroupUndo,  srBeyondEol,     srHighlightUrls};

// Change flags of one update.
enum TEasyChangeFlag : std::uint16_t {
    cfFormat = 1,
    cfCaret = 2,
    cfAll = 4,
    cfText = 8,
    cfLineCount = 16,
    cfUndo = 32,
    cfBookmarks = 64,
    cfLineMarks = 128,
    cfReadOnly = 256,
    cfHiddenLines = 1024,
    cfIncrementalSearch = 2048,
};

// Change reasons given to BeginUpdate; undo groups by them.
enum TEasyChangeReason : std::uint8_t {
    crCaretMove = 0,
    crInsert = 1,
    crDelete = 2,
    crJoinLines = 3,
    crBreakLine = 4,
    crTemplate = 5,
    crDeleteSelection = 6,
    crCompound = 8,
};

using TEasyCharSet = std::bitset<256>;

// The fixed character sets of the source.
const TEasyCharSet& DefaultDelimiters();
const TEasyCharSet& IdentifierChars();
const TEasyCharSet& PunctuationChars();
const TEasyCharSet& UrlChars();

// Whether a run of URL characters is a URL or a mail address.
bool IsUrlOrMail(std::string_view run);
// The style of every URL and mail address in `text` set to `code`.
void MarkUrls(std::string_view text, TEasyStyleCodes& styles, std::uint16_t code);

// The URL style name of a parser.
inline constexpr const char* kUrlStyleName = "turl";

class TCustomEasyEditSource {
public:
    TCustomEasyEditSource();
    virtual ~TCustomEasyEditSource();
    TCustomEasyEditSource(const TCustomEasyEditSource&) = delete;
    TCustomEasyEditSource& operator=(const TCustomEasyEditSource&) = delete;

    // ---- Store, options, state ------------------------------------------
    TEasyStrings& Lines() { return *strings_; }
    const TEasyStrings& Lines() const { return *strings_; }
    int LineCount() const { return strings_->Count(); }

    TEasySourceOptions Options() const { return options_; }
    void SetOptions(TEasySourceOptions options);
    bool Has(TEasySourceOption o) const { return options_.Contains(o); }

    TPoint Caret() const { return caret_; }
    TPoint OldCaret() const { return oldCaret_; }
    std::uint16_t ChangeFlags() const { return changeFlags_; }
    int UpdateCount() const { return updateCount_; }
    std::uint8_t ChangeReason() const { return changeReason_; }
    // First and last changed line and column of the open update; -1 unset.
    int ChangedFirstLine() const { return changedRect_[0]; }
    int ChangedLastLine() const { return changedRect_[1]; }
    int ChangedFirstColumn() const { return changedRect_[2]; }
    int ChangedLastColumn() const { return changedRect_[3]; }
    // True during an absolute caret move.
    bool Jumping() const { return jumping_; }
    // The undo lists' roles are swapped (a redo is running).
    bool Redoing() const { return redoing_; }
    // Undo or redo is replaying records.
    bool Replaying() const { return undoing_; }

    bool Modified = false;
    bool KeepLastLine = false;
    bool CaretFromBookmark() const { return caretFromBookmark_; }
    std::string FileName;
    TEasyCharSet Delimiters;

    bool ReadOnly() const { return GetReadOnly(); }
    void SetReadOnly(bool value);

    // ---- Tab stops ----------------------------------------------------------
    const std::string& TabStops() const { return tabStops_.TabStops(); }
    void SetTabStops(std::string_view text);
    int NextStop(int column) const { return tabStops_.NextStop(column); }
    int PrevStop(int column) const { return tabStops_.PrevStop(column); }
    // Expanded column to raw index of line `y`; `inside` is how far the
    // column lies into a tab (0 on its first column or outside), `width` the
    // extra columns of the last tab passed.
    int ExpandedToRaw(int y, int column, int& inside, int& width) const;
    int ExpandedToRaw(int y, int column) const;
    // Raw index to the expanded column where that character starts.
    int RawToExpanded(int y, int position) const;
    std::string ExpandTabs(std::string_view text) const;

    // ---- Views --------------------------------------------------------------
    void Attach(IEasySourceListener* view);
    void Detach(IEasySourceListener* view);
    IEasySourceListener* ActiveView = nullptr;
    // The form's hook: after the views, at the end of every outermost update
    // that changed something, with the change flags.
    std::function<void(TCustomEasyEditSource&, std::uint16_t flags)> OnSourceChanged;
    // Returns whether a word is well spelled (live spell marking).
    std::function<bool(TCustomEasyEditSource&, std::string_view word)> OnWordSpell;

    // ---- Updates ------------------------------------------------------------
    virtual void BeginUpdate(std::uint8_t reason);
    virtual void EndUpdate();
    void MarkChanged(int x1, int x2, bool isText, int y2, int y1);
    void AddChangeFlags(std::uint16_t flags) { changeFlags_ |= flags; }
    void NotifyAll(TEasySourceNotify* notify);
    void NotifyRange(int first, int last);
    virtual void LockChanges() { ++lockCount_; }
    virtual void UnlockChanges() { --lockCount_; }

    // ---- Caret ----------------------------------------------------------------
    void MoveCaretBy(int dx, int dy);
    void MoveCaretTo(int x, int y);
    void SetCaretX(int x) { MoveCaretTo(x, caret_.Y); }
    void SetCaretY(int y) { MoveCaretTo(caret_.X, y); }
    void CaretLeft();
    void CaretRight(bool force = false);

    // ---- Primitives ---------------------------------------------------------------
    virtual void InsertText(std::string_view text);
    virtual void InsertLine(int index, std::string_view text);
    virtual void DeleteChars(int count);
    virtual void JoinLines();
    virtual void BreakLine();
    // Block operations: the stream from `from` to `to` (expanded columns,
    // `to` exclusive) removed at once; and `text` (rows separated by CR LF,
    // CR or LF) inserted at the caret: the first row at the caret, each
    // further row on a line of its own, the rest of the caret's line after
    // the last row. Neither moves the caret; DeleteBlock moves it to `from`
    // first. Undo takes each back in one record.
    void DeleteBlock(TPoint from, TPoint to);
    void InsertBlock(std::string_view text);
    virtual void Clear();

    // ---- Editing commands built on the primitives ------------------------------------
    void Backspace();
    void AutoIndent(bool insert, int column);
    // The indent column for Enter (next false) or smart Tab (next true).
    int GetIndentColumn(bool next);
    // Enter: line break (in insert mode) and auto indent, in one update.
    void NewLine(bool insertMode = true);
    // Tab without a selection: a tab character with srUseTab, else blanks up
    // to GetIndentColumn(true).
    void InsertTab();
    void TrimTrailing(bool undoable);

    // ---- Words and brackets ------------------------------------------------------
    // Start and end (exclusive) columns of the word at `point`; mode 1 takes
    // one following blank, mode 2 all following delimiters.
    void WordBounds(TPoint point, int mode, int& start, int& end) const;
    std::string WordAt(TPoint point, bool strict) const;
    bool MatchBracketForward(char open, TPoint& point) const;
    bool MatchBracketBackward(char close, TPoint& point) const;

    // ---- Parser -----------------------------------------------------------------------
    TCustomEasyParser* Parser() const { return parser_; }
    void SetParser(TCustomEasyParser* parser);
    virtual void ParserChanged();
    virtual bool CanParse() { return true; }
    int ParsedTo() const { return parsedTo_; }
    void ParseTo(int line);
    void ParseLines(int first, int last, bool force);
    // Parses line y again; true when its EndState changed.
    bool ReparseLine(int y);
    int UrlStyle() const { return urlStyle_; }
    // Names of the styles spell-checked, each with its code (-1 unknown).
    std::vector<std::pair<std::string, int>> SpellStyles{{"tstring", -1}, {"tcomment", -1}};
    // After a change of SpellStyles: the codes looked up again.
    virtual void SpellStylesChanged();
    virtual bool CheckWord(std::string_view word);

    // ---- Undo ---------------------------------------------------------------------------
    void Undo();
    void Redo();
    bool CanUndo() const;
    bool CanRedo() const;
    virtual void ApplyUndoRecord(const TEasyUndoRecord& record);
    // Adds a record of `kind` with a value or payload index as Data.
    void AddUndoRecord(std::uint8_t kind, std::uint32_t data);
    // With srUndoOnlyChanges a change record holding the caret and `value`;
    // without it the value itself.
    void AddChangeRecord(std::uint8_t kind, int value);
    void LockUndo() { ++undoLock_; }
    void UnlockUndo();
    TEasyUndoList& UndoRecordList() { return redoing_ ? *redoList_ : *undoList_; }
    TEasyUndoList& RedoRecordList() { return redoing_ ? *undoList_ : *redoList_; }
    TEasyUndoList& UndoList() { return *undoList_; }
    TEasyUndoList& RedoList() { return *redoList_; }
    void ClearUndo();

    // ---- Bookmarks ----------------------------------------------------------------------
    TEasyBookMarkList& Bookmarks() { return bookmarks_; }
    TEasyBookMarkList& LineMarks() { return lineMarks_; }
    bool GetBookmark(int index, TPoint& point) const;
    void SetBookmark(int index, TPoint point);
    void DeleteBookmark(int index);
    void ToggleBookmark(int index, TPoint point);
    void GotoBookmark(int index);
    int GetBookmarkAtLine(int y) const { return bookmarks_.GetIndexAtLine(y); }

    // ---- Files --------------------------------------------------------------------------
    virtual void LoadFromStream(std::istream& stream);
    virtual void SaveToStream(std::ostream& stream);
    void SaveToFile(const std::string& name);

protected:
    virtual void AdjustPositions(int dx, int dy);
    virtual void SaveStyles(int x, int y) {}
    virtual void RestoreStyles(int x, int y) {}
    virtual bool GetReadOnly() const { return readOnly_; }

private:
    // Store events.
    void StoreChanged(TEasyStrings& strings);
    void ConvertLine(TEasyStrings& strings, std::string& text, bool storing);
    void InvalidateLines(int first, int last);
    void InvalidateLine(int y);
    void RebuildDelimiters();
    // Stores a raw line inside a primitive and drops its parse data.
    void StoreLine(int y, std::string_view text);
    void MarkAfterReparse(int y, bool endStateChanged);
    int CaretRaw(int& inside, int& width) const;
    void EnsureCaretLine();
    void RecordMove(int dx, int dy);
    void DoDeleteChars(int count);
    // Block helpers (EasyEditSourceBlock.cpp).
    void RemoveLines(int first, int count, std::vector<TEasyBlockLine>* keep);
    void InsertLines(int index, std::vector<TEasyBlockLine>& lines, size_t from);
    // The raw range a..b (b.Y > a.Y) removed; blanks fill a short first line
    // up to a.X. Records ukBlockDelete.
    void RemoveBlock(TPoint a, TPoint b);
    // rows[0] joined to line at.Y at raw column at.X, the others as lines of
    // their own, the rest of the line after the last. The `fill` blanks that
    // a removal left at at.X come out first. Records ukBlockInsert.
    void ReinsertBlock(TPoint at, std::vector<TEasyBlockLine>& rows, int fill);
    void AdjustRange(const TEasyRangeMove& move);
    void SpellLine(int y);
    int FirstNonBlank(std::string_view line) const;
    int PreviousIndent() const;

    std::unique_ptr<TEasyStrings> strings_;
    std::uint16_t changeFlags_ = 0;
    int updateCount_ = 0;
    std::vector<IEasySourceListener*> notifiers_;
    TPoint oldCaret_, caret_;
    int changedRect_[4] = {-1, -1, -1, -1};  // first line, last line, first column, last column
    int oldLineCount_ = 0;
    bool redoing_ = false;
    bool jumping_ = false;
    std::unique_ptr<TEasyUndoList> undoList_, redoList_;
    std::uint8_t changeReason_ = 0;
    int undoLock_ = 0;
    bool firstRecord_ = false;
    TEasySourceOptions options_ = kDefaultSourceOptions;
    int editCount_ = 0;
    int lockCount_ = 0;
    TCustomEasyParser* parser_ = nullptr;
    int parsedTo_ = 0;
    TTabStopList tabStops_;
    bool readOnly_ = false;
    bool caretFromBookmark_ = false;
    int urlStyle_ = -1;
    TEasyCharSet spellDelimiters_;
    TEasyBookMarkList bookmarks_, lineMarks_;
    bool undoing_ = false;  // a replay is running (ApplyUndoRecord)
};

// TEasyEditSource: the published form of the source.
class TEasyEditSource : public TCustomEasyEditSource {
public:
    using TCustomEasyEditSource::TCustomEasyEditSource;
};

}  // namespace zorfa::text
