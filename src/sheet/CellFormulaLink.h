#pragma once
// The seam between the cell storage and the formula engine.
//
// The storage knows nothing of tokens: a formula cell owns one CellFormula
// object (std::unique_ptr), which the formula engine implements. The storage
// asks it for a copy when cells are copied, tells it of every structural
// change of the sheet (rows, columns or cells inserted or deleted), and reads
// its text and last result. New formulas come from a FormulaCompiler that the
// book hands to each storage. The other way round, the evaluator reads cells
// through CellReader without seeing the storage's records.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "sheet/SheetUtils.h"

namespace zorfa::sheet {

// The modes of InsertCells and DeleteCells, with their stored numbers.
enum class ShiftMode : std::uint8_t {
    Horizontal = 0,  // cells right of the rectangle move (delete: left, insert: right)
    Vertical = 1,    // cells below the rectangle move (delete: up, insert: down)
    Columns = 2,     // entire columns
    Rows = 3,        // entire rows
};

// One structural change of a sheet, told to every formula that may be touched.
//
// `rect` is inclusive and normalised, as the storage applied it: for Columns
// it spans all rows, for Rows all columns. `count` is the number of columns
// (Horizontal, Columns) or rows (Vertical, Rows) that were inserted or
// deleted; it equals the rectangle's width or height. Cells at or past the
// edge (rect.left for columns, rect.top for rows) moved by +count on insert;
// on delete the cells inside the rectangle are gone and those past its far
// edge moved by -count. For the shift modes only the rows (Horizontal) or
// columns (Vertical) of the rectangle moved.
struct StructureChange {
    enum class Kind : std::uint8_t { Insert = 0, Delete = 1 };

    Kind kind = Kind::Insert;
    ShiftMode mode = ShiftMode::Rows;
    std::int32_t sheet = 0;  // index of the changed sheet in its book
    CellRect rect;
    std::int32_t count = 0;

    bool isColumnChange() const noexcept { return mode == ShiftMode::Columns || mode == ShiftMode::Horizontal; }
    bool isInsert() const noexcept { return kind == Kind::Insert; }
    // -1 for delete and +1 for insert, the factor of `count` for a moved position.
    std::int32_t sign() const noexcept { return kind == Kind::Insert ? 1 : -1; }
};

// What a formula did with a structural change.
enum class ReferenceUpdate : std::uint8_t {
    Unchanged,  // text and references as they were
    Changed,    // references moved: the storage takes text() as the new cell text
    Broken,     // a reference fell off the sheet: the cell becomes the plain text "#REF!"
};

// The value of a cell or a formula result as the evaluator sees it.
enum class CellValueKind : std::uint8_t { Empty, Number, Text, Boolean, Error };

// A scalar value. `text` is set for Text (and left empty otherwise); `number`
// holds the number, the boolean as 0 or 1, or the error code of the formula
// engine, as the kind says.
struct CellValue {
    CellValueKind kind = CellValueKind::Empty;
    double number = 0.0;
    std::string text;

    bool boolean() const noexcept { return number != 0.0; }
    std::uint8_t errorCode() const noexcept { return static_cast<std::uint8_t>(number); }
};

// A formula living in one cell. Implemented by the formula engine; owned by
// the cell, so destroying it is deleting the formula.
class CellFormula {
public:
    virtual ~CellFormula() = default;

    // A copy for a copied cell, its own cell unchanged (setCell moves it).
    virtual std::unique_ptr<CellFormula> clone() const = 0;

    // The formula's own cell: sheet index, column, row. The storage calls
    // setCell when it moves a formula cell by other means than a structural
    // change (move, paste, sort); relative references keep their offsets, so
    // they follow the cell.
    virtual CellPoint cell() const = 0;
    virtual std::int32_t sheet() const = 0;
    virtual void setCell(std::int32_t sheet, CellPoint cell) = 0;

    // Told after the storage has applied `change`. `newCell` is where this
    // formula's cell is now (for a formula on another sheet: where it was).
    // The formula takes newCell as its own cell, and moves its references that
    // point into the changed sheet; absolute parts stay as they stand.
    virtual ReferenceUpdate updateReferences(const StructureChange& change, CellPoint newCell) = 0;

    // The formula text rebuilt from its tokens, with the leading "=".
    virtual std::string text() const = 0;

    // The last calculated value, or nullptr while it is not calculated.
    virtual const CellValue* cachedResult() const = 0;
};

// Makes formulas from typed text; the book gives one to every storage.
class FormulaCompiler {
public:
    virtual ~FormulaCompiler() = default;

    // Compiles `text` (which starts with "=") for the cell at (sheet, cell).
    // Returns nullptr when it does not compile: the cell then stays plain
    // text, and the compiler has already reported the failure its own way.
    virtual std::unique_ptr<CellFormula> compile(std::string_view text, std::int32_t sheet, CellPoint cell) = 0;
};

// What a cell holds, read in place without copying.
struct CellContent {
    enum class Kind : std::uint8_t { Empty, Text, Number, Formula, Object };

    Kind kind = Kind::Empty;
    std::string_view text;           // the cell text: typed text, a number's text, a formula's text
    double number = 0.0;             // Number
    CellFormula* formula = nullptr;  // Formula: mutable so that it can be calculated on demand
};

// How the evaluator reads the cells of one sheet. The views returned stay
// valid until the cell is next changed.
class CellReader {
public:
    virtual ~CellReader() = default;

    // Any position, negative or past the end, reads as Empty.
    virtual CellContent readCell(std::int32_t column, std::int32_t row) const = 0;
    // One past the last column and row ever written.
    virtual std::int32_t columnCount() const = 0;
    virtual std::int32_t rowCount() const = 0;
    // Every formula of the sheet, columns outermost.
    virtual void forEachFormula(const std::function<void(CellFormula&)>& visit) const = 0;
};

}  // namespace zorfa::sheet
