#pragma once
// TEasyStrings: the in-memory text of one document. An array of
// pointers to line records behind the string-list interface (TStrings), with
// the parser state at both ends of each line, one 16-bit style code per
// character, fold flags and a fold level, and beside it the sorted list of
// hidden line numbers that converts real and on-screen line numbers.
//
// Contract:
// - No operation raises an exception, except the file operations
//   (LoadFromFile, SaveToFile), which throw zorfa::Exception naming the file.
//   Bad indexes are ignored; reads yield "", 0 or 65535 (kNoStyle).
// - Every change runs Changing, then the change, then Changed; the events
//   OnChanging / OnChange fire only while no update is open (BeginUpdate /
//   EndUpdate: one OnChanging when the outermost update opens, one OnChange
//   when it closes). ChangedFrom..ChangedTo accumulates the changed lines.
// - Get passes the text through OnConvertLine (storing false); GetRawLine
//   never does. Put, Insert and loading call it with storing true.
// - Load splits at CR, LF and CR LF (LF CR is two breaks), ends at the first
//   NUL, adds no empty line for a break at the very end, and never detects
//   the line break. Save writes every raw line followed by LineBreak, the last
//   included, in one allocation and one write; an empty store writes nothing.
// - Loaded lines point into the read buffer, which the store keeps until
//   Clear or the next load; records are allocated in chunks. No per-line
//   notification and no per-character object while loading.
//
// Seam: the fold scan (turning scheme tokens into regions)
// lives with the parser and drives this store through SetCollapsed,
// SetExpanded, SetFoldChild, SetHidden and Record(i)->FoldLevel.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/EasyLineText.h"
#include "text/EasyVisibleLinesList.h"

namespace zorfa::text {

enum TEasyLineBreak : int { lbCRLF = 0, lbCR = 1, lbLF = 2 };

// TEasyStringRec: one line, with the system's field names and initial values;
// the order packs the record into 40 bytes (the states sit in the tail of
// Text), since a million of them make up most of a large file's memory.
struct TEasyStringRec {
    [[no_unique_address]] TEasyLineText Text;
    std::uint16_t EndState = 0;
    std::uint16_t BeginState = 0;
    TEasyStyleCodes Styles;
    void* LineObject = nullptr;  // the object of the TStrings interface
    std::uint16_t Paragraph = 65535;
    std::uint16_t StartStyle = 65535;
    std::uint8_t Flags = 0;  // TEasyLineFlag bits
    bool Hidden = false;     // mirror of membership of the visible-lines list
    std::uint8_t FoldLevel = 0;

    // Back to the initial values, dropping both strings.
    void Reset() noexcept;
};

class TEasyStrings {
public:
    using ChangeEvent = std::function<void(TEasyStrings& sender)>;
    // (strings, text to convert in place, storing)
    using ConvertLineEvent = std::function<void(TEasyStrings& sender, std::string& text, bool storing)>;

    TEasyStrings();
    virtual ~TEasyStrings();
    TEasyStrings(const TEasyStrings&) = delete;
    TEasyStrings& operator=(const TEasyStrings&) = delete;

    // ---- TStrings part -------------------------------------------------
    virtual std::string Get(int index) const;
    virtual void Put(int index, std::string_view text);
    virtual void* GetObject(int index) const;
    virtual void PutObject(int index, void* object);
    // Inserts at Count(); returns the new line's index.
    virtual int Add(std::string_view text);
    // Valid for 0..Count(); ignored otherwise.
    virtual void Insert(int index, std::string_view text);
    virtual void Delete(int index);
    virtual void Clear();
    virtual void Exchange(int index1, int index2);
    int Count() const { return count_; }
    int GetCount() const { return count_; }
    int GetCapacity() const { return capacity_; }
    virtual void SetCapacity(int capacity);
    // FUpdating; true: range reset to -1,-1 and Changing; false: Changed.
    virtual void SetUpdateState(bool updating);
    // TStrings update count: SetUpdateState on the 0<->1 edges.
    void BeginUpdate();
    void EndUpdate();
    int UpdateCount() const { return updateCount_; }
    bool Updating() const { return updating_; }

    // All lines through Get, each followed by CR LF (the TStrings Text).
    std::string GetText() const;
    // Replaces the text: the same split as loading.
    void SetText(std::string_view text);

    // ---- Loading and saving -------------------------------------------
    // Reads the whole file in one read; throws zorfa::Exception
    // "Cannot open file \"NAME\". <reason>" and the like.
    void LoadFromFile(const std::string& path);
    // One allocation and one write; throws zorfa::Exception naming the file.
    void SaveToFile(const std::string& path) const;
    // The remainder of the stream as one block.
    void LoadFromStream(std::istream& stream);
    void SaveToStream(std::ostream& stream) const;
    // Copies `bytes` into a block of the store and splits it.
    void LoadFromBuffer(std::string_view bytes);
    // Takes the block (no copy): lines point into it until Clear or reload.
    void LoadFromBlock(std::unique_ptr<char[]> block, std::size_t size);
    // The bytes SaveToStream writes.
    std::string SaveToBuffer() const;

    // ---- Notifications --------------------------------------------------
    virtual void Changed();
    virtual void Changing();
    // Extends ChangedFrom..ChangedTo by from..to (marking a range).
    void MarkChanged(int from, int to);

    ChangeEvent OnChange;
    ChangeEvent OnChanging;
    ConvertLineEvent OnConvertLine;
    // Accumulated changed lines; -1, -1 when nothing is pending.
    int ChangedFrom = -1;
    int ChangedTo = -1;
    // True while a fold operation runs, so the owner can tell it from a text
    // change. Set by the store only.
    bool FoldChanging = false;
    // Written after every line on save.
    TEasyLineBreak LineBreak = lbCRLF;

    // ---- Line records ---------------------------------------------------
    // Text without conversion; empty when out of range. Valid until the
    // line changes.
    std::string_view GetRawLine(int index) const;
    // Put without the conversion hook (for the edit source and undo).
    void SetRawLine(int index, std::string_view text);
    // The record, or nullptr when out of range. Fields may be changed freely
    // except Hidden, which must go through SetHidden to keep the list.
    TEasyStringRec* Record(int index);
    const TEasyStringRec* Record(int index) const;

    std::span<const std::uint16_t> GetStyleString(int index) const;
    std::uint16_t GetLineState(int index) const;  // EndState; 0 when out of range
    // Fills `count` codes from 1-based `position`, in place, clipped to the
    // stored codes.
    void SetLineStyle(int index, int position, std::uint16_t code, int count);
    // Code at 1-based `position`; kNoStyle beyond the stored codes.
    std::uint16_t GetCharStyle(int index, int position) const;

    // ---- Folding ----------------------------------------------------------
    void SetExpanded(int index, bool value);
    void SetCollapsed(int index, bool value);
    bool IsExpanded(int index) const;
    bool IsCollapsed(int index) const;
    // visible true: clear lfFoldChild and show; false: set lfFoldChild and
    // hide when line 0, or the previous line is hidden or collapsed.
    void SetFoldChild(int index, bool visible);
    // Sets Hidden and the list entry together (no notification); used by the
    // fold scan to reset lines.
    void SetHidden(int index, bool hidden);
    bool IsLineVisible(int index) const;
    int HiddenCount() const;
    int RealToVisible(int line);
    int VisibleToReal(int line);
    // Expands the first collapsed head above `index`.
    void ExpandParents(int index);
    // List position of the last hidden entry at or before `key`.
    int FindHidden(int key, bool byVisible, bool strict);

    bool UseVisibleLines() const { return useVisibleLines_; }
    // Rebuilds the list: cleared, and when on, every Hidden line added.
    void SetUseVisibleLines(bool value);
    TEasyVisibleLinesList& VisibleLines() { return visibleLines_; }
    const TEasyVisibleLinesList& VisibleLines() const { return visibleLines_; }

private:
    struct RecordChunk;
    TEasyStringRec* NewRecord();
    void ReserveRecords(int count);
    void FreeRecord(TEasyStringRec* record) noexcept;
    void FreeAll() noexcept;
    void Grow();
    void SetCapacityRaw(int capacity);
    void RebuildVisibleLines();
    void ConvertStored(TEasyLineText& text);
    void SplitBlock(const char* data, const char* end, std::size_t lines);
    std::unique_ptr<char[]> BuildSaveBlock(std::size_t& size) const;
    void SetFoldState(int index, bool expanded, bool collapsed);
    template <class Change>
    void RunFoldChange(int index, Change change);
    void ApplyHead(int head);
    void SetVisible(int index, bool visible);

    TEasyStringRec** list_ = nullptr;  // FList
    int count_ = 0;                    // FCount
    int capacity_ = 0;                 // FCapacity
    bool updating_ = false;            // FUpdating
    int updateCount_ = 0;
    bool useVisibleLines_ = false;
    TEasyVisibleLinesList visibleLines_;

    // Record chunks and the free records in them.
    std::vector<std::unique_ptr<RecordChunk>> chunks_;
    std::vector<TEasyStringRec*> freeRecords_;
    // Blocks that borrowed line texts point into (read buffers).
    std::vector<std::unique_ptr<char[]>> blocks_;
};

}  // namespace zorfa::text
