// The cell storage's share of a structural change: a row inserted at the top
// of a sheet of 65,536 formula cells moves every slot and tells every formula.
// The formula here does the least a real one does (moves one reference and
// rebuilds its text), so the figure is the storage's cost plus a floor.

#include <benchmark/benchmark.h>

#include "sheet/DataStorage.h"

namespace {

using namespace zorfa::sheet;

class OneReferenceFormula : public CellFormula {
public:
    OneReferenceFormula(CellPoint own, std::int32_t row) : own_(own), row_(row) {}
    std::unique_ptr<CellFormula> clone() const override { return std::make_unique<OneReferenceFormula>(*this); }
    CellPoint cell() const override { return own_; }
    std::int32_t sheet() const override { return 0; }
    void setCell(std::int32_t, CellPoint cell) override { own_ = cell; }
    ReferenceUpdate updateReferences(const StructureChange& change, CellPoint newCell) override {
        own_ = newCell;
        if (change.isColumnChange() || row_ < change.rect.top) return ReferenceUpdate::Unchanged;
        row_ += change.sign() * change.count;
        return row_ < 0 ? ReferenceUpdate::Broken : ReferenceUpdate::Changed;
    }
    std::string text() const override { return "=B" + std::to_string(row_ + 1); }
    const CellValue* cachedResult() const override { return nullptr; }

private:
    CellPoint own_;
    std::int32_t row_;
};

void fill(TcxSSDataStorage& storage, std::int32_t rows) {
    for (std::int32_t r = 0; r < rows; ++r) {
        CellRecord record;
        record.kind = CellKind::Formula;
        record.formula = std::make_unique<OneReferenceFormula>(CellPoint{0, r}, r + 1);
        record.text = record.formula->text();
        storage.setCell(0, r, std::move(record));
    }
}

void BM_InsertRowAtTopOfFormulaSheet(benchmark::State& state) {
    TcxSSStyleCache styles;
    TcxSSDataStorage storage(styles);
    fill(storage, 65536);
    for (auto _ : state) {
        storage.insertCells({0, 0, 0, 0}, ShiftMode::Rows);
        state.PauseTiming();
        storage.deleteCells({0, 0, 0, 0}, ShiftMode::Rows);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * 65536);
}
BENCHMARK(BM_InsertRowAtTopOfFormulaSheet)->Unit(benchmark::kMillisecond);

void BM_DeleteRowAtTopOfFormulaSheet(benchmark::State& state) {
    TcxSSStyleCache styles;
    TcxSSDataStorage storage(styles);
    fill(storage, 65536);
    for (auto _ : state) {
        state.PauseTiming();
        storage.insertCells({0, 0, 0, 0}, ShiftMode::Rows);
        state.ResumeTiming();
        storage.deleteCells({0, 0, 0, 0}, ShiftMode::Rows);
    }
    state.SetItemsProcessed(state.iterations() * 65536);
}
BENCHMARK(BM_DeleteRowAtTopOfFormulaSheet)->Unit(benchmark::kMillisecond);

void BM_FillColumnOfNumbers(benchmark::State& state) {
    for (auto _ : state) {
        TcxSSStyleCache styles;
        TcxSSDataStorage storage(styles);
        for (std::int32_t r = 0; r < 65536; ++r) storage.setNumber(0, r, r);
        benchmark::DoNotOptimize(storage.rowCount());
    }
    state.SetItemsProcessed(state.iterations() * 65536);
}
BENCHMARK(BM_FillColumnOfNumbers)->Unit(benchmark::kMillisecond);

}  // namespace
