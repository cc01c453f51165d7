#pragma once
// TcxSSDataStorage: the cells of one sheet, with its merged ranges and its
// column and row headers.
//
// Cells live column by column: each column has one slot per row of the
// capacity, and a slot holds a CellRecord only once the cell was written, so
// an empty cell costs one pointer. Capacity grows in steps of ColumnDelta (10)
// columns and RowDelta (1000) rows. Inserting and deleting rows, columns and
// cells moves slots, never records, and then tells every formula of the sheet
// (and, through the structure hook, the book's other sheets) what moved.
//
// Errors: an operation that would cut a merged range raises
// ESpreadSheetError "Some modify cells is merged"; negative positions are
// ignored on write and read as the empty cell.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/CellFormulaLink.h"
#include "sheet/CellRecord.h"
#include "sheet/LocaleSettings.h"
#include "sheet/MergedCellsStorage.h"
#include "sheet/SSHeader.h"
#include "sheet/SSListener.h"
#include "sheet/StyleCache.h"

namespace zorfa::sheet {

class TcxSSDataStorage : public CellReader {
public:
    static constexpr std::int32_t kColumnDelta = 10;
    static constexpr std::int32_t kRowDelta = 1000;

    // The style cache must outlive the storage.
    explicit TcxSSDataStorage(TcxSSStyleCache& styles, std::int32_t sheetIndex = 0);
    ~TcxSSDataStorage() override;
    TcxSSDataStorage(const TcxSSDataStorage&) = delete;
    TcxSSDataStorage& operator=(const TcxSSDataStorage&) = delete;

    // What the book attaches; all optional. Pointers are not owned.
    void setListener(TcxSSListener* listener) noexcept;
    TcxSSListener& listener() noexcept { return *listener_; }
    void setHistory(StorageHistory* history) noexcept { history_ = history; }
    void setFormulaCompiler(FormulaCompiler* compiler) noexcept { compiler_ = compiler; }
    // Called after every structural change, so that the book can update the
    // formulas of its other sheets (updateForeignReferences on each).
    void setStructureHook(std::function<void(const StructureChange&)> hook) { structureHook_ = std::move(hook); }
    void setSheetIndex(std::int32_t index) noexcept { sheetIndex_ = index; }
    std::int32_t sheetIndex() const noexcept { return sheetIndex_; }
    void setLocale(const LocaleSettings& locale) { locale_ = locale; }
    const LocaleSettings& locale() const noexcept { return locale_; }
    // A read-only book or protected sheet: locked styles refuse changes.
    void setReadOnly(bool readOnly) noexcept { readOnly_ = readOnly; }
    bool isReadOnly() const noexcept { return readOnly_; }
    const std::string& caption() const noexcept { return caption_; }
    void setCaption(std::string caption) { caption_ = std::move(caption); }
    TcxSSStyleCache& styles() noexcept { return styles_; }

    // Set while bulk operations run: no listener questions, no undo records.
    bool isLocked() const noexcept { return locked_ > 0; }

    // Reading. A missing cell, or a negative or out-of-range position, gives
    // the empty template (empty text, kind text, style 0).
    const CellRecord& cell(std::int32_t column, std::int32_t row) const noexcept;
    const CellRecord* findCell(std::int32_t column, std::int32_t row) const noexcept;
    CellRecord getCell(std::int32_t column, std::int32_t row) const { return cell(column, row).copy(); }
    const CellRecord& emptyCell() const noexcept { return empty_; }

    // Writing. A write equal to the cell records nothing and tells nobody.
    void setCell(std::int32_t column, std::int32_t row, CellRecord record);
    // Text entry: with `analyse`, a text that is a formula is compiled, and in
    // a percent format "50%" is stored as the text of 0.5; otherwise text.
    void setText(std::int32_t column, std::int32_t row, std::string_view text, bool analyse = true,
                 bool forceFormula = false);
    void setNumber(std::int32_t column, std::int32_t row, double value);
    void setStyle(std::int32_t column, std::int32_t row, StyleHandle style);
    // Sets or clears style flag bits (kStyleMerged, kStyleLocked) of a cell.
    void setStyleFlags(std::int32_t column, std::int32_t row, std::uint8_t mask, bool on);

    // The cell's number: kind number, or a text that reads as a number.
    std::optional<double> numericValue(std::int32_t column, std::int32_t row) const;
    // The text a cell shows: a number through its number format, a formula's
    // last result, else the cell text. `red` as formatNumber says.
    std::string displayText(std::int32_t column, std::int32_t row, int precision = 2, bool* red = nullptr) const;
    // The value text sorting compares.
    std::string valueText(const CellRecord& record) const;

    std::int32_t capacityColumns() const noexcept { return static_cast<std::int32_t>(columns_.size()); }
    std::int32_t capacityRows() const noexcept { return capacityRows_; }
    std::int32_t columnCount() const override { return columnCount_; }
    std::int32_t rowCount() const override { return rowCount_; }
    std::int32_t rowsUsed(std::int32_t column) const noexcept;
    void setCapacity(std::int32_t columns, std::int32_t rows);
    // One past the last column and row with a cell that is not empty.
    std::int32_t lastUsedColumn() const noexcept;
    std::int32_t lastUsedRow() const noexcept;
    std::size_t recordCount() const noexcept;

    // Clears the cells of `rect` ({-1,-1,-1,-1}: the whole used area); with
    // clearStyle the cells go back to style 0 and lose their records and the
    // merged ranges inside go. False when the listener refused.
    bool clearCells(CellRect rect, bool clearStyle);
    void clearAll();

    // Copies `rowCount` cells of column fromColumn, from fromRow down, to
    // column toColumn from toRow down; with `clear` the source cells that are
    // not overwritten are cleared, so the block moves. Overlapping blocks are
    // read whole before anything is written. Moved formulas keep their
    // relative references, which follow them.
    void moveCells(std::int32_t toColumn, std::int32_t fromColumn, bool clear, std::int32_t rowCount,
                   std::int32_t toRow, std::int32_t fromRow);

    void deleteCells(CellRect rect, ShiftMode mode);
    void insertCells(CellRect rect, ShiftMode mode);

    // Merges (or splits) the rectangle grown over the ranges it cuts.
    void mergeCells(CellRect rect, bool merge);
    // The rectangle grown over every merged range it cuts.
    CellRect getMergedRect(const CellRect& rect) const { return merged_.grow(rect); }
    TcxSSMergedCellsStorage& merged() noexcept { return merged_; }
    const TcxSSMergedCellsStorage& merged() const noexcept { return merged_; }

    // Sorts the rows of `rect` by its columns, left to right. `descending`
    // gives the direction of each key column; past its end `defaultDescending`.
    void sortCells(CellRect rect, bool descending) { sortCells(rect, {}, descending); }
    void sortCells(CellRect rect, std::span<const bool> descending, bool defaultDescending);
    // The order of two cells as sorting sees them: negative, 0, positive.
    int compareCells(const CellRecord& a, const CellRecord& b) const;

    // The active cell and the selection (inclusive). The selection kind is
    // recomputed at every change: 0 one cell, 1 a range, 2 exactly one merged range.
    CellPoint activeCell() const noexcept { return active_; }
    void setActiveColumn(std::int32_t column) noexcept { active_.column = std::max(column, 0); }
    void setActiveRow(std::int32_t row) noexcept { active_.row = std::max(row, 0); }
    const CellRect& selection() const noexcept { return selection_; }
    void setSelection(const CellRect& rect);
    int selectionKind() const noexcept { return selectionKind_; }

    // The pixel rectangle of a cell (right and bottom exclusive), from the
    // top-left of the cell (scrollColumn, scrollRow); with useMerged the
    // cell's merged range is measured.
    CellRect getCellRect(std::int32_t row, std::int32_t column, bool useMerged, std::int32_t scrollColumn,
                         std::int32_t scrollRow) const;

    TcxSSHeader& header(int index) noexcept { return index == 0 ? columnHeader_ : rowHeader_; }
    const TcxSSHeader& header(int index) const noexcept { return index == 0 ? columnHeader_ : rowHeader_; }

    // A deep copy of another storage's cells, merged ranges and headers; the
    // formulas are cloned and told their new sheet. Both storages belong to
    // one book: they share the style cache.
    void assign(const TcxSSDataStorage& other);

    // A structural change of another sheet of the book: every formula here
    // that points into it is told. Changes of this sheet are applied by
    // insertCells and deleteCells themselves.
    void updateForeignReferences(const StructureChange& change);

    // CellReader
    CellContent readCell(std::int32_t column, std::int32_t row) const override;
    void forEachFormula(const std::function<void(CellFormula&)>& visit) const override;

private:
    struct Column {
        std::int32_t rowsUsed = 0;
        std::vector<std::unique_ptr<CellRecord>> cells;  // capacityRows_ slots
    };
    class LockScope;
    class ActionScope;

    CellRecord* slot(std::int32_t column, std::int32_t row) noexcept;
    CellRecord& materialise(std::int32_t column, std::int32_t row);
    void recordCell(std::int32_t column, std::int32_t row);
    void noteWritten(std::int32_t column, std::int32_t row);
    bool historyOn() const noexcept;
    void dropFormula(CellRecord& record);
    void compileFormula(std::int32_t column, std::int32_t row);

    CellRect prepareShiftRect(CellRect rect, ShiftMode mode) const noexcept;
    void checkStrip(const CellRect& rect, ShiftMode mode, bool insert) const;
    void moveSlot(std::int32_t fromColumn, std::int32_t fromRow, std::int32_t toColumn, std::int32_t toRow);
    void removeRows(Column& column, std::int32_t top, std::int32_t bottom);
    void openRows(Column& column, std::int32_t top, std::int32_t count);
    void reserveRowsFor(std::int32_t firstColumn, std::int32_t lastColumn, std::int32_t count);
    Column freshColumn() const;
    void shiftMergedRanges(bool columns, std::int32_t edge, std::int32_t amount);
    void updateFormulas(const StructureChange& change);
    void applyStructureChange(const StructureChange& change);
    void recomputeRowsUsed(Column& column) noexcept;

    void quickSortRows(const CellRect& rect, std::int32_t keyColumn, std::int32_t first, std::int32_t last,
                       bool descending);
    void swapRows(const CellRect& rect, std::int32_t a, std::int32_t b);
    int compareRows(std::int32_t keyColumn, std::int32_t a, std::int32_t b, bool descending) const;

    TcxSSStyleCache& styles_;
    CellRecord empty_;
    std::int32_t sheetIndex_;
    std::string caption_;
    CellPoint active_;
    CellRect selection_;
    int selectionKind_ = 0;
    std::vector<Column> columns_;
    std::int32_t capacityRows_ = 0;
    std::int32_t columnCount_ = 0;
    std::int32_t rowCount_ = 0;
    int locked_ = 0;
    bool readOnly_ = false;
    TcxSSHeader columnHeader_{TcxSSHeader::Columns};
    TcxSSHeader rowHeader_{TcxSSHeader::Rows};
    TcxSSMergedCellsStorage merged_;

    std::unique_ptr<TcxSSListener> ownListener_;
    TcxSSListener* listener_;
    StorageHistory* history_ = nullptr;
    FormulaCompiler* compiler_ = nullptr;
    std::function<void(const StructureChange&)> structureHook_;
    LocaleSettings locale_;
};

}  // namespace zorfa::sheet
