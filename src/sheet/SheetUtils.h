#pragma once
// Column and row texts, cell names and range tests shared by every part of the
// spreadsheet: storage, formulas, file reading and writing, and the form.
//
// Positions count from 0. A rectangle is four signed 32-bit numbers, left, top,
// right, bottom, inclusive: {1, 2, 1, 2} is the one cell B3. Every function here
// is pure and allocation-free except the ones that return text.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zorfa::sheet {

// A rectangle of cells, inclusive at both ends.
struct CellRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend bool operator==(const CellRect&, const CellRect&) = default;
};

// One cell position.
struct CellPoint {
    std::int32_t column = 0;
    std::int32_t row = 0;

    friend bool operator==(const CellPoint&, const CellPoint&) = default;
};

// A cell name as written in A1 form: "B3", "$B$3", "B$3".
struct CellName {
    std::int32_t column = 0;
    std::int32_t row = 0;
    bool columnAbsolute = false;
    bool rowAbsolute = false;

    friend bool operator==(const CellName&, const CellName&) = default;
};

class TcxSSUtils {
public:
    // The far edge used when a strip from a rectangle to the end of the sheet
    // is built; the model itself has no smaller limit.
    static constexpr std::int32_t kSheetEnd = 107374182;  // 0x6666666
    // What the file format can hold; cells beyond are not written.
    static constexpr std::int32_t kMaxFileColumn = 255;   // "IV"
    static constexpr std::int32_t kMaxFileRow = 65535;    // row text "65536"
    // The whole used area, as ClearCells takes it.
    static constexpr CellRect kWholeSheet{-1, -1, -1, -1};

    // Column text: in A1 form 0 is "A", 25 "Z", 26 "AA", 255 "IV"; in R1C1
    // form the decimal of index + 1. A negative index gives "".
    static std::string columnText(std::int32_t column, bool r1c1 = false);
    // Row text: the decimal of index + 1 in both forms; negative gives "".
    static std::string rowText(std::int32_t row);
    // "B3", or with the flags "$B$3"; always A1 form.
    static std::string cellName(std::int32_t column, std::int32_t row, bool columnAbsolute = false,
                                bool rowAbsolute = false);
    static std::string cellName(const CellName& name);
    // The name of a selection as the sheet form shows it: the column text of
    // left and the row text of top, and for more than one cell " x " and the
    // same for right and bottom. In R1C1 form C5 reads "35".
    static std::string selectionName(const CellRect& rect, bool r1c1 = false);
    // "A1" or "A1:B2" in A1 form.
    static std::string rangeName(const CellRect& rect);

    // The column index of letters ("A" 0, "iv" 255), case-insensitive;
    // nothing for an empty text, other characters, or an index past kSheetEnd.
    static std::optional<std::int32_t> columnIndex(std::string_view letters);
    // Parses an A1 cell name with optional "$" before the letters and the
    // digits, case-insensitive and without blanks. Nothing when the text is
    // anything else, the row is 0, or a part is past kSheetEnd.
    static std::optional<CellName> parseCellName(std::string_view text);

    // Range tests. None of them normalises its arguments.
    static CellRect normalized(const CellRect& rect) noexcept;
    static bool isValid(const CellRect& rect) noexcept;  // left <= right and top <= bottom
    static bool isSingleCell(const CellRect& rect) noexcept;
    static std::int64_t width(const CellRect& rect) noexcept;   // right - left + 1
    static std::int64_t height(const CellRect& rect) noexcept;  // bottom - top + 1
    static bool contains(const CellRect& rect, std::int32_t column, std::int32_t row) noexcept;
    static bool contains(const CellRect& rect, const CellPoint& cell) noexcept;
    static bool contains(const CellRect& outer, const CellRect& inner) noexcept;
    static bool intersects(const CellRect& a, const CellRect& b) noexcept;
    // The common part, or nothing when they do not meet.
    static std::optional<CellRect> intersection(const CellRect& a, const CellRect& b) noexcept;
    // The smallest rectangle holding both.
    static CellRect unite(const CellRect& a, const CellRect& b) noexcept;
};

}  // namespace zorfa::sheet
