#include "sheet/FormulaRecord.h"

#include "sheet/FormulaText.h"
#include "sheet/FormulasCache.h"

namespace zorfa::sheet {

namespace {

// Calls `visit` with every reference token decoded, and writes it back.
template <class Visit>
void forEachReference(std::string& tokens, Visit visit) {
    for (size_t at = 0; at < tokens.size();) {
        const size_t size = token::sizeAt(tokens, at);
        if (size == 0) break;
        char* p = tokens.data() + at;
        at += size;
        if (!token::isReference(static_cast<std::uint8_t>(*p))) continue;
        token::Reference r = token::readReference(p);
        visit(r);
        token::writeReference(p, r);
    }
}

}  // namespace

FormulaRecord::FormulaRecord(TcxSSFormulasCache& cache, std::int32_t sheet, CellPoint cell, std::string tokens,
                             std::string sourceText)
    : cache_(&cache), sheet_(sheet), cell_(cell), tokens_(std::move(tokens)), sourceText_(std::move(sourceText)) {
    cache.registerRecord(*this);
}

FormulaRecord::FormulaRecord(const FormulaRecord& other)
    : CellFormula(),
      textOnly(other.textOnly),
      compileError(other.compileError),
      cache_(other.cache_),
      sheet_(other.sheet_),
      cell_(other.cell_),
      tokens_(other.tokens_),
      sourceText_(other.sourceText_),
      result_(other.result_),
      calculated_(other.calculated_) {
    if (cache_) cache_->registerRecord(*this);
}

FormulaRecord::~FormulaRecord() {
    if (cache_) cache_->unregisterRecord(*this);
}

std::unique_ptr<CellFormula> FormulaRecord::clone() const { return std::make_unique<FormulaRecord>(*this); }

void FormulaRecord::setCell(std::int32_t sheet, CellPoint cell) {
    sheet_ = sheet;
    cell_ = cell;
}

std::string FormulaRecord::text() const {
    if (tokens_.empty() || !cache_) return sourceText_;
    try {
        return cache_->tokensText(tokens_, cell_);
    } catch (const ECalculationError&) {
        return sourceText_;
    }
}

ReferenceUpdate FormulaRecord::updateReferences(const StructureChange& change, CellPoint newCell) {
    const CellPoint old = cell_;
    const bool structural = change.mode == ShiftMode::Rows || change.mode == ShiftMode::Columns;
    if (tokens_.empty()) {
        cell_ = newCell;
        return newCell == old ? ReferenceUpdate::Unchanged : ReferenceUpdate::Changed;
    }
    if (!structural) return keepReferences(newCell);
    const bool columns = change.isColumnChange();
    const std::int64_t edge = columns ? change.rect.left : change.rect.top;
    const std::int64_t amount = static_cast<std::int64_t>(change.sign()) * change.count;
    const std::int64_t oldBase = columns ? old.column : old.row;
    const std::int64_t newBase = columns ? newCell.column : newCell.row;
    const bool onChangedSheet = sheet_ == change.sheet;
    bool changed = false, broken = false;

    // One coordinate: an absolute part stands as it is; a relative one is
    // made absolute from the old own cell, moved when at or past the edge,
    // and stored again as an offset from the new own cell.
    auto update = [&](std::int32_t& stored, bool absolute, bool onSheet, std::int64_t& value) {
        if (absolute) {
            value = stored;
            return;
        }
        const std::int64_t from = onSheet ? 0 : oldBase;
        const std::int64_t to = onSheet ? 0 : newBase;
        value = stored + from;
        if (value >= edge) value += amount;
        if (value < 0) broken = true;
        const std::int64_t offset = value - to;
        if (offset != stored) {
            stored = static_cast<std::int32_t>(offset);
            changed = true;
        }
    };

    forEachReference(tokens_, [&](token::Reference& r) {
        if (r.onSheet ? r.sheet != change.sheet : !onChangedSheet) return;
        std::int64_t before1 = 0, before2 = 0, after1 = 0, after2 = 0;
        if (columns) {
            before1 = r.columnAbsolute1 ? r.column1 : r.column1 + (r.onSheet ? 0 : oldBase);
            before2 = r.columnAbsolute2 ? r.column2 : r.column2 + (r.onSheet ? 0 : oldBase);
            update(r.column1, r.columnAbsolute1, r.onSheet, after1);
            if (r.area) update(r.column2, r.columnAbsolute2, r.onSheet, after2);
        } else {
            before1 = r.rowAbsolute1 ? r.row1 : r.row1 + (r.onSheet ? 0 : oldBase);
            before2 = r.rowAbsolute2 ? r.row2 : r.row2 + (r.onSheet ? 0 : oldBase);
            update(r.row1, r.rowAbsolute1, r.onSheet, after1);
            if (r.area) update(r.row2, r.rowAbsolute2, r.onSheet, after2);
        }
        if (!r.area) {
            r.row2 = r.row1;
            r.column2 = r.column1;
        } else if (before1 <= before2 && after1 > after2) {
            broken = true;  // the first corner passed the last
        }
    });
    cell_ = newCell;
    if (broken) return ReferenceUpdate::Broken;
    return changed || newCell != old ? ReferenceUpdate::Changed : ReferenceUpdate::Unchanged;
}

// Shifting cells adjusts no reference: every relative part keeps the cell it
// pointed at from the old own cell, stored again as an offset from the new
// one, so the text stays as it was. A part that already lies off the sheet (a
// block moved with its offsets) breaks the formula as a row deletion would.
ReferenceUpdate FormulaRecord::keepReferences(CellPoint newCell) {
    const CellPoint old = cell_;
    bool broken = false;
    auto keep = [&](std::int32_t& stored, bool absolute, std::int32_t oldBase, std::int32_t newBase) {
        if (absolute) {
            if (stored < 0) broken = true;
            return;
        }
        const std::int64_t value = static_cast<std::int64_t>(stored) + oldBase;
        if (value < 0) broken = true;
        stored = static_cast<std::int32_t>(value - newBase);
    };
    forEachReference(tokens_, [&](token::Reference& r) {
        // Sheet references are offsets from row 0, column 0: they do not depend on the own cell.
        const std::int32_t oldRow = r.onSheet ? 0 : old.row, newRow = r.onSheet ? 0 : newCell.row;
        const std::int32_t oldColumn = r.onSheet ? 0 : old.column, newColumn = r.onSheet ? 0 : newCell.column;
        keep(r.row1, r.rowAbsolute1, oldRow, newRow);
        keep(r.column1, r.columnAbsolute1, oldColumn, newColumn);
        if (r.area) {
            keep(r.row2, r.rowAbsolute2, oldRow, newRow);
            keep(r.column2, r.columnAbsolute2, oldColumn, newColumn);
        } else {
            r.row2 = r.row1;
            r.column2 = r.column1;
        }
    });
    cell_ = newCell;
    if (broken) return ReferenceUpdate::Broken;
    return newCell == old ? ReferenceUpdate::Unchanged : ReferenceUpdate::Changed;
}

}  // namespace zorfa::sheet
