#pragma once
// The shared records behind cell styles: one FontRecord per distinct font and
// one StyleRecord per distinct style, both owned by TcxSSStyleCache. Cells hold
// a counted StyleHandle, so equal styles are one record however many cells use
// them. Colours are palette indexes (TcxSSColor): 0 to 55 the book's palette,
// 56 none or the window colour, 57 automatic.

#include <array>
#include <cstdint>
#include <string>

#include "base/ColorRef.h"

namespace zorfa::sheet {

using TcxSSColor = std::uint16_t;

constexpr TcxSSColor kPaletteSize = 56;
constexpr TcxSSColor kColorNone = 56;       // no colour, or the window colour
constexpr TcxSSColor kColorAutomatic = 57;
constexpr TcxSSColor kColorRed = 2;         // font colour of a negative value in the red formats

using TcxSSPalette = std::array<TColor, kPaletteSize>;

// The palette a new book starts with, as 0x00BBGGRR colour references.
extern const TcxSSPalette kDefaultPalette;

enum TcxHorzTextAlign : std::uint8_t { haGENERAL, haLEFT, haCENTER, haRIGHT, haFILL, haJUSTIFY };
enum TcxVertTextAlign : std::uint8_t { vaTOP, vaCENTER, vaBOTTOM, vaJUSTIFY };

enum TcxSSFillStyle : std::uint8_t {
    fsSolid, fsGray75, fsGray50, fsGray25, fsGray12, fsGray6, fsHorzStrip, fsVertStrip,
    fsRevDiagonalStrip, fsDiagonalStrip, fsDiagCrossHatch, fsThickCrossHatch, fsThinHorzStrip,
    fsThinVertStrip, fsThinRevDiagonalStrip, fsThinDiagonalStrip, fsThinDiagCrossHatch, fsThinThickCrossHatch,
};

enum TcxSSEdgeLineStyle : std::uint8_t {
    lsDefault, lsThin, lsMedium, lsDashed, lsDotted, lsThick, lsDouble, lsHair, lsMediumDashed,
    lsDashDot, lsMediumDashDot, lsDashDotDot, lsMediumDashDotDot, lsSlantedDashDot, lsNone,
};

// Edge indexes of a style, in their stored order.
enum TcxSSEdgeBorder : std::uint8_t { eLeft = 0, eTop = 1, eRight = 2, eBottom = 3 };

// Font style bits.
constexpr std::uint8_t kFontBold = 1;
constexpr std::uint8_t kFontItalic = 2;
constexpr std::uint8_t kFontUnderline = 4;
constexpr std::uint8_t kFontStrikeOut = 8;

// Style flag bits.
constexpr std::uint8_t kStyleLocked = 2;  // bit 1
constexpr std::uint8_t kStyleMerged = 4;  // bit 2

struct FontRecord {
    std::string name;
    TcxSSColor fontColor = 0;
    std::uint8_t style = 0;  // kFontBold | kFontItalic | ...
    std::uint8_t charset = 1;
    std::uint8_t size = 8;
    // Platform font handle and the width and height of "Wg"; a model without
    // a screen leaves them 0.
    void* handle = nullptr;
    std::int32_t textWidth = 0;
    std::int32_t textHeight = 0;
};

struct EdgeRecord {
    std::uint8_t line = lsDefault;  // TcxSSEdgeLineStyle
    TcxSSColor color = kColorAutomatic;

    friend bool operator==(const EdgeRecord&, const EdgeRecord&) = default;
};

// The part of a style that makes it what it is; two styles are the same
// record exactly when these fields are equal.
struct StyleFields {
    std::uint16_t format = 0;  // stored number format code
    std::uint8_t horzTextAlign = haGENERAL;
    std::uint8_t vertTextAlign = vaCENTER;
    std::uint8_t wordBreak = 0;
    std::uint8_t flags = 0;  // kStyleLocked | kStyleMerged
    const FontRecord* font = nullptr;
    std::uint8_t fillStyle = fsSolid;
    TcxSSColor foreground = kColorNone;
    TcxSSColor background = kColorNone;
    std::array<EdgeRecord, 4> edges{};  // left, top, right, bottom

    friend bool operator==(const StyleFields&, const StyleFields&) = default;
};

class TcxSSStyleCache;

struct StyleRecord {
    StyleFields fields;
    std::uint32_t references = 0;  // not part of equality
    TcxSSStyleCache* cache = nullptr;
};

// A counted reference to a StyleRecord: copying takes a reference, and the
// last release frees the record (style 0 is never freed).
class StyleHandle {
public:
    StyleHandle() = default;
    explicit StyleHandle(StyleRecord* record) noexcept;  // takes a new reference
    StyleHandle(const StyleHandle& other) noexcept : StyleHandle(other.record_) {}
    StyleHandle(StyleHandle&& other) noexcept : record_(other.record_) { other.record_ = nullptr; }
    StyleHandle& operator=(const StyleHandle& other) noexcept;
    StyleHandle& operator=(StyleHandle&& other) noexcept;
    ~StyleHandle() { reset(); }

    void reset() noexcept;
    StyleRecord* get() const noexcept { return record_; }
    const StyleFields& fields() const noexcept { return record_->fields; }
    explicit operator bool() const noexcept { return record_ != nullptr; }
    friend bool operator==(const StyleHandle& a, const StyleHandle& b) noexcept { return a.record_ == b.record_; }

private:
    StyleRecord* record_ = nullptr;
};

}  // namespace zorfa::sheet
