#pragma once
// TCustomEasyParser: the contract between the text engine and any parser.
//
// A parser classifies one line at a time. The caller owns the state: it holds
// a state number and a 1-based position, hands both over with the line, and
// gets back a token number, the position behind the token and the state to
// carry on with. The parser keeps nothing between calls that influences the
// result (LastState and LineIndex are bookkeeping only), so a line scanned
// again from the same begin state gives the same tokens and the same end
// state: that is what lets the line store cache BeginState/EndState per line
// and stop re-parsing at the first line whose entering state is unchanged.
//
// States and tokens are small non-negative integers (they fit the 16-bit
// fields of the line record); -1 means "no token" / "dead state".
//
// Lines are 8-bit byte strings. A NUL byte inside a line ends what an
// expression can see (it is the terminator of the mask engine), but the scan
// still makes progress over it.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/ColorRef.h"

namespace zorfa {

// Font styles of a token: a set of these bits.
using TFontStyles = std::uint8_t;
constexpr TFontStyles fsBold = 1;
constexpr TFontStyles fsItalic = 2;
constexpr TFontStyles fsUnderline = 4;
constexpr TFontStyles fsStrikeOut = 8;

// The colours a view and a parser swap through ExchangeColors: the view's
// selection, search-match, disabled and read-only colours, which the editor
// parser keeps as its five reserved styles.
struct TEasyReservedColors {
    TColor SelColor = clHighlightText;
    TColor SelBackColor = clHighlight;
    TColor InActiveSelColor = clWindowText;
    TColor InActiveSelBackColor = clBtnFace;
    TColor SearchMatchColor = clLime;
    TColor SearchMatchBackColor = clBlack;
    TColor DisabledColor = clBtnFace;
    TColor ReadOnlyColor = clBtnFace;
};

// One piece of a scanned line, as ScanLine reports it.
struct TEasyTokenPiece {
    int Token;   // token number, or -1 for text in a dead state
    int Start;   // 1-based position of the first character
    int Length;  // at least 1; may run past the line's end (clip it)
};

class TCustomEasyParser {
public:
    using TNotifyCallback = std::function<void(TCustomEasyParser& sender)>;

    TCustomEasyParser();
    virtual ~TCustomEasyParser();
    TCustomEasyParser(const TCustomEasyParser&) = delete;
    TCustomEasyParser& operator=(const TCustomEasyParser&) = delete;

    // --- The virtual operations, in their traditional slot order ---------

    // Tells every registered party (in registration order) that the parser
    // changed: a new scheme, new styles. Receivers drop their cached lines.
    virtual void Changed();

    // Moves the reserved colours between the parser's styles and `colors`:
    // into the styles when `toStyles`, out of them otherwise. Base: nothing.
    virtual void ExchangeColors(TEasyReservedColors& colors, bool toStyles);

    // Scans one piece of `line` starting at the 1-based `position` in
    // `state`. Advances `position` by at least 1 (it may pass the line's end
    // by more than 1; test "position > length", never equality), updates
    // `state`, and returns the piece's token number or -1. Never throws.
    virtual int NextToken(int& state, std::string_view line, int& position) = 0;

    // Font colour and style of a token; colour -1 and no style mean "no
    // opinion" (the view uses its own defaults).
    virtual void GetTokenStyle(int token, TColor& fontColor, TFontStyles& fontStyle) = 0;
    virtual TColor GetTokenBackground(int token) = 0;  // -1: no opinion
    virtual TColor GetDefaultBackground() = 0;          // -1: no opinion
    virtual int GetTokenCount() = 0;
    virtual void SetBackground(TColor color);
    // Token number of a name (compared without case), or -1.
    virtual int IndexOfToken(std::string_view name) const;

    // --- Convenience over NextToken ---------------------------------------

    // The calling order the edit source uses for one line: position 1, then
    // NextToken until the position is past the line's length, reporting each
    // piece. An empty line is not scanned at all. Returns the end state.
    template <class OnPiece>
    int ScanLine(int state, std::string_view line, OnPiece&& onPiece) {
        const int length = static_cast<int>(line.size());
        int position = 1;
        while (position <= length) {
            const int start = position;
            const int token = NextToken(state, line, position);
            onPiece(TEasyTokenPiece{token, start, position - start});
        }
        return state;
    }

    // --- Fields ------------------------------------------------------------

    // The state at the start of the most recent NextToken call.
    int LastState() const { return FLastState; }
    // Number of the line being scanned; set by the caller, not interpreted.
    int LineIndex() const { return FLineIndex; }
    void SetLineIndex(int line) { FLineIndex = line; }
    // The state a document starts in (0 unless a derived parser changes it).
    int DefaultState() const { return FDefaultState; }
    // Extra word delimiters named by the scheme, added by the edit source to
    // its default delimiter set.
    const std::string& Delimiters() const { return FDelimiters; }

    // Change notification: one callback per owner (an edit source passes
    // itself). Adding again for the same owner replaces the callback. The
    // callbacks are called once more when the parser is destroyed, with
    // Destroying() true: a receiver then drops the parser and calls nothing
    // on it (its derived part is already gone).
    void AddNotifier(const void* owner, TNotifyCallback callback);
    void RemoveNotifier(const void* owner);
    bool Destroying() const { return FDestroying; }

    // Every live parser of the process, in construction order; global
    // settings walk it.
    static const std::vector<TCustomEasyParser*>& AllParsers();

protected:
    int FLastState = 0;
    int FLineIndex = 0;
    int FDefaultState = 0;
    std::string FDelimiters;

private:
    std::vector<std::pair<const void*, TNotifyCallback>> FNotifiers;
    bool FDestroying = false;
};

}  // namespace zorfa
