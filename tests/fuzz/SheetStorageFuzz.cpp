// Runs byte-coded operation sequences on one sheet's cell storage: text and
// formula entry, insert and delete of cells, rows and columns in every mode,
// merge, split, clear and sort, on a small grid. After every operation the
// storage must be whole: no record past a column's used rows, every formula
// knowing the cell it sits in, merged ranges well formed. A refused operation
// ("Some modify cells is merged") is fine; anything else thrown is a fault.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "sheet/DataStorage.h"
#include "sheet/SheetErrors.h"

namespace {

using namespace zorfa::sheet;

// "=<cell>": moves its reference by whole-row and whole-column changes.
class RowReference : public CellFormula {
public:
    RowReference(CellPoint own, CellPoint ref) : own_(own), ref_(ref) {}
    std::unique_ptr<CellFormula> clone() const override { return std::make_unique<RowReference>(*this); }
    CellPoint cell() const override { return own_; }
    std::int32_t sheet() const override { return 0; }
    void setCell(std::int32_t, CellPoint cell) override { own_ = cell; }
    ReferenceUpdate updateReferences(const StructureChange& change, CellPoint newCell) override {
        own_ = newCell;
        if (change.mode == ShiftMode::Horizontal || change.mode == ShiftMode::Vertical)
            return ReferenceUpdate::Unchanged;
        std::int32_t& p = change.isColumnChange() ? ref_.column : ref_.row;
        const std::int32_t edge = change.isColumnChange() ? change.rect.left : change.rect.top;
        if (p < edge) return ReferenceUpdate::Unchanged;
        if (!change.isInsert() && p < edge + change.count) return ReferenceUpdate::Broken;
        p += change.sign() * change.count;
        return ReferenceUpdate::Changed;
    }
    std::string text() const override { return "=" + TcxSSUtils::cellName(ref_.column, ref_.row); }
    const CellValue* cachedResult() const override { return nullptr; }

private:
    CellPoint own_, ref_;
};

class Compiler : public FormulaCompiler {
public:
    std::unique_ptr<CellFormula> compile(std::string_view text, std::int32_t, CellPoint cell) override {
        auto name = TcxSSUtils::parseCellName(text.substr(1));
        if (!name) return nullptr;
        return std::make_unique<RowReference>(cell, CellPoint{name->column, name->row});
    }
};

void check(bool ok, const char* what) {
    if (!ok) {
        std::fprintf(stderr, "storage invariant broken: %s\n", what);
        std::abort();
    }
}

void checkWhole(const TcxSSDataStorage& storage) {
    for (std::int32_t c = 0; c < storage.capacityColumns(); ++c) {
        const std::int32_t used = storage.rowsUsed(c);
        check(used <= storage.capacityRows(), "rows used within capacity");
        for (std::int32_t r = used; r < std::min(storage.capacityRows(), used + 40); ++r)
            check(storage.findCell(c, r) == nullptr, "no record past the used rows");
        for (std::int32_t r = 0; r < used; ++r) {
            const CellRecord* record = storage.findCell(c, r);
            if (!record) continue;
            check(record->style.get() != nullptr, "every record has a style");
            check(c < storage.columnCount() && r < storage.rowCount(), "counts cover every record");
            if (record->formula) check(record->formula->cell() == CellPoint{c, r}, "formula knows its cell");
            check((record->kind == CellKind::Formula) == (record->formula != nullptr), "formula kind");
        }
    }
    for (std::int32_t i = 0; i < storage.merged().count(); ++i) {
        const CellRect range = storage.merged().item(i);
        check(range.left >= 0 && range.top >= 0 && TcxSSUtils::isValid(range), "merged range well formed");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TcxSSStyleCache styles;
    TcxSSDataStorage storage(styles);
    Compiler compiler;
    storage.setFormulaCompiler(&compiler);
    std::size_t at = 0;
    auto next = [&]() -> std::int32_t { return at < size ? data[at++] : 0; };
    int operations = 0;
    while (at < size && operations++ < 64) {
        const std::int32_t op = next() % 12;
        const std::int32_t a = next() % 12, b = next() % 24, c = next() % 12, d = next() % 24;
        const CellRect rect{a, b, c, d};  // unnormalised on purpose
        try {
            switch (op) {
                case 0: storage.setText(a, b, "v" + std::to_string(c)); break;
                case 1: storage.setText(a, b, "=" + TcxSSUtils::cellName(c, d)); break;
                case 2: storage.setNumber(a, b, c - d); break;
                case 3: storage.insertCells(rect, static_cast<ShiftMode>(next() % 4)); break;
                case 4: storage.deleteCells(rect, static_cast<ShiftMode>(next() % 4)); break;
                case 5: storage.mergeCells(rect, true); break;
                case 6: storage.mergeCells(rect, false); break;
                case 7: storage.clearCells(rect, next() & 1); break;
                case 8: storage.sortCells(rect, next() & 1); break;
                case 9: storage.setStyleFlags(a, b, kStyleLocked, next() & 1); break;
                case 10: storage.setText(a, b, std::to_string(c) + "%"); break;
                case 11: storage.clearCells(TcxSSUtils::kWholeSheet, true); break;
            }
        } catch (const ESpreadSheetError&) {
            // refused over a merged range: the storage must still be whole
        }
        checkWhole(storage);
    }
    return 0;
}
