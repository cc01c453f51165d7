#pragma once
// TEasyUndoList: the undo and redo lists of an edit source. Each list is one
// flat array of 8-byte records; every edit primitive writes the record that
// takes it back, undo replays records, and replaying writes the opposite
// records into the other list, so redo is undo with the lists swapped.
//
// A record's Data is either a plain value (an inserted length, a paragraph
// number) or, for the kinds that carry more (a caret move, deleted text and
// its style codes, a block of whole lines), the index of a payload in the
// list's payload pool. An index instead of a pointer keeps the record 8 bytes
// on 64-bit machines. Records are added and removed at the end, so payloads
// are reused from a free list and a typing burst allocates nothing once the
// pool has grown.
//
// Errors: an index outside the list raises zorfa::Exception
// "List Index out of bounds Index: %d".

#include <cstdint>
#include <string>
#include <vector>

#include "text/EasyLineText.h"
#include "text/EasyRecordList.h"

namespace zorfa::text {

// Record kinds, named by the step that made them.
enum TEasyUndoKind : std::uint8_t {
    ukCaretMove = 0,   // MoveCaretBy: DX, DY packed, or a payload
    ukInsert = 1,      // InsertText: the length (or a change record)
    ukDelete = 2,      // DeleteChars: change record with the text and codes
    ukJoin = 3,        // JoinLines: the deleted line's Paragraph (or a change record)
    ukBreak = 4,       // BreakLine: 0 (or a change record)
    ukChainEnd = 9,    // UnlockUndo: closes a chain; replay does nothing
    ukStyles = 11,     // style store of the rich source: old codes of a run from X on line Y
    ukParagraph = 13,  // paragraph change of the rich source: payload line, old paragraph
    ukBlockDelete = 20,  // DeleteBlock: payload of the removed lines; replay inserts them
    ukBlockInsert = 21,  // InsertBlock: payload of the inserted range; replay removes it
};

struct TEasyUndoRecord {
    std::uint8_t Kind;
    std::uint8_t Reason;  // ChangeReason of the source at the time
    bool Chained;         // made under LockUndo: travels with its neighbours
    bool First;           // first record of its update
    std::uint32_t Data;   // value, or payload index for the kinds that have one
};
static_assert(sizeof(TEasyUndoRecord) == 8);

// One whole line of a block payload: what a removed line needs to come back
// as it was, parse cache included (its text is unchanged, so its codes stay
// valid for the same entering state).
struct TEasyBlockLine {
    TEasyLineText Text;
    TEasyStyleCodes Styles;
    std::uint16_t BeginState = 0;
    std::uint16_t EndState = 0;
    std::uint16_t Paragraph = 65535;
    std::uint16_t StartStyle = 65535;
    std::uint8_t Flags = 0;
};

// The change record and the other payloads, in one shape.
struct TEasyUndoPayload {
    std::string Text;                   // deleted text (raw)
    std::vector<std::uint16_t> Styles;  // its style codes
    int X = 0, Y = 0;                   // caret when made (change record)
    int Value = 0;                      // length, paragraph; block: blanks filled
    int DX = 0, DY = 0;                 // caret move
    int FromX = 0, FromY = 0;           // block: raw start of the range
    int ToX = 0, ToY = 0;               // block: raw end of the inserted range
    std::vector<TEasyBlockLine> Lines;  // block payloads: whole lines

    void Reset();
};

class TEasyUndoList : public TEasyRecordList {
public:
    TEasyUndoList();
    ~TEasyUndoList() override;

    // Mirror of the source's srUndoOnlyChanges.
    bool UndoOnlyChanges = false;

    TEasyUndoRecord& Record(int index) { return At<TEasyUndoRecord>(index); }
    const TEasyUndoRecord& Record(int index) const { return At<TEasyUndoRecord>(index); }
    TEasyUndoRecord& LastRecord() { return Record(Count() - 1); }

    void AddRecord(const TEasyUndoRecord& record) { Add(&record); }
    // A fresh payload and its index for a record's Data.
    std::uint32_t NewPayload();
    TEasyUndoPayload& Payload(std::uint32_t index) { return payloads_[index]; }
    // Whether a record keeps a payload index in Data under the list's present
    // form.
    bool HasPayload(const TEasyUndoRecord& record) const;

    // A caret move of small steps packed into Data itself (the common case:
    // typing moves by one), so a typing burst uses no payload at all.
    static bool PackMove(int dx, int dy, std::uint32_t& data);
    static void UnpackMove(std::uint32_t data, int& dx, int& dy);

    // Removes a record and frees its payload.
    void Delete(int index) override;
    // Removes the last record, if any.
    void RemoveLast();
    void Clear() override;
    void Error(int index) const override;

    int PayloadsInUse() const { return static_cast<int>(payloads_.size() - free_.size()); }

private:
    void ReleasePayload(std::uint32_t index);

    std::vector<TEasyUndoPayload> payloads_;
    std::vector<std::uint32_t> free_;
};

}  // namespace zorfa::text
