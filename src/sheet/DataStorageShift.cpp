// Inserting and deleting cells, rows and columns, merging, and telling the
// formulas what moved. Every move is a move of slots: records stay where
// they are in memory, so a shift costs one pointer move per slot behind it.

#include <algorithm>

#include "sheet/DataStorage.h"
#include "sheet/DataStorageScopes.h"
#include "sheet/SheetErrors.h"

namespace zorfa::sheet {

namespace {

constexpr const char* kMergedCut = "Some modify cells is merged";

std::int32_t clampCount(std::int64_t n) {
    return static_cast<std::int32_t>(std::min<std::int64_t>(n, TcxSSUtils::kSheetEnd));
}

}  // namespace

CellRect TcxSSDataStorage::prepareShiftRect(CellRect rect, ShiftMode mode) const noexcept {
    rect = TcxSSUtils::normalized(rect);
    rect.left = std::max(rect.left, 0);
    rect.top = std::max(rect.top, 0);
    rect.right = std::max(rect.right, 0);
    rect.bottom = std::max(rect.bottom, 0);
    if (mode == ShiftMode::Rows) {
        rect.left = 0;
        rect.right = std::max(0, columnCount_ - 1);
    } else if (mode == ShiftMode::Columns) {
        rect.top = 0;
        rect.bottom = std::max(0, rowCount_ - 1);
    }
    return rect;
}

void TcxSSDataStorage::checkStrip(const CellRect& rect, ShiftMode mode, bool insert) const {
    if (mode != ShiftMode::Horizontal && mode != ShiftMode::Vertical) return;
    // The cells that move: from the rectangle to the sheet's edge. A deleted
    // range that lies wholly in the rectangle simply goes.
    const CellRect moving = mode == ShiftMode::Horizontal
                                ? CellRect{rect.left, rect.top, TcxSSUtils::kSheetEnd, rect.bottom}
                                : CellRect{rect.left, rect.top, rect.right, TcxSSUtils::kSheetEnd};
    for (std::int32_t i = 0; i < merged_.count(); ++i) {
        const CellRect range = merged_.item(i);
        if (!TcxSSUtils::intersects(moving, range)) continue;
        if (!insert && TcxSSUtils::contains(rect, range)) continue;
        throw ESpreadSheetError(kMergedCut);
    }
}

void TcxSSDataStorage::moveSlot(std::int32_t fromColumn, std::int32_t fromRow, std::int32_t toColumn,
                                std::int32_t toRow) {
    if (fromColumn >= capacityColumns() || fromRow >= capacityRows_) return;
    if (!columns_[static_cast<std::size_t>(fromColumn)].cells[static_cast<std::size_t>(fromRow)]) return;
    // Grow first: growing rows moves every column's slots.
    if (toColumn >= capacityColumns()) setCapacity(toColumn + kColumnDelta, capacityRows_);
    if (toRow >= capacityRows_) setCapacity(capacityColumns(), toRow + kRowDelta);
    auto& from = columns_[static_cast<std::size_t>(fromColumn)].cells[static_cast<std::size_t>(fromRow)];
    Column& to = columns_[static_cast<std::size_t>(toColumn)];
    to.cells[static_cast<std::size_t>(toRow)] = std::move(from);
    to.rowsUsed = std::max(to.rowsUsed, toRow + 1);
}

void TcxSSDataStorage::removeRows(Column& column, std::int32_t top, std::int32_t bottom) {
    if (column.rowsUsed <= top) return;
    auto begin = column.cells.begin();
    const std::int32_t end = std::min(bottom + 1, column.rowsUsed);
    std::rotate(begin + top, begin + end, begin + column.rowsUsed);
    column.rowsUsed -= end - top;
    recomputeRowsUsed(column);
}

void TcxSSDataStorage::openRows(Column& column, std::int32_t top, std::int32_t count) {
    if (column.rowsUsed <= top) return;
    auto begin = column.cells.begin();
    std::rotate(begin + top, begin + column.rowsUsed, begin + column.rowsUsed + count);
    column.rowsUsed += count;
}

void TcxSSDataStorage::reserveRowsFor(std::int32_t firstColumn, std::int32_t lastColumn, std::int32_t count) {
    std::int32_t need = 0;
    for (std::int32_t c = firstColumn; c <= lastColumn && c < capacityColumns(); ++c)
        need = std::max(need, columns_[static_cast<std::size_t>(c)].rowsUsed + count);
    if (need > capacityRows_) setCapacity(capacityColumns(), need + kRowDelta);
}

TcxSSDataStorage::Column TcxSSDataStorage::freshColumn() const {
    Column column;
    column.cells.resize(static_cast<std::size_t>(capacityRows_));
    return column;
}

void TcxSSDataStorage::deleteCells(CellRect rect, ShiftMode mode) {
    rect = prepareShiftRect(rect, mode);
    checkStrip(rect, mode, false);
    listener_->markModified();
    const std::int32_t width = clampCount(TcxSSUtils::width(rect));
    const std::int32_t height = clampCount(TcxSSUtils::height(rect));
    const std::vector<CellRect> mergedBefore = merged_.list();
    {
        ActionScope action(*this, StorageAction{StorageAction::Kind::DeleteCells, rect, mode, &mergedBefore, {}});
        LockScope lock(*this);
        clearCells(rect, true);
        switch (mode) {
            case ShiftMode::Horizontal:
                for (std::int32_t r = rect.top; r <= rect.bottom; ++r) {
                    for (std::int32_t c = rect.right + 1; c < columnCount_; ++c) moveSlot(c, r, c - width, r);
                }
                for (std::int32_t c = rect.left; c < std::min(columnCount_, capacityColumns()); ++c)
                    recomputeRowsUsed(columns_[static_cast<std::size_t>(c)]);
                break;
            case ShiftMode::Vertical:
                for (std::int32_t c = rect.left; c <= rect.right && c < capacityColumns(); ++c)
                    removeRows(columns_[static_cast<std::size_t>(c)], rect.top, rect.bottom);
                break;
            case ShiftMode::Columns:
                columnHeader_.remove(rect.left, width);
                if (rect.left < capacityColumns()) {
                    const std::int32_t last = std::min(rect.right + 1, capacityColumns());
                    columns_.erase(columns_.begin() + rect.left, columns_.begin() + last);
                    for (std::int32_t i = rect.left; i < last; ++i) columns_.push_back(freshColumn());
                }
                columnCount_ = columnCount_ > rect.right ? columnCount_ - width : std::min(columnCount_, rect.left);
                shiftMergedRanges(true, rect.left, -width);
                break;
            case ShiftMode::Rows:
                rowHeader_.remove(rect.top, height);
                for (Column& column : columns_) removeRows(column, rect.top, rect.bottom);
                rowCount_ = rowCount_ > rect.bottom ? rowCount_ - height : std::min(rowCount_, rect.top);
                shiftMergedRanges(false, rect.top, -height);
                break;
        }
    }
    listener_->layoutChanged();
    const bool columns = mode == ShiftMode::Horizontal || mode == ShiftMode::Columns;
    applyStructureChange(StructureChange{StructureChange::Kind::Delete, mode, sheetIndex_, rect,
                                         columns ? width : height});
}

void TcxSSDataStorage::insertCells(CellRect rect, ShiftMode mode) {
    rect = prepareShiftRect(rect, mode);
    checkStrip(rect, mode, true);
    listener_->markModified();
    const std::int32_t width = clampCount(TcxSSUtils::width(rect));
    const std::int32_t height = clampCount(TcxSSUtils::height(rect));
    const std::vector<CellRect> mergedBefore = merged_.list();
    {
        ActionScope action(*this, StorageAction{StorageAction::Kind::InsertCells, rect, mode, &mergedBefore, {}});
        LockScope lock(*this);
        switch (mode) {
            case ShiftMode::Horizontal:
                if (columnCount_ > rect.left) {
                    if (columnCount_ + width > capacityColumns())
                        setCapacity(columnCount_ + width + kColumnDelta, capacityRows_);
                    for (std::int32_t r = rect.top; r <= rect.bottom; ++r) {
                        for (std::int32_t c = columnCount_ - 1; c >= rect.left; --c) moveSlot(c, r, c + width, r);
                    }
                    for (std::int32_t c = rect.left; c < rect.left + width; ++c)
                        recomputeRowsUsed(columns_[static_cast<std::size_t>(c)]);
                    columnCount_ += width;
                }
                break;
            case ShiftMode::Vertical:
                reserveRowsFor(rect.left, rect.right, height);
                for (std::int32_t c = rect.left; c <= rect.right && c < capacityColumns(); ++c) {
                    Column& column = columns_[static_cast<std::size_t>(c)];
                    openRows(column, rect.top, height);
                    rowCount_ = std::max(rowCount_, column.rowsUsed);
                }
                break;
            case ShiftMode::Columns:
                if (rect.left < capacityColumns()) {
                    std::vector<Column> added;
                    added.reserve(static_cast<std::size_t>(width));
                    for (std::int32_t i = 0; i < width; ++i) added.push_back(freshColumn());
                    columns_.insert(columns_.begin() + rect.left, std::make_move_iterator(added.begin()),
                                    std::make_move_iterator(added.end()));
                }
                if (columnCount_ > rect.left) columnCount_ += width;
                columnHeader_.insert(rect.left, width);
                shiftMergedRanges(true, rect.left, width);
                break;
            case ShiftMode::Rows:
                reserveRowsFor(0, capacityColumns() - 1, height);
                for (Column& column : columns_) openRows(column, rect.top, height);
                if (rowCount_ > rect.top) rowCount_ += height;
                rowHeader_.insert(rect.top, height);
                shiftMergedRanges(false, rect.top, height);
                break;
        }
    }
    listener_->layoutChanged();
    const bool columns = mode == ShiftMode::Horizontal || mode == ShiftMode::Columns;
    applyStructureChange(StructureChange{StructureChange::Kind::Insert, mode, sheetIndex_, rect,
                                         columns ? width : height});
}

void TcxSSDataStorage::shiftMergedRanges(bool columns, std::int32_t edge, std::int32_t amount) {
    const std::vector<CellRect> grown = merged_.shift(columns, edge, amount);
    // The cells opened inside a range that grew belong to it.
    for (const CellRect& range : grown) {
        const CellRect opened = columns ? CellRect{edge, range.top, edge + amount - 1, range.bottom}
                                        : CellRect{range.left, edge, range.right, edge + amount - 1};
        for (std::int32_t c = opened.left; c <= opened.right; ++c) {
            for (std::int32_t r = opened.top; r <= opened.bottom; ++r) setStyleFlags(c, r, kStyleMerged, true);
        }
    }
}

void TcxSSDataStorage::updateFormulas(const StructureChange& change) {
    LockScope lock(*this);
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        Column& column = columns_[c];
        for (std::int32_t r = 0; r < column.rowsUsed; ++r) {
            CellRecord* record = column.cells[static_cast<std::size_t>(r)].get();
            if (!record || !record->formula) continue;
            switch (record->formula->updateReferences(change, {static_cast<std::int32_t>(c), r})) {
                case ReferenceUpdate::Unchanged: break;
                case ReferenceUpdate::Changed: record->text = record->formula->text(); break;
                case ReferenceUpdate::Broken:
                    record->formula.reset();
                    record->kind = CellKind::Text;
                    record->text = "#REF!";
                    break;
            }
        }
    }
}

void TcxSSDataStorage::applyStructureChange(const StructureChange& change) {
    updateFormulas(change);
    if (structureHook_) structureHook_(change);
}

void TcxSSDataStorage::updateForeignReferences(const StructureChange& change) {
    if (change.sheet != sheetIndex_) updateFormulas(change);
}

void TcxSSDataStorage::mergeCells(CellRect rect, bool merge) {
    rect = merged_.grow(TcxSSUtils::normalized(rect));
    const std::vector<CellRect> before = merged_.list();
    {
        ActionScope action(*this, StorageAction{merge ? StorageAction::Kind::MergeCells
                                                      : StorageAction::Kind::SplitCells,
                                                rect, ShiftMode::Horizontal, &before, {}});
        ListenerLock quiet(*listener_);
        merged_.removeIntersecting(rect);
        for (std::int32_t c = rect.left; c <= rect.right; ++c) {
            for (std::int32_t r = rect.top; r <= rect.bottom; ++r) setStyleFlags(c, r, kStyleMerged, merge);
        }
        if (merge) merged_.add(rect);
    }
    listener_->markModified();
    listener_->mergeChanged(rect, merge);
}

}  // namespace zorfa::sheet
