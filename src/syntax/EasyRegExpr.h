#pragma once
// TEasyRegExpr: the system's own mask dialect, compiled once, matched on raw
// bytes without allocation (the backtrack stack is reused and only grows).
//
// The dialect is not the usual one:
//   {...}      a group                 .       any character
//   x*  x+     zero/one or more        x|      x is optional (postfix!)
//   !x  !{..}  negation                #nnn    the character with code nnn
//   [...]      a set: [^...] negated, a-z ranges, #nnn codes, \ escapes
//   ^  $       line start / line end   \x      x taken literally
//   ( ) ?      plain characters
// Repetition is greedy with a last-in-first-out stack of (position, item)
// backtrack points. A case-insensitive mask upper-cases "a".."z" at compile
// time and the input at match time.
//
// Compile errors raise zorfa::Exception("<mask> is invalid mask at (<pos>)"),
// pos being the 1-based mask position reached. Matching never fails other
// than by not matching.
//
// Text ends at the given end pointer or at the first NUL byte, whichever
// comes first (the terminator of the dialect: "$" matches there, and one
// consuming item may succeed on it without moving).

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zorfa {

enum class TEasyRegItemKind : std::uint8_t {
    Literal = 0,     // Ch; Ch == 0 is the final item that ends a match
    Any = 1,         // "."
    Set = 2,         // "[...]"
    LineStart = 3,   // "^"
    LineEnd = 4,     // "$"
    GroupOpen = 5,   // "{" or implied around an operand
    GroupClose = 6,  // "}" or implied
    EscapeMark = 7,  // "\" ahead of the escaped literal
    OneOrMore = 8,   // postfix "+"
    Optional = 9,    // postfix "|"
    ZeroOrMore = 10  // postfix "*"
};

struct TEasyRegItem {
    int Next = -1;  // inside a repeated operand: index of the operand's closing item
    bool Negated = false;
    TEasyRegItemKind Kind = TEasyRegItemKind::Literal;
    unsigned char Ch = 0;
    bool SetNegated = false;
    std::array<std::uint64_t, 4> CharSet{};  // 256 bits

    bool InSet(unsigned char c) const { return (CharSet[c >> 6] >> (c & 63)) & 1u; }
    void AddToSet(unsigned char c) { CharSet[c >> 6] |= std::uint64_t{1} << (c & 63); }
    // Does the set item admit c (SetNegated applied)?
    bool Admits(unsigned char c) const { return InSet(c) != SetNegated; }
};

class TEasyRegExpr {
public:
    // Compiles at once; throws zorfa::Exception on a bad mask.
    TEasyRegExpr(std::string_view mask, bool caseSensitive);
    virtual ~TEasyRegExpr();

    // Anchored match at `position` (text runs to `end` or the first NUL).
    // `atLineStart` says whether "^" may succeed here. On success `length`
    // is at least 1.
    bool MatchAt(const char* position, const char* end, bool atLineStart, int& length);

    // Search in a whole text. `position` is the 1-based start on entry and
    // the match's position on exit; `length` the match length (0 for a
    // zero-width match). Forward scans towards the end, backward towards
    // the start. On failure both are 0.
    bool Search(std::string_view text, bool forward, int& position, int& length);

    // The raw search over a pointer and a length (the pointer may be null:
    // only "^", "$" and "^$" then succeed). On success `length` is the end
    // offset of the match, which the text form turns into a length.
    bool Search(const char* text, int textLength, bool forward, int& position, int& length);

    // The first item that is a literal, an escape mark, any-character or a
    // set, or null: the item a scheme files the expression under.
    const TEasyRegItem* FirstItem() const;

    const std::string& Mask() const { return FMask; }
    bool CaseSensitive() const { return FCaseSensitive; }
    const std::vector<TEasyRegItem>& Items() const { return FItems; }

private:
    // A run of backtrack points (Low..High, Item), popped from High down:
    // the same last-in-first-out order as pushing each point on its own, but
    // a greedy repeat over N characters costs one entry instead of N.
    struct BacktrackRun {
        int Low;
        int High;
        int Item;
    };

    void Compile();
    void BuildTables();
    bool AtTerminator(int p) const { return p >= FLimit || FText[p] == 0; }
    unsigned char CharAt(int p) const { return p >= FLimit ? 0 : FText[p]; }
    void Push(int p, int item);
    bool TryOperand(int first, int last, int& p);
    bool RepeatSimple(int test, TEasyRegItemKind op, int after, int& p);
    bool MatchSequence(int first, int last, int& p);
    bool WholeMatch(int start, int& end);
    bool Visited(int p, int item);

    std::vector<TEasyRegItem> FItems;
    // Per item, 256 bytes: bit 0 the item admits the character (0 standing
    // for the terminator), bit 1 the same for a real, non-NUL character.
    std::vector<unsigned char> FTables;
    // Per item that opens a repeated operand made of one character test and
    // no-op marks: the index of that test, else -1.
    std::vector<int> FSimpleOperand;
    std::vector<BacktrackRun> FBacktrackStack;
    bool FCaseSensitive;
    std::string FMask;
    bool FAtLineStart = false;

    // Scratch of the current match: the text as bytes, where the match
    // attempt began (offset), where the text ends, and the failed-resume
    // memo (see EasyRegExpr.cpp).
    const unsigned char* FText = nullptr;
    int FTextStart = 0;
    int FLimit = 0;
    long FPops = 0;
    int FMemoWidth = 0;
    std::vector<std::uint64_t> FMemo;
    std::unordered_set<std::uint64_t> FMemoSet;  // when the bitmap would be too large
};

}  // namespace zorfa
